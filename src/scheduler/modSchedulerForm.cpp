// Loads the scheduler's form and handles its events.
#include "src/scheduler/modSchedulerForm.h"

#include <utility>

#include "src/commands/modHelp.h"
#include "src/dispatch/modDialog.h"
#include "src/dispatch/modDispatcher.h"
#include "src/forms/Application.h"
#include "src/job/modFileHelpers.h"
#include "src/platform/window_services.h"
#include "src/scheduler/modSchedule.h"
#include "src/scheduler/modSchedulePersistence.h"
#include "src/scheduler/modTimer.h"
#include "src/settings/modMRU.h"
#include "src/translator/modTranslateForm.h"
#include "src/translator/modTranslator.h"

namespace
{
constexpr std::int32_t kRecentJobFiles = 20;
constexpr std::int32_t kTabSetUp = 1;
constexpr std::int32_t kTabOptions = 2;
}  // namespace

static void FillLists(frmScheduler& frm)
{
    const RedrawLock objHours(frm.cbHours);
    frm.cbHours.Clear();
    for (int nHour = 1; nHour <= 12; ++nHour)
        frm.cbHours.AddItem(std::to_string(nHour));
    const RedrawLock objMinutes(frm.cbMinutes);
    frm.cbMinutes.Clear();
    for (int nMinute = 0; nMinute < 60; ++nMinute)
        frm.cbMinutes.AddItem((nMinute < 10 ? "0" : "") + std::to_string(nMinute));
    // Not translated: the schedule's times are read and written in English.
    const RedrawLock objHalves(frm.cbAmPm);
    frm.cbAmPm.Clear();
    frm.cbAmPm.AddItem("AM");
    frm.cbAmPm.AddItem("PM");
}

static void SetCaptions(frmScheduler& frm)
{
    const std::pair<Control*, const char*> aCaptions[] = {
        {&frm.lblScheduledJobFile, "Job file:"},
        {&frm.cmdSelectScheduledJobFile, "  File.."},
        {&frm.optTimeBased, "Time based"},
        {&frm.optCalendarBased, "Calendar based"},
        {&frm.lblHours, "Hours"},
        {&frm.lblMinutes, "Minutes"},
        {&frm.lblSeconds, "Seconds"},
        {&frm.optDaily, "Daily"},
        {&frm.optWeekly, "Weekly"},
        {&frm.optMonthly, "Monthly"},
        {&frm.lblStartTime, "Start time:"},
        {&frm.optNumDays, "Every"},
        {&frm.lblNumDays, "day(s)"},
        {&frm.optWeekdays, "Every weekday"},
        {&frm.lblRunEvery, "Run the job every"},
        {&frm.lblNumWeeks, "week(s) on:"},
        {&frm.chkMon, "Monday"},
        {&frm.chkTue, "Tuesday"},
        {&frm.chkWed, "Wednesday"},
        {&frm.chkThu, "Thursday"},
        {&frm.chkFri, "Friday"},
        {&frm.chkSat, "Saturday"},
        {&frm.chkSun, "Sunday"},
        {&frm.lblDayOfMonth, "Day"},
        {&frm.lblOfEvery, "of every"},
        {&frm.lblNumMonths, "month(s)"},
        {&frm.lblMonthlyNote,
         "Note:  Enter 31 to run on the last day of each month.  The maximum number of months is 12."},
        {&frm.chkPersistRunning, " Automatically restart the timer on program load"},
        {&frm.lblTimeBased, "Time Based:"},
        {&frm.lblOverrun,
         "If the time period to run a job exceeds the interval you specified, "
         "how would you like the next job to be run:"},
        {&frm.optImmediately, "Immediately after the current job finishes (continuous)"},
        {&frm.optSkip, "Skip this run and set the timer for the next one"},
        {&frm.cmdStartTimer, "&Begin"},
        {&frm.cmdEndTimer, "&End"},
        {&frm.cmdDone, "&Done"},
    };
    frm.SetCaption("Schedule a Job");
    for (const auto& [pControl, sCaption] : aCaptions)
        pControl->SetCaption(sCaption);
    frm.TabStrip1.SetTabs({"Set Up", "Options"});
    // What the user enters isn't translated.
    for (Control* pText : {&frm.txtHours, &frm.txtMinutes, &frm.txtSeconds, &frm.txtNumDays, &frm.txtNumWeeks,
                           &frm.txtDayOfMonth, &frm.txtNumMonths})
        pText->SetTag(kTranslateFalse);
}

static void ShowKind(Application& app)
{
    frmScheduler& frm = app.frmScheduler;
    frm.fraTimeBased.SetVisible(frm.optTimeBased.Value());
    frm.fraCalendarBased.SetVisible(frm.optCalendarBased.Value());
}

static void ShowCalendarKind(Application& app)
{
    frmScheduler& frm = app.frmScheduler;
    frm.fraDaily.SetVisible(frm.optDaily.Value());
    frm.fraWeekly.SetVisible(frm.optWeekly.Value());
    frm.fraMonthly.SetVisible(frm.optMonthly.Value());
}

static void EnableNumDays(Application& app)
{
    app.frmScheduler.txtNumDays.SetEnabled(app.frmScheduler.optNumDays.Value());
}

static void ConnectHandlers(Application& app)
{
    frmScheduler& frm = app.frmScheduler;
    frm.TabStrip1.OnClick = Handler(app, TabStrip1_Click);
    for (OptionButton* pOption : {&frm.optTimeBased, &frm.optCalendarBased})
        pOption->OnClick = Handler(app, ShowKind);
    for (OptionButton* pOption : {&frm.optDaily, &frm.optWeekly, &frm.optMonthly})
        pOption->OnClick = Handler(app, ShowCalendarKind);
    for (OptionButton* pOption : {&frm.optNumDays, &frm.optWeekdays})
        pOption->OnClick = Handler(app, EnableNumDays);
    for (CommandButton* pButton : {&frm.cmdSelectScheduledJobFile, &frm.picScheduledJobFile})
        pButton->OnClick = Handler(app, cmdSelectScheduledJobFile_Click);
    frm.cmdStartTimer.OnClick = Handler(app, cmdStartTimer_Click);
    frm.cmdEndTimer.OnClick = Handler(app, StopTimer);
    frm.cmdDone.OnClick = Handler(app, cmdDone_Click);
    frm.Timer1.OnTimer = Handler(app, Timer1_Timer, Act::Unattended);
    ConnectDialog(app, frm, frm.cmdDone, kHelpScheduler);
    frm.OnUnload = [&app] { frmScheduler_Unload(app); };
}

// A form that was unloaded starts again with nothing chosen, so that reading the settings raises every
// handler.
static void ClearChoices(Application& app)
{
    frmScheduler& frm = app.frmScheduler;
    for (OptionButton* pOption :
         {&frm.optTimeBased, &frm.optCalendarBased, &frm.optDaily, &frm.optWeekly, &frm.optMonthly,
          &frm.optNumDays, &frm.optWeekdays, &frm.optImmediately, &frm.optSkip})
        pOption->SetValue(false);
    ShowKind(app);
    ShowCalendarKind(app);
}

void frmScheduler_Load(Application& app)
{
    frmScheduler& frm = app.frmScheduler;
    frm.bLoaded = true;
    FillLists(frm);
    SetCaptions(frm);
    ClearChoices(app);
    ConnectHandlers(app);
    ReadIniFileScheduler(app);
    frm.TabStrip1.SelectTab(kTabSetUp);
    frm.bStopping = false;
    frm.bFirstWeeklySearch = true;
    frm.cmdStartTimer.SetEnabled(true);
    frm.cmdEndTimer.SetEnabled(false);
    TranslateForm(app, frm);
}

void frmScheduler_Unload(Application& app)
{
    frmScheduler& frm = app.frmScheduler;
    if (!frm.bLoaded)
        return;
    frm.Timer1.SetEnabled(false);
    ShutDown(frm.mruScheduleSource, app.svc.objIniFile);
    SaveIniFileScheduler(app);
    frm.bLoaded = false;
    frm.SetVisible(false);
}

void SetUpScheduler(Application& app, const std::string& sIniFile)
{
    frmScheduler& frm = app.frmScheduler;
    if (!frm.bLoaded)
        frmScheduler_Load(app);
    Setup(frm.mruScheduleSource, app.svc.objIniFile, kRecentJobFiles, sIniFile, "mruScheduleSource");
    FillComboBoxFromMRU(app, frm.cbScheduledJobFile, frm.mruScheduleSource);
}

void TabStrip1_Click(Application& app)
{
    frmScheduler& frm = app.frmScheduler;
    frm.intTabSetUp = frm.TabStrip1.SelectedTab() == kTabOptions ? kTabOptions : kTabSetUp;
    frm.fraSetup.SetVisible(frm.intTabSetUp == kTabSetUp);
    frm.fraOptions.SetVisible(frm.intTabSetUp == kTabOptions);
}

void cmdSelectScheduledJobFile_Click(Application& app)
{
    frmScheduler& frm = app.frmScheduler;
    // Asked of the window itself: a translated title with the word "save" in it must not turn this into a
    // dialog that saves.
    FilePicker objPicker{sTranslate(app, "Select .VJB Job File"), "VJB Job File (*.vjb)|*.vjb"};
    frm.sEditJobFile = app.svc.objWindows.sPickFile(objPicker);
    if (frm.sEditJobFile.empty())
        return ShowScheduleMessage(app, "Please select a job file");
    if (!bFileExists(app, frm.sEditJobFile))
        return ShowScheduleMessage(app, "Job file does not exist");
    frm.cbScheduledJobFile.SetText(frm.sEditJobFile);
    AddUniqueItemToCollection(frm.mruScheduleSource, frm.sEditJobFile);
    FillComboBoxFromMRU(app, frm.cbScheduledJobFile, frm.mruScheduleSource);
}

void cmdDone_Click(Application& app)
{
    if (app.frmScheduler.bStopping)
        frmScheduler_Unload(app);
    else
        app.frmScheduler.SetVisible(false);
}

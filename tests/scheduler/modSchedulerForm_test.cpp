// The scheduler's form: lists, captions, tabs, options, buttons.
#include "src/scheduler/modSchedulerForm.h"

#include "tests/fakes/control_watchers.h"
#include "tests/scheduler/support/schedules.h"

namespace
{

class SchedulerForm : public Schedules
{
};

Texts EntriesOf(const ComboBox& cb)
{
    Texts aEntries;
    for (std::int32_t l = 0; l < cb.ListCount(); ++l)
        aEntries.push_back(cb.List(l));
    return aEntries;
}

}  // namespace

TEST_F(SchedulerForm, ListsTheTimesOfADay)
{
    EXPECT_EQ(EntriesOf(frm.cbHours), (Texts{"1", "2", "3", "4", "5", "6", "7", "8", "9", "10", "11", "12"}));
    ASSERT_EQ(frm.cbMinutes.ListCount(), 60);
    EXPECT_EQ(frm.cbMinutes.List(0), "00");
    EXPECT_EQ(frm.cbMinutes.List(9), "09");
    EXPECT_EQ(frm.cbMinutes.List(59), "59");
    EXPECT_EQ(EntriesOf(frm.cbAmPm), (Texts{"AM", "PM"}));
}

TEST_F(SchedulerForm, HasItsCaptionsLetterByLetter)
{
    EXPECT_EQ(frm.Caption(), "Schedule a Job");
    EXPECT_EQ(frm.optNumDays.Caption(), "Every");
    EXPECT_EQ(frm.lblNumDays.Caption(), "day(s)");
    EXPECT_EQ(frm.optWeekdays.Caption(), "Every weekday");
    EXPECT_EQ(frm.lblRunEvery.Caption(), "Run the job every");
    EXPECT_EQ(frm.lblNumWeeks.Caption(), "week(s) on:");
    EXPECT_EQ(frm.lblOfEvery.Caption(), "of every");
    EXPECT_EQ(frm.lblNumMonths.Caption(), "month(s)");
    EXPECT_EQ(frm.lblMonthlyNote.Caption(),
              "Note:  Enter 31 to run on the last day of each month.  The maximum number of months is 12.");
    EXPECT_EQ(frm.chkPersistRunning.Caption(), " Automatically restart the timer on program load");
    EXPECT_EQ(frm.lblTimeBased.Caption(), "Time Based:");
    EXPECT_EQ(frm.lblOverrun.Caption(),
              "If the time period to run a job exceeds the interval you specified, how would you like the "
              "next job to "
              "be run:");
    EXPECT_EQ(frm.optImmediately.Caption(), "Immediately after the current job finishes (continuous)");
    EXPECT_EQ(frm.optSkip.Caption(), "Skip this run and set the timer for the next one");
    EXPECT_EQ(frm.cmdStartTimer.Caption(), "&Begin");
    EXPECT_EQ(frm.cmdEndTimer.Caption(), "&End");
    EXPECT_EQ(frm.cmdDone.Caption(), "&Done");
    EXPECT_EQ(frm.TabStrip1.Tabs(), (Texts{"Set Up", "Options"}));
}

TEST(SchedulerFormInGerman, TranslatesItsCaptionsButNotItsInputs)
{
    TestApplication app;
    app.objTranslator.dictTranslations = {{"&Done", "&Fertig"}, {"1", "eins"}, {"Set Up", "Einrichten"}};

    frmScheduler_Load(app);

    EXPECT_EQ(app.frmScheduler.cmdDone.Caption(), "&Fertig");
    EXPECT_EQ(app.frmScheduler.TabStrip1.TabCaption(1), "Einrichten");
    EXPECT_EQ(app.frmScheduler.txtNumDays.Text(), "1");
}

TEST_F(SchedulerForm, IsIdleOnceLoaded)
{
    EXPECT_TRUE(frm.bLoaded);
    EXPECT_TRUE(frm.bFirstWeeklySearch);
    EXPECT_FALSE(frm.bStopping);
    EXPECT_FALSE(bTimerOn());
    EXPECT_TRUE(frm.cmdStartTimer.Enabled());
    EXPECT_FALSE(frm.cmdEndTimer.Enabled());
    EXPECT_TRUE(frm.fraCalendarBased.Visible() && frm.fraDaily.Visible());
    EXPECT_FALSE(frm.fraTimeBased.Visible() || frm.fraWeekly.Visible() || frm.fraMonthly.Visible());
}

TEST_F(SchedulerForm, IsLoadedOnceHoweverOftenItIsSetUp)
{
    frm.txtNumDays.SetText("5");
    frm.bFirstWeeklySearch = false;

    SetUpScheduler(app, app.sIniFile);

    EXPECT_EQ(frm.txtNumDays.Text(), "5");
    EXPECT_FALSE(frm.bFirstWeeklySearch);
}

TEST_F(SchedulerForm, ListsRecentJobFilesNewestFirst)
{
    app.ini.Set("mruScheduleSource", "mruScheduleSource19", "/jobs/old.vjb");

    SetUpScheduler(app, app.sIniFile);

    EXPECT_EQ(EntriesOf(frm.cbScheduledJobFile), (Texts{kJobFile, "/jobs/old.vjb"}));
    EXPECT_EQ(frm.cbScheduledJobFile.Text(), kJobFile);
    EXPECT_EQ(frm.mruScheduleSource.lMaxCount, 20);
}

TEST_F(SchedulerForm, ShowsThePageOfTheChosenTab)
{
    frm.TabStrip1.SelectTab(2);
    EXPECT_TRUE(frm.fraOptions.Visible());
    EXPECT_FALSE(frm.fraSetup.Visible());
    EXPECT_EQ(frm.intTabSetUp, 2);

    frm.TabStrip1.SelectTab(1);
    EXPECT_TRUE(frm.fraSetup.Visible());
    EXPECT_FALSE(frm.fraOptions.Visible());
    EXPECT_EQ(frm.intTabSetUp, 1);
}

TEST_F(SchedulerForm, ShowsTheFieldsOfTheChosenKind)
{
    frm.optTimeBased.SetValue(true);
    EXPECT_TRUE(frm.fraTimeBased.Visible());
    EXPECT_FALSE(frm.fraCalendarBased.Visible());
    frm.optCalendarBased.SetValue(true);
    EXPECT_FALSE(frm.fraTimeBased.Visible());
    EXPECT_TRUE(frm.fraCalendarBased.Visible());

    frm.optWeekly.SetValue(true);
    EXPECT_TRUE(!frm.fraDaily.Visible() && frm.fraWeekly.Visible() && !frm.fraMonthly.Visible());
    frm.optMonthly.SetValue(true);
    EXPECT_TRUE(!frm.fraDaily.Visible() && !frm.fraWeekly.Visible() && frm.fraMonthly.Visible());
    frm.optDaily.SetValue(true);
    EXPECT_TRUE(frm.fraDaily.Visible() && !frm.fraWeekly.Visible() && !frm.fraMonthly.Visible());
}

TEST_F(SchedulerForm, EnablesTheNumberOfDaysWithItsOption)
{
    frm.optWeekdays.SetValue(true);
    EXPECT_FALSE(frm.txtNumDays.Enabled());
    frm.optNumDays.SetValue(true);
    EXPECT_TRUE(frm.txtNumDays.Enabled());
}

TEST_F(SchedulerForm, TakesAPickedJobFile)
{
    app.files.AddFile("/jobs/picked.vjb");
    app.windows.picks = {"/jobs/picked.vjb"};

    frm.cmdSelectScheduledJobFile.Click();

    EXPECT_EQ(app.windows.pickers, Texts{"Select .VJB Job File|VJB Job File (*.vjb)|*.vjb"});
    EXPECT_EQ(frm.sEditJobFile, "/jobs/picked.vjb");
    EXPECT_EQ(EntriesOf(frm.cbScheduledJobFile), (Texts{"/jobs/picked.vjb", kJobFile}));
    EXPECT_EQ(frm.cbScheduledJobFile.Text(), "/jobs/picked.vjb");
    EXPECT_TRUE(app.windows.boxes.empty());
    EXPECT_TRUE(app.ini.written.empty()) << "the list is saved at Begin and at the end";
}

TEST_F(SchedulerForm, PicksWithItsPictureToo)
{
    app.files.AddFile("/jobs/picked.vjb");
    app.windows.picks = {"/jobs/picked.vjb"};

    frm.picScheduledJobFile.Click();

    EXPECT_EQ(frm.cbScheduledJobFile.Text(), "/jobs/picked.vjb");
}

// Intentional: a cancelled pick is reported like an empty choice, and forgets the job file.
TEST_F(SchedulerForm, AsksForAJobFileWhenThePickIsCancelled)
{
    frm.sEditJobFile = kJobFile;

    frm.cmdSelectScheduledJobFile.Click();

    EXPECT_EQ(aMessages(), Texts{"Please select a job file"});
    EXPECT_EQ(app.windows.boxes[0].title, "Information");
    EXPECT_EQ(frm.sEditJobFile, "");
    EXPECT_EQ(frm.cbScheduledJobFile.Text(), kJobFile);
}

TEST_F(SchedulerForm, RefusesAPickedFileThatDoesNotExist)
{
    app.windows.picks = {"/jobs/gone.vjb"};

    frm.cmdSelectScheduledJobFile.Click();

    EXPECT_EQ(aMessages(), Texts{"Job file does not exist"});
    EXPECT_EQ(frm.sEditJobFile, "/jobs/gone.vjb");
    EXPECT_EQ(EntriesOf(frm.cbScheduledJobFile), Texts{kJobFile});
}

TEST_F(SchedulerForm, BeginsAndEndsByItsButtons)
{
    frm.cmdStartTimer.Click();
    EXPECT_TRUE(bTimerOn());
    EXPECT_FALSE(frm.cmdStartTimer.Enabled());

    frm.cmdEndTimer.Click();
    EXPECT_FALSE(bTimerOn());
    EXPECT_TRUE(frm.cmdStartTimer.Enabled());
}

TEST_F(SchedulerForm, IsOnlyHiddenByDone)
{
    frm.SetVisible(true);
    Begin();

    frm.cmdDone.Click();

    EXPECT_FALSE(frm.Visible());
    EXPECT_TRUE(frm.bLoaded);
    EXPECT_TRUE(bTimerOn());
}

TEST_F(SchedulerForm, IsHiddenByEscapeAnywhere)
{
    frm.SetVisible(true);

    EXPECT_FALSE(frm.txtNumDays.UserPresses("F9"));
    EXPECT_TRUE(frm.Visible());
    EXPECT_TRUE(frm.txtNumDays.UserPresses("Esc"));
    EXPECT_FALSE(frm.Visible());
    EXPECT_TRUE(frm.bLoaded);
}

TEST_F(SchedulerForm, IsOnlyHiddenWhenAPersonClosesIt)
{
    frm.SetVisible(true);
    Begin();

    EXPECT_FALSE(frm.UserCloses());

    EXPECT_FALSE(frm.Visible());
    EXPECT_TRUE(frm.bLoaded);
    EXPECT_TRUE(bTimerOn());
}

TEST_F(SchedulerForm, IsUnloadedWhenTheProgramClosesIt)
{
    Begin();

    EXPECT_TRUE(frm.Unload());

    EXPECT_FALSE(frm.bLoaded);
    EXPECT_FALSE(bTimerOn());
    EXPECT_EQ(app.ini.Stored("frmScheduler", "optDaily"), "True");
}

TEST_F(SchedulerForm, LetsAPersonActOnWhatIsShownOnly)
{
    frm.txtHours.UserTypes("5");
    EXPECT_EQ(frm.txtHours.Text(), "0") << "hidden by the choice of the calendar";
    frm.optTimeBased.UserClicks();
    frm.txtHours.UserTypes("5");
    EXPECT_EQ(frm.txtHours.Text(), "5");

    frm.chkPersistRunning.UserToggles();
    EXPECT_EQ(frm.chkPersistRunning.Value(), 0);
    frm.TabStrip1.UserChooses(2);
    frm.chkPersistRunning.UserToggles();
    EXPECT_EQ(frm.chkPersistRunning.Value(), 1);
}

TEST_F(SchedulerForm, IsUnloadedByDoneWhileTheTimerStops)
{
    frm.SetVisible(true);
    Begin();
    const FocusWatcher objWatcher(frm.cmdDone, [this] { cmdDone_Click(app); });

    StopTimer(app);

    EXPECT_FALSE(frm.Visible());
    EXPECT_FALSE(frm.bLoaded);
    EXPECT_EQ(app.ini.Stored("frmScheduler", "optDaily"), "True");
}

TEST_F(SchedulerForm, StopsTheTimerWhenUnloaded)
{
    Begin();

    frmScheduler_Unload(app);
    EXPECT_FALSE(bTimerOn());
    EXPECT_FALSE(frm.bLoaded);

    app.ini.written.clear();
    frmScheduler_Unload(app);
    EXPECT_TRUE(app.ini.written.empty());
}

TEST_F(SchedulerForm, LoadsAgainAfterAnUnload)
{
    SetWeekly("2", {&frm.chkMon});
    Begin();
    StopTimer(app);
    frmScheduler_Unload(app);

    SetUpScheduler(app, app.sIniFile);

    EXPECT_TRUE(frm.optWeekly.Value());
    EXPECT_TRUE(frm.fraWeekly.Visible());
    EXPECT_FALSE(frm.fraDaily.Visible());
    EXPECT_TRUE(frm.bFirstWeeklySearch);
    EXPECT_EQ(frm.cbHours.ListCount(), 12);
}

// The scheduler's form: a job file, when to run it, and the state of the running schedule.
// Room: forms.
//
// Date-times (dt...) are days from 30 December 1899, see scheduler/modDateTime.h.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "src/controls/check_box.h"
#include "src/controls/command_button.h"
#include "src/controls/label.h"
#include "src/controls/lists/combo_box.h"
#include "src/controls/option_button.h"
#include "src/controls/tab_strip.h"
#include "src/controls/timer.h"
#include "src/forms/clsMRU.h"

struct frmScheduler : Form {
    frmScheduler() : Form("frmScheduler") {}

    TabStrip TabStrip1{*this, "TabStrip1"};

    // Set Up: the job and the kind of schedule
    Frame fraSetup{*this, "fraSetup"};
    Label lblScheduledJobFile{fraSetup, "lblScheduledJobFile"};
    ComboBox cbScheduledJobFile{fraSetup, "cbScheduledJobFile"};
    CommandButton cmdSelectScheduledJobFile{fraSetup, "cmdSelectScheduledJobFile"};
    CommandButton picScheduledJobFile{fraSetup, "picScheduledJobFile"};
    OptionGroup objKinds;
    OptionButton optTimeBased{fraSetup, "optTimeBased", objKinds};
    OptionButton optCalendarBased{fraSetup, "optCalendarBased", objKinds};

    // At a fixed interval
    Frame fraTimeBased{fraSetup, "fraTimeBased"};
    Label lblHours{fraTimeBased, "lblHours"};
    TextBox txtHours{fraTimeBased, "txtHours"};
    Label lblMinutes{fraTimeBased, "lblMinutes"};
    TextBox txtMinutes{fraTimeBased, "txtMinutes"};
    Label lblSeconds{fraTimeBased, "lblSeconds"};
    TextBox txtSeconds{fraTimeBased, "txtSeconds"};

    // By the calendar
    Frame fraCalendarBased{fraSetup, "fraCalendarBased"};
    OptionGroup objCalendarKinds;
    OptionButton optDaily{fraCalendarBased, "optDaily", objCalendarKinds};
    OptionButton optWeekly{fraCalendarBased, "optWeekly", objCalendarKinds};
    OptionButton optMonthly{fraCalendarBased, "optMonthly", objCalendarKinds};
    Label lblStartTime{fraCalendarBased, "lblStartTime"};
    ComboBox cbHours{fraCalendarBased, "cbHours", ComboStyle::ListOnly};
    ComboBox cbMinutes{fraCalendarBased, "cbMinutes", ComboStyle::ListOnly};
    ComboBox cbAmPm{fraCalendarBased, "cbAmPm", ComboStyle::ListOnly};

    Frame fraDaily{fraCalendarBased, "fraDaily"};
    OptionGroup objDailyKinds;
    OptionButton optNumDays{fraDaily, "optNumDays", objDailyKinds};
    TextBox txtNumDays{fraDaily, "txtNumDays"};
    Label lblNumDays{fraDaily, "lblNumDays"};
    OptionButton optWeekdays{fraDaily, "optWeekdays", objDailyKinds};

    Frame fraWeekly{fraCalendarBased, "fraWeekly"};
    Label lblRunEvery{fraWeekly, "lblRunEvery"};
    TextBox txtNumWeeks{fraWeekly, "txtNumWeeks"};
    Label lblNumWeeks{fraWeekly, "lblNumWeeks"};
    CheckBox chkMon{fraWeekly, "chkMon"};
    CheckBox chkTue{fraWeekly, "chkTue"};
    CheckBox chkWed{fraWeekly, "chkWed"};
    CheckBox chkThu{fraWeekly, "chkThu"};
    CheckBox chkFri{fraWeekly, "chkFri"};
    CheckBox chkSat{fraWeekly, "chkSat"};
    CheckBox chkSun{fraWeekly, "chkSun"};

    Frame fraMonthly{fraCalendarBased, "fraMonthly"};
    Label lblDayOfMonth{fraMonthly, "lblDayOfMonth"};
    TextBox txtDayOfMonth{fraMonthly, "txtDayOfMonth"};
    Label lblOfEvery{fraMonthly, "lblOfEvery"};
    TextBox txtNumMonths{fraMonthly, "txtNumMonths"};
    Label lblNumMonths{fraMonthly, "lblNumMonths"};
    Label lblMonthlyNote{fraMonthly, "lblMonthlyNote"};

    // Options
    Frame fraOptions{*this, "fraOptions"};
    CheckBox chkPersistRunning{fraOptions, "chkPersistRunning"};
    Label lblTimeBased{fraOptions, "lblTimeBased"};
    Label lblOverrun{fraOptions, "lblOverrun"};
    OptionGroup objOverrunKinds;
    OptionButton optImmediately{fraOptions, "optImmediately", objOverrunKinds};
    OptionButton optSkip{fraOptions, "optSkip", objOverrunKinds};

    CommandButton cmdStartTimer{*this, "cmdStartTimer"};
    CommandButton cmdEndTimer{*this, "cmdEndTimer"};
    CommandButton cmdDone{*this, "cmdDone"};

    Timer Timer1{*this, "Timer1"};

    /// Runs a job file; returns when the run is over.
    std::function<void(const std::string& sJobFile)> RunTheJobEvent;
    /// The distance from the target, without a sign.
    std::function<void(std::int32_t lDays, std::int32_t lHours, std::int32_t lMinutes, std::int32_t lSeconds)>
        DisplayTimeRemainingEvent;

    bool bLoaded = false;          ///< between the form's load and its unload
    bool bPersistRunning = false;  ///< start the timer with the program; belongs to the main form's settings
    clsMRU mruScheduleSource;

    // The inputs as last collected
    std::string sEditJobFile;  ///< job file of the last pick or Begin; empty before the first
    bool bDaily = false;
    bool bWeekly = false;
    bool bMonthly = false;
    bool bEveryNDays = false;
    bool bEveryWeekday = false;
    std::string sNumDays;
    std::string sNumWeeks;
    std::string sNumMonths;
    std::string sDayOfMonth;
    std::int16_t iNumDays = 0;
    std::int16_t iNumWeeks = 0;
    std::int16_t iDayOfMonth = 0;
    std::int16_t iNumMonths = 0;
    bool bMon = false;
    bool bTue = false;
    bool bWed = false;
    bool bThu = false;
    bool bFri = false;
    bool bSat = false;
    bool bSun = false;
    std::int32_t lIntervalSeconds = 0;
    double dtUserTargetTime = 0;  ///< time of day of a calendar schedule
    double dtTargetComplete = 0;  ///< its first target

    // The running schedule
    std::string sRunJobFile;
    bool bTimeBased = false;
    bool bRunImmediately = false;  ///< optImmediately as it was at Begin
    std::int32_t lRunIntervalSeconds = 0;
    double dtTimeTarget = 0;      ///< next target of a time based schedule, a time of day
    double dtCalendarTarget = 0;  ///< next target of a calendar schedule
    double dtRunTimeOfDay = 0;    ///< copy of dtUserTargetTime
    double dtLastFired = -1;      ///< target that the job was last run for; -1 for none

    // The search for the next target
    std::int16_t iTodayWeekday = 0;   ///< 1 for Sunday to 7 for Saturday
    std::int16_t iTargetWeekday = 0;  ///< the same
    bool bFirstWeeklySearch = false;  ///< from the form's load to the first weekly search
    std::string sTargetDate;          ///< date text of a monthly target

    std::int16_t intTabSetUp = 1;  ///< visible tab: 1 "Set Up", 2 "Options"
    bool bStopping = false;        ///< StopTimer is at work
};

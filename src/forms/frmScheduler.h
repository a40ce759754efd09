// The scheduler's form: a job file, when to run it, and the state of the running schedule.
// Room: forms.
//
// Date-times (dt...) are days from 30 December 1899, see scheduler/modDateTime.h.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "src/controls/controls.h"
#include "src/forms/clsMRU.h"

struct frmScheduler : Form {
    frmScheduler() : Form("frmScheduler")
    {
        for (OptionButton* pOption : {&optTimeBased, &optCalendarBased})
            pOption->SetGroup({&optTimeBased, &optCalendarBased});
        for (OptionButton* pOption : {&optDaily, &optWeekly, &optMonthly})
            pOption->SetGroup({&optDaily, &optWeekly, &optMonthly});
        for (OptionButton* pOption : {&optNumDays, &optWeekdays})
            pOption->SetGroup({&optNumDays, &optWeekdays});
        for (OptionButton* pOption : {&optImmediately, &optSkip})
            pOption->SetGroup({&optImmediately, &optSkip});
    }

    TabStrip TabStrip1{*this, "TabStrip1"};

    // Set Up: the job and the kind of schedule
    Frame fraSetup{*this, "fraSetup"};
    Label lblScheduledJobFile{*this, "lblScheduledJobFile"};
    ComboBox cbScheduledJobFile{*this, "cbScheduledJobFile"};
    CommandButton cmdSelectScheduledJobFile{*this, "cmdSelectScheduledJobFile"};
    CommandButton picScheduledJobFile{*this, "picScheduledJobFile"};
    OptionButton optTimeBased{*this, "optTimeBased"};
    OptionButton optCalendarBased{*this, "optCalendarBased"};

    // At a fixed interval
    Frame fraTimeBased{*this, "fraTimeBased"};
    Label lblHours{*this, "lblHours"};
    TextBox txtHours{*this, "txtHours"};
    Label lblMinutes{*this, "lblMinutes"};
    TextBox txtMinutes{*this, "txtMinutes"};
    Label lblSeconds{*this, "lblSeconds"};
    TextBox txtSeconds{*this, "txtSeconds"};

    // By the calendar
    Frame fraCalendarBased{*this, "fraCalendarBased"};
    OptionButton optDaily{*this, "optDaily"};
    OptionButton optWeekly{*this, "optWeekly"};
    OptionButton optMonthly{*this, "optMonthly"};
    Label lblStartTime{*this, "lblStartTime"};
    ComboBox cbHours{*this, "cbHours"};
    ComboBox cbMinutes{*this, "cbMinutes"};
    ComboBox cbAmPm{*this, "cbAmPm"};

    Frame fraDaily{*this, "fraDaily"};
    OptionButton optNumDays{*this, "optNumDays"};
    TextBox txtNumDays{*this, "txtNumDays"};
    Label lblNumDays{*this, "lblNumDays"};
    OptionButton optWeekdays{*this, "optWeekdays"};

    Frame fraWeekly{*this, "fraWeekly"};
    Label lblRunEvery{*this, "lblRunEvery"};
    TextBox txtNumWeeks{*this, "txtNumWeeks"};
    Label lblNumWeeks{*this, "lblNumWeeks"};
    CheckBox chkMon{*this, "chkMon"};
    CheckBox chkTue{*this, "chkTue"};
    CheckBox chkWed{*this, "chkWed"};
    CheckBox chkThu{*this, "chkThu"};
    CheckBox chkFri{*this, "chkFri"};
    CheckBox chkSat{*this, "chkSat"};
    CheckBox chkSun{*this, "chkSun"};

    Frame fraMonthly{*this, "fraMonthly"};
    Label lblDayOfMonth{*this, "lblDayOfMonth"};
    TextBox txtDayOfMonth{*this, "txtDayOfMonth"};
    Label lblOfEvery{*this, "lblOfEvery"};
    TextBox txtNumMonths{*this, "txtNumMonths"};
    Label lblNumMonths{*this, "lblNumMonths"};
    Label lblMonthlyNote{*this, "lblMonthlyNote"};

    // Options
    Frame fraOptions{*this, "fraOptions"};
    CheckBox chkPersistRunning{*this, "chkPersistRunning"};
    Label lblTimeBased{*this, "lblTimeBased"};
    Label lblOverrun{*this, "lblOverrun"};
    OptionButton optImmediately{*this, "optImmediately"};
    OptionButton optSkip{*this, "optSkip"};

    CommandButton cmdStartTimer{*this, "cmdStartTimer"};
    CommandButton cmdEndTimer{*this, "cmdEndTimer"};
    CommandButton cmdDone{*this, "cmdDone"};

    bool bTimerEnabled = false;  ///< the timer is running

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
    bool bFiring = false;         ///< a tick is at work

    // The search for the next target
    std::int16_t iTodayWeekday = 0;   ///< 1 for Sunday to 7 for Saturday
    std::int16_t iTargetWeekday = 0;  ///< the same
    bool bFirstWeeklySearch = false;  ///< from the form's load to the first weekly search
    std::string sTargetDate;          ///< date text of a monthly target

    std::int16_t intTabSetUp = 1;  ///< visible tab: 1 "Set Up", 2 "Options"
    bool bStopping = false;        ///< StopTimer is at work
};

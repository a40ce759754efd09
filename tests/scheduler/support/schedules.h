// A loaded scheduler with a job file to run, a clock to set and a list of the runs.
// Room: tests/scheduler/support.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "src/scheduler/modDateTime.h"
#include "src/scheduler/modSchedulerForm.h"
#include "src/scheduler/modTimer.h"
#include "tests/fakes/test_application.h"

inline double dtOf(std::int32_t lYear, std::int32_t lMonth, std::int32_t lDay, std::int32_t lHour = 0,
                   std::int32_t lMinute = 0, std::int32_t lSecond = 0)
{
    return dtJoin(dtFromDate({lYear, lMonth, lDay}), dtFromTime({lHour, lMinute, lSecond}));
}

class Schedules : public testing::Test
{
protected:
    static constexpr const char* kJobFile = "/jobs/night.vjb";

    Schedules()
    {
        app.files.AddFile(kJobFile);
        app.ini.Set("mruScheduleSource", "mruScheduleSource20", kJobFile);
        SetUpScheduler(app, app.sIniFile);
        frm.RunTheJobEvent = [this](const std::string& sJobFile) {
            aRuns.push_back(sDateTimeText(app.clock.time));
            aJobFiles.push_back(sJobFile);
            app.clock.time = dtAddSeconds(app.clock.time, lJobSeconds);
        };
        SetClock(dtOf(2027, 3, 17, 8));  // a Wednesday
    }

    void SetClock(double dtNow) { app.clock.time = dtNow; }
    double dtNow() const { return app.clock.time; }

    void SetInterval(const std::string& sHours, const std::string& sMinutes, const std::string& sSeconds)
    {
        frm.optTimeBased.SetValue(true);
        frm.txtHours.SetText(sHours);
        frm.txtMinutes.SetText(sMinutes);
        frm.txtSeconds.SetText(sSeconds);
    }
    void SetTime(const std::string& sHours, const std::string& sMinutes, const std::string& sAmPm)
    {
        frm.cbHours.SetText(sHours);
        frm.cbMinutes.SetText(sMinutes);
        frm.cbAmPm.SetText(sAmPm);
    }
    void SetDaily(const std::string& sDays)
    {
        frm.optCalendarBased.SetValue(true);
        frm.optDaily.SetValue(true);
        frm.optNumDays.SetValue(true);
        frm.txtNumDays.SetText(sDays);
    }
    void SetEveryWeekday()
    {
        frm.optCalendarBased.SetValue(true);
        frm.optDaily.SetValue(true);
        frm.optWeekdays.SetValue(true);
    }
    void SetWeekly(const std::string& sWeeks, const std::vector<CheckBox*>& aDays)
    {
        frm.optCalendarBased.SetValue(true);
        frm.optWeekly.SetValue(true);
        frm.txtNumWeeks.SetText(sWeeks);
        for (CheckBox* pDay : aDays)
            pDay->SetValue(1);
    }
    void SetMonthly(const std::string& sDay, const std::string& sMonths)
    {
        frm.optCalendarBased.SetValue(true);
        frm.optMonthly.SetValue(true);
        frm.txtDayOfMonth.SetText(sDay);
        frm.txtNumMonths.SetText(sMonths);
    }
    /// Begins and expects no message.
    void Begin()
    {
        cmdStartTimer_Click(app);
        EXPECT_TRUE(bTimerOn());
    }
    bool bTimerOn() const { return frm.Timer1.Enabled(); }
    void Tick() { frm.Timer1.Tick(); }
    /// Lets the clock run up to a time, which is included, with a tick every lStep seconds. A run takes its
    /// time.
    void RunUntil(double dtEnd, std::int64_t lStep = 1)
    {
        while (lDiffSeconds(dtNow(), dtEnd) >= lStep) {
            SetClock(dtAddSeconds(dtNow(), lStep));
            Tick();
        }
    }
    std::string sTarget() const
    {
        return sDateTimeText(frm.bTimeBased ? frm.dtTimeTarget : frm.dtCalendarTarget);
    }
    std::vector<std::string> aMessages() const
    {
        std::vector<std::string> aTexts;
        for (const ScriptedWindows::Box& objBox : app.windows.boxes)
            aTexts.push_back(objBox.text);
        return aTexts;
    }

    TestApplication app;
    frmScheduler& frm = app.frmScheduler;
    std::vector<std::string> aRuns;      ///< when each run began
    std::vector<std::string> aJobFiles;  ///< what it ran
    std::int64_t lJobSeconds = 0;        ///< how long each run takes
};

using Texts = std::vector<std::string>;

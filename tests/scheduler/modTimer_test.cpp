// Begin, End and the tick.
#include "src/scheduler/modTimer.h"

#include <algorithm>

#include "src/base/raised_error.h"
#include "src/dispatch/modDispatcher.h"
#include "tests/fakes/control_watchers.h"
#include "tests/scheduler/support/schedules.h"

namespace
{

class Ticks : public Schedules
{
};

// Records the countdown as "days hours minutes seconds".
class Countdown : public Schedules
{
protected:
    Countdown()
    {
        frm.DisplayTimeRemainingEvent = [this](std::int32_t lDays, std::int32_t lHours, std::int32_t lMinutes,
                                               std::int32_t lSeconds) {
            aShown.push_back(std::to_string(lDays) + " " + std::to_string(lHours) + " " +
                             std::to_string(lMinutes) + " " + std::to_string(lSeconds));
        };
    }
    Texts aShown;
};

}  // namespace

TEST_F(Ticks, StartWithBegin)
{
    SetDaily("1");
    SetTime("9", "00", "AM");
    EXPECT_FALSE(bTimerOn());

    cmdStartTimer_Click(app);

    EXPECT_TRUE(bTimerOn());
    EXPECT_EQ(frm.sEditJobFile, kJobFile);
    EXPECT_EQ(frm.sRunJobFile, kJobFile);
    EXPECT_FALSE(frm.bTimeBased);
    EXPECT_EQ(sTarget(), "3/17/2027 9:00:00 AM");
    EXPECT_TRUE(aRuns.empty());
}

TEST_F(Ticks, SaveTheRecentListAtBegin)
{
    SetDaily("1");
    Begin();

    EXPECT_EQ(app.ini.written, Texts{std::string("mruScheduleSource/mruScheduleSource20=") + kJobFile});
}

TEST_F(Ticks, DoNotStartWithAnUnsoundSchedule)
{
    SetDaily("abc");
    cmdStartTimer_Click(app);
    EXPECT_EQ(aMessages(), Texts{"Invalid number of days entered."});

    SetInterval("0", "0", "0");
    cmdStartTimer_Click(app);
    EXPECT_EQ(aMessages().back(), "Please enter a time interval");

    EXPECT_FALSE(bTimerOn());
    EXPECT_TRUE(frm.cmdStartTimer.Enabled());
    EXPECT_FALSE(frm.cmdEndTimer.Enabled());
    EXPECT_TRUE(app.ini.written.empty());
}

TEST_F(Ticks, DoNotStartWithoutAKindOfSchedule)
{
    frm.optCalendarBased.SetValue(false);

    cmdStartTimer_Click(app);

    EXPECT_FALSE(bTimerOn());
    EXPECT_TRUE(app.windows.boxes.empty());
}

TEST_F(Ticks, DoNotStartIfTheFirstTargetCannotBeFound)
{
    SetMonthly("31st", "1");

    EXPECT_THROW(cmdStartTimer_Click(app), clsRaisedError);

    EXPECT_FALSE(bTimerOn());
    EXPECT_TRUE(frm.cmdStartTimer.Enabled());
    EXPECT_TRUE(frm.txtDayOfMonth.Enabled());
}

TEST_F(Ticks, LockTheInputsUntilTheEnd)
{
    const std::vector<Control*> aLocked{&frm.cmdStartTimer,
                                        &frm.cmdSelectScheduledJobFile,
                                        &frm.picScheduledJobFile,
                                        &frm.txtHours,
                                        &frm.txtMinutes,
                                        &frm.txtSeconds,
                                        &frm.cbScheduledJobFile,
                                        &frm.optDaily,
                                        &frm.optWeekly,
                                        &frm.optMonthly,
                                        &frm.cbHours,
                                        &frm.cbMinutes,
                                        &frm.cbAmPm,
                                        &frm.txtDayOfMonth,
                                        &frm.txtNumMonths,
                                        &frm.txtNumWeeks,
                                        &frm.chkMon,
                                        &frm.chkTue,
                                        &frm.chkWed,
                                        &frm.chkThu,
                                        &frm.chkFri,
                                        &frm.chkSat,
                                        &frm.chkSun,
                                        &frm.txtNumDays,
                                        &frm.optNumDays,
                                        &frm.optWeekdays};
    const auto ExpectLocked = [&](bool bLocked) {
        for (const Control* pControl : frm.Controls()) {
            const bool bAmongThem = std::find(aLocked.begin(), aLocked.end(), pControl) != aLocked.end();
            const bool bEnd = pControl == &frm.cmdEndTimer || pControl == &frm.Timer1;
            EXPECT_EQ(pControl->Enabled(), bAmongThem ? !bLocked
                                           : bEnd     ? bLocked
                                                      : true)
                << pControl->sName();
        }
    };
    SetDaily("1");
    ExpectLocked(false);

    Begin();
    ExpectLocked(true);
    StopTimer(app);
    ExpectLocked(false);
}

// Intentional: the field is left enabled although "Every weekday" is chosen.
TEST_F(Ticks, LeaveTheNumberOfDaysEnabledAfterTheEnd)
{
    SetEveryWeekday();
    ASSERT_FALSE(frm.txtNumDays.Enabled());
    Begin();
    EXPECT_FALSE(frm.txtNumDays.Enabled());

    StopTimer(app);

    EXPECT_TRUE(frm.txtNumDays.Enabled());
}

TEST_F(Ticks, EndWithTheFocusOnDone)
{
    bool bStoppingThen = false;
    const FocusWatcher objWatcher(frm.cmdDone, [&] { bStoppingThen = frm.bStopping && !bTimerOn(); });
    SetDaily("1");
    SetTime("9", "00", "AM");
    Begin();

    StopTimer(app);

    EXPECT_TRUE(bStoppingThen);
    EXPECT_FALSE(frm.bStopping);
    EXPECT_FALSE(bTimerOn());
    EXPECT_EQ(sTarget(), "3/17/2027 9:00:00 AM");
    RunUntil(dtOf(2027, 3, 17, 10), 30);
    EXPECT_TRUE(aRuns.empty());
}

TEST_F(Ticks, RunTheJobOnceInItsMinute)
{
    SetDaily("1");
    SetTime("9", "00", "AM");
    Begin();

    RunUntil(dtOf(2027, 3, 17, 9, 30));

    EXPECT_EQ(aRuns, Texts{"3/17/2027 9:00:00 AM"});
    EXPECT_EQ(aJobFiles, Texts{kJobFile});
    EXPECT_EQ(sTarget(), "3/18/2027 9:00:00 AM");
}

TEST_F(Ticks, RunTheJobOfAPresentMinuteAtOnce)
{
    SetDaily("1");
    SetTime("9", "00", "AM");
    SetClock(dtOf(2027, 3, 17, 9, 0, 30));
    Begin();

    RunUntil(dtOf(2027, 3, 17, 9, 30));

    EXPECT_EQ(aRuns, Texts{"3/17/2027 9:00:31 AM"});
}

TEST_F(Ticks, TakeTheJobFileOfTheLastBegin)
{
    app.files.AddFile("/jobs/other.vjb");
    SetDaily("1");
    SetTime("9", "00", "AM");
    Begin();
    frm.cbScheduledJobFile.SetText("/jobs/other.vjb");
    frm.sEditJobFile = "/jobs/other.vjb";

    RunUntil(dtOf(2027, 3, 17, 9, 1));

    EXPECT_EQ(aJobFiles, Texts{kJobFile});
}

TEST_F(Ticks, KeepTheirKindWhenTheChoiceChangesMeanwhile)
{
    SetDaily("1");
    SetTime("9", "00", "AM");
    Begin();
    frm.optTimeBased.SetValue(true);

    RunUntil(dtOf(2027, 3, 17, 9, 1));

    EXPECT_EQ(aRuns, Texts{"3/17/2027 9:00:00 AM"});
    EXPECT_FALSE(frm.bTimeBased);
}

TEST_F(Ticks, ComeEverySecondOfAnEnabledTimer)
{
    EXPECT_EQ(frm.Timer1.Interval(), 0);
    SetDaily("1");
    Begin();

    EXPECT_EQ(frm.Timer1.Interval(), 1000);
    EXPECT_TRUE(frm.Timer1.Enabled());
}

TEST_F(Ticks, NeverRunAJobWithinItself)
{
    SetInterval("0", "0", "1");
    Begin();
    int nTicks = 0;
    app.windows.on_do_events = [&] {
        for (; nTicks < 5; ++nTicks) {
            SetClock(dtAddSeconds(dtNow(), 1));
            Tick();
        }
    };
    frm.RunTheJobEvent = [this](const std::string&) {
        aRuns.push_back(sDateTimeText(dtNow()));
        app.svc.objWindows.DoEvents();
    };

    SetClock(dtOf(2027, 3, 17, 8, 0, 1));
    Tick();

    EXPECT_EQ(aRuns, Texts{"3/17/2027 8:00:01 AM"});
    EXPECT_EQ(nTicks, 5);
    EXPECT_EQ(sTarget(), "8:00:02 AM");
}

TEST_F(Countdown, StopsWhileARunGoesOn)
{
    SetInterval("0", "0", "10");
    Begin();
    app.windows.on_do_events = [this] { RunUntil(dtOf(2027, 3, 17, 8, 0, 20)); };

    Dispatch(app, Act::Ordinary, [this] { app.svc.objWindows.DoEvents(); });
    EXPECT_TRUE(aShown.empty());
    EXPECT_TRUE(aRuns.empty());

    Tick();
    EXPECT_EQ(aShown, Texts{"0 0 0 10"});
    EXPECT_EQ(aRuns, Texts{"3/17/2027 8:00:20 AM"});
}

TEST_F(Countdown, StopsWhileAFormOrABoxIsOpen)
{
    SetInterval("0", "0", "10");
    Begin();
    app.windows.on_show_modal = [this](Form&) { RunUntil(dtOf(2027, 3, 17, 8, 0, 20)); };
    app.windows.on_box = [this] { RunUntil(dtOf(2027, 3, 17, 8, 0, 30)); };

    Dispatch(app, Act::Ordinary, [this] { app.svc.objWindows.ShowModal(frm); });
    Dispatch(app, Act::Ordinary,
             [this] { app.svc.objWindows.MsgBox("", "", BoxIcon::Information, BoxButtons::Ok); });

    EXPECT_EQ(dtNow(), dtOf(2027, 3, 17, 8, 0, 30));
    EXPECT_TRUE(aShown.empty());
    EXPECT_TRUE(aRuns.empty());
    Tick();
    EXPECT_EQ(aRuns, Texts{"3/17/2027 8:00:30 AM"});
}

TEST_F(Ticks, MoveTheTargetOnAfterARunThatRaisedAnError)
{
    frm.RunTheJobEvent = [this](const std::string&) {
        aRuns.push_back(sDateTimeText(dtNow()));
        throw clsRaisedError(kErrTypeMismatch, "Type mismatch");
    };
    SetDaily("1");
    SetTime("9", "00", "AM");
    Begin();

    RunUntil(dtOf(2027, 3, 17, 9, 5));

    EXPECT_EQ(aRuns.size(), 1U);
    EXPECT_EQ(aMessages(), Texts{"Type mismatch"});
    EXPECT_EQ(app.windows.boxes[0].title, "Error");
    EXPECT_EQ(sTarget(), "3/18/2027 9:00:00 AM");
    EXPECT_TRUE(bTimerOn());
}

// --- by the calendar

TEST_F(Ticks, RunEveryThirdDay)
{
    SetDaily("3");
    SetTime("9", "00", "AM");
    Begin();

    RunUntil(dtOf(2027, 3, 26, 10), 20);

    EXPECT_EQ(aRuns, (Texts{"3/17/2027 9:00:00 AM", "3/20/2027 9:00:00 AM", "3/23/2027 9:00:00 AM",
                            "3/26/2027 9:00:00 AM"}));
}

TEST_F(Ticks, SkipMissedDaysInStepsAndStayOnTheirGrid)
{
    SetDaily("3");
    SetTime("9", "00", "AM");
    Begin();

    SetClock(dtOf(2027, 3, 18, 10));  // a day of sleep
    Tick();
    EXPECT_EQ(sTarget(), "3/20/2027 9:00:00 AM");

    SetClock(dtOf(2027, 3, 28, 10));  // a longer one: one step a tick
    for (const char* sNext : {"3/23/2027 9:00:00 AM", "3/26/2027 9:00:00 AM", "3/29/2027 9:00:00 AM"}) {
        Tick();
        EXPECT_EQ(sTarget(), sNext);
    }
    Tick();
    EXPECT_EQ(sTarget(), "3/29/2027 9:00:00 AM");
    EXPECT_TRUE(aRuns.empty());
}

TEST_F(Ticks, MissATargetThatTheLastRunLastedOver)
{
    lJobSeconds = 25 * 3600;
    SetDaily("1");
    SetTime("9", "00", "AM");
    Begin();

    RunUntil(dtOf(2027, 3, 19, 8, 59, 59));
    EXPECT_EQ(aRuns, Texts{"3/17/2027 9:00:00 AM"});
    RunUntil(dtOf(2027, 3, 19, 9));
    EXPECT_EQ(aRuns.back(), "3/19/2027 9:00:00 AM");
}

TEST_F(Ticks, RestAtTheWeekend)
{
    SetEveryWeekday();
    SetTime("9", "00", "AM");
    SetClock(dtOf(2027, 3, 18, 8));  // a Thursday
    Begin();

    RunUntil(dtOf(2027, 3, 23, 10), 20);

    EXPECT_EQ(aRuns, (Texts{"3/18/2027 9:00:00 AM", "3/19/2027 9:00:00 AM", "3/22/2027 9:00:00 AM",
                            "3/23/2027 9:00:00 AM"}));
}

TEST_F(Ticks, MoveOnFromAWeekendWithoutRunning)
{
    SetEveryWeekday();
    SetTime("9", "00", "AM");
    SetClock(dtOf(2027, 3, 20, 8));  // a Saturday
    Begin();
    EXPECT_EQ(sTarget(), "3/20/2027 9:00:00 AM");

    RunUntil(dtOf(2027, 3, 20, 9));
    EXPECT_EQ(sTarget(), "3/21/2027 9:00:00 AM");
    RunUntil(dtOf(2027, 3, 22, 10), 20);
    EXPECT_EQ(aRuns, Texts{"3/22/2027 9:00:00 AM"});
}

TEST_F(Ticks, RunOnTheTickedDaysOfAWeek)
{
    SetWeekly("1", {&frm.chkMon, &frm.chkThu, &frm.chkSun});
    SetTime("11", "59", "PM");
    Begin();

    RunUntil(dtOf(2027, 3, 29, 12), 20);

    EXPECT_EQ(aRuns, (Texts{"3/18/2027 11:59:00 PM", "3/21/2027 11:59:00 PM", "3/22/2027 11:59:00 PM",
                            "3/25/2027 11:59:00 PM", "3/28/2027 11:59:00 PM"}));
}

// In the very second of the target, today still counts as to come, so the target stays until the next tick.
TEST_F(Ticks, RunASingleWeekdayOnceHoweverShortTheJob)
{
    SetWeekly("1", {&frm.chkWed});
    SetTime("9", "00", "AM");
    Begin();

    SetClock(dtOf(2027, 3, 17, 9));
    for (int n = 0; n < 3; ++n)
        Tick();
    EXPECT_EQ(sTarget(), "3/17/2027 9:00:00 AM");
    RunUntil(dtOf(2027, 3, 17, 9, 0, 1));
    EXPECT_EQ(sTarget(), "3/24/2027 9:00:00 AM");
    RunUntil(dtOf(2027, 3, 25, 9), 20);

    EXPECT_EQ(aRuns, (Texts{"3/17/2027 9:00:00 AM", "3/24/2027 9:00:01 AM"}));
}

TEST_F(Ticks, RunAgainAfterANewBeginWithinTheSameMinute)
{
    SetWeekly("1", {&frm.chkWed});
    SetTime("9", "00", "AM");
    Begin();
    SetClock(dtOf(2027, 3, 17, 9));
    Tick();
    StopTimer(app);

    Begin();
    Tick();

    EXPECT_EQ(aRuns.size(), 2U);
}

TEST_F(Ticks, FindTheNextDayAfterARunPastMidnight)
{
    lJobSeconds = 3600;
    SetWeekly("1", {&frm.chkMon, &frm.chkWed});
    SetTime("11", "30", "PM");
    Begin();

    RunUntil(dtOf(2027, 3, 23, 12), 20);

    EXPECT_EQ(aRuns, (Texts{"3/17/2027 11:30:00 PM", "3/22/2027 11:30:00 PM"}));
    EXPECT_EQ(sTarget(), "3/24/2027 11:30:00 PM");
}

// Intentional: a missed weekly target sleeps until its day of the month comes round, and then moves on
// without a run.
TEST_F(Ticks, SleepAfterAMissedWeeklyTarget)
{
    SetWeekly("1", {&frm.chkWed});
    SetTime("9", "00", "AM");
    Begin();

    SetClock(dtOf(2027, 3, 18));  // the 17th is over
    RunUntil(dtOf(2027, 4, 16, 23, 59), 60);
    EXPECT_EQ(sTarget(), "3/17/2027 9:00:00 AM");
    RunUntil(dtOf(2027, 4, 17, 0, 1), 60);  // a Saturday
    EXPECT_EQ(sTarget(), "4/21/2027 9:00:00 AM");
    RunUntil(dtOf(2027, 4, 21, 10), 20);

    EXPECT_EQ(aRuns, Texts{"4/21/2027 9:00:00 AM"});
}

TEST_F(Ticks, MoveOnWithinTheDayOfAMissedWeeklyTarget)
{
    SetWeekly("1", {&frm.chkWed, &frm.chkFri});
    SetTime("9", "00", "AM");
    Begin();

    SetClock(dtOf(2027, 3, 17, 9, 1));
    Tick();

    EXPECT_EQ(sTarget(), "3/19/2027 9:00:00 AM");
    EXPECT_TRUE(aRuns.empty());
}

TEST_F(Ticks, RunOnTheLastDayOfEachMonth)
{
    SetMonthly("31", "1");
    SetTime("11", "45", "PM");
    SetClock(dtOf(2027, 12, 30));
    Begin();

    RunUntil(dtOf(2028, 5, 1), 20);

    EXPECT_EQ(aRuns, (Texts{"12/31/2027 11:45:00 PM", "1/31/2028 11:45:00 PM", "2/29/2028 11:45:00 PM",
                            "3/31/2028 11:45:00 PM", "4/30/2028 11:45:00 PM"}));
}

// Intentional: a first target of earlier today is moved on without a run.
TEST_F(Ticks, MoveAPassedMonthlyTargetOnWithoutRunning)
{
    SetMonthly("17", "3");
    SetTime("9", "00", "AM");
    SetClock(dtOf(2027, 3, 17, 10));
    Begin();
    EXPECT_EQ(sTarget(), "3/17/2027 9:00:00 AM");

    Tick();

    EXPECT_EQ(sTarget(), "6/17/2027 9:00:00 AM");
    EXPECT_TRUE(aRuns.empty());
}

// Intentional, as for a week.
TEST_F(Ticks, SleepAfterAMissedMonthlyTarget)
{
    SetMonthly("17", "1");
    SetTime("9", "00", "AM");
    Begin();

    SetClock(dtOf(2027, 3, 18));
    RunUntil(dtOf(2027, 4, 16, 23, 59), 60);
    EXPECT_EQ(sTarget(), "3/17/2027 9:00:00 AM");
    RunUntil(dtOf(2027, 4, 17, 0, 1), 60);
    EXPECT_EQ(sTarget(), "4/17/2027 9:00:00 AM");
    RunUntil(dtOf(2027, 4, 17, 10), 20);

    EXPECT_EQ(aRuns, Texts{"4/17/2027 9:00:00 AM"});
}

TEST_F(Ticks, TakeABlankOrTinyCountForOne)
{
    for (const char* sCount : {"", "0.4"}) {
        aRuns.clear();
        SetClock(dtOf(2027, 3, 17, 8));
        SetDaily(sCount);
        SetTime("9", "00", "AM");
        Begin();
        RunUntil(dtOf(2027, 3, 18, 10), 20);
        EXPECT_EQ(aRuns, (Texts{"3/17/2027 9:00:00 AM", "3/18/2027 9:00:00 AM"})) << sCount;
        StopTimer(app);

        aRuns.clear();
        SetClock(dtOf(2027, 3, 17, 8));
        SetWeekly(sCount, {&frm.chkWed});
        Begin();
        RunUntil(dtOf(2027, 3, 24, 10), 20);
        EXPECT_EQ(aRuns, (Texts{"3/17/2027 9:00:00 AM", "3/24/2027 9:00:00 AM"})) << sCount;
        StopTimer(app);
    }
}

// --- at an interval

TEST_F(Ticks, RunAtEachInterval)
{
    SetInterval("0", "20", "0");
    Begin();

    RunUntil(dtOf(2027, 3, 17, 9));

    EXPECT_EQ(aRuns, (Texts{"3/17/2027 8:20:00 AM", "3/17/2027 8:40:00 AM", "3/17/2027 9:00:00 AM"}));
}

TEST_F(Ticks, KeepTheGridWhenRunsAreSkipped)
{
    frm.optSkip.SetValue(true);
    lJobSeconds = 150;
    SetInterval("0", "1", "0");
    Begin();

    RunUntil(dtOf(2027, 3, 17, 8, 10));

    EXPECT_EQ(aRuns, (Texts{"3/17/2027 8:01:00 AM", "3/17/2027 8:04:00 AM", "3/17/2027 8:07:00 AM",
                            "3/17/2027 8:10:00 AM"}));
}

TEST_F(Ticks, RunContinuouslyUntilTheTargetsCatchUp)
{
    lJobSeconds = 150;
    SetInterval("0", "1", "0");
    Begin();
    RunUntil(dtOf(2027, 3, 17, 8, 9));
    EXPECT_EQ(aRuns, (Texts{"3/17/2027 8:01:00 AM", "3/17/2027 8:03:31 AM", "3/17/2027 8:06:02 AM",
                            "3/17/2027 8:08:33 AM"}));

    lJobSeconds = 0;  // from now on the job is quick: the targets from 8:05 on are made up, one a tick
    aRuns.clear();
    RunUntil(dtOf(2027, 3, 17, 8, 13));
    EXPECT_EQ(aRuns, (Texts{"3/17/2027 8:11:04 AM", "3/17/2027 8:11:05 AM", "3/17/2027 8:11:06 AM",
                            "3/17/2027 8:11:07 AM", "3/17/2027 8:11:08 AM", "3/17/2027 8:11:09 AM",
                            "3/17/2027 8:11:10 AM", "3/17/2027 8:12:00 AM", "3/17/2027 8:13:00 AM"}));
}

TEST_F(Ticks, WaitForATargetInTheFirstHourAfterMidnight)
{
    SetInterval("0", "15", "0");
    SetClock(dtOf(2027, 3, 17, 23, 55));
    Begin();

    RunUntil(dtOf(2027, 3, 18, 0, 30));

    EXPECT_EQ(aRuns, (Texts{"3/18/2027 12:10:00 AM", "3/18/2027 12:25:00 AM"}));
}

TEST_F(Countdown, BeforeMidnightIsThatOfThePresentPlusTheInterval)
{
    SetInterval("0", "15", "0");
    SetClock(dtOf(2027, 3, 17, 23, 55));
    Begin();

    SetClock(dtOf(2027, 3, 17, 23, 55, 1));
    Tick();
    SetClock(dtOf(2027, 3, 18, 0, 0, 0));
    Tick();

    EXPECT_EQ(aShown, (Texts{"0 23 45 1", "0 0 10 1", "0 0 10 0"}));
}

// Intentional: the wait for midnight covers only its first hour.
TEST_F(Ticks, RunATargetCarriedToOneInTheMorningAtOnce)
{
    SetInterval("2", "0", "0");
    SetClock(dtOf(2027, 3, 17, 23, 30));
    Begin();
    EXPECT_EQ(sTarget(), "1:30:00 AM");

    SetClock(dtOf(2027, 3, 17, 23, 30, 1));
    Tick();

    EXPECT_EQ(aRuns, Texts{"3/17/2027 11:30:01 PM"});
    EXPECT_EQ(sTarget(), "3:30:00 AM");
}

TEST_F(Ticks, WaitForATargetAtTheEndOfTheFirstHour)
{
    SetInterval("1", "0", "0");
    SetClock(dtOf(2027, 3, 17, 23, 59, 59));
    Begin();
    EXPECT_EQ(sTarget(), "12:59:59 AM");
    Tick();
    EXPECT_TRUE(aRuns.empty());

    StopTimer(app);
    SetInterval("1", "0", "1");
    Begin();
    EXPECT_EQ(sTarget(), "1:00:00 AM");
    Tick();
    EXPECT_EQ(aRuns.size(), 1U);
}

// Intentional: midnight itself isn't after midnight.
TEST_F(Ticks, RunATargetOfExactlyMidnightAtOnce)
{
    SetInterval("0", "15", "0");
    SetClock(dtOf(2027, 3, 17, 23, 45));
    Begin();
    EXPECT_EQ(sTarget(), "12:00:00 AM");

    SetClock(dtOf(2027, 3, 17, 23, 45, 1));
    Tick();

    EXPECT_EQ(aRuns, Texts{"3/17/2027 11:45:01 PM"});
    EXPECT_EQ(sTarget(), "12:15:00 AM");
    RunUntil(dtOf(2027, 3, 18, 0, 20));
    EXPECT_EQ(aRuns.back(), "3/18/2027 12:15:00 AM");
    EXPECT_EQ(aRuns.size(), 2U);
}

// Intentional: a target that was skipped past midnight is beyond any time of day.
TEST_F(Countdown, GoesOnAfterATargetWasSkippedPastMidnight)
{
    frm.optSkip.SetValue(true);
    SetInterval("2", "0", "0");
    SetClock(dtOf(2027, 3, 17, 23, 30));
    Begin();
    SetClock(dtOf(2027, 3, 17, 23, 30, 1));
    Tick();
    ASSERT_EQ(aRuns.size(), 1U);
    EXPECT_EQ(frm.dtTimeTarget, 1 + dtFromTime({1, 30, 0}));
    aShown.clear();

    RunUntil(dtOf(2027, 3, 20), 600);

    EXPECT_EQ(aRuns.size(), 1U);
    EXPECT_EQ(aShown.size(), 290U);
    EXPECT_EQ(aShown.back(), "0 1 39 59");
}

// A whole day's interval comes back to the same time of day, which by then has passed.
TEST_F(Ticks, RunOnceADayAtAnIntervalOfADay)
{
    SetInterval("24", "0", "0");
    SetClock(dtOf(2027, 3, 17, 10));
    Begin();

    RunUntil(dtOf(2027, 3, 19, 12), 5);

    EXPECT_EQ(aRuns, (Texts{"3/17/2027 10:00:05 AM", "3/18/2027 10:00:00 AM", "3/19/2027 10:00:00 AM"}));
}

// A target in the next day is skipped forward to the one that was just run.
TEST_F(Ticks, RunTheLastTargetBeforeMidnightOnceWhenSkipping)
{
    frm.optSkip.SetValue(true);
    SetInterval("0", "30", "0");
    SetClock(dtOf(2027, 3, 17, 23, 10));
    Begin();

    SetClock(dtOf(2027, 3, 17, 23, 40));
    Tick();
    EXPECT_EQ(sTarget(), "11:40:00 PM");
    RunUntil(dtOf(2027, 3, 18, 1));

    EXPECT_EQ(aRuns, Texts{"3/17/2027 11:40:00 PM"});
    EXPECT_EQ(frm.dtTimeTarget, 1 + dtFromTime({0, 10, 0}));
}

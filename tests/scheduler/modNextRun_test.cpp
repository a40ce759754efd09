// First, weekly and monthly targets, skipped runs, and the distance from a target.
#include "src/scheduler/modNextRun.h"

#include "src/base/raised_error.h"
#include "src/scheduler/modSchedule.h"
#include "tests/scheduler/support/schedules.h"

namespace
{

class NextRun : public Schedules
{
protected:
    // The first target of the calendar schedule as entered, at a time.
    std::string sFirstTarget(double dtAt)
    {
        SetClock(dtAt);
        CollectDataFromFrmScheduler(app);
        GetCalendarTimerDataFromGUI(app);
        EXPECT_EQ(ValidateSchedule(app), 0);
        FindFirstCalendarTarget(app);
        return sDateTimeText(frm.dtTargetComplete);
    }
    std::string sNextWeekly(double dtAt)
    {
        SetClock(dtAt);
        return sDateTimeText(WeeklyFindNextTargetDate(app));
    }
    std::string sBuilt(const std::string& sDay)
    {
        return BuildValidDateText(app, "2", sDay, "2027", "9:00:00 AM");
    }
};

}  // namespace

TEST_F(NextRun, OfAnIntervalIsTimeOfDayOnly)
{
    frm.lIntervalSeconds = 900;
    SetClock(dtOf(2027, 3, 17, 8));
    EXPECT_EQ(dtFirstTimeTarget(app), dtFromTime({8, 15, 0}));
    SetClock(dtOf(2027, 3, 17, 23, 55));
    EXPECT_EQ(dtFirstTimeTarget(app), dtFromTime({0, 10, 0}));
    frm.lIntervalSeconds = 99000;
    EXPECT_EQ(dtFirstTimeTarget(app), dtFromTime({3, 25, 0}));
}

TEST_F(NextRun, OfADayIsTodayUntilItsMinuteIsOver)
{
    SetDaily("1");
    SetTime("9", "00", "AM");

    EXPECT_EQ(sFirstTarget(dtOf(2027, 3, 17, 0)), "3/17/2027 9:00:00 AM");
    EXPECT_EQ(sFirstTarget(dtOf(2027, 3, 17, 9, 0, 30)), "3/17/2027 9:00:00 AM");
    EXPECT_EQ(sFirstTarget(dtOf(2027, 3, 17, 9, 0, 59)), "3/17/2027 9:00:00 AM");
    EXPECT_EQ(sFirstTarget(dtOf(2027, 3, 17, 9, 1, 0)), "3/18/2027 9:00:00 AM");
    EXPECT_EQ(sFirstTarget(dtOf(2027, 3, 17, 12, 0, 0)), "3/18/2027 9:00:00 AM");
    EXPECT_EQ(sFirstTarget(dtOf(2027, 3, 17, 23, 59, 59)), "3/18/2027 9:00:00 AM");
    EXPECT_EQ(frm.dtUserTargetTime, dtFromTime({9, 0, 0}));
}

TEST_F(NextRun, OfAnAfternoonIsTodayFromMorningOn)
{
    SetDaily("1");
    SetTime("2", "30", "PM");

    EXPECT_EQ(sFirstTarget(dtOf(2027, 3, 17, 0)), "3/17/2027 2:30:00 PM");
    EXPECT_EQ(sFirstTarget(dtOf(2027, 3, 17, 11, 59, 59)), "3/17/2027 2:30:00 PM");
    EXPECT_EQ(sFirstTarget(dtOf(2027, 3, 17, 14, 30, 59)), "3/17/2027 2:30:00 PM");
    EXPECT_EQ(sFirstTarget(dtOf(2027, 3, 17, 14, 31, 0)), "3/18/2027 2:30:00 PM");
}

TEST_F(NextRun, CountsTwelveAsTheFirstHourOfItsHalf)
{
    SetDaily("1");
    SetTime("12", "00", "AM");
    EXPECT_EQ(sFirstTarget(dtOf(2027, 3, 17, 0, 0, 59)), "3/17/2027 12:00:00 AM");
    EXPECT_EQ(sFirstTarget(dtOf(2027, 3, 17, 0, 1, 0)), "3/18/2027 12:00:00 AM");
    SetTime("12", "00", "PM");
    EXPECT_EQ(sFirstTarget(dtOf(2027, 3, 17, 12, 0, 59)), "3/17/2027 12:00:00 PM");
    EXPECT_EQ(sFirstTarget(dtOf(2027, 3, 17, 12, 1, 0)), "3/18/2027 12:00:00 PM");
}

// Intentional: neither the number of days nor the weekend plays a part in the first target.
TEST_F(NextRun, StartsDailySchedulesAtOnce)
{
    SetTime("9", "00", "AM");
    SetDaily("30");
    EXPECT_EQ(sFirstTarget(dtOf(2027, 3, 17, 8)), "3/17/2027 9:00:00 AM");
    SetEveryWeekday();
    EXPECT_EQ(sFirstTarget(dtOf(2027, 3, 20, 8)), "3/20/2027 9:00:00 AM");   // a Saturday
    EXPECT_EQ(sFirstTarget(dtOf(2027, 3, 20, 10)), "3/21/2027 9:00:00 AM");  // so to Sunday
}

TEST_F(NextRun, CrossesTheEndsOfMonthsAndYears)
{
    SetDaily("1");
    SetTime("9", "00", "AM");

    EXPECT_EQ(sFirstTarget(dtOf(2027, 2, 28, 10)), "3/1/2027 9:00:00 AM");
    EXPECT_EQ(sFirstTarget(dtOf(2028, 2, 28, 10)), "2/29/2028 9:00:00 AM");
    EXPECT_EQ(sFirstTarget(dtOf(2027, 12, 31, 10)), "1/1/2028 9:00:00 AM");
}

TEST_F(NextRun, OfAWeekIsTheNextTickedDay)
{
    SetWeekly("1", {&frm.chkMon, &frm.chkThu});
    SetTime("9", "00", "AM");

    EXPECT_EQ(sFirstTarget(dtOf(2027, 3, 17, 8)), "3/18/2027 9:00:00 AM");   // Wednesday to Thursday
    EXPECT_EQ(sFirstTarget(dtOf(2027, 3, 18, 8)), "3/18/2027 9:00:00 AM");   // Thursday, before the time
    EXPECT_EQ(sFirstTarget(dtOf(2027, 3, 18, 10)), "3/22/2027 9:00:00 AM");  // Thursday, after it
    EXPECT_EQ(sFirstTarget(dtOf(2027, 3, 21, 10)), "3/22/2027 9:00:00 AM");  // Sunday to Monday
}

// A weekly schedule is stricter than a daily one: within the target's own minute, its time has passed.
TEST_F(NextRun, OfAWeekGoesOnWithinTheMinuteOfItsTime)
{
    SetWeekly("1", {&frm.chkWed, &frm.chkFri});
    SetTime("9", "00", "AM");

    EXPECT_EQ(sFirstTarget(dtOf(2027, 3, 17, 8, 59, 59)), "3/17/2027 9:00:00 AM");
    EXPECT_EQ(sFirstTarget(dtOf(2027, 3, 17, 9, 0, 30)), "3/19/2027 9:00:00 AM");
}

TEST_F(NextRun, OfAWeekIsTodayBeforeTheTime)
{
    SetWeekly("1", {&frm.chkSun});
    SetTime("9", "00", "AM");

    EXPECT_EQ(sFirstTarget(dtOf(2027, 3, 21, 8)), "3/21/2027 9:00:00 AM");
    EXPECT_EQ(sFirstTarget(dtOf(2027, 3, 21, 9)), "3/21/2027 9:00:00 AM");
}

// Intentional: a single day whose time has passed waits out the whole interval, at the first Begin too.
TEST_F(NextRun, OfASingleWeekdayWaitsTheWholeInterval)
{
    SetWeekly("3", {&frm.chkWed});
    SetTime("9", "00", "AM");

    EXPECT_EQ(sFirstTarget(dtOf(2027, 3, 17, 9, 0, 1)), "4/7/2027 9:00:00 AM");
}

TEST_F(NextRun, OfOtherWeeksSkipsThemFromTheSecondSearchOn)
{
    SetWeekly("2", {&frm.chkMon, &frm.chkFri});
    SetTime("9", "00", "AM");
    // Begun on a Tuesday: Friday of this week, since the number of weeks has no effect within a week.
    EXPECT_EQ(sFirstTarget(dtOf(2027, 3, 16, 8)), "3/19/2027 9:00:00 AM");
    EXPECT_FALSE(frm.bFirstWeeklySearch);

    // From Friday: 7 days and then 3, to the Monday of the week after next.
    EXPECT_EQ(sNextWeekly(dtOf(2027, 3, 19, 9, 0, 1)), "3/29/2027 9:00:00 AM");
    EXPECT_EQ(sNextWeekly(dtOf(2027, 3, 29, 9, 0, 1)), "4/2/2027 9:00:00 AM");
}

// Intentional: only the first search since the form was loaded stays within the next week, and not the first
// of each Begin.
TEST_F(NextRun, OfOtherWeeksSkipsNoneInTheFirstSearchSinceLoading)
{
    SetWeekly("3", {&frm.chkMon});
    SetTime("9", "00", "AM");

    EXPECT_EQ(sFirstTarget(dtOf(2027, 3, 17, 8)), "3/22/2027 9:00:00 AM");
    EXPECT_EQ(sFirstTarget(dtOf(2027, 3, 17, 8)), "4/5/2027 9:00:00 AM");
}

TEST_F(NextRun, SearchesWeekdaysFromTomorrowAndEndsWithToday)
{
    frm.dtTargetComplete = dtOf(2027, 3, 17, 9);
    const double dtLater = dtOf(2027, 3, 17, 10);  // Wednesday
    const std::pair<bool*, int> aOrder[] = {{&frm.bThu, 5}, {&frm.bFri, 6}, {&frm.bSat, 7}, {&frm.bSun, 1},
                                            {&frm.bMon, 2}, {&frm.bTue, 3}, {&frm.bWed, 4}};
    for (const auto& [pDay, nNumber] : aOrder)
        *pDay = true;
    for (const auto& [pDay, nNumber] : aOrder) {
        FindNextWeekDay(frm, dtLater);
        EXPECT_EQ(frm.iTargetWeekday, nNumber);
        *pDay = false;
    }

    FindNextWeekDay(frm, dtLater);
    EXPECT_EQ(frm.iTodayWeekday, 4);
    EXPECT_EQ(frm.iTargetWeekday, 4) << "stays as it is";
}

TEST_F(NextRun, IgnoresTheSecondsOfTheTargetInTheWeekdaySearch)
{
    frm.bWed = frm.bFri = true;
    frm.dtTargetComplete = dtOf(2027, 3, 17, 9, 0, 45);

    FindNextWeekDay(frm, dtOf(2027, 3, 17, 8, 59, 59));
    EXPECT_EQ(frm.iTargetWeekday, 4);
    FindNextWeekDay(frm, dtOf(2027, 3, 17, 9, 0, 30));
    EXPECT_EQ(frm.iTargetWeekday, 6);
}

TEST_F(NextRun, KnowsWhetherTodayIsTicked)
{
    frm.bWed = true;
    frm.iTargetWeekday = 2;

    EXPECT_FALSE(bTodayIsScheduledDay(frm, dtOf(2027, 3, 16)));
    EXPECT_EQ(frm.iTodayWeekday, 3);
    EXPECT_EQ(frm.iTargetWeekday, 2);
    EXPECT_TRUE(bTodayIsScheduledDay(frm, dtOf(2027, 3, 17)));
    EXPECT_EQ(frm.iTargetWeekday, 4);
}

TEST_F(NextRun, OfAMonthIsThisMonthOrTheNext)
{
    SetMonthly("15", "3");
    SetTime("9", "00", "AM");

    EXPECT_EQ(sFirstTarget(dtOf(2027, 3, 1, 8)), "3/15/2027 9:00:00 AM");
    EXPECT_EQ(sFirstTarget(dtOf(2027, 3, 16, 8)), "4/15/2027 9:00:00 AM");
    EXPECT_EQ(sFirstTarget(dtOf(2027, 12, 16, 8)), "1/15/2028 9:00:00 AM");
    EXPECT_TRUE(app.windows.boxes.empty());
    EXPECT_EQ(frm.sTargetDate, "12/15/2027");
}

// Intentional: the tick moves it on without running the job.
TEST_F(NextRun, OfAMonthMayLieInThePastOfToday)
{
    SetMonthly("15", "1");
    SetTime("9", "00", "AM");

    EXPECT_EQ(sFirstTarget(dtOf(2027, 3, 15, 10)), "3/15/2027 9:00:00 AM");
}

TEST_F(NextRun, OfTheThirtyFirstIsTheLastDayOfAShortMonth)
{
    SetMonthly("31", "1");
    SetTime("9", "00", "AM");

    EXPECT_EQ(sFirstTarget(dtOf(2027, 2, 3, 8)), "2/28/2027 9:00:00 AM");
    EXPECT_EQ(frm.sTargetDate, "2/28/2027 9:00:00 AM");
    EXPECT_EQ(sFirstTarget(dtOf(2028, 2, 3, 8)), "2/29/2028 9:00:00 AM");
    EXPECT_EQ(sFirstTarget(dtOf(2027, 4, 30, 8)), "4/30/2027 9:00:00 AM");
    EXPECT_EQ(sFirstTarget(dtOf(2027, 1, 31, 8)), "1/31/2027 9:00:00 AM");
}

TEST_F(NextRun, OfTheThirtiethBegunOnThirtyFirstIsTheEndOfFebruary)
{
    SetMonthly("30", "1");
    SetTime("9", "00", "AM");

    EXPECT_EQ(sFirstTarget(dtOf(2027, 1, 31, 8)), "2/28/2027 9:00:00 AM");
    EXPECT_EQ(sFirstTarget(dtOf(2028, 1, 31, 8)), "2/29/2028 9:00:00 AM");
}

TEST_F(NextRun, TellsWhatTheLastDaysMeanAtEveryBegin)
{
    for (const char* sDay : {"28", "29", "30", "31", "29", "1"}) {
        SetMonthly(sDay, "1");
        sFirstTarget(dtOf(2027, 3, 1, 8));
    }

    EXPECT_EQ(
        aMessages(),
        (Texts{"If a month has fewer than 29 days then the job will run on the last day of the month",
               "If a month has fewer than 30 days then the job will run on the last day of the month",
               "If a month has fewer than 31 days then the job will run on the last day of the month",
               "If a month has fewer than 29 days then the job will run on the last day of the month"}));
    EXPECT_EQ(app.windows.boxes[0].title, "Information");
}

TEST_F(NextRun, TranslatesTheNoteAsAWhole)
{
    app.objTranslator.dictTranslations
        ["If a month has fewer than 31 days then the job will run on the last day of "
         "the month"] = "Monatsende";
    SetMonthly("31", "1");
    sFirstTarget(dtOf(2027, 3, 1, 8));

    EXPECT_EQ(aMessages(), Texts{"Monatsende"});
}

TEST_F(NextRun, AfterAShortMonthReturnsToTheDayEntered)
{
    SetTime("9", "30", "PM");
    SetMonthly("31", "1");
    frm.dtCalendarTarget = dtOf(2027, 1, 31, 21, 30);
    frm.dtRunTimeOfDay = dtFromTime({21, 30, 0});
    frm.iNumMonths = 1;
    Texts aTargets;
    for (int n = 0; n < 14; ++n)
        aTargets.push_back(sDateTimeText(MonthlyFindNextTargetDate(app, "31")));

    EXPECT_EQ(aTargets, (Texts{"2/28/2027 9:30:00 PM", "3/31/2027 9:30:00 PM", "4/30/2027 9:30:00 PM",
                               "5/31/2027 9:30:00 PM", "6/30/2027 9:30:00 PM", "7/31/2027 9:30:00 PM",
                               "8/31/2027 9:30:00 PM", "9/30/2027 9:30:00 PM", "10/31/2027 9:30:00 PM",
                               "11/30/2027 9:30:00 PM", "12/31/2027 9:30:00 PM", "1/31/2028 9:30:00 PM",
                               "2/29/2028 9:30:00 PM", "3/31/2028 9:30:00 PM"}));
    EXPECT_EQ(sDateTimeText(frm.dtCalendarTarget), "3/31/2028 9:30:00 PM");
}

TEST_F(NextRun, OfMonthsCountsTheMonthsEntered)
{
    frm.dtCalendarTarget = dtOf(2027, 11, 30, 9);
    frm.dtRunTimeOfDay = dtFromTime({9, 0, 0});
    frm.iNumMonths = 3;

    EXPECT_EQ(sDateTimeText(MonthlyFindNextTargetDate(app, "30")), "2/29/2028 9:00:00 AM");
    EXPECT_EQ(sDateTimeText(MonthlyFindNextTargetDate(app, "30")), "5/30/2028 9:00:00 AM");
    frm.iNumMonths = 12;
    EXPECT_EQ(sDateTimeText(MonthlyFindNextTargetDate(app, "30")), "5/30/2029 9:00:00 AM");
}

TEST_F(NextRun, FindsAMonthsEndByAskingTheParser)
{
    EXPECT_EQ(sBuilt("31"), "2/28/2027 9:00:00 AM");
    EXPECT_EQ(sBuilt("15"), "2/15/2027 9:00:00 AM");
    EXPECT_EQ(sBuilt("15.6"), "2/15/2027 9:00:00 AM");  // 16 isn't tried as it stands in no date text
    EXPECT_EQ(BuildValidDateText(app, "2", "31", "2028", "9:00:00 AM"), "2/29/2028 9:00:00 AM");
    EXPECT_EQ(BuildValidDateText(app, "4", "31", "2027", "9:00:00 AM"), "4/30/2027 9:00:00 AM");
}

TEST_F(NextRun, RaisesAnErrorWhereNoDayWillDo)
{
    EXPECT_THROW(sBuilt("31st"), clsRaisedError);
    EXPECT_THROW(sBuilt("1.4"), clsRaisedError);
    EXPECT_THROW(sBuilt("3,100,000"), clsRaisedError);
    EXPECT_THROW(BuildValidDateText(app, "13", "31", "2027", ""), clsRaisedError);
}

TEST_F(NextRun, SkipsMissedRunsByWholeIntervals)
{
    frm.lRunIntervalSeconds = 60;
    SetClock(dtOf(2027, 3, 17, 8, 2, 30));
    double dtTarget = dtFromTime({8, 0, 0});

    EXPECT_EQ(SkipMissedRuns(app, dtTarget), dtFromTime({8, 3, 0}));
    EXPECT_EQ(dtTarget, dtFromTime({8, 3, 0}));
}

TEST_F(NextRun, SkipsNoTargetOfThisVerySecond)
{
    frm.lRunIntervalSeconds = 60;
    SetClock(dtOf(2027, 3, 17, 8, 0, 0));
    double dtTarget = dtFromTime({8, 0, 0});

    EXPECT_EQ(SkipMissedRuns(app, dtTarget), dtFromTime({8, 0, 0}));
}

TEST_F(NextRun, LeavesAMissedRunIfTheJobRunsContinuously)
{
    frm.bRunImmediately = true;
    frm.lRunIntervalSeconds = 60;
    SetClock(dtOf(2027, 3, 17, 8, 2, 30));
    double dtTarget = dtFromTime({8, 0, 0});

    EXPECT_EQ(SkipMissedRuns(app, dtTarget), dtFromTime({8, 0, 0}));
}

// Intentional, unlike at Begin: the sum isn't reduced to a time of day.
TEST_F(NextRun, KeepsTheDayOfASkippedTargetPastMidnight)
{
    frm.lRunIntervalSeconds = 7200;
    SetClock(dtOf(2027, 3, 17, 23, 30, 1));
    double dtTarget = dtFromTime({1, 30, 0});

    EXPECT_EQ(SkipMissedRuns(app, dtTarget), 1 + dtFromTime({1, 30, 0}));
}

TEST_F(NextRun, IsShownAsDaysHoursMinutesAndSeconds)
{
    Texts aShown;
    frm.DisplayTimeRemainingEvent = [&](std::int32_t lDays, std::int32_t lHours, std::int32_t lMinutes,
                                        std::int32_t lSeconds) {
        aShown.push_back(std::to_string(lDays) + " " + std::to_string(lHours) + " " +
                         std::to_string(lMinutes) + " " + std::to_string(lSeconds));
    };

    DisplayTimeRemaining(app, dtOf(2027, 3, 17), dtOf(2027, 3, 15, 20, 57, 56));
    DisplayTimeRemaining(app, dtOf(2027, 3, 15, 20, 57, 56), dtOf(2027, 3, 17));  // the sign is lost
    DisplayTimeRemaining(app, dtOf(2027, 3, 17), dtOf(2027, 3, 17));
    DisplayTimeRemaining(app, dtOf(2027, 3, 17), dtOf(2027, 3, 18));
    DisplayTimeRemaining(app, dtFromTime({0, 10, 0}), 0);

    EXPECT_EQ(aShown, (Texts{"1 3 2 4", "1 3 2 4", "0 0 0 0", "1 0 0 0", "0 0 10 0"}));
}

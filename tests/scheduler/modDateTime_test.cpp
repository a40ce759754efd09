// Dates and times of day as floating point days.
#include "src/scheduler/modDateTime.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "src/base/raised_error.h"

static double dtOf(std::int32_t lYear, std::int32_t lMonth, std::int32_t lDay, std::int32_t lHour = 0,
                   std::int32_t lMinute = 0, std::int32_t lSecond = 0)
{
    return dtJoin(dtFromDate({lYear, lMonth, lDay}), dtFromTime({lHour, lMinute, lSecond}));
}

TEST(DateTime, CountsDaysFromThirtiethOfDecember1899)
{
    EXPECT_EQ(dtFromDate({1899, 12, 30}), 0);
    EXPECT_EQ(dtFromDate({1900, 1, 1}), 2);
    EXPECT_EQ(dtFromDate({1970, 1, 1}), 25569);
    EXPECT_EQ(dtFromDate({2009, 7, 6}), 40000);
    EXPECT_EQ(dtFromTime({18, 0, 0}), 0.75);
}

TEST(DateTime, RefusesDaysThatTheCalendarLacks)
{
    EXPECT_EQ(objDateOf(dtFromDate({2028, 2, 29})), (CalendarDate{2028, 2, 29}));
    EXPECT_THROW((void)dtFromDate({2027, 2, 29}), clsRaisedError);
    EXPECT_THROW((void)dtFromDate({2100, 2, 29}), clsRaisedError);
    EXPECT_THROW((void)dtFromDate({2027, 4, 31}), clsRaisedError);
    EXPECT_THROW((void)dtFromDate({2027, 13, 1}), clsRaisedError);
    EXPECT_THROW((void)dtFromDate({2027, 257, 1}), clsRaisedError);
    EXPECT_THROW((void)dtFromDate({2027, 1, 0}), clsRaisedError);
}

TEST(DateTime, SplitsIntoDateAndTimeOfDay)
{
    const double dtValue = dtOf(2027, 3, 14, 23, 59, 59);

    EXPECT_EQ(objDateOf(dtValue), (CalendarDate{2027, 3, 14}));
    EXPECT_EQ(objTimeOf(dtValue), (ClockTime{23, 59, 59}));
    EXPECT_EQ(dtDatePart(dtValue), dtFromDate({2027, 3, 14}));
    EXPECT_EQ(dtTimePart(dtValue), dtFromTime({23, 59, 59}));
}

// A second is no exact binary fraction of a day: a sum that came out a hair below midnight must not be
// yesterday.
TEST(DateTime, RoundsToTheNearestSecondBeforeSplitting)
{
    double dtValue = 40000;
    for (int n = 0; n < 86400; ++n)
        dtValue += 1.0 / 86400;

    EXPECT_EQ(objDateOf(dtValue), (CalendarDate{2009, 7, 7}));
    EXPECT_EQ(objTimeOf(dtValue), (ClockTime{0, 0, 0}));
    EXPECT_EQ(dtTimePart(dtValue), 0);
}

TEST(DiffMinutes, CountsMinuteBoundariesPassed)
{
    const double dtTarget = dtOf(2027, 3, 14, 9);

    EXPECT_EQ(lDiffMinutes(dtTarget, dtOf(2027, 3, 14, 8, 59, 59)), -1);
    EXPECT_EQ(lDiffMinutes(dtTarget, dtOf(2027, 3, 14, 8, 59, 0)), -1);
    EXPECT_EQ(lDiffMinutes(dtTarget, dtOf(2027, 3, 14, 8, 58, 59)), -2);
    EXPECT_EQ(lDiffMinutes(dtTarget, dtOf(2027, 3, 14, 9, 0, 0)), 0);
    EXPECT_EQ(lDiffMinutes(dtTarget, dtOf(2027, 3, 14, 9, 0, 59)), 0);
    EXPECT_EQ(lDiffMinutes(dtTarget, dtOf(2027, 3, 14, 9, 1, 0)), 1);
    EXPECT_EQ(lDiffMinutes(dtTarget, dtOf(2027, 3, 15, 9, 0, 0)), 1440);
}

TEST(DiffSeconds, SubtractsTheFirstFromTheSecond)
{
    EXPECT_EQ(lDiffSeconds(dtFromTime({9, 0, 0}), dtFromTime({9, 0, 1})), 1);
    EXPECT_EQ(lDiffSeconds(dtFromTime({9, 0, 1}), dtFromTime({9, 0, 0})), -1);
    EXPECT_EQ(lDiffSeconds(dtOf(2027, 1, 1), dtOf(2028, 1, 1)), 365 * 86400);
}

TEST(DateTime, AddsDaysMinutesAndSeconds)
{
    EXPECT_EQ(dtAddDays(dtOf(2028, 2, 28, 9), 1), dtOf(2028, 2, 29, 9));
    EXPECT_EQ(dtAddDays(dtOf(2027, 12, 31, 9), 3), dtOf(2028, 1, 3, 9));
    EXPECT_EQ(dtAddMinutes(dtOf(2027, 2, 28, 23, 30), 60), dtOf(2027, 3, 1, 0, 30));
    EXPECT_EQ(dtAddSeconds(dtOf(2027, 12, 31, 23, 59, 59), 1), dtOf(2028, 1, 1));
    EXPECT_EQ(dtAddSeconds(dtOf(2028, 1, 1), -1), dtOf(2027, 12, 31, 23, 59, 59));
}

TEST(AddMonths, TakesTheLastDayOfAShorterMonth)
{
    EXPECT_EQ(dtAddMonths(dtOf(2027, 1, 15, 9), 1), dtOf(2027, 2, 15, 9));
    EXPECT_EQ(dtAddMonths(dtOf(2027, 1, 31, 9), 1), dtOf(2027, 2, 28, 9));
    EXPECT_EQ(dtAddMonths(dtOf(2028, 1, 31, 9), 1), dtOf(2028, 2, 29, 9));
    EXPECT_EQ(dtAddMonths(dtOf(2027, 10, 31, 9), 1), dtOf(2027, 11, 30, 9));
    EXPECT_EQ(dtAddMonths(dtOf(2027, 12, 31, 9), 1), dtOf(2028, 1, 31, 9));
    EXPECT_EQ(dtAddMonths(dtOf(2027, 3, 31, 9), 12), dtOf(2028, 3, 31, 9));
    EXPECT_EQ(dtAddMonths(dtOf(2028, 2, 29, 9), 12), dtOf(2029, 2, 28, 9));
}

TEST(Weekday, CountsFromSunday)
{
    EXPECT_EQ(iWeekday(dtOf(2027, 3, 14)), 1);
    EXPECT_EQ(iWeekday(dtOf(2027, 3, 15, 23, 59, 59)), 2);
    EXPECT_EQ(iWeekday(dtOf(2027, 3, 20)), 7);
    EXPECT_EQ(iWeekday(dtOf(1899, 12, 30)), 7);
}

TEST(TimeText, HasTwoDigitsEachAndADesignator)
{
    EXPECT_EQ(sTimeText(dtFromTime({0, 0, 0})), "12:00:00 AM");
    EXPECT_EQ(sTimeText(dtFromTime({9, 5, 7})), "09:05:07 AM");
    EXPECT_EQ(sTimeText(dtFromTime({12, 0, 0})), "12:00:00 PM");
    EXPECT_EQ(sTimeText(dtFromTime({23, 59, 59})), "11:59:59 PM");
    EXPECT_EQ(sTimeText(dtOf(2027, 3, 14, 13)), "01:00:00 PM");
    EXPECT_EQ(sTimeText(1 + dtFromTime({0, 10, 0})), "12:10:00 AM");
}

TEST(DateTimeText, PutsTheMonthFirstAndOmitsNoTime)
{
    EXPECT_EQ(sDateTimeText(dtOf(2027, 3, 4, 9, 5, 7)), "3/4/2027 9:05:07 AM");
    EXPECT_EQ(sDateTimeText(dtOf(2000, 1, 1)), "1/1/2000 12:00:00 AM");
    EXPECT_EQ(sDateTimeText(dtFromTime({21, 0, 0})), "9:00:00 PM");
    EXPECT_EQ(sDateTimeText(0), "12:00:00 AM");
}

TEST(ParsedDateTime, ReadsDatesTimesAndBoth)
{
    EXPECT_EQ(dtParsed("3/4/2027"), dtOf(2027, 3, 4));
    EXPECT_EQ(dtParsed("3/4/2027 9:05:07 PM"), dtOf(2027, 3, 4, 21, 5, 7));
    EXPECT_EQ(dtParsed("3/4/2027 13:05:00"), dtOf(2027, 3, 4, 13, 5));
    EXPECT_EQ(dtParsed("12:00:00 AM"), 0);
    EXPECT_EQ(dtParsed("12:30 pm"), dtFromTime({12, 30, 0}));
    EXPECT_EQ(dtParsed("9:05PM"), dtFromTime({21, 5, 0}));
    EXPECT_EQ(dtParsed(" 3 / 4 / 2027  9:05:07 AM "), dtOf(2027, 3, 4, 9, 5, 7));
}

TEST(ParsedDateTime, RefusesEverythingElse)
{
    for (const char* sText : {"",
                              "9",
                              "AM",
                              "2/29/2027",
                              "31/1/2027",
                              "2/15.5/2027",
                              "2/-1/2027",
                              "2/0/2027",
                              "1/1/27",
                              "1/1",
                              "1/1/2027/1",
                              "1/1/20270",
                              "1/1/2027 x",
                              "1/1/2027 9",
                              "24:00:00",
                              "13:00 PM",
                              "9:60",
                              "9:00:60",
                              "9:-1",
                              "9:00:00:00",
                              "1/1/",
                              "a/b/c",
                              "9:00 AM 1/1/2027"})
        EXPECT_FALSE(bIsDateText(sText)) << sText;
    EXPECT_THROW((void)dtFromText("soon"), clsRaisedError);
}

TEST(ParsedDateTime, ReadsBackEveryTextThatIsWritten)
{
    EXPECT_TRUE(rc::check([] {
        const std::int64_t lSecond = *rc::gen::inRange<std::int64_t>(0, std::int64_t{86400} * 200000);
        const double dtValue = dtAddSeconds(0, lSecond);
        RC_ASSERT(dtParsed(sDateTimeText(dtValue)) == dtValue);
        RC_ASSERT(dtParsed(sTimeText(dtValue)) == dtTimePart(dtValue));
    }));
}

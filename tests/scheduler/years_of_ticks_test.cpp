// Schedules over years of wall clock time, with daylight saving: every run is due, and none comes twice.
#include <cstdlib>
#include <ctime>
#include <map>
#include <set>

#include "src/platform/posix/posix_clock.h"
#include "tests/scheduler/support/schedules.h"

namespace
{

/// The process's time zone for the time of a test.
class TimeZone
{
public:
    explicit TimeZone(const char* sZone)
    {
        if (const char* sFormer = std::getenv("TZ"))
            m_sFormer = sFormer;
        setenv("TZ", sZone, 1);
        tzset();
    }
    ~TimeZone()
    {
        if (m_sFormer.empty())
            unsetenv("TZ");
        else
            setenv("TZ", m_sFormer.c_str(), 1);
        tzset();
    }
    TimeZone(const TimeZone&) = delete;
    TimeZone& operator=(const TimeZone&) = delete;

private:
    std::string m_sFormer;
};

// Rules in the text itself, so that no time zone files are needed: forward on the second Sunday of March at
// 2:00, back on the first Sunday of November at 2:00.
constexpr const char* kNewYork = "EST5EDT,M3.2.0,M11.1.0";
// At 2:00 on the first Sunday of October forward and at 3:00 on the first Sunday of April back.
constexpr const char* kSydney = "AEST-10AEDT,M10.1.0,M4.1.0/3";
// By half an hour.
constexpr const char* kLordHowe = "<+1030>-10:30<+11>-11,M10.1.0,M4.1.0";
// Clocks change at midnight, so that a day begins at 1:00.
constexpr const char* kHavana = "CST5CDT,M3.2.0/0,M11.1.0/1";

class YearsOfTicks : public Schedules
{
protected:
    std::time_t InstantOf(std::int32_t lYear, std::int32_t lMonth, std::int32_t lDay, std::int32_t lHour = 0,
                          std::int32_t lMinute = 0)
    {
        std::tm objLocal{};
        objLocal.tm_year = lYear - 1900;
        objLocal.tm_mon = lMonth - 1;
        objLocal.tm_mday = lDay;
        objLocal.tm_hour = lHour;
        objLocal.tm_min = lMinute;
        objLocal.tm_isdst = -1;
        return std::mktime(&objLocal);
    }
    void SetInstant(std::time_t nNewInstant)
    {
        nInstant = nNewInstant;
        SetClock(LocalDays(nInstant));
    }
    /// Real time passes, the wall clock jumps as it does.
    void RunUntilInstant(std::time_t nEnd, std::int32_t lStep)
    {
        while (nInstant + lStep <= nEnd) {
            SetInstant(nInstant + lStep);
            Tick();
        }
    }
    /// The dates of the runs; a date that comes twice fails.
    std::set<std::string> aRunDates()
    {
        std::set<std::string> aDates;
        for (const std::string& sRun : aRuns)
            EXPECT_TRUE(aDates.insert(sRun.substr(0, sRun.find(' '))).second)
                << sRun << " is the second of its day";
        return aDates;
    }

    std::time_t nInstant = 0;
};

}  // namespace

TEST_F(YearsOfTicks, RunADailyJobOnceADay)
{
    const TimeZone objZone(kNewYork);
    SetDaily("1");
    SetTime("7", "15", "AM");
    SetInstant(InstantOf(2027, 1, 1, 6));
    Begin();

    RunUntilInstant(InstantOf(2029, 1, 1, 6), 30);

    EXPECT_EQ(aRunDates().size(), 365U + 366U);
    for (const std::string& sRun : aRuns)
        EXPECT_TRUE(sRun.ends_with(" 7:15:00 AM")) << sRun;
}

// The clock goes back at 2:00 in November: 1:30 comes twice, and the job runs at the first. In March it goes
// from 2:00 to 3:00: a job of 2:30 is missed that day.
TEST_F(YearsOfTicks, RunOnceInTheHourThatComesTwice)
{
    const TimeZone objZone(kNewYork);
    SetDaily("1");
    SetTime("1", "30", "AM");
    SetInstant(InstantOf(2027, 11, 6, 0));
    Begin();

    RunUntilInstant(InstantOf(2027, 11, 8, 12), 1);

    EXPECT_EQ(aRuns, (Texts{"11/6/2027 1:30:00 AM", "11/7/2027 1:30:00 AM", "11/8/2027 1:30:00 AM"}));
}

TEST_F(YearsOfTicks, MissATimeThatTheClockLeapsOver)
{
    const TimeZone objZone(kNewYork);
    SetDaily("1");
    SetTime("2", "30", "AM");
    SetInstant(InstantOf(2027, 3, 13, 0));
    Begin();

    RunUntilInstant(InstantOf(2027, 3, 15, 12), 1);

    EXPECT_EQ(aRuns, (Texts{"3/13/2027 2:30:00 AM", "3/15/2027 2:30:00 AM"}));
}

TEST_F(YearsOfTicks, RunWhereTheClockLeapsTo)
{
    const TimeZone objZone(kNewYork);
    SetDaily("1");
    SetTime("3", "00", "AM");
    SetInstant(InstantOf(2027, 3, 13, 0));
    Begin();

    RunUntilInstant(InstantOf(2027, 3, 14, 12), 1);

    EXPECT_EQ(aRuns, (Texts{"3/13/2027 3:00:00 AM", "3/14/2027 3:00:00 AM"}));
}

TEST_F(YearsOfTicks, RunOnceADayInEveryKindOfZone)
{
    for (const char* sZone :
         {kNewYork, kSydney, kLordHowe, kHavana, "UTC0", "<+1245>-12:45<+1345>,M9.5.0/2:45,M4.1.0/3:45"}) {
        const TimeZone objZone(sZone);
        for (const char* sHour : {"12", "2"}) {
            aRuns.clear();
            SetDaily("1");
            SetTime(sHour, "30", "AM");
            SetInstant(InstantOf(2027, 1, 1, 4));
            Begin();
            RunUntilInstant(InstantOf(2028, 1, 1, 4), 60);
            StopTimer(app);

            const std::size_t nDays = aRunDates().size();
            EXPECT_GE(nDays, 364U) << sZone << " " << sHour;
            EXPECT_LE(nDays, 365U) << sZone << " " << sHour;
        }
    }
}

TEST_F(YearsOfTicks, RunAWeekdayJobOnWeekdaysOnly)
{
    const TimeZone objZone(kSydney);
    SetEveryWeekday();
    SetTime("11", "59", "PM");
    SetInstant(InstantOf(2027, 1, 1, 6));
    Begin();

    RunUntilInstant(InstantOf(2029, 1, 1, 6), 30);

    EXPECT_EQ(aRunDates().size(), 521U);
    for (const std::string& sRun : aRuns)
        EXPECT_TRUE(iWeekday(dtFromText(sRun)) >= 2 && iWeekday(dtFromText(sRun)) <= 6) << sRun;
}

TEST_F(YearsOfTicks, RunAWeeklyJobOnItsDaysOnly)
{
    const TimeZone objZone(kNewYork);
    SetWeekly("2", {&frm.chkTue, &frm.chkSat});
    SetTime("1", "30", "AM");
    SetInstant(InstantOf(2027, 1, 1, 6));  // a Friday
    Begin();

    RunUntilInstant(InstantOf(2030, 1, 1, 6), 30);

    // Saturday 2 January, then Tuesday and Saturday of every other week.
    std::set<std::string> aExpected{"1/2/2027"};
    for (double dtDay = dtOf(2027, 1, 12); dtDay < dtOf(2030, 1, 1); dtDay += 14)
        for (const double dtRun : {dtDay, dtDay + 4})
            aExpected.insert(sDateTimeText(dtRun).substr(0, sDateTimeText(dtRun).find(' ')));
    EXPECT_EQ(aRunDates(), aExpected);
}

TEST_F(YearsOfTicks, RunAMonthlyJobOnTheLastDays)
{
    const TimeZone objZone(kNewYork);
    SetMonthly("31", "1");
    SetTime("12", "00", "AM");
    SetInstant(InstantOf(2027, 1, 1, 6));
    Begin();

    RunUntilInstant(InstantOf(2031, 1, 1, 6), 60);

    const std::set<std::string> aDates = aRunDates();
    EXPECT_EQ(aDates.size(), 48U);
    for (const std::string& sRun : aRuns)
        EXPECT_EQ(objDateOf(dtAddDays(dtFromText(sRun), 1)).lDay, 1) << sRun;
    EXPECT_TRUE(aDates.contains("2/29/2028"));
    EXPECT_TRUE(aDates.contains("2/28/2029"));
}

TEST_F(YearsOfTicks, RunAnIntervalJobOnItsGridThroughTheNight)
{
    const TimeZone objZone("UTC0");
    SetInterval("0", "30", "0");
    SetInstant(InstantOf(2027, 1, 1, 0, 10));
    Begin();

    RunUntilInstant(InstantOf(2027, 1, 31, 0, 10), 1);

    // 48 a day, at 10 and 40 past: 0:10 is in the hour after midnight that the wait covers.
    EXPECT_EQ(aRuns.size(), 30U * 48);
    std::map<std::string, int> aTimes;
    for (const std::string& sRun : aRuns)
        ++aTimes[sTimeText(dtFromText(sRun))];
    EXPECT_EQ(aTimes.size(), 48U);
    for (const auto& [sTime, nRuns] : aTimes)
        EXPECT_EQ(nRuns, 30) << sTime;
}

// The second 1:00 to 2:00 of November is waited out, so that no target comes twice; in March the clock leaps
// over some, of which one is run late and the others are skipped.
TEST_F(YearsOfTicks, RunAnIntervalJobOnceForEachTimeShown)
{
    const TimeZone objZone(kNewYork);
    frm.optSkip.SetValue(true);
    SetInterval("0", "15", "0");
    SetInstant(InstantOf(2027, 11, 7, 0, 20));
    Begin();
    RunUntilInstant(InstantOf(2027, 11, 7, 3), 1);
    std::set<std::string> aTimes(aRuns.begin(), aRuns.end());
    EXPECT_EQ(aTimes.size(), aRuns.size());
    EXPECT_EQ(aRuns.size(), 10U);
    StopTimer(app);

    aRuns.clear();
    SetInstant(InstantOf(2027, 3, 14, 0, 20));
    Begin();
    RunUntilInstant(InstantOf(2027, 3, 14, 3, 40), 1);
    EXPECT_EQ(aRuns, (Texts{"3/14/2027 12:35:00 AM", "3/14/2027 12:50:00 AM", "3/14/2027 1:05:00 AM",
                            "3/14/2027 1:20:00 AM", "3/14/2027 1:35:00 AM", "3/14/2027 1:50:00 AM",
                            "3/14/2027 3:00:00 AM", "3/14/2027 3:05:00 AM", "3/14/2027 3:20:00 AM",
                            "3/14/2027 3:35:00 AM"}));
}

// Tests of the host's clocks.
#include "src/platform/posix/posix_clock.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <ctime>
#include <string>

TEST(PosixClock, NeverRunsBackwards)
{
    PosixClock clock;
    const std::int64_t before = clock.GetTickCount();
    clock.Sleep(2);

    EXPECT_GE(clock.GetTickCount(), before + 2);
}

TEST(PosixClock, CountsLocalDaysFromEndOf1899)
{
    const std::time_t before = std::time(nullptr);
    std::tm local{};
    localtime_r(&before, &local);

    const double days = PosixClock().dNow();

    constexpr double kDaysTo1970 = 25569;
    const double expected = kDaysTo1970 + static_cast<double>(before + local.tm_gmtoff) / 86400;
    EXPECT_NEAR(days, expected, 2.0 / 86400);
    EXPECT_NEAR((days - std::floor(days)) * 24, local.tm_hour + local.tm_min / 60.0, 0.1);
}

TEST(PosixClock, ShowsTheTimeOfTheTimeZone)
{
    const char* former = std::getenv("TZ");
    const std::string kept = former ? former : "";
    setenv("TZ", "EST5EDT,M3.2.0,M11.1.0", 1);
    tzset();
    constexpr double kDay = 46460;                // 14 March 2027
    constexpr std::time_t kForward = 1805007600;  // its 2:00, when the clock goes to 3:00

    const double before = LocalDays(kForward - 1);
    const double after = LocalDays(kForward);

    if (former)
        setenv("TZ", kept.c_str(), 1);
    else
        unsetenv("TZ");
    tzset();
    EXPECT_NEAR(before, kDay + (2.0 * 3600 - 1) / 86400, 1e-9);
    EXPECT_NEAR(after, kDay + 3.0 / 24, 1e-9);
}

TEST(PosixClock, ReturnsAtOnceFromZeroWait)
{
    PosixClock clock;
    clock.Sleep(0);
    clock.Sleep(-5);
    SUCCEED();
}

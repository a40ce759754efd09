// The clocks of the host.
#include "src/platform/posix/posix_clock.h"

#include <gtest/gtest.h>

#include <cmath>
#include <ctime>

TEST(PosixClock, NeverRunsBackwards)
{
    PosixClock clock;
    const std::int64_t before = clock.GetTickCount();
    clock.Sleep(2);

    EXPECT_GE(clock.GetTickCount(), before + 2);
}

TEST(PosixClock, CountsLocalDaysFromTheEndOf1899)
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

TEST(PosixClock, DoesNotWaitForNoTime)
{
    PosixClock clock;
    clock.Sleep(0);
    clock.Sleep(-5);
    SUCCEED();
}

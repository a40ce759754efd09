// The clocks of the host.
#include "src/platform/posix/posix_clock.h"

#include <cmath>
#include <ctime>

TEST(PosixClock, NeverRunsBackwards)
{
    PosixClock objClock;
    const std::int64_t lBefore = objClock.GetTickCount();
    objClock.Sleep(2);

    EXPECT_GE(objClock.GetTickCount(), lBefore + 2);
}

TEST(PosixClock, CountsLocalDaysFromTheEndOf1899)
{
    const std::time_t nBefore = std::time(nullptr);
    std::tm objLocal{};
    localtime_r(&nBefore, &objLocal);

    const double dDays = PosixClock().dNow();

    constexpr double kDaysTo1970 = 25569;
    const double dExpected = kDaysTo1970 + static_cast<double>(nBefore + objLocal.tm_gmtoff) / 86400;
    EXPECT_NEAR(dDays, dExpected, 2.0 / 86400);
    EXPECT_NEAR((dDays - std::floor(dDays)) * 24, objLocal.tm_hour + objLocal.tm_min / 60.0, 0.1);
}

TEST(PosixClock, DoesNotWaitForNoTime)
{
    PosixClock objClock;
    objClock.Sleep(0);
    objClock.Sleep(-5);
    SUCCEED();
}

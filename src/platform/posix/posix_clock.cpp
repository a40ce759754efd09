// Reads the host's clocks.
#include "src/platform/posix/posix_clock.h"

#include <chrono>
#include <thread>

// Days from 30 December 1899 to 1 January 1970.
static constexpr double kDaysToUnixEpoch = 25569;

std::int64_t PosixClock::GetTickCount() const
{
    using namespace std::chrono;
    return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
}

double LocalDays(std::time_t instant)
{
    std::tm local{};
    localtime_r(&instant, &local);
    return kDaysToUnixEpoch + static_cast<double>(instant + local.tm_gmtoff) / 86400;
}

double PosixClock::dNow() const
{
    tzset();  // a window that is open for weeks notices that its computer has moved to another time zone
    return LocalDays(std::time(nullptr));
}

void PosixClock::Sleep(std::int32_t milliseconds)
{
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

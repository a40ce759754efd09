// Reads the host's clocks.
#include "src/platform/posix/posix_clock.h"

#include <chrono>
#include <ctime>
#include <thread>

// Days from 30 December 1899 to 1 January 1970.
static constexpr double kDaysToUnixEpoch = 25569;

std::int64_t PosixClock::GetTickCount() const
{
    using namespace std::chrono;
    return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
}

double PosixClock::dNow() const
{
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    return kDaysToUnixEpoch + static_cast<double>(now + local.tm_gmtoff) / 86400;
}

void PosixClock::Sleep(std::int32_t milliseconds)
{
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

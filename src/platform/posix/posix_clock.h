// The host's clock.
// Room: platform/posix.
#pragma once

#include <ctime>

#include "src/platform/clock.h"

class PosixClock : public Clock
{
public:
    std::int64_t GetTickCount() const override;
    double dNow() const override;
    void Sleep(std::int32_t milliseconds) override;
};

/// What the wall clock of the process's time zone shows at an instant, in days from 30 December 1899.
double LocalDays(std::time_t instant);

// The host's clock.
// Room: platform/posix.
#pragma once

#include "src/platform/clock.h"

class PosixClock : public Clock
{
public:
    std::int64_t GetTickCount() const override;
    double dNow() const override;
    void Sleep(std::int32_t milliseconds) override;
};

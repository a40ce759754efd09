// Time as the logic sees it.
// Room: platform. Real one: platform/posix. In-memory one: tests/fakes.
#pragma once

#include <cstdint>

class Clock
{
public:
    virtual ~Clock() = default;
    /// Milliseconds of a counter that never runs backwards; only differences mean something.
    [[nodiscard]] virtual std::int64_t GetTickCount() const = 0;
    /// The local date and time as days from 30 December 1899, the fraction being the time of day.
    [[nodiscard]] virtual double dNow() const = 0;
    /// Does nothing for so many milliseconds.
    virtual void Sleep(std::int32_t lMilliseconds) = 0;
};

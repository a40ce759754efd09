// What the user's locale decides.
// Room: platform. Real one: platform/posix. In-memory one: tests/fakes.
#pragma once

#include <cstdint>

class Locale
{
public:
    virtual ~Locale() = default;
    /// The locale identifier, as 1033 for American English.
    [[nodiscard]] virtual std::int32_t GetUserDefaultLCID() const = 0;
    /// "." or ",".
    [[nodiscard]] virtual char cDecimalSign() const = 0;
};

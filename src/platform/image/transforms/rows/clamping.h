// Clamping and rounding to the range of a level.
// Room: platform/image/transforms/rows.
#pragma once

#include <cstdint>

namespace transforms
{

/// Clamps a finite number to low..high.
inline double Clamped(double value, double low, double high)
{
    return value < low ? low : value > high ? high : value;
}
/// Rounds to the nearest level, halves up, and clamps to 0..255; NaN gives 0.
inline std::uint8_t ClampToLevel(double value)
{
    return value > 0 ? static_cast<std::uint8_t>(value < 255 ? value + 0.5 : 255.0) : std::uint8_t{0};
}
/// Rounds to the nearest level and clamps to 0..255.
inline std::uint8_t ClampToLevel(float value)
{
    return static_cast<std::uint8_t>(value <= 0 ? 0 : value >= 255 ? 255 : value + 0.5F);
}
inline std::uint8_t ClampToLevel(std::int32_t value)
{
    return static_cast<std::uint8_t>(value < 0 ? 0 : value > 255 ? 255 : value);
}

}  // namespace transforms

// Brings numbers into the range of what they stand for.
// Room: platform/image/transforms/rows.
#pragma once

#include <cstdint>

namespace transforms
{

/// Brings any finite number into dLow..dHigh.
inline double dClamped(double dValue, double dLow, double dHigh)
{
    return dValue < dLow ? dLow : dValue > dHigh ? dHigh : dValue;
}
/// dValue rounded to the nearest level, halves up, and brought to 0..255; NaN is 0.
inline std::uint8_t nLevel(double dValue)
{
    return dValue > 0 ? static_cast<std::uint8_t>(dValue < 255 ? dValue + 0.5 : 255.0) : std::uint8_t{0};
}
/// The nearest level to a value between levels.
inline std::uint8_t nLevel(float dValue)
{
    return static_cast<std::uint8_t>(dValue <= 0 ? 0 : dValue >= 255 ? 255 : dValue + 0.5F);
}
inline std::uint8_t nLevel(std::int32_t lValue)
{
    return static_cast<std::uint8_t>(lValue < 0 ? 0 : lValue > 255 ? 255 : lValue);
}

}  // namespace transforms

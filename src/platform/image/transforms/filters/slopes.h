// Slopes of a picture towards a light source, row by row.
// Room: platform/image/transforms/filters.
#pragma once

#include <cstddef>
#include <cstdint>

namespace transforms
{

/// Cosine and sine of the light's angle times a factor, in 1/4096.
struct Light {
    std::int32_t right, up;
};
/// angle is in degrees, counterclockwise from the right; factor is 0 to 100.
Light LightFrom(double angle, double factor);

/// The neighbours of a row of bytes; left and right are the row itself, shifted.
struct RowsAround {
    const std::uint8_t *left, *right, *upper, *lower;
};
/// The slopes of a row of count values: right times (left - right) and up times (lower - upper), rounded.
void Slopes(const RowsAround& rows, Light from, std::size_t count, std::int32_t* slopes);
/// 128 plus the slopes, clamped to 0..255; slopes within 1/60 level of a tie may be rounded either way.
/// slopes is scratch space for count numbers. target must not overlap the rows.
void SlopesAroundGrey(const RowsAround& rows, Light from, std::size_t count, std::int32_t* slopes,
                      std::uint8_t* target);

}  // namespace transforms

// Slopes of a picture towards a light, row by row.
// Room: platform/image/transforms/filters.
#pragma once

#include <cstddef>
#include <cstdint>

namespace transforms
{

/// The cosine and the sine of a light's angle times a factor, in 1/4096.
struct Light {
    std::int32_t right, up;
};
/// angle is in degrees, counterclockwise from the right; factor is 0 to 100.
Light LightFrom(double angle, double factor);

/// The bytes around a row: to its left and right, which is the row itself moved, above it and below it.
struct RowsAround {
    const std::uint8_t *left, *right, *upper, *lower;
};
/// The slopes of a row of count values: right times (left - right) and up times (lower - upper), rounded.
void Slopes(const RowsAround& rows, Light from, std::size_t count, std::int32_t* slopes);
/// 128 and the slopes, kept in 0..255; a slope that lies in the middle between two levels but for 1/60 may go
/// to either. slopes is memory for count numbers. target may be no part of the rows.
void SlopesAroundGrey(const RowsAround& rows, Light from, std::size_t count, std::int32_t* slopes,
                      std::uint8_t* target);

}  // namespace transforms

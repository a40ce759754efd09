// Slopes of a picture towards a light, row by row.
// Room: platform/image/transforms/filters.
#pragma once

#include <cstddef>
#include <cstdint>

namespace transforms
{

/// The cosine and the sine of a light's angle times a factor, in 1/4096.
struct Light {
    std::int32_t lRight, lUp;
};
/// dAngle is in degrees, counterclockwise from the right; dFactor is 0 to 100.
Light objLight(double dAngle, double dFactor);

/// The bytes around a row: to its left and right, which is the row itself moved, above it and below it.
struct RowsAround {
    const std::uint8_t *pLeft, *pRight, *pUpper, *pLower;
};
/// The slopes of a row of nCount values: right times (left - right) and up times (lower - upper), rounded.
void Slopes(const RowsAround& objRows, Light objFrom, std::size_t nCount, std::int32_t* aSlopes);
/// 128 and the slopes, kept in 0..255; a slope that lies in the middle between two levels but for 1/60 may go
/// to either. aSlopes is memory for nCount numbers. pTarget may be no part of the rows.
void SlopesAroundGrey(const RowsAround& objRows, Light objFrom, std::size_t nCount, std::int32_t* aSlopes,
                      std::uint8_t* pTarget);

}  // namespace transforms

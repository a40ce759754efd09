// Weighted sums of rows, for vertical scaling.
// Room: platform/image/transforms/geometry.
#pragma once

#include <cstddef>
#include <cstdint>

namespace transforms
{

/// Rows of a picture, stride bytes apart, and their weights, which add up to 1; none exceeds 1.9.
struct WeighedRows {
    const std::uint8_t* first;
    std::size_t stride;
    const float* weights;
    std::size_t rows;
};

/// Fills sums with the weighted sums of the rows' first count bytes, accurate to 1/25 level. memory has room
/// for rows + 1 numbers.
void SumRows(const WeighedRows& rows, std::size_t count, std::int16_t* memory, float* sums);

}  // namespace transforms

// Weighted sums down the columns of a picture.
// Room: platform/image/transforms/geometry.
#pragma once

#include <cstddef>
#include <cstdint>

namespace transforms
{

/// Rows of a picture that begin stride bytes after each other, and how much each weighs; the weights' sum is
/// 1, and none is greater than 1.9.
struct WeighedRows {
    const std::uint8_t* first;
    std::size_t stride;
    const float* weights;
    std::size_t rows;
};

/// Fills sums with the weighted sums of the rows' first count bytes, to 1/25 level. memory is for rows +
/// 1 numbers.
void SumRows(const WeighedRows& rows, std::size_t count, std::int16_t* memory, float* sums);

}  // namespace transforms

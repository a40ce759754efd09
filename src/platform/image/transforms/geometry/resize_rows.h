// Weighted sums down the columns of a picture.
// Room: platform/image/transforms/geometry.
#pragma once

#include <cstddef>
#include <cstdint>

namespace transforms
{

/// Rows of a picture that begin nStride bytes after each other, and how much each weighs; the weights' sum is
/// 1, and none is greater than 1.9.
struct WeighedRows {
    const std::uint8_t* pFirst;
    std::size_t nStride;
    const float* pWeights;
    std::size_t nRows;
};

/// Fills pSums with the weighted sums of the rows' first nCount bytes, to 1/25 level. pMemory is for nRows +
/// 1 numbers.
void SumRows(const WeighedRows& objRows, std::size_t nCount, std::int16_t* pMemory, float* pSums);

}  // namespace transforms

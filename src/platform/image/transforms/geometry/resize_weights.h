// How much each source pixel weighs in each target pixel of a scaled row or column.
// Room: platform/image/transforms/geometry.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace transforms
{

/// The weights of every target pixel: nTaps of them, for source pixels from aFirst[i] on. All of those lie
/// inside, so that a tap beyond the border is one that weighs 0.
struct ResizeWeights {
    std::size_t nTaps = 0;
    std::vector<std::int32_t> aFirst;
    std::vector<float> aWeights;  ///< nTaps for each target pixel; their sum is 1
};

/// For lSource pixels that become lTarget by the triangle or, bCubic, by Keys' cubic (a = -0.5), widened by
/// lSource / lTarget where that is above 1. Throws std::bad_alloc.
ResizeWeights objResizeWeights(std::int32_t lSource, std::int32_t lTarget, bool bCubic);

}  // namespace transforms

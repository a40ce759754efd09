// How much each source pixel weighs in each target pixel of a scaled row or column.
// Room: platform/image/transforms/geometry.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace transforms
{

/// The weights of every target pixel: taps of them, for source pixels from first[i] on. All of those lie
/// inside, so that a tap beyond the border is one that weighs 0.
struct ResizeWeights {
    std::size_t taps = 0;
    std::vector<std::int32_t> first;
    std::vector<float> weights;  ///< taps for each target pixel; their sum is 1
};

/// For source pixels that become target by the triangle or, cubic, by Keys' cubic (a = -0.5), widened by
/// source / target where that is above 1. Throws std::bad_alloc.
ResizeWeights ComputeResizeWeights(std::int32_t source, std::int32_t target, bool cubic);

}  // namespace transforms

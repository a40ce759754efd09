// Filter weights for scaling a row or column.
// Room: platform/image/transforms/geometry.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace transforms
{

/// Target pixel i has taps weights, for source pixels first[i], first[i] + 1, ... All of them are inside the
/// picture: taps beyond the edge are moved in and weigh 0.
struct ResizeWeights {
    std::size_t taps = 0;
    std::vector<std::int32_t> first;
    std::vector<float> weights;  ///< taps per target pixel; they add up to 1
};

/// Weights for scaling from source to target pixels by the triangle filter or, if cubic, Keys' cubic (a =
/// -0.5), widened by source / target when shrinking. Throws std::bad_alloc.
ResizeWeights ComputeResizeWeights(std::int32_t source, std::int32_t target, bool cubic);

/// The same if the picture is only a part of the source pixels: it begins at begin and is extent long.
ResizeWeights ComputeResizeWeights(std::int32_t source, double begin, double extent, std::int32_t target,
                                   bool cubic);

}  // namespace transforms

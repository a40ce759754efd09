// Filters over 3 x 3 neighbourhoods: the general row loop, and convolutions.
// Room: platform/image/transforms/filters.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>

#include "src/platform/image_transform.h"

namespace transforms
{

/// Computes count bytes of a row into target. rows are the original rows above, at and below it, each
/// readable from one pixel before its first to one past its last; pixels are channels bytes apart.
using NeighbourhoodRow = std::function<void(const std::array<const std::uint8_t*, 3>& rows, std::size_t count,
                                            std::size_t channels, std::uint8_t* target)>;

/// Calls row for every row, on several threads; row must not allocate. The border is replicated. Alpha stays,
/// whatever row writes.
OperationResult FilterNeighbourhoods(const ImageBuffer& source, ImageBuffer& result,
                                     const NeighbourhoodRow& row);

/// A 3 x 3 kernel, row by row: w[0] is the weight of the upper left neighbour. It is applied without flipping
/// (correlation, as is usual for pictures).
using Weights = std::array<std::int16_t, 9>;

/// How the weighted sum s is mapped to 0..255.
enum class Shown {
    kClipped,    ///< s clamped to 0..255
    kMagnitude,  ///< |s| / divisor, rounded, halves up, at most 255
};

/// Convolves each colour channel separately. divisor is 1 to 29, and 1 for kClipped; the absolute weights may
/// add up to 128 at most. For a mean use kMagnitude with weights that aren't negative. Otherwise like
/// FilterNeighbourhoods.
OperationResult Convolve(const ImageBuffer& source, ImageBuffer& result, const Weights& weights, Shown shown,
                         std::uint16_t divisor = 1);

/// A symmetric convolution with weights in 1/65536: centre for the pixel, side for each of its four direct
/// neighbours, corner for each of the diagonal ones; rounded, halves up, and clamped. The absolute weights of
/// all nine may add up to 128 times 65536 at most. Otherwise like FilterNeighbourhoods.
OperationResult ConvolveFine(const ImageBuffer& source, ImageBuffer& result, std::int32_t centre,
                             std::int32_t side, std::int32_t corner);

}  // namespace transforms

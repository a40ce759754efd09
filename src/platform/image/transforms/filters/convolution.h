// Working on a picture by each pixel's 3 x 3 neighbourhood, and the convolutions that do.
// Room: platform/image/transforms/filters.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>

#include "src/platform/image_buffer.h"

namespace transforms
{

/// Gives count bytes of a row their new values in target. rows are the row above, its own and the one
/// below as they were, each readable from one pixel before its first to one after its last; pixels are
/// channels bytes apart.
using NeighbourhoodRow = std::function<void(const std::array<const std::uint8_t*, 3>& rows, std::size_t count,
                                            std::size_t channels, std::uint8_t* target)>;

/// Calls row for every row, in place and on several threads; row must not allocate. The border is replicated.
/// Alpha is restored whatever row writes. False if memory runs out; the picture is then unchanged.
bool FilterNeighbourhoods(ImageBuffer& image, const NeighbourhoodRow& row);

/// A 3 x 3 kernel, row by row: w[0] is the weight of the upper left neighbour. It is applied without flipping
/// (correlation, as is usual for pictures).
using Weights = std::array<std::int16_t, 9>;

/// How the weighted sum s is brought to 0..255.
enum class Shown {
    kClipped,    ///< s below 0 is 0, above 255 is 255
    kMagnitude,  ///< |s| / divisor, rounded, halves up, above 255 is 255
};

/// Every colour channel by itself, s the sum of w times neighbour. divisor is 1 to 29, and 1 for kClipped;
/// the weights' amounts may add up to 128 at most. A mean is a magnitude of weights that aren't negative. As
/// FilterNeighbourhoods for the rest.
bool Convolve(ImageBuffer& image, const Weights& weights, Shown shown, std::uint16_t divisor = 1);

/// A symmetric convolution in 65536ths: centre times the pixel, side times the sum of the four beside it,
/// corner times the sum of the other four; rounded, halves up, and clipped. With their
/// numbers the weights' amounts may add up to 128 times 65536 at most. As FilterNeighbourhoods for the rest.
bool ConvolveFine(ImageBuffer& image, std::int32_t centre, std::int32_t side, std::int32_t corner);

}  // namespace transforms

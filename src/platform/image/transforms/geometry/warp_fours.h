// The fast path of bilinear sampling: four pixels at a time with AVX2.
// Room: platform/image/transforms/geometry.
#pragma once

#include <cstdint>

#include "src/platform/image_buffer.h"

namespace transforms
{

/// Draws pixels of one row from coordinates as in warp.h, four at a time, and returns how many it drew. It
/// stops before a group that needs a pixel outside the source or one that isn't opaque, and always before the
/// last pixel of the row, which it may overwrite. If unmoved is given, the result is the mean with that row
/// of pixels; alpha is then ignored and its result undefined. Accurate to 1/60 level before rounding. 3 and 4
/// channels only; returns 0 without AVX2.
std::int32_t DrawFours(const ImageBuffer& source, const std::int32_t* xs, const std::int32_t* ys,
                       const std::uint8_t* unmoved, std::int32_t count, std::uint8_t* target);

}  // namespace transforms

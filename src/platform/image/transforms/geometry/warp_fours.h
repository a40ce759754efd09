// The quick way through the inside of a picture: four of its places at a time, by vector instructions.
// Room: platform/image/transforms/geometry.
#pragma once

#include <cstdint>

#include "src/platform/image_buffer.h"

namespace transforms
{

/// Draws pixels of one row bilinearly, four after four, from places in 1/256 pixel as warp.h counts them, and
/// returns how many: it stops before the first four of which one needs a pixel that isn't inside or isn't
/// opaque, and always before the row's last pixel, since it may write up to it. unmoved, where given, is a
/// row of pixels whose mean with those drawn is taken; alpha isn't looked at then, and of no particular
/// value. Each value is the nearest level, but for 1/60 level. Only for 3 and 4 channels; 0 where the
/// processor lacks the instructions.
std::int32_t DrawFours(const ImageBuffer& source, const std::int32_t* xs, const std::int32_t* ys,
                       const std::uint8_t* unmoved, std::int32_t count, std::uint8_t* target);

}  // namespace transforms

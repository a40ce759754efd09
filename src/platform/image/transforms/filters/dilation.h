// Grows the light parts of a picture, or wears them away.
// Room: platform/image/transforms/filters.
#pragma once

#include <cstdint>

#include "src/platform/image_buffer.h"

namespace transforms
{

/// Both work channel by channel, alpha excepted, on the 3 by 3 square around a pixel (square) or on the
/// cross of itself and its four neighbours; pixels beyond the border have no part. A pixel lighter than
/// threshold belongs to the things that grow or are worn away, and level is the most that a value changes.
///
/// Dilation: v becomes min(m, v + level) with m the greatest value around it, if m > threshold.
/// Erosion: v becomes max(m, v - level) with m the smallest value around it, if v > threshold.
///
/// Level 255 with threshold 0 is the dilation or erosion of the textbooks; level 0 changes nothing.
bool Dilation(ImageBuffer& image, std::uint8_t level, std::uint8_t threshold, bool square);
bool Erosion(ImageBuffer& image, std::uint8_t level, std::uint8_t threshold, bool square);

}  // namespace transforms

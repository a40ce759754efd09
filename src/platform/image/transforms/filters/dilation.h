// Dilation and erosion of the light parts of a picture.
// Room: platform/image/transforms/filters.
#pragma once

#include <cstdint>

#include "src/platform/image_transform.h"

namespace transforms
{

/// Each channel but alpha separately, with a 3 by 3 square or, if not square, a cross of five pixels as
/// structuring element; pixels beyond the border are ignored. Only pixels above threshold grow or erode, and
/// level limits the change of a value.
///
/// Dilation: v becomes min(m, v + level) with m the maximum, if m > threshold. Erosion: v becomes max(m, v -
/// level) with m the minimum, if v > threshold.
///
/// Level 255 with threshold 0 is textbook dilation or erosion; level 0 changes nothing.
OperationResult Dilation(const ImageBuffer& source, ImageBuffer& result, std::uint8_t level,
                         std::uint8_t threshold, bool square);
OperationResult Erosion(const ImageBuffer& source, ImageBuffer& result, std::uint8_t level,
                        std::uint8_t threshold, bool square);

}  // namespace transforms

// Shifts a picture within its frame, and crops uniform borders.
// Room: platform/image/transforms/geometry.
#pragma once

#include <cstdint>

#include "src/platform/image_transform.h"

namespace transforms
{

/// Shifts the picture by right and down pixels (negative: left and up). The size stays; what leaves the frame
/// is lost, and uncovered pixels become opaque background. A grey picture with a coloured background becomes
/// one of 3 channels. 0, 0 changes nothing.
OperationResult Shift(const ImageBuffer& source, ImageBuffer& result, std::int32_t right, std::int32_t down,
                      Colour background);

/// Crops the outer rows and columns that are entirely of the border colour. That is the most frequent colour
/// of the four corners; a tie goes to the first in the order top left, top right, bottom left, bottom right.
/// Colours are equal if all channels are, in pictures from lossily compressed files to within the 24 levels
/// that the compression may leave beside an edge; fully transparent pixels are all equal. A picture of a
/// single colour doesn't change.
OperationResult Autocrop(const ImageBuffer& source, ImageBuffer& result);

}  // namespace transforms

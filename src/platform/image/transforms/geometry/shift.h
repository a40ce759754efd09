// Moves a picture within its frame, and cuts its borders.
// Room: platform/image/transforms/geometry.
#pragma once

#include <cstdint>

#include "src/platform/image_transform.h"

namespace transforms
{

/// Moves the picture right pixels right and down down (negative: left and up). The size stays, what leaves it
/// is lost, and what is uncovered becomes background, opaque. A grey picture that gets a background with
/// colour becomes one of 3 channels. 0, 0 changes nothing.
bool Shift(ImageBuffer& image, std::int32_t right, std::int32_t down, Colour background);

/// Cuts off the outer rows and columns that wholly have the border's colour. That is the colour of most of
/// the four corners, and among equals of the first one in the order top left, top right, bottom left, bottom
/// right. Colours are equal when all channels are; pixels that are wholly transparent are all equal. A
/// picture of one colour stays as it is.
bool Autocrop(ImageBuffer& image);

}  // namespace transforms

// Mirrors a picture, and turns it by quarters.
// Room: platform/image/transforms/geometry.
#pragma once

#include <cstdint>

#include "src/platform/image_buffer.h"

namespace transforms
{

/// Exchanges top and bottom (vertical) or left and right, in place. Twice is the picture again.
bool Flip(ImageBuffer& image, bool vertical);

/// Turns the picture clockwise by quarters quarters of a turn, exactly; one and three exchange width and
/// height, and the resolutions with them. False, with the picture as it was, without memory.
bool TurnQuarters(ImageBuffer& image, std::int32_t quarters);

}  // namespace transforms

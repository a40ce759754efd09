// Flips a picture and rotates it by quarter turns.
// Room: platform/image/transforms/geometry.
#pragma once

#include <cstdint>

#include "src/platform/image_buffer.h"

namespace transforms
{

/// Flips top to bottom (vertical) or left to right, in place.
bool Flip(ImageBuffer& image, bool vertical);

/// Rotates clockwise by quarters times 90 degrees, without interpolation; 1 and 3 swap width and height, and
/// the resolutions with them. False if memory runs out; the picture is then unchanged.
bool TurnQuarters(ImageBuffer& image, std::int32_t quarters);

}  // namespace transforms

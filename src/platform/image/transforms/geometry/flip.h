// Flips a picture and rotates it by quarter turns.
// Room: platform/image/transforms/geometry.
#pragma once

#include <cstdint>

#include "src/platform/image_transform.h"

namespace transforms
{

/// Flips top to bottom (vertical) or left to right.
OperationResult Flip(const ImageBuffer& source, ImageBuffer& result, bool vertical);

/// Rotates clockwise by quarters times 90 degrees, without interpolation; 1 and 3 swap width and height, and
/// the resolutions with them.
OperationResult TurnQuarters(const ImageBuffer& source, ImageBuffer& result, std::int32_t quarters);

}  // namespace transforms

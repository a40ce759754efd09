// Applies the EXIF or TIFF orientation of a picture.
// Room: platform/image/pixels.
#pragma once

#include <cstdint>

#include "src/platform/image_buffer.h"

/// Turns the picture upright. orientation is numbered as in TIFF and EXIF: 1 upright, 2 flip left to right,
/// 3 rotate by 180 degrees, 4 flip top to bottom, 5 transpose, 6 rotate clockwise, 7 transverse, 8 rotate
/// counterclockwise; any other number changes nothing. 5 to 8 swap width and height, and the resolutions with
/// them, and need memory for a second picture; if that fails they throw std::bad_alloc and leave image
/// unchanged.
void ApplyOrientation(ImageBuffer& image, std::int32_t orientation);

/// The same for a picture that stays as it is. Throws std::bad_alloc.
ImageBuffer OrientedCopy(const ImageBuffer& image, std::int32_t orientation);

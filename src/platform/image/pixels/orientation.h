// Turning and mirroring a picture as its file asks for.
// Room: platform/image/pixels.
#pragma once

#include <cstdint>

#include "src/platform/image_buffer.h"

/// Turns the pixels upright. orientation says where the stored rows and columns begin, numbered as in TIFF
/// and EXIF: 1 upright, 2 mirrored left to right, 3 half turned, 4 mirrored top to bottom, 5 mirrored along
/// the main diagonal, 6 to be turned a quarter clockwise, 7 mirrored along the other diagonal, 8 to be turned
/// a quarter counterclockwise; any other number changes nothing. 5 to 8 exchange width and height, and the
/// resolutions with them, and need memory for a second picture while they run; they throw std::bad_alloc,
/// with the picture as it was.
void ApplyOrientation(ImageBuffer& image, std::int32_t orientation);

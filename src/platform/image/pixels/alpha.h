// Laying a picture with alpha on a background.
// Room: platform/image/pixels.
#pragma once

#include "src/platform/image_buffer.h"

/// The picture of 4 channels as one of 3, each pixel mixed with white by its alpha and rounded to the nearest
/// level. Everything beside the pixels is kept.
ImageBuffer LayOnWhite(const ImageBuffer& image);

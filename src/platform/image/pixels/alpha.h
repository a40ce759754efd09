// Compositing a picture with alpha over a background.
// Room: platform/image/pixels.
#pragma once

#include "src/platform/image_buffer.h"

/// Composites a 4-channel picture over white, rounded to the nearest level; the result has 3 channels.
/// Profile, resolution and metadata are kept.
ImageBuffer LayOnWhite(const ImageBuffer& image);

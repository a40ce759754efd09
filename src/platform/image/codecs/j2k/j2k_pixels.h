// Makes a picture of the components that JPEG 2000 decodes to.
// Room: platform/image/codecs/j2k.
#pragma once

#include "src/platform/image_buffer.h"

struct opj_image;

/// Scales every component to 8 bits by rounding, brings those of fewer samples to the full size, and turns
/// YCC, inks and L*a*b* into sRGB. A profile that fits is kept. The last of two or four components is alpha
/// where the file doesn't say otherwise; of other components beyond three none counts. False, with image as
/// it was, for components that make no picture, a colour space that isn't known, or a size that isn't
/// allowed.
bool MakePicture(const opj_image& decoded, ImageBuffer& image);

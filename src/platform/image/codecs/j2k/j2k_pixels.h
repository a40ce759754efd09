// Converts decoded JPEG 2000 components to a picture.
// Room: platform/image/codecs/j2k.
#pragma once

#include "src/platform/image_buffer.h"

struct opj_image;

/// Scales all components to 8 bits and full resolution, and converts YCC, CMYK and L*a*b* to sRGB. Keeps a
/// profile that fits. Unless the file says otherwise, the last of two or four components is alpha, and extra
/// components beyond three are ignored. False for unusable components, an unknown colour space or a size that
/// isn't allowed; image is then unchanged.
bool MakePicture(const opj_image& decoded, ImageBuffer& image);

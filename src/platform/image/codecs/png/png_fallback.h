// Decodes the rarer kinds of PNG with libpng.
// Room: platform/image/codecs/png.
#pragma once

#include "src/platform/image/codecs/png/png_info.h"

struct ImageBuffer;
class InputFile;

/// True for interlaced pictures, 16 bits per sample, grey with alpha, and grey or RGB with a transparent
/// colour.
bool PngNeedsFallback(const PngInfo& info);

/// Decodes the pixels only, converted to sRGB if SpaceToConvert() says so. False if the file is broken or
/// memory runs out; image is then unchanged.
[[nodiscard]] bool DecodePngByLibrary(InputFile& file, const PngInfo& info, ImageBuffer& image);

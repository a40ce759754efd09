// The rarer PNG files, decoded by libpng.
// Room: platform/image/codecs/png.
#pragma once

#include "src/platform/image/codecs/png/png_info.h"

struct ImageBuffer;
class InputFile;

/// True for what is decoded here: interlaced pictures, 16 bits a sample, grey with alpha, and a single
/// transparent colour among grey or RGB.
bool PngNeedsFallback(const PngInfo& info);

/// The pixels alone, with the gamma of PngGammaExponent applied. False, with image untouched, for a broken
/// picture or one for which there is no memory.
[[nodiscard]] bool DecodePngByLibrary(InputFile& file, const PngInfo& info, ImageBuffer& image);

// The rarer PNG files, decoded by libpng.
// Room: platform/image/codecs/png.
#pragma once

#include "src/platform/image/codecs/png/png_info.h"

struct ImageBuffer;
class InputFile;

/// True for what is decoded here: interlaced pictures, 16 bits a sample, grey with alpha, and a single
/// transparent colour among grey or RGB.
bool bPngNeedsFallback(const PngInfo& objInfo);

/// The pixels alone, with the gamma of dPngGammaExponent applied. False, with aImage untouched, for a broken
/// picture or one for which there is no memory.
[[nodiscard]] bool bDecodePngByLibrary(InputFile& objFile, const PngInfo& objInfo, ImageBuffer& aImage);

// Writes a picture as a WMF.
// Room: platform/image/codecs/metafile.
#pragma once

#include "src/platform/image/codecs/codec.h"

/// Writes a placeable metafile of the picture's size at 96 dpi with one bitmap record. False for pictures
/// over 32,767 pixels per side, which don't fit the record's 16-bit fields.
bool EncodeWmf(const ImageBuffer& image, const SaveSettings& settings, OutputFile& out);

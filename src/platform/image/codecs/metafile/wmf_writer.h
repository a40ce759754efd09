// Writes a picture as a WMF.
// Room: platform/image/codecs/metafile.
#pragma once

#include "src/platform/image/codecs/codec.h"

/// A placeable metafile of the picture's size at 96 pixels an inch, with one bitmap record. False for a
/// picture of more than 32,767 pixels a side, which the record's 16 bits can't say.
bool EncodeWmf(const ImageBuffer& image, const SaveSettings& settings, OutputFile& out);

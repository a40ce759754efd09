// Windows and OS/2 bitmaps (BMP): reads all depths and compressions in use, writes 24 bits or grey.
// Room: platform/image/codecs/bmp.
#pragma once

#include "src/platform/image/codecs/codec.h"

/// See dib.h for what is read; an embedded profile is read as well. Writes 8 bits with a grey palette for 1
/// channel and 24 bits for 3, bottom up, with the resolution.
extern const Codec kBmpCodec;

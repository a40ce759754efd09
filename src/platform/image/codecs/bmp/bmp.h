// Windows and OS/2 bitmaps (BMP): read in every depth and coding that programs write, written with 24 bits
// or grey.
// Room: platform/image/codecs/bmp.
#pragma once

#include "src/platform/image/codecs/codec.h"

/// Reads as dib.h says; besides that a profile that the file embeds comes with the picture. Writes 8 bits
/// with a palette of greys for 1 channel and 24 bits for 3, bottom row first, with the resolution.
extern const Codec kBmpCodec;

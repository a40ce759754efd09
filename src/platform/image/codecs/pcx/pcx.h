// PCX: reads 1 to 32 bits per pixel, writes 24 bits or grey.
// Room: platform/image/codecs/pcx.
#pragma once

#include "src/platform/image/codecs/codec.h"

/// Reads 1 bit in 1 to 4 planes, packed 2, 4 and 8 bits, and 3 or 4 planes of 8 bits, plain or run-length
/// encoded, in all versions. One plane of 1 bit is black and white. Files without a palette use the 16 EGA
/// colours or, with 8 bits, greys. A fourth plane is alpha. Writes version 5: three planes, or one with a
/// grey palette.
extern const Codec kPcxCodec;

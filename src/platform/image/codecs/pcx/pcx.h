// PCX: read with 1 to 32 bits a pixel, written with 24 or as greys.
// Room: platform/image/codecs/pcx.
#pragma once

#include "src/platform/image/codecs/codec.h"

/// Reads 1 bit in 1 to 4 planes, 2, 4 and 8 bits packed, 3 or 4 planes of 8 bits, packed or not, of every
/// version. One bit in one plane is black and white. Where the file has no palette the 16 colours of the EGA
/// stand in for it, or levels of grey with 8 bits. A fourth plane is alpha. Writes version 5: three planes,
/// or one with a palette of greys.
extern const Codec kPcxCodec;

// Sun rasterfiles (RAS): reads 1, 8, 24 and 32 bits per pixel, writes 24 bits or grey.
// Room: platform/image/codecs/ras.
#pragma once

#include "src/platform/image/codecs/codec.h"

/// Reads the types old, standard, byte-encoded and RGB. Without a colour map, 1 bit is white for 0 and black
/// for 1, and 8 bits are grey; a map that isn't an RGB table is ignored. The fourth byte of 32-bit pixels
/// isn't alpha. Writes type standard without a map: 8 bits, or 24 bits in BGR order.
extern const Codec kRasCodec;

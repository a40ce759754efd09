// Sun rasterfiles (RAS): read with 1, 8, 24 and 32 bits a pixel, written with 24 bits or as greys.
// Room: platform/image/codecs/ras.
#pragma once

#include "src/platform/image/codecs/codec.h"

/// Reads the kinds old, standard, byte-encoded and RGB. Without a colour map 1 bit is white at 0 and black at
/// 1, and 8 bits are greys; a map that is no table of red, green and blue counts as none. The fourth byte of
/// 32 bits is no alpha. Writes the kind standard without a map: 8 bits, or 24 bits in the order blue, green,
/// red.
extern const Codec kRasCodec;

// The PNG format.
// Room: platform/image/codecs/png.
//
// Reading takes every colour type, depth and interlacing. 16 bits become 8 by rounding, a palette of greys
// becomes one channel, grey with alpha becomes B, G, R, A. A gamma that the file names without naming a
// colour space is applied, as browsers do; primaries (cHRM) without a profile are not. Of an animated PNG
// the still picture is read. Writing picks the smallest colour type that holds the picture: see
// png_layout.h.
#pragma once

#include "src/platform/image/codecs/codec.h"

extern const Codec kPngCodec;

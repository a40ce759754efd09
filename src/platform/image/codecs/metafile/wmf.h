// Windows metafiles, with or without the header that makes them placeable.
// Room: platform/image/codecs/metafile.
#pragma once

#include "src/platform/image/codecs/codec.h"

/// Reads by playing the records on white, at 96 pixels an inch where a placeable header says how large the
/// picture is. Other files have no size in inches: a unit of their window is a pixel, up to 4096 of them.
/// Writes a placeable metafile that holds one bitmap; one of more than 32,767 pixels a side has no record
/// that could take it.
extern const Codec kWmfCodec;

// Windows metafiles (WMF), with or without a placeable header.
// Room: platform/image/codecs/metafile.
#pragma once

#include "src/platform/image/codecs/codec.h"

/// Reads by playing the records on white, at 96 dpi if a placeable header gives the size. Other files have no
/// physical size: one window unit is a pixel, up to 4096 of them. Writes a placeable metafile that holds one
/// bitmap; pictures over 32,767 pixels per side don't fit into any record.
extern const Codec kWmfCodec;

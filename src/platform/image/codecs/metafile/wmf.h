// Windows metafiles (WMF), with or without a placeable header.
// Room: platform/image/codecs/metafile.
#pragma once

#include "src/platform/image/codecs/codec.h"

/// Reads by playing the records on white, at 96 dpi if a placeable header or the map mode gives the size.
/// Other files have no physical size: one window unit is a pixel, up to 1024 of them. A file that embeds an
/// EMF is read as that. Writes a placeable metafile that holds one bitmap.
extern const Codec kWmfCodec;

/// Implemented in wmf_writer.cpp. Writes one bitmap record at 96 dpi. False for pictures over 32,767 pixels
/// per side, which don't fit the record's 16-bit fields.
bool EncodeWmf(const ImageBuffer& image, const SaveSettings& settings, OutputFile& out);

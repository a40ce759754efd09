// TIFF: reads pages of all common layouts; writes them uncompressed, with LZW or with CCITT compression.
// Room: platform/image/codecs/tiff.
#pragma once

#include "src/platform/image/codecs/codec.h"

/// Type 3. Each directory in the chain is a page. Encode() writes a single page; tiff_document.h writes
/// several.
extern const Codec kTiffCodec;

// TIFF: reads pages of all common layouts; writes them uncompressed, with LZW or with CCITT compression.
// Room: platform/image/codecs/tiff.
#pragma once

#include <memory>

#include "src/platform/image/codecs/codec.h"

/// Type 3. Each directory in the chain is a page. Encode() writes a single page; tiff_document.h writes
/// several.
extern const Codec kTiffCodec;

/// Null for a file without a valid directory. Walks the directory chain once and remembers the offsets, so
/// reading n pages in any order doesn't walk it again.
std::unique_ptr<ImageDecoder> OpenTiff(InputFile& file);

// Decodes the pages of a TIFF file in any order.
// Room: platform/image/codecs/tiff.
#pragma once

#include <memory>

#include "src/platform/image/codecs/codec.h"

/// Null for a file without a valid directory. Walks the directory chain once and remembers the offsets, so
/// reading n pages in any order doesn't walk it again.
std::unique_ptr<ImageDecoder> OpenTiff(InputFile& file);

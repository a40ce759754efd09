// An open TIFF file: its pages in any order.
// Room: platform/image/codecs/tiff.
#pragma once

#include <memory>

#include "src/platform/image/codecs/codec.h"

/// Null for a file without a single directory. The directories' places are collected here, in one pass over
/// the chain; each page is then read from its place, so n pages in any order cost one pass more.
std::unique_ptr<ImageDecoder> OpenTiff(InputFile& file);

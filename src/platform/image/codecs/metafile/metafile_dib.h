// The bitmap that a metafile of one picture holds.
// Room: platform/image/codecs/metafile.
#pragma once

#include <cstdint>

#include "src/platform/image/base/byte_reader.h"
#include "src/platform/image_buffer.h"

class OutputFile;

/// Bytes of the header with its palette: 8 bits for a grey picture, 24 for any other.
std::uint32_t MetafileDibHeaderSize(const ImageBuffer& image);
/// Bytes of the rows, each filled up to four.
std::uint64_t MetafileDibBitsSize(const ImageBuffer& image);
/// Header, palette and rows, the last row first.
bool WriteMetafileDib(const ImageBuffer& image, OutputFile& out);

/// True when a bitmap of these bytes, decoded into image, is a plain opaque picture of the given size: what
/// a metafile that does nothing but show it looks like. image is untouched otherwise.
bool DecodeOnlyBitmap(Bytes header_bytes, Bytes bits, std::int32_t width, std::int32_t height,
                      ImageBuffer& image);

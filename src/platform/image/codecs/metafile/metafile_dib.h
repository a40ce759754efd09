// The bitmap of a metafile that holds a single picture.
// Room: platform/image/codecs/metafile.
#pragma once

#include <cstdint>

#include "src/platform/image/base/byte_reader.h"
#include "src/platform/image_buffer.h"

class OutputFile;

/// Bytes of header and palette: 8 bits per pixel for a grey picture, 24 for others.
std::uint32_t MetafileDibHeaderSize(const ImageBuffer& image);
/// Bytes of the rows, each padded to a multiple of four.
std::uint64_t MetafileDibBitsSize(const ImageBuffer& image);
/// Writes header, palette and rows, bottom row first.
bool WriteMetafileDib(const ImageBuffer& image, OutputFile& out);

/// Decodes the bitmap of a metafile that only draws one. False, with image unchanged, unless it is a plain
/// opaque picture of the given size.
bool DecodeOnlyBitmap(Bytes header_bytes, Bytes bits, std::int32_t width, std::int32_t height,
                      ImageBuffer& image);

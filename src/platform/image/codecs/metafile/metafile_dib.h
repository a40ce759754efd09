// The bitmap that a metafile of one picture holds.
// Room: platform/image/codecs/metafile.
#pragma once

#include <cstdint>

#include "src/platform/image/base/byte_reader.h"
#include "src/platform/image_buffer.h"

class OutputFile;

/// Bytes of the header with its palette: 8 bits for a grey picture, 24 for any other.
std::uint32_t nMetafileDibHeaderSize(const ImageBuffer& aImage);
/// Bytes of the rows, each filled up to four.
std::uint64_t nMetafileDibBitsSize(const ImageBuffer& aImage);
/// Header, palette and rows, the last row first.
bool bWriteMetafileDib(const ImageBuffer& aImage, OutputFile& objOut);

/// True when a bitmap of these bytes, decoded into aImage, is a plain opaque picture of the given size: what
/// a metafile that does nothing but show it looks like. aImage is untouched otherwise.
bool bDecodeOnlyBitmap(Bytes aHeader, Bytes aBits, std::int32_t lWidth, std::int32_t lHeight,
                       ImageBuffer& aImage);

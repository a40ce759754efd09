// Encodes a page's strips in each of the compressions.
// Room: platform/image/codecs/tiff.
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "src/platform/image/base/byte_reader.h"
#include "src/platform/image_buffer.h"

/// Layout of the encoded strips.
struct TiffStrips {
    std::uint32_t rows_per_strip = 0;
    std::vector<std::uint64_t> sizes;  ///< encoded bytes of each strip, in order
};

/// Receives the next strip or part of one; false aborts the encoding.
using TakeBytes = std::function<bool(Bytes)>;

/// Encodes grey, RGB or RGBA without compression. False if take failed.
bool EncodePlainStrips(const ImageBuffer& image, const TakeBytes& take, TiffStrips& strips);

/// Encodes grey, RGB or RGBA with LZW and horizontal differencing (predictor 2). False if take failed.
bool EncodeLzwStrips(const ImageBuffer& image, const TakeBytes& take, TiffStrips& strips);

/// Encodes a single bilevel strip with one of libtiff's CCITT compressions; white is 0. A pixel is white if
/// its luma 0.299 R + 0.587 G + 0.114 B is at least 128; transparency is composited over white.
bool EncodeFaxStrip(const ImageBuffer& image, std::uint16_t compression, const TakeBytes& take,
                    TiffStrips& strips);

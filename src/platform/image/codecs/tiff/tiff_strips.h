// The strips of a page that is being written, in each of the compressions.
// Room: platform/image/codecs/tiff.
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "src/platform/image/base/byte_reader.h"
#include "src/platform/image_buffer.h"

/// What the strips turned out to be.
struct TiffStrips {
    std::uint32_t rows_per_strip = 0;
    std::vector<std::uint64_t> sizes;  ///< bytes of each, in the order in which they were handed over
};

/// Takes the next strip, or part of one; False ends the writing.
using TakeBytes = std::function<bool(Bytes)>;

/// Grey, R, G, B or R, G, B, A as they stand. False when take is.
bool EncodePlainStrips(const ImageBuffer& image, const TakeBytes& take, TiffStrips& strips);

/// The same by LZW, each level less that of the pixel before it (predictor 2).
bool EncodeLzwStrips(const ImageBuffer& image, const TakeBytes& take, TiffStrips& strips);

/// One strip of black and white by compression, one of libtiff's CCITT methods; white is 0. White is what
/// has an intensity 0.299 R + 0.587 G + 0.114 B of 128 or more, on white paper where there is alpha.
bool EncodeFaxStrip(const ImageBuffer& image, std::uint16_t compression, const TakeBytes& take,
                    TiffStrips& strips);

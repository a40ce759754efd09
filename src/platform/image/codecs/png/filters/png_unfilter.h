// Undoing the row filters of a PNG.
// Room: platform/image/codecs/png/filters.
#pragma once

#include <cstddef>
#include <cstdint>

/// What stands before each row. Each sample is kept as the difference, modulo 256, to a guess: nothing, the
/// sample of the pixel to the left, the one above, the floor of the mean of these two, or the one of left,
/// above and above left that is nearest to left + above - above left, ties in this order.
enum class PngFilter : std::uint8_t { None = 0, Sub = 1, Up = 2, Average = 3, Paeth = 4 };
constexpr std::uint32_t kPngFilters = 5;

/// Undoes the filter of nRows rows one below the other and brings the samples into our order on the way.
struct PngRows {
    const std::uint8_t*
        pIn;  ///< each row its filter's byte and nBytes; 16 more bytes behind the last may be read
    std::size_t nInStride;
    std::uint8_t* pOut;          ///< rows of nBytes each, one after the other
    const std::uint8_t* pAbove;  ///< the row above pOut, as it was written; zeros for the first of a picture
    std::size_t nBytes;          ///< a whole number of pixels
    std::size_t nRows;
};

/// False when a row's filter isn't one of the five; what is at pOut is then of no value.
using UnfilterPngRows = bool (*)(const PngRows& objRows);

struct PngUnfilters {
    UnfilterPngRows OneByte;  ///< a pixel, or several, in a byte
    UnfilterPngRows Rgb;      ///< R, G, B becomes B, G, R
    UnfilterPngRows Rgba;     ///< R, G, B, A becomes B, G, R, A
};

/// The fastest that this machine has; with bPortable those that every machine has.
const PngUnfilters& objPngUnfilters(bool bPortable = false);

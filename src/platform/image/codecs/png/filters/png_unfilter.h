// Undoing the row filters of a PNG.
// Room: platform/image/codecs/png/filters.
#pragma once

#include <cstddef>
#include <cstdint>

/// What stands before each row. Each sample is kept as the difference, modulo 256, to a guess: nothing, the
/// sample of the pixel to the left, the one above, the floor of the mean of these two, or the one of left,
/// above and above left that is nearest to left + above - above left, ties in this order.
enum class PngFilter : std::uint8_t { kNone = 0, kSub = 1, kUp = 2, kAverage = 3, kPaeth = 4 };
constexpr std::uint32_t kPngFilters = 5;

/// Undoes the filter of rows rows one below the other and brings the samples into our order on the way.
struct PngRows {
    const std::uint8_t*
        in;  ///< each row its filter's byte and bytes; 16 more bytes behind the last may be read
    std::size_t in_stride;
    std::uint8_t* out;          ///< rows of bytes each, one after the other
    const std::uint8_t* above;  ///< the row above out, as it was written; zeros for the first of a picture
    std::size_t bytes;          ///< a whole number of pixels
    std::size_t rows;
};

/// False when a row's filter isn't one of the five; what is at out is then of no value.
using UnfilterPngRows = bool (*)(const PngRows& rows);

struct PngUnfilters {
    UnfilterPngRows one_byte;  ///< a pixel, or several, in a byte
    UnfilterPngRows rgb;       ///< R, G, B becomes B, G, R
    UnfilterPngRows rgba;      ///< R, G, B, A becomes B, G, R, A
};

/// The fastest that this machine has; with portable those that every machine has.
const PngUnfilters& PngUnfiltersFor(bool portable = false);

// Undoes PNG row filters.
// Room: platform/image/codecs/png/filters.
#pragma once

#include <cstddef>
#include <cstdint>

/// A row's filter byte. Samples are stored as the difference, modulo 256, from a prediction: 0, left, above,
/// the floor of the mean of left and above, or the Paeth predictor (whichever of left, above and above left
/// is nearest to left + above - above left; ties in that order).
enum class PngFilter : std::uint8_t { kNone = 0, kSub = 1, kUp = 2, kAverage = 3, kPaeth = 4 };
constexpr std::uint32_t kPngFilters = 5;

/// Consecutive rows to unfilter, converting to the buffer's channel order.
struct PngRows {
    const std::uint8_t* in;  ///< filter byte and bytes of each row; 16 bytes past the last one may be read
    std::size_t in_stride;
    std::uint8_t* out;          ///< contiguous rows of `bytes` each
    const std::uint8_t* above;  ///< the unfiltered row above out; zeros for the first row of a picture
    std::size_t bytes;          ///< per row; a whole number of pixels
    std::size_t rows;
};

/// False if a row's filter byte is invalid; out is then undefined.
using UnfilterPngRows = bool (*)(const PngRows& rows);

struct PngUnfilters {
    UnfilterPngRows one_byte;  ///< one or more pixels per byte
    UnfilterPngRows rgb;       ///< RGB to BGR
    UnfilterPngRows rgba;      ///< RGBA to BGRA
};

/// The fastest kernels this machine supports, or the portable ones.
const PngUnfilters& PngUnfiltersFor(bool portable = false);

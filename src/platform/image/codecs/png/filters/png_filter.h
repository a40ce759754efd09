// Choosing and applying the row filters of a PNG that is written.
// Room: platform/image/codecs/png/filters.
#pragma once

#include <cstddef>
#include <cstdint>

#include "src/platform/image/codecs/png/filters/png_unfilter.h"

/// One row's samples and those of the row above (zeros for the first row), with room around them: kRowSlack
/// zeros in front of each, kRowSlack bytes that may be read behind.
struct PngFilterRow {
    const std::uint8_t* row;
    const std::uint8_t* above;
    std::size_t bytes;
    std::uint32_t pixel_bytes;  ///< 1 to 4
};
constexpr std::size_t kPngRowSlack = 32;

struct PngFilters {
    /// The filter that leaves what takes fewest bits, as far as that can be told without coding it: the sum
    /// of log2(1 + |difference|) over the row, less a bonus for each place where four differences in a row
    /// are alike, since these become copies. For photographs that finds smaller files than the sum of
    /// |difference| does.
    PngFilter (*choose)(const PngFilterRow& row);
    /// The filter's byte and the differences to out; up to kPngRowSlack bytes behind them may be written
    /// too.
    void (*apply)(PngFilter filter, const PngFilterRow& row, std::uint8_t* out);
};

/// The fastest that this machine has; with portable those that every machine has. They choose alike.
const PngFilters& PngFiltersFor(bool portable = false);

/// What a difference counts for, by its magnitude n: 16 * log2(1 + n). From 16 on by n / 16, which a vector
/// of 16 bytes can look up too.
constexpr std::uint8_t kPngSmallCosts[16] = {0, 16, 25, 32, 37, 41, 45, 48, 51, 53, 55, 57, 59, 61, 63, 64};
constexpr std::uint8_t kPngLargeCosts[16] = {0, 73, 85, 92, 98, 102, 106, 109, 112, 0, 0, 0, 0, 0, 0, 0};
constexpr std::uint32_t kPngRunBonus = 16;
/// Runs are counted in groups of so many differences; a run that crosses from one into the next counts for
/// less.
constexpr std::size_t kPngFilterGroup = 32;

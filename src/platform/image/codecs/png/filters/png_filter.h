// Chooses and applies PNG row filters.
// Room: platform/image/codecs/png/filters.
#pragma once

#include <cstddef>
#include <cstdint>

#include "src/platform/image/codecs/png/filters/png_unfilter.h"

/// A row's samples and those of the row above (zeros for the first row). Each has kRowSlack zeros in front
/// and kRowSlack readable bytes behind.
struct PngFilterRow {
    const std::uint8_t* row;
    const std::uint8_t* above;
    std::size_t bytes;
    std::uint32_t pixel_bytes;  ///< 1 to 4
};
constexpr std::size_t kPngRowSlack = 32;

struct PngFilters {
    /// Picks the filter by a heuristic for the coded size: the sum of log2(1 + |difference|) over the row,
    /// less a bonus wherever four successive differences are equal, since those become matches. On
    /// photographs this beats the usual sum of |difference|.
    PngFilter (*choose)(const PngFilterRow& row);
    /// Writes the filter byte and the differences to out, and up to kPngRowSlack bytes past them.
    void (*apply)(PngFilter filter, const PngFilterRow& row, std::uint8_t* out);
};

/// The fastest filters this machine supports, or the portable ones; both choose alike.
const PngFilters& PngFiltersFor(bool portable = false);

/// The cost of a difference of magnitude n: 16 * log2(1 + n). From 16 on it is indexed by n / 16, so that a
/// shuffle can look it up in 16 bytes.
constexpr std::uint8_t kPngSmallCosts[16] = {0, 16, 25, 32, 37, 41, 45, 48, 51, 53, 55, 57, 59, 61, 63, 64};
constexpr std::uint8_t kPngLargeCosts[16] = {0, 73, 85, 92, 98, 102, 106, 109, 112, 0, 0, 0, 0, 0, 0, 0};
constexpr std::uint32_t kPngRunBonus = 16;
/// Runs are counted in groups of this many differences; a run across a group boundary counts less.
constexpr std::size_t kPngFilterGroup = 32;

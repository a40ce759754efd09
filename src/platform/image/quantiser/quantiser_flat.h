// Finds the colours of large flat areas.
// Room: platform/image/quantiser.
#pragma once

#include <cstdint>
#include <vector>

#include "src/platform/image/quantiser/quantiser.h"

struct FlatColour {
    PaletteColour colour{};
    std::uint64_t pixels = 0;  ///< in flat blocks; there may be more elsewhere
};

constexpr std::size_t kMaxFlatColours = 64;

/// Colours that fill at least 1/512 of a picture (3 or 4 channels) with flat opaque 8x8 blocks, most frequent
/// first. Drawings and screenshots have such backgrounds, photographs seldom do.
std::vector<FlatColour> FindFlatColours(const ImageBuffer& image);

/// Overwrites the indices of pixels that are exactly a flat colour: `first` for the first flat colour, and so
/// on.
void TakeFlatColours(const ImageBuffer& image, const std::vector<FlatColour>& flats, std::size_t first,
                     PixelBytes& indexes);

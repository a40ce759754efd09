// Finds the colours of the large plain areas of a picture.
// Room: platform/image/quantiser.
#pragma once

#include <cstdint>
#include <vector>

#include "src/platform/image/quantiser/quantiser.h"

struct FlatColour {
    PaletteColour colour{};
    std::uint64_t pixels = 0;  ///< in whole plain blocks; there may be more elsewhere
};

constexpr std::size_t kMaxFlatColours = 64;

/// The colours, most frequent first, that fill at least a 512th of a picture of 3 or 4 channels with plain
/// opaque blocks of 8x8 pixels: the grounds and surfaces of a drawing or a screen shot, seldom anything in a
/// photograph.
std::vector<FlatColour> FindFlatColours(const ImageBuffer& image);

/// Gives the pixels of exactly a flat colour its index, first for the first and so on, whatever they have in
/// indexes.
void TakeFlatColours(const ImageBuffer& image, const std::vector<FlatColour>& flats, std::size_t first,
                     PixelBytes& indexes);

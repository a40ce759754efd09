// Finds the colours of the large plain areas of a picture.
// Room: platform/image/quantiser.
#pragma once

#include <cstdint>
#include <vector>

#include "src/platform/image/quantiser/quantiser.h"

struct FlatColour {
    PaletteColour aColour{};
    std::uint64_t nPixels = 0;  ///< in whole plain blocks; there may be more elsewhere
};

constexpr std::size_t kMaxFlatColours = 64;

/// The colours, most frequent first, that fill at least a 512th of a picture of 3 or 4 channels with plain
/// opaque blocks of 8x8 pixels: the grounds and surfaces of a drawing or a screen shot, seldom anything in a
/// photograph.
std::vector<FlatColour> aFlatColours(const ImageBuffer& aImage);

/// Gives the pixels of exactly a flat colour its index, nFirst for the first and so on, whatever they have in
/// aIndexes.
void TakeFlatColours(const ImageBuffer& aImage, const std::vector<FlatColour>& aFlats, std::size_t nFirst,
                     PixelBytes& aIndexes);

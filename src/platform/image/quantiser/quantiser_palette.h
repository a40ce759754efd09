// Builds an optimised palette for a picture.
// Room: platform/image/quantiser.
#pragma once

#include <cstddef>
#include <vector>

#include "src/platform/image/quantiser/quantiser.h"
#include "src/platform/image/quantiser/quantiser_flat.h"

/// At most colour_count (1 to 256) colours for a picture of 3 or 4 channels. The first ones are those of
/// flats, which has fewer than colour_count. Transparent pixels are ignored; empty if all are. Method: X.
/// Wu's variance-based cutting of the colour cube ("Efficient Statistical Computations for Optimal Color
/// Quantization", Graphics Gems II), then rounds of k-means on the histogram cells.
std::vector<PaletteColour> FitPalette(const ImageBuffer& image, const std::vector<FlatColour>& flats,
                                      std::size_t colour_count);

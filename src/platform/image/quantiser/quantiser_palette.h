// Finds the colours that stand best for all colours of a picture.
// Room: platform/image/quantiser.
#pragma once

#include <cstddef>
#include <vector>

#include "src/platform/image/quantiser/quantiser.h"
#include "src/platform/image/quantiser/quantiser_flat.h"

/// At most colour_count (1 to 256) colours for a picture of 3 or 4 channels, the first of them those of
/// flats, which are fewer; the transparent pixels of a picture of 4 channels don't count. Empty if no pixel
/// counts. Method: X. Wu's cut of the colour cube ("Efficient Statistical Computations for Optimal Color
/// Quantization", Graphics Gems II), followed by rounds of k-means over the cells of the histogram.
std::vector<PaletteColour> FitPalette(const ImageBuffer& image, const std::vector<FlatColour>& flats,
                                      std::size_t colour_count);

// Reduces a picture to at most 256 colours.
// Room: platform/image/quantiser.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "src/platform/image_buffer.h"

using PaletteColour = std::array<std::uint8_t, 3>;  ///< BGR

struct IndexedImage {
    std::vector<PaletteColour> palette;  ///< 1 to 256 colours, including the transparent one
    std::int32_t transparent = -1;       ///< its index; -1 if the picture is opaque
    PixelBytes indexes;                  ///< one per pixel, rows top to bottom
};

/// A picture of up to 256 colours is kept exactly; others get an optimised palette and are dithered. Pixels
/// with an alpha below 128 become transparent, which takes one of the 256 colours; all others become opaque.
/// The result is the same on every machine.
IndexedImage Quantise(const ImageBuffer& image);

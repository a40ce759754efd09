// Turns a picture into one of at most 256 colours.
// Room: platform/image/quantiser.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "src/platform/image_buffer.h"

using PaletteColour = std::array<std::uint8_t, 3>;  ///< B, G, R

struct IndexedImage {
    std::vector<PaletteColour> palette;  ///< 1 to 256 colours, the transparent one included
    std::int32_t transparent = -1;       ///< its index; -1 if the picture is opaque
    PixelBytes indexes;                  ///< one for each pixel, rows top to bottom
};

/// A picture of 256 colours or fewer is kept exactly. A picture of more gets a palette fitted to it, and the
/// error of each pixel is spread over its neighbours. Where alpha is below 128 a pixel is transparent,
/// elsewhere opaque; one colour of the 256 is then the transparent one. The same picture gives the same
/// result on every machine.
IndexedImage Quantise(const ImageBuffer& image);

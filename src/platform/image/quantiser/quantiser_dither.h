// Gives each pixel of a picture a colour of a palette, spreading the errors over the neighbours.
// Room: platform/image/quantiser.
#pragma once

#include <cstdint>
#include <span>

#include "src/platform/image/quantiser/quantiser.h"

/// An index for each pixel of image, which has 3 or 4 channels. transparent is the index for pixels whose
/// alpha is below 128. Errors spread as R. W. Floyd and L. Steinberg have it ("An Adaptive Algorithm for
/// Spatial Grey Scale"), in rows that run to and fro; what a pixel may take over is limited, so that colours
/// beyond the palette's reach don't run into their surroundings.
PixelBytes Dither(const ImageBuffer& image, std::span<const PaletteColour> palette, std::int32_t transparent);

// Maps a picture to a palette with error diffusion.
// Room: platform/image/quantiser.
#pragma once

#include <cstdint>
#include <span>

#include "src/platform/image/quantiser/quantiser.h"

/// Returns the palette index of each pixel of image (3 or 4 channels); transparent is the index for pixels
/// with alpha below 128. Floyd-Steinberg error diffusion ("An Adaptive Algorithm for Spatial Grey Scale") in
/// serpentine order. The error that a pixel takes over is clamped, so that colours outside the palette's
/// gamut don't bleed.
PixelBytes Dither(const ImageBuffer& image, std::span<const PaletteColour> palette, std::int32_t transparent);

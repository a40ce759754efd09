// Histogram equalisation that keeps colours.
// Room: platform/image/transforms/colour.
#pragma once

#include "src/platform/image_buffer.h"

namespace transforms
{

/// Histogram equalisation of the intensity Y (intensity.h), without a shift of the colours. With c(y) the
/// number of pixels whose intensity is at most y, N the number of all and y0 the least intensity that occurs,
///
///     T(y)  = 255 (c(y) - c(y0)) / (N - c(y0))            whole equalisation
///     Y'    = Y + level (T(Y) - Y), rounded              level 0.0 no change, 1.0 and more whole
///     v'    = Y' + k (v - Y)     for v = R, G, B, with the greatest k <= 1 that keeps all three in 0..255
///
/// so a pixel keeps its chroma differences and, where they don't fit, its hue (the clipping of the channels
/// one by one, which is common, would shift it). A picture of one intensity stays as it is. Pixels of alpha 0
/// aren't counted but changed along; alpha stays. NaN and values below 0 change nothing. Never False.
bool Equalize(ImageBuffer& image, double level);

}  // namespace transforms

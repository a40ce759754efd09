// Histogram equalisation that keeps colours.
// Room: platform/image/transforms/colour.
#pragma once

#include "src/platform/image_transform.h"

namespace transforms
{

/// Equalises the histogram of the intensity Y (intensity.h) without shifting colours. With c(y) the number of
/// pixels of intensity at most y, N the number of all pixels and y0 the lowest intensity that occurs:
///
///     T(y)  = 255 (c(y) - c(y0)) / (N - c(y0))            whole equalisation
///     Y'    = Y + level (T(Y) - Y), rounded              level 0.0 no change, 1.0 and more whole
///     v'    = Y' + k (v - Y)     for v = R, G, B, with the greatest k <= 1 that keeps all three in 0..255
///
/// So a pixel keeps its chroma or, where that doesn't fit, at least its hue, which clipping each channel
/// separately would shift. A picture of one intensity doesn't change. Pixels with alpha 0 are changed but not
/// counted; alpha stays. Levels below 0 and NaN change nothing.
OperationResult Equalize(const ImageBuffer& source, ImageBuffer& result, double level);

}  // namespace transforms

// Rotates a picture by any angle.
// Room: platform/image/transforms/geometry.
#pragma once

#include "src/platform/image_transform.h"

namespace transforms
{

/// Rotates the picture clockwise by angle degrees about its centre, on a canvas that holds all of it: W =
/// ceil(w |cos| + h |sin|), H = ceil(w |sin| + h |cos|), centres aligned. A target pixel at (dx, dy) from the
/// canvas's centre shows the source at (dx cos + dy sin, dy cos - dx sin) from the picture's centre,
/// interpolated bilinearly; outside is opaque background, and the picture's edge blends into it over one
/// pixel.
///
/// The angle is taken modulo 360; multiples of 90 degrees are exact and swap the resolutions too. A grey
/// picture with a coloured background becomes one of 3 channels, except for multiples of 90. NaN and
/// infinities change nothing. Failed if the canvas would exceed the size limits.
OperationResult Rotate(const ImageBuffer& source, ImageBuffer& result, double angle, Colour background);

}  // namespace transforms

// Turns a picture by any angle.
// Room: platform/image/transforms/geometry.
#pragma once

#include "src/platform/image_transform.h"

namespace transforms
{

/// Turns the picture clockwise by angle degrees about its middle, on a canvas that holds all of it:
/// W = ceil(w |cos| + h |sin|), H = ceil(w |sin| + h |cos|), the middles on each other. A target pixel whose
/// middle lies (dx, dy) from the canvas's middle shows the source at (dx cos + dy sin, dy cos - dx sin) from
/// the picture's middle, interpolated bilinearly; outside is background, opaque, and the picture's border
/// is blended into it over one pixel.
///
/// Whole turns are taken off; multiples of 90 degrees are exact and exchange the resolutions too. A grey
/// picture that gets a background with colour becomes one of 3 channels; under multiples of 90 it stays grey.
/// No change for NaN and infinities. False for a canvas larger than a picture may be.
bool Rotate(ImageBuffer& image, double angle, Colour background);

}  // namespace transforms

// Lights a picture from the side: as an embossing in grey, and as a relief in its own colours.
// Room: platform/image/transforms/effects.
#pragma once

#include <cstdint>

#include "src/platform/image_buffer.h"

namespace transforms
{

/// Both take light for height and let the light come from angle degrees, counterclockwise from the right (0
/// right, 90 above). D(h), of values I at places x to the right and y down, is the slope towards the light:
///   D(h) = cos (I(x - h, y) - I(x + h, y)) + sin (I(x, y + h) - I(x, y - h))
/// Beyond the border the border's pixels go on. Sines and cosines are rounded to 1/4096 together with their
/// factor, results to the nearest level (or the one beside it, where two are as near but for 1/60) and kept
/// in 0..255. Alpha is carried.

/// Each channel becomes 128 + brightness / 10 D(height): a flat surface is middle grey, one towards the
/// light lighter. height is brought to 16 at most, brightness into 0..1000; a height of 0 or less, and an
/// angle or brightness that is no number, change nothing.
bool Emboss(ImageBuffer& image, double angle, std::int32_t height, double brightness);

/// Each channel becomes v + brightness D(1), where I is the picture's intensity, evened out by a Gaussian of
/// smoothness / 4 pixels. brightness is brought into 0..100, smoothness into 0..16; a brightness of 0 or
/// less, and an argument that is no number, change nothing.
bool Relief(ImageBuffer& image, double angle, double brightness, double smoothness);

}  // namespace transforms

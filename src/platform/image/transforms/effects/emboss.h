// Lights a picture from the side: emboss in grey, relief in its own colours.
// Room: platform/image/transforms/effects.
#pragma once

#include <cstdint>

#include "src/platform/image_transform.h"

namespace transforms
{

/// Both treat levels as heights. The light comes from angle degrees, counterclockwise from the right (0
/// right, 90 above). D(h) is the slope towards the light of the levels I(x, y), x to the right and y down:
///   D(h) = cos (I(x - h, y) - I(x + h, y)) + sin (I(x, y + h) - I(x, y - h))
/// The border is replicated. Results are rounded to the nearest
/// level (ties are broken either way within 1/60 level) and clamped to 0..255. Alpha is unchanged.

/// Each channel becomes 128 + brightness / 10 D(height): flat areas are middle grey, slopes facing the light
/// are lighter. height is limited to 16, brightness clamped to 0..1000; a height of 0 or less, NaN and an
/// infinite angle change nothing.
OperationResult Emboss(const ImageBuffer& source, ImageBuffer& result, double angle, std::int32_t height,
                       double brightness);

/// Each channel becomes v + brightness D(1), where I is the picture's intensity, smoothed by a Gaussian of
/// smoothness / 4 pixels. brightness is clamped to 0..100, smoothness to 0..16; a brightness of 0 or less,
/// NaN and an infinite angle change nothing.
OperationResult Relief(const ImageBuffer& source, ImageBuffer& result, double angle, double brightness,
                       double smoothness);

}  // namespace transforms

// Motion blur: straight, radial and zoom.
// Room: platform/image/transforms/effects.
#pragma once

#include <cstdint>

#include "src/platform/image_transform.h"

namespace transforms
{

/// Each channel but alpha becomes the mean of n = amount pixels on a line centred on it (for even n, half a
/// pixel further in the angle's direction). The line runs at angle degrees, modulo 180, counterclockwise from
/// the right: its k-th pixel is floor(t cos + 0.5) to the right and floor(t sin + 0.5) up, with t = k -
/// floor((n - 1) / 2) for k = 0..n - 1. The border is replicated. amount is limited to 255; below 2, or if
/// the angle isn't finite, nothing changes.
OperationResult MotionBlur(const ImageBuffer& source, ImageBuffer& result, double angle, std::int32_t amount);

/// As if the camera had rotated during the exposure, by displacement percent of 36 degrees, half of it each
/// way. Each channel but alpha becomes the mean of n pictures rotated in equal steps about the centre. n is
/// the power of two for which steps are at most one pixel at the corners, or two pixels for n above 64.
/// Bilinear interpolation; the border is replicated. Clamped to 0..100; 0 and NaN change nothing.
OperationResult RadialBlur(const ImageBuffer& source, ImageBuffer& result, double displacement);

/// As if the lens had zoomed in during the exposure: each channel but alpha becomes the mean of n pictures
/// magnified about the centre by 1 up to 1 / (1 - p / 200), with p = intensity percent; at 100 a pixel is
/// smeared halfway to the centre. The magnifications are in geometric steps, n as for RadialBlur. Clamped to
/// 0..100; 0 and NaN change nothing.
OperationResult ZoomBlur(const ImageBuffer& source, ImageBuffer& result, double intensity);

}  // namespace transforms

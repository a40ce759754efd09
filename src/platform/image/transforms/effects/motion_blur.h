// Blurs a picture along lines: straight, about its middle, towards its middle.
// Room: platform/image/transforms/effects.
#pragma once

#include <cstdint>

#include "src/platform/image_buffer.h"

namespace transforms
{

/// Each channel but alpha becomes the mean of amount pixels on a line through its place, centred on it (for
/// even numbers one pixel further in the angle's direction). The line runs at angle degrees,
/// counterclockwise from the right: its k-th pixel lies floor(t cos + 0.5) to the right and floor(t sin +
/// 0.5) up, with t = k - floor((n - 1) / 2) for k = 0..n - 1. Half turns are taken off. Beyond the border the
/// border's pixels go on. amount is brought to 255 at most; below 2, and for an angle that is no number,
/// nothing changes.
bool MotionBlur(ImageBuffer& image, double angle, std::int32_t amount);

/// As if the picture had been turned about its middle while it was taken, by displacement percent of 36
/// degrees, half of it each way. Each channel but alpha becomes the mean of n pictures turned by equal steps,
/// with n the power of two that leaves steps of at most a pixel at the corners, above 64 of two pixels; they
/// are interpolated bilinearly, and beyond the border the border's pixels go on. Brought into 0..100; 0 and
/// NaN change nothing.
bool RadialBlur(ImageBuffer& image, double displacement);

/// As if the camera's lens had been zoomed in: each channel but alpha becomes the mean of n pictures
/// magnified about the middle by 1 up to 1 / (1 - p / 200), with p = intensity percent; at 100 a pixel is
/// smeared from its place over half its way to the middle. The magnifications are in geometric steps, n as
/// for RadialBlur. Brought into 0..100; 0 and NaN change nothing.
bool ZoomBlur(ImageBuffer& image, double intensity);

}  // namespace transforms

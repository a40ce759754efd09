// Resizes a picture, and tiles reduced copies of it.
// Room: platform/image/transforms/geometry.
#pragma once

#include <cstdint>

#include "src/platform/image_transform.h"

namespace transforms
{

/// Scales the picture to width by height pixels (each at least 1). interpolation is clamped to 0..2. The two
/// directions are scaled separately, each target pixel being a weighted mean of source pixels:
///   0 nearest: target pixel i is source pixel floor((i + 0.5) w / W).
///   1 bilinear, 2 bicubic: with source pixel centres at j + 0.5 and the target's at (i + 0.5) w / W, source
///   pixels weigh f(distance / s), s = max(1, w / W), normalised to a sum of 1; pixels outside the picture
///   have no weight. f(t) = 1 - |t| up to 1, or Keys' cubic with a = -0.5 (Catmull-Rom): 1.5|t|^3 - 2.5|t|^2
///   + 1 up to 1, -0.5|t|^3 + 2.5|t|^2 - 4|t| + 2 up to 2. Because the filter widens when the picture
///   shrinks, nothing aliases. The same as Pillow's resize.
/// Results are rounded to the nearest level (ties are broken either way within 1/25 level) and clamped to
/// 0..255. Colours are weighted by alpha. background is unused, since the result covers the whole frame. The
/// picture's own size changes nothing. Failed if the size isn't allowed.
OperationResult Resize(const ImageBuffer& source, ImageBuffer& result, std::int32_t width,
                       std::int32_t height, std::int32_t interpolation, Colour background);

/// Tiles copies by copies reduced copies of the picture into its own size; copies is clamped to 1..32. A copy
/// is the picture resized bilinearly to ceil(w / n) by ceil(h / n). Copies start at floor(i w / n) and
/// floor(j h / n); if the division has a remainder, a copy's last column or row is covered by the next copy.
/// 1 changes nothing.
OperationResult Reproduce(const ImageBuffer& source, ImageBuffer& result, std::int32_t copies);

}  // namespace transforms

// Gives a picture another size, and lays reduced copies of it side by side.
// Room: platform/image/transforms/geometry.
#pragma once

#include <cstdint>

#include "src/platform/image_transform.h"

namespace transforms
{

/// Scales the picture to width by height pixels, each brought to 1 at least. interpolation, brought into
/// 0..2, says how; the two directions are scaled one after the other and each pixel is a mean of source
/// pixels along its row and column:
///   0 nearest: target pixel i is source pixel floor((i + 0.5) w / W).
///   1 bilinear, 2 bicubic: with the source pixels' middles at j + 0.5 and the target's at (i + 0.5) w / W,
///   source pixels weigh f(distance / s), s = max(1, w / W), and the weights are divided by their sum; pixels
///   beyond the border have none. f(t) = 1 - |t| up to 1, or Keys' cubic with a = -0.5 (Catmull-Rom):
///   1.5|t|^3 - 2.5|t|^2 + 1 up to 1, -0.5|t|^3 + 2.5|t|^2 - 4|t| + 2 up to 2. When the picture shrinks, all
///   source pixels so have their part in it and nothing aliases. Pillow's resize is the same.
/// The result is rounded to the nearest level (or the one beside it, where two are as near but for 1/25) and
/// kept in 0..255. Transparent pixels weigh by their alpha
/// too. Everything is covered, so that background isn't seen. The picture's own size changes nothing. False,
/// with the picture as it was, for a size that a picture may not have.
bool Resize(ImageBuffer& image, std::int32_t width, std::int32_t height, std::int32_t interpolation,
            Colour background);

/// Lays copies by copies reduced copies of the picture into its size, copies brought into 1..32. A copy is
/// the picture resized bilinearly to ceil(w / n) by ceil(h / n); the copies begin at floor(i w / n) and
/// floor(j h / n), and where the division leaves a rest, a copy's last column or row is covered by the next
/// one. 1 changes nothing.
bool Reproduce(ImageBuffer& image, std::int32_t copies);

}  // namespace transforms

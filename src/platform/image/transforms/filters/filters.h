// The filters of 3 x 3 neighbours: smoothing, sharpening, edges and lines.
// Room: platform/image/transforms/filters.
#pragma once

#include <cstdint>

#include "src/platform/image_buffer.h"

// Each colour channel is filtered separately, alpha is unchanged, and the border is replicated. Kernels are
// written row by row, as applied to the picture. A kind or direction outside the
// list is brought to its nearer end. The masks are those of W. K. Pratt, Digital Image Processing (1978),
// unless another source is named. What finds edges shows the amount of the sum, dark to light or light to
// dark alike, undivided and cut off at 255: an even area is black. Where a direction is asked for, it is the
// direction of the edge or line itself: "vertical" finds what runs up and down. False, with the picture as it
// was, only when there is no memory for a few rows.
namespace transforms
{

/// Prewitt's compass gradient, 0 to 7: up, up-left, left, down-left, down, down-right, right, up-right. Up is
///     1  1  1 | 1 -2  1 | -1 -1 -1
/// and the others are it turned by an eighth each. It shows only where the picture becomes lighter in the
/// search direction (falls are cut off at 0), so opposite directions find opposite edges.
bool FilterDifference(ImageBuffer& image, std::int32_t direction);

/// Sharpens, cut off at 0 and 255:
///     0 medium    0 -1  0 | -1  5 -1 |  0 -1  0
///     1 strong   -1 -1 -1 | -1  9 -1 | -1 -1 -1
///     2 weak      1 -2  1 | -2  5 -2 |  1 -2  1
bool FilterHighPass(ImageBuffer& image, std::int32_t kind);

/// Smooths, rounded:
///     0 strong   1 1 1 | 1 1 1 | 1 1 1   / 9
///     1 medium   1 1 1 | 1 2 1 | 1 1 1   / 10
///     2 weak     1 2 1 | 2 4 2 | 1 2 1   / 16
bool FilterLowPass(ImageBuffer& image, std::int32_t kind);

/// Laplace's operator, shown as amount:
///     0 high   -1 -1 -1 | -1  8 -1 | -1 -1 -1
///     1 low     0 -1  0 | -1  4 -1 |  0 -1  0
bool FilterLaplas(ImageBuffer& image, std::int32_t kind);

/// 0 vertical  -1 0 1 | -2 0 2 | -1 0 1;   1 horizontal  -1 -2 -1 | 0 0 0 | 1 2 1.
bool FilterSobel(ImageBuffer& image, std::int32_t direction);

/// 0 vertical  -1 0 1 | -1 0 1 | -1 0 1;   1 horizontal  -1 -1 -1 | 0 0 0 | 1 1 1.
bool FilterPrewitt(ImageBuffer& image, std::int32_t direction);

/// The cross of Roberts, with p(x, y) the pixel itself: 0 first diagonal |p(x, y) - p(x + 1, y + 1)|, the
/// change along the diagonal that falls to the right; 1 second |p(x + 1, y) - p(x, y + 1)|.
bool FilterRoberts(ImageBuffer& image, std::int32_t direction);

/// The isotropic gradient of Frei and Chen: as Sobel, with the root of 2 (as 41/29) in place of the 2.
bool FilterIsotropic(ImageBuffer& image, std::int32_t direction);

/// Lines one pixel wide, dark or light, shown as amount (Gonzalez and Woods):
///     0 vertical           -1  2 -1 | -1  2 -1 | -1  2 -1
///     1 horizontal         -1 -1 -1 |  2  2  2 | -1 -1 -1
///     2 first diagonal      2 -1 -1 | -1  2 -1 | -1 -1  2    falling to the right
///     3 second diagonal    -1 -1  2 | -1  2 -1 |  2 -1 -1    rising to the right
bool FilterLineDetection(ImageBuffer& image, std::int32_t direction);

/// Changes nothing, whatever the number. Never False.
bool FilterReserved(ImageBuffer& image, std::int32_t value);

/// v + amount (m - v) with m the mean of the 3 x 3 pixels; 0.0 changes nothing, 1.0 is the strong low pass.
/// Numbers beyond that are brought to the nearer end, and NaN changes nothing.
bool FilterBlur(ImageBuffer& image, double amount);

/// v + amount (4 v - the sum of the four pixels beside it), cut off at 0 and 255; 0.0 changes nothing, 1.0
/// is the medium high pass. Numbers beyond that are brought to the nearer end, and NaN changes nothing.
bool FilterSharpen(ImageBuffer& image, double amount);

}  // namespace transforms

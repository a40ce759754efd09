// Filters with 3 x 3 kernels: smoothing, sharpening, edge and line detection.
// Room: platform/image/transforms/filters.
#pragma once

#include <cstdint>

#include "src/platform/image_buffer.h"

// Each colour channel is filtered separately, alpha is unchanged, and the border is replicated. Kernels are
// written row by row, as applied to the picture. Kinds and directions are clamped to the list. Kernels are
// from W. K. Pratt, Digital Image Processing (1978), unless another source is named. Edge filters show the
// absolute value of the sum, limited to 255: flat areas are black. A direction is that of the edge or line
// itself: "vertical" finds what runs up and down. False if memory runs out; the picture is then unchanged.
namespace transforms
{

/// Prewitt's compass gradient, 0 to 7: up, up-left, left, down-left, down, down-right, right, up-right. Up is
///     1  1  1 | 1 -2  1 | -1 -1 -1
/// and the others are rotated by an eighth turn each. Only rises in the search direction show (the sum is
/// clamped at 0), so opposite directions find opposite edges.
bool FilterDifference(ImageBuffer& image, std::int32_t direction);

/// Sharpens, clamped to 0..255:
///     0 medium    0 -1  0 | -1  5 -1 |  0 -1  0
///     1 strong   -1 -1 -1 | -1  9 -1 | -1 -1 -1
///     2 weak      1 -2  1 | -2  5 -2 |  1 -2  1
bool FilterHighPass(ImageBuffer& image, std::int32_t kind);

/// Smooths, rounded:
///     0 strong   1 1 1 | 1 1 1 | 1 1 1   / 9
///     1 medium   1 1 1 | 1 2 1 | 1 1 1   / 10
///     2 weak     1 2 1 | 2 4 2 | 1 2 1   / 16
bool FilterLowPass(ImageBuffer& image, std::int32_t kind);

/// The Laplacian, absolute value:
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

/// The isotropic gradient of Frei and Chen: Sobel with the square root of 2 (as 41/29) instead of 2.
bool FilterIsotropic(ImageBuffer& image, std::int32_t direction);

/// Lines one pixel wide, dark or light, absolute value (Gonzalez and Woods):
///     0 vertical           -1  2 -1 | -1  2 -1 | -1  2 -1
///     1 horizontal         -1 -1 -1 |  2  2  2 | -1 -1 -1
///     2 first diagonal      2 -1 -1 | -1  2 -1 | -1 -1  2    falling to the right
///     3 second diagonal    -1 -1  2 | -1  2 -1 |  2 -1 -1    rising to the right
bool FilterLineDetection(ImageBuffer& image, std::int32_t direction);

/// Changes nothing.
bool FilterReserved(ImageBuffer& image, std::int32_t value);

/// v + amount (m - v) with m the mean of the 3 x 3 pixels; 0.0 changes nothing, 1.0 is the strong low pass.
/// amount is clamped to 0..1; NaN changes nothing.
bool FilterBlur(ImageBuffer& image, double amount);

/// v + amount (4 v - s), clamped to 0..255, with s the sum of the four direct neighbours; 0.0 changes
/// nothing, 1.0 is the medium high pass. amount is clamped to 0..1; NaN changes nothing.
bool FilterSharpen(ImageBuffer& image, double amount);

}  // namespace transforms

// Filters with 3 x 3 kernels: smoothing, sharpening, edge and line detection.
// Room: platform/image/transforms/filters.
#pragma once

#include <cstdint>

#include "src/platform/image_transform.h"

// Each colour channel is filtered separately, alpha is unchanged, and the border is replicated. Kernels are
// written row by row, as applied to the picture. Kinds and directions are clamped to the list. Kernels are
// from W. K. Pratt, Digital Image Processing (1978), unless another source is named. Edge filters show the
// absolute value of the sum, limited to 255: flat areas are black. A direction is that of the edge or line
// itself: "vertical" finds what runs up and down.
namespace transforms
{

/// Prewitt's compass gradient, 0 to 7: up, up-left, left, down-left, down, down-right, right, up-right. Up is
///     1  1  1 | 1 -2  1 | -1 -1 -1
/// and the others are rotated by an eighth turn each. Only rises in the search direction show (the sum is
/// clamped at 0), so opposite directions find opposite edges.
OperationResult FilterDifference(const ImageBuffer& source, ImageBuffer& result, std::int32_t direction);

/// Sharpens, clamped to 0..255:
///     0 medium    0 -1  0 | -1  5 -1 |  0 -1  0
///     1 strong   -1 -1 -1 | -1  9 -1 | -1 -1 -1
///     2 weak      0 -1  0 | -1  6 -1 |  0 -1  0   / 2
/// (Pratt's third mask, 1 -2 1 | -2 5 -2 | 1 -2 1, sharpens more than the first, so it isn't the weak one.)
OperationResult FilterHighPass(const ImageBuffer& source, ImageBuffer& result, std::int32_t kind);

/// Smooths, rounded:
///     0 strong   1 1 1 | 1 1 1 | 1 1 1   / 9
///     1 medium   1 1 1 | 1 2 1 | 1 1 1   / 10
///     2 weak     1 2 1 | 2 4 2 | 1 2 1   / 16
OperationResult FilterLowPass(const ImageBuffer& source, ImageBuffer& result, std::int32_t kind);

/// The Laplacian, absolute value:
///     0 high   -1 -1 -1 | -1  8 -1 | -1 -1 -1
///     1 low     0 -1  0 | -1  4 -1 |  0 -1  0
OperationResult FilterLaplas(const ImageBuffer& source, ImageBuffer& result, std::int32_t kind);

/// 0 vertical  -1 0 1 | -2 0 2 | -1 0 1;   1 horizontal  -1 -2 -1 | 0 0 0 | 1 2 1.
OperationResult FilterSobel(const ImageBuffer& source, ImageBuffer& result, std::int32_t direction);

/// 0 vertical  -1 0 1 | -1 0 1 | -1 0 1;   1 horizontal  -1 -1 -1 | 0 0 0 | 1 1 1.
OperationResult FilterPrewitt(const ImageBuffer& source, ImageBuffer& result, std::int32_t direction);

/// The cross of Roberts, with p(x, y) the pixel itself: 0 first diagonal |p(x + 1, y) - p(x, y + 1)|, edges
/// that fall to the right; 1 second diagonal |p(x, y) - p(x + 1, y + 1)|, edges that rise to the right.
OperationResult FilterRoberts(const ImageBuffer& source, ImageBuffer& result, std::int32_t direction);

/// The isotropic gradient of Frei and Chen: Sobel with the square root of 2 (as 41/29) instead of 2.
OperationResult FilterIsotropic(const ImageBuffer& source, ImageBuffer& result, std::int32_t direction);

/// Lines one pixel wide, dark or light, absolute value (Gonzalez and Woods):
///     0 vertical           -1  2 -1 | -1  2 -1 | -1  2 -1
///     1 horizontal         -1 -1 -1 |  2  2  2 | -1 -1 -1
///     2 first diagonal      2 -1 -1 | -1  2 -1 | -1 -1  2    falling to the right
///     3 second diagonal    -1 -1  2 | -1  2 -1 |  2 -1 -1    rising to the right
OperationResult FilterLineDetection(const ImageBuffer& source, ImageBuffer& result, std::int32_t direction);

/// Changes nothing.
OperationResult FilterReserved(const ImageBuffer& source, ImageBuffer& result, std::int32_t value);

/// v + amount (m - v) with m the mean of the 3 x 3 pixels; 0.0 changes nothing, 1.0 is the strong low pass.
/// amount is clamped to 0..1; NaN changes nothing.
OperationResult FilterBlur(const ImageBuffer& source, ImageBuffer& result, double amount);

/// v + amount (4 v - s), clamped to 0..255, with s the sum of the four direct neighbours; 0.0 changes
/// nothing, 1.0 is the medium high pass. amount is clamped to 0..1; NaN changes nothing.
OperationResult FilterSharpen(const ImageBuffer& source, ImageBuffer& result, double amount);

}  // namespace transforms

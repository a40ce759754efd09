// Clustered-dot halftoning.
// Room: platform/image/transforms/effects.
#pragma once

#include <cstdint>
#include <vector>

#include "src/platform/image_transform.h"

namespace transforms
{

/// Turns tones into dots on a grid of cell_size pixels. Each channel but alpha is thresholded by the screen,
/// h = 255 where v is above the threshold and 0 elsewhere, and becomes v + contrast (h - v), rounded: 1 gives
/// pure dots, less blends them with the picture.
///
/// The screen: with n the cell size (clamped to 1..255), the pixels of a cell are ranked by cos(2 pi (x +
/// 0.5) / n) + cos(2 pi (y + 0.5) / n), ties in reading order, so white dots grow from the middle of the
/// cell. To give small cells more tones, each rank is subdivided over 4 by 4 cells in the order of a Bayer
/// matrix. The threshold is 255 (rank + (order + 0.5) / 16) / n^2, rounded down: of a flat tone v, v / 255 of
/// the pixels turn white, to within 1/16 pixel per cell.
///
/// contrast is clamped to 0..1; 0 and NaN change nothing.
OperationResult Halftones(const ImageBuffer& source, ImageBuffer& result, std::int32_t cell_size,
                          double contrast);

/// The screen for n = 1..255: 4n rows of 4n thresholds, which repeat.
std::vector<std::uint8_t> HalftoneScreen(std::int32_t cell_size);

}  // namespace transforms

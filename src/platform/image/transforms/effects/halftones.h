// Prints a picture in dots.
// Room: platform/image/transforms/effects.
#pragma once

#include <cstdint>
#include <vector>

#include "src/platform/image_buffer.h"

namespace transforms
{

/// Turns tones into dots on a grid of cell_size pixels: each channel but alpha becomes h = 255 where v is
/// greater than the screen's threshold at its place and 0 elsewhere, and then v + contrast (h - v), to the
/// nearest level: 1 is dots alone, less leaves some of the picture.
///
/// The screen: with n the cell's size (brought into 1..255), the pixels of a cell are numbered by how soon
/// they grow light, rising with cos(2 pi (x + 0.5) / n) + cos(2 pi (y + 0.5) / n), equal ones in reading
/// order; the first ones lie in the cell's middle, where light dots begin. So that small cells, too, have
/// tones, each rank is divided again among 4 by 4 cells in the order of Bayer's matrix. The threshold is 255
/// (rank + (order + 0.5) / 16) / n^2, rounded down: as much of a plain tone becomes white as its value is of
/// 255, to 1/16 of a pixel a cell.
///
/// contrast is brought into 0..1; 0 and NaN change nothing.
bool Halftones(ImageBuffer& image, std::int32_t cell_size, double contrast);

/// The thresholds of the screen for n = 1..255: 4n rows of 4n, after which they repeat.
std::vector<std::uint8_t> HalftoneScreen(std::int32_t cell_size);

}  // namespace transforms

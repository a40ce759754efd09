// The least and the greatest value around each pixel.
// Room: platform/image/transforms/filters.
#pragma once

#include <cstdint>

#include "src/platform/image_buffer.h"

// Every colour channel by itself, over the square of n x n pixels from n / 2 (rounded down) left of and above
// the pixel on: for odd n the pixel is its middle, for 2 the square ends at it. Beyond the border stand the
// border's own pixels again. n is size, 1 to 256, brought into that range; 1 changes nothing. Alpha stays.
// The work for a pixel doesn't grow with the square (van Herk 1992 down the columns; along the rows by
// doubling, in at most nine steps). False, with the picture as it was, only when there is no memory for up to
// 512 rows' worth of columns and for the alpha channel.
namespace transforms
{

/// The least of them: dark areas grow.
bool FilterMinimal(ImageBuffer& image, std::int32_t size);

/// The greatest: light areas grow. The negative of FilterMinimal of the negative.
bool FilterMaximal(ImageBuffer& image, std::int32_t size);

}  // namespace transforms

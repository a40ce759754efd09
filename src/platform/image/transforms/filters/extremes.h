// Minimum and maximum filters.
// Room: platform/image/transforms/filters.
#pragma once

#include <cstdint>

#include "src/platform/image_buffer.h"

// Each colour channel separately, over an n x n window that starts n / 2 (rounded down) to the left of and
// above the pixel: for odd n the pixel is in the middle. The border is replicated. n is size, clamped
// to 1..256; 1 changes nothing. Alpha is unchanged. The cost per pixel doesn't depend on n (van Herk 1992
// along columns; doubling in at most nine steps along rows). False only if memory runs out; the picture is
// then unchanged.
namespace transforms
{

/// The minimum: dark areas grow.
bool FilterMinimal(ImageBuffer& image, std::int32_t size);

/// The maximum: light areas grow. The negative of FilterMinimal of the negative.
bool FilterMaximal(ImageBuffer& image, std::int32_t size);

}  // namespace transforms

// Minimum and maximum filters.
// Room: platform/image/transforms/filters.
#pragma once

#include <cstdint>

#include "src/platform/image_transform.h"

// Each colour channel separately, over an n x n window that starts n / 2 (rounded down) to the left of and
// above the pixel: for odd n the pixel is in the middle. The border is replicated. n is size, clamped
// to 1..256; 1 changes nothing. Alpha is unchanged. The cost per pixel doesn't depend on n (van Herk 1992
// along columns; doubling in at most nine steps along rows).
namespace transforms
{

/// The minimum: dark areas grow.
OperationResult FilterMinimal(const ImageBuffer& source, ImageBuffer& result, std::int32_t size);

/// The maximum: light areas grow. The negative of FilterMinimal of the negative.
OperationResult FilterMaximal(const ImageBuffer& source, ImageBuffer& result, std::int32_t size);

}  // namespace transforms

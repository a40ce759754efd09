// Deinterlacing: replaces one field of an interlaced picture.
// Room: platform/image/transforms/filters.
#pragma once

#include "src/platform/image_transform.h"

namespace transforms
{

/// Replaces the odd or the even lines using the other field, which stays. Lines are counted from 0 at the
/// top, so the first is even. With interpolate a line becomes the mean of the lines above and below it,
/// rounded up; otherwise a copy of the line above. At the border the only neighbour is used. Alpha is
/// unchanged, and so is a picture of one line.
OperationResult Deinterlace(const ImageBuffer& source, ImageBuffer& result, bool odd_lines, bool interpolate);

}  // namespace transforms

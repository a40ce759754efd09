// Taking one of the two half pictures out of an interlaced one.
// Room: platform/image/transforms/filters.
#pragma once

#include "src/platform/image_buffer.h"

namespace transforms
{

/// Gives the odd or the even lines new values, made of the lines between them, which stay. Lines are counted
/// from 0 at the top, so the even ones include the first. With interpolate a line becomes the mean of the
/// lines above and below it, rounded up; otherwise the line above again. At the border the one neighbour that
/// there is takes the place of the other. Alpha stays; so does a picture of one line. False, with the
/// picture as it was, only without memory to tell transparent pixels apart.
bool Deinterlace(ImageBuffer& image, bool odd_lines, bool interpolate);

}  // namespace transforms

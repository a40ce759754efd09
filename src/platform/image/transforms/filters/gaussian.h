// Blurs a picture by the bell curve.
// Room: platform/image/transforms/filters.
#pragma once

#include <cstdint>

#include "src/platform/image_buffer.h"

namespace transforms
{

/// Each channel but alpha becomes its mean under a Gaussian whose standard deviation is fuzziness pixels,
/// brought into 0..255; 0 changes nothing. Beyond the border the border's pixels go on.
///
/// Up to 6 the curve is sampled at whole pixels up to three deviations, and a mean is within 0.8 of the exact
/// one before it is rounded. Above, that would cost without being seen: the picture is averaged over squares
/// of a third of the deviation, those beyond the border too, blurred there with what the averaging and the
/// bilinear way back leave of the variance, and is within three levels of the sampled curve for a picture of
/// random pixels.
bool GaussianBlur(ImageBuffer& image, std::int32_t fuzziness);

/// The same, of all channels, for any deviation above 0, in pixels. Throws std::bad_alloc.
ImageBuffer Blurred(const ImageBuffer& image, double deviation);

}  // namespace transforms

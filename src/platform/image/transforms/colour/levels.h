// Colour operations that map each channel by itself: brightness, contrast, gamma and the like.
// Room: platform/image/transforms/colour.
#pragma once

#include <cstdint>

#include "src/platform/image_transform.h"

// v is a channel's value, 0 to 255; results are rounded to the nearest level, halves up, and clamped to
// 0..255. Alpha stays. Arguments are clamped to their range; NaN changes nothing. A grey picture gets 3
// channels if its channels become different.
namespace transforms
{

/// v + level in every channel. -255 (black) to 255 (white); 0 changes nothing.
OperationResult Brightness(const ImageBuffer& source, ImageBuffer& result, std::int32_t level);

/// 127.5 + (1 + stretch) (v - 127.5) in every channel. 0.0 changes nothing, 1.0 doubles the contrast. The
/// fixed point is middle grey, not the picture's mean, so equal colours stay equal across pictures.
OperationResult Contrast(const ImageBuffer& source, ImageBuffer& result, double stretch);

/// 255 (v / 255)^gamma in every channel, for gamma from 0.0 on; 1.0 changes nothing, higher is darker. Black
/// and white stay, so 0.0 makes everything but black white. (Many programs use 1 / gamma, where higher is
/// lighter; here the exponent is gamma itself.)
OperationResult Gamma(const ImageBuffer& source, ImageBuffer& result, double gamma);

/// v + level in one channel, -255 to 255; 0 changes nothing.
OperationResult Red(const ImageBuffer& source, ImageBuffer& result, std::int32_t level);
OperationResult Green(const ImageBuffer& source, ImageBuffer& result, std::int32_t level);
OperationResult Blue(const ImageBuffer& source, ImageBuffer& result, std::int32_t level);

/// v level / 255 in each channel with its own level, like a colour filter: 255 keeps a channel, 0 removes it.
OperationResult Colorize(const ImageBuffer& source, ImageBuffer& result, std::uint8_t red, std::uint8_t green,
                         std::uint8_t blue);

/// 255 - v in every channel.
OperationResult Invert(const ImageBuffer& source, ImageBuffer& result);

/// Quantises every channel to the nearest of levels values spread evenly over 0..255: with n = levels and k =
/// round(v (n - 1) / 255), v becomes round(255 k / (n - 1)). 2 to 255; 256 and more change nothing.
OperationResult Posterize(const ImageBuffer& source, ImageBuffer& result, std::int32_t levels);

}  // namespace transforms

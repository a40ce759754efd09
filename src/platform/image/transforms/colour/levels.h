// Colour operations that look at one channel's value at a time: brightness, contrast, gamma and the like.
// Room: platform/image/transforms/colour.
#pragma once

#include <cstdint>

#include "src/platform/image_buffer.h"

// v is a channel's value, 0 to 255; results are rounded to the nearest level, halves up, and brought to
// 0..255. Alpha stays. Numbers beyond an argument's range are brought to its nearer end, and NaN changes
// nothing. A grey picture stays grey: it gets the intensity (intensity.h) that the coloured result would
// have. False, with the picture as it was, only when there is no memory; none of these needs any.
namespace transforms
{

/// v + level in every channel. -255 (black) to 255 (white); 0 changes nothing.
bool Brightness(ImageBuffer& image, std::int32_t level);

/// 127.5 + (1 + stretch) (v - 127.5) in every channel: the values are stretched away from the middle grey.
/// 0.0 changes nothing, 1.0 doubles the contrast. Linear about the middle of the scale, not about the
/// picture's own mean, so that equal colours stay equal from picture to picture.
bool Contrast(ImageBuffer& image, double stretch);

/// 255 (v / 255)^gamma in every channel, from 0.0 on; 1.0 changes nothing, higher is darker. Black and
/// white stay as they are, so 0.0 makes all but black white. (Many programs apply 1 / gamma, where higher
/// is lighter; here the exponent is the gamma itself.)
bool Gamma(ImageBuffer& image, double gamma);

/// v + level in one channel, -255 to 255; 0 changes nothing.
bool Red(ImageBuffer& image, std::int32_t level);
bool Green(ImageBuffer& image, std::int32_t level);
bool Blue(ImageBuffer& image, std::int32_t level);

/// v level / 255 in each channel with its own level: how light each component is left. 255 keeps it, 0 takes
/// it away; like light through a filter of that colour.
bool Colorize(ImageBuffer& image, std::uint8_t red, std::uint8_t green, std::uint8_t blue);

/// 255 - v in every channel.
bool Invert(ImageBuffer& image);

/// Every channel's value becomes the closest of levels values spread evenly from 0 to 255: with n = levels
/// and k = round(v (n - 1) / 255), it is round(255 k / (n - 1)). 2 to 255; 256 and more change nothing.
bool Posterize(ImageBuffer& image, std::int32_t levels);

}  // namespace transforms

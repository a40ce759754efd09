// How often each level occurs in a picture.
// Room: platform/image/transforms/rows.
#pragma once

#include <array>
#include <cstdint>

#include "src/platform/image_buffer.h"

namespace transforms
{

/// For each level the number of pixels that have it. A pixel whose alpha is 0 isn't seen and isn't counted:
/// what lies behind the cut-out part of a picture, black as a rule, must not steer how the rest is corrected.
using Histogram = std::array<std::uint64_t, 256>;

/// Of one channel, 0 to channels - 1.
Histogram ChannelHistogram(const ImageBuffer& image, std::int32_t channel);

/// Of the intensities (intensity.h).
Histogram IntensityHistogram(const ImageBuffer& image);

}  // namespace transforms

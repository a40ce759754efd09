// Histograms of a picture.
// Room: platform/image/transforms/rows.
#pragma once

#include <array>
#include <cstdint>

#include "src/platform/image_buffer.h"

namespace transforms
{

/// The number of pixels at each level. Pixels with alpha 0 aren't counted: the hidden colours of a cut-out,
/// usually black, must not influence the correction of the rest.
using Histogram = std::array<std::uint64_t, 256>;

/// Of one channel, 0 to channels - 1.
Histogram ChannelHistogram(const ImageBuffer& image, std::int32_t channel);

/// Of the intensities (intensity.h).
Histogram IntensityHistogram(const ImageBuffer& image);

}  // namespace transforms

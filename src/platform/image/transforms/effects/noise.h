// Adds noise to a picture, and shuffles its pixels.
// Room: platform/image/transforms/effects.
#pragma once

#include <cstdint>

#include "src/platform/image_buffer.h"

namespace transforms
{

/// Adds Gaussian noise whose standard deviation is level levels, brought into 0..1000: each channel but
/// alpha gets noise of its own, or with monochrome all of a pixel the same. The noise is one of 4096 values
/// that are equally likely, the Gaussian's quantiles at (i + 0.5) / 4096 rounded to whole levels; sums are
/// kept in 0..255. The choice is seeded by the picture, so that the same picture gets the same noise. 0
/// changes nothing.
bool AddNoise(ImageBuffer& image, std::int32_t level, bool monochrome);

/// Shuffles pixels: with the probability 1 - e^(-penetration / 10) a pixel, alpha excepted, is replaced by
/// one that lies up to distance pixels from it in x and in y, each distance equally likely; beyond the
/// border the border's pixels go on. Seeded by the picture as AddNoise is. A distance or penetration of 0 or
/// less, or one that is no number, changes nothing.
bool Diffuse(ImageBuffer& image, std::int32_t distance, double penetration);

}  // namespace transforms

// Noise and diffusion.
// Room: platform/image/transforms/effects.
#pragma once

#include <cstdint>

#include "src/platform/image_transform.h"

namespace transforms
{

/// Adds Gaussian noise with a standard deviation of level (clamped to 0..1000) levels, independently for each
/// colour channel, or the same for all channels of a pixel if monochrome. Each value is drawn from 4096
/// equally likely ones, the Gaussian quantiles at (i + 0.5) / 4096 rounded to whole levels; sums are clamped
/// to 0..255. The generator is seeded from the picture, so the same picture always gets the same noise. Alpha
/// is unchanged; level 0 changes nothing. Unless monochrome, a grey picture gets 3 channels.
OperationResult AddNoise(const ImageBuffer& source, ImageBuffer& result, std::int32_t level, bool monochrome);

/// Shuffles pixels: with a probability of 1 - e^(-penetration / 10) a pixel, alpha excepted, is replaced by
/// one up to distance pixels away in x and in y, all offsets being equally likely; the border is replicated.
/// Seeded from the picture like AddNoise. A distance or penetration of 0 or less, or NaN, changes nothing.
OperationResult Diffuse(const ImageBuffer& source, ImageBuffer& result, std::int32_t distance,
                        double penetration);

}  // namespace transforms

// Textures: a picture as if printed on a rough surface.
// Room: platform/image/transforms/effects.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "src/platform/image_transform.h"

namespace transforms
{

/// Lights the picture as if it were printed on a rough surface: each channel but alpha becomes v + brightness
/// S(x, y), rounded, with S the slope of the texture towards the light, which comes from angle degrees,
/// counterclockwise from the right. texture is clamped to 0..5:
///   0 normal density, 1 soft noise, 2 dense noise: random heights, smoothed by a Gaussian of 1.5, 3 and 0.8
///   pixels. 3 normal waves, 4 soft waves, 5 dense waves: slightly winding diagonal waves, 11, 6 and 23 of
///   them per 256 pixels each way (16, 30 and 8 pixels long).
/// Textures repeat every 256 pixels and are the same for every picture. All are equally steep, with a mean
/// square slope of 5 levels squared, so the strength depends on brightness alone. brightness is clamped to
/// 0..100; 0 or less, NaN and an infinite angle change nothing.
OperationResult Texturize(const ImageBuffer& source, ImageBuffer& result, double angle, double brightness,
                          std::int32_t texture);

constexpr std::size_t kTextureSide = 256;
/// The heights of texture 0 to 5 in arbitrary units: kTextureSide rows of kTextureSide values.
std::vector<float> TextureHeights(std::int32_t texture);

}  // namespace transforms

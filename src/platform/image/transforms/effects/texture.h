// Prints a picture on a rough surface.
// Room: platform/image/transforms/effects.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "src/platform/image_buffer.h"

namespace transforms
{

/// Lights the picture as if it were printed on a rough surface: each channel but alpha becomes v +
/// brightness S(x, y), to the nearest level, with S the slope of the texture towards the light. Light comes
/// from angle degrees, counterclockwise from the right. The surfaces, texture brought into 0..5:
///   0 normal density, 1 soft noise, 2 dense noise: random heights, evened out by a Gaussian of 1.5, 3 and
///   0.8 pixels. 3 normal waves, 4 soft waves, 5 dense waves: waves that run to the lower right and wind a
///   little, 11, 6 and 23 of them in 256 pixels each way (16, 30 and 8 pixels long).
/// Each repeats after 256 pixels both ways and is the same for every picture. All are as steep: the slopes'
/// mean square is 5 levels squared, so that the brightness alone says how strong the relief is. brightness
/// is brought into 0..100; 0 or less, and an argument that is no number, change nothing.
bool Texturize(ImageBuffer& image, double angle, double brightness, std::int32_t texture);

constexpr std::size_t kTextureSide = 256;
/// The heights of a texture, row by row, kTextureSide squared of them, of any unit; texture is 0 to 5.
std::vector<float> TextureHeights(std::int32_t texture);

}  // namespace transforms

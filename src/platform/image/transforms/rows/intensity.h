// Luma of pixels, and the operations based on it.
// Room: platform/image/transforms/rows.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "src/platform/image_buffer.h"

namespace transforms
{

/// (0.299 R + 0.587 G + 0.114 B), rounded: luma by ITU-R BT.601, on the values as they are stored. The
/// weights are counted in 65536ths (19595, 38470, 7471), so that grey v has the intensity v exactly.
constexpr std::uint8_t IntensityOfPixel(std::uint32_t blue, std::uint32_t green, std::uint32_t red)
{
    return static_cast<std::uint8_t>((7471 * blue + 38470 * green + 19595 * red + 32768) >> 16);
}

/// The intensities of pixel_count pixels of 1, 3 or 4 channels, one byte each.
void IntensityRow(const std::uint8_t* pixels, std::size_t pixel_count, std::int32_t channels,
                  std::uint8_t* intensity);

/// The picture of 1 channel that holds every pixel's intensity; of a grey picture a copy.
/// Throws std::bad_alloc.
ImageBuffer IntensityPlane(const ImageBuffer& image);

/// Every pixel becomes the grey of its intensity. The picture keeps its channels, alpha its values; a grey
/// picture stays as it is. False, with the picture as it was, only when there is no memory.
bool Intensity(ImageBuffer& image);

/// Pixels whose intensity is greater than level become white, all others black; alpha stays. So 255 makes
/// everything black, and 0 leaves only black black. Never False.
bool Threshold(ImageBuffer& image, std::uint8_t level);

}  // namespace transforms

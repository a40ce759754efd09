// Luma of pixels, and the operations based on it.
// Room: platform/image/transforms/rows.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "src/platform/image_transform.h"

namespace transforms
{

/// Luma by ITU-R BT.601 of the stored values: 0.299 R + 0.587 G + 0.114 B, rounded. The weights are in
/// 1/65536 (19595, 38470, 7471) and add up to 1, so the intensity of grey v is exactly v.
constexpr std::uint8_t IntensityOfPixel(std::uint32_t blue, std::uint32_t green, std::uint32_t red)
{
    return static_cast<std::uint8_t>((7471 * blue + 38470 * green + 19595 * red + 32768) >> 16);
}

/// The intensities of pixel_count pixels of 1, 3 or 4 channels, one byte each.
void IntensityRow(const std::uint8_t* pixels, std::size_t pixel_count, std::int32_t channels,
                  std::uint8_t* intensity);

/// The intensities as a grey picture; a copy if it is grey already. Throws std::bad_alloc.
ImageBuffer IntensityPlane(const ImageBuffer& image);

/// Replaces every pixel by the grey of its intensity. Channels and alpha stay; a grey picture doesn't change.
OperationResult Intensity(const ImageBuffer& source, ImageBuffer& result);

/// Makes pixels whose intensity is above level white and all others black; alpha stays. So 255 makes
/// everything black, and 0 everything but black white.
OperationResult Threshold(const ImageBuffer& source, ImageBuffer& result, std::uint8_t level);

}  // namespace transforms

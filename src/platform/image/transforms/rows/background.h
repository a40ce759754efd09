// The background colour that geometric operations uncover.
// Room: platform/image/transforms/rows.
#pragma once

#include <array>
#include <cstdint>

#include "src/platform/image_buffer.h"
#include "src/platform/image_transform.h"

namespace transforms
{

/// One pixel's channels in the picture's order; a grey picture uses the first one only.
using PixelValue = std::array<std::uint8_t, 4>;

/// True for a red, green and blue that are equal.
bool IsGrey(Colour colour);
/// The colour as an opaque pixel in the picture's channels; its luma for a grey picture.
PixelValue Background(const ImageBuffer& image, Colour colour);
/// Converts a grey picture to 3 equal channels, so that it can hold a colour. The grey profile doesn't
/// describe the result. False if memory runs out.
bool WidenGrey(const ImageBuffer& grey, ImageBuffer& wide);

}  // namespace transforms

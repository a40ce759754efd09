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
/// The colour as a pixel of the picture's channels, opaque; of a grey picture its luma.
PixelValue Background(const ImageBuffer& image, Colour colour);
/// Gives wide the pixels of a grey picture in 3 equal channels, which can hold a colour. Whoever puts them
/// in its place drops the profile, since a grey one can't describe them. False without memory.
bool WidenGrey(const ImageBuffer& grey, ImageBuffer& wide);

}  // namespace transforms

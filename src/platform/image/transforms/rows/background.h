// Background colours, and grey pictures that get colour.
// Room: platform/image/transforms/rows.
#pragma once

#include <array>
#include <cstdint>
#include <utility>

#include "src/platform/image/transforms/rows/target.h"
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

/// Applies an operation that gives a grey picture colour: calls body(wide, wide) with 3 channels. Throws
/// std::bad_alloc.
template <typename Body>
OperationResult InColour(const ImageBuffer& grey, ImageBuffer& result, const Body& body)
{
    ImageBuffer wide;
    if (!WidenGrey(grey, wide) || body(wide, wide) == OperationResult::Failed)
        return OperationResult::Failed;
    TakePixels(grey, result, std::move(wide));
    result.icc_profile.clear();
    return OperationResult::Changed;
}

}  // namespace transforms

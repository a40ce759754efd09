// Access to the rows of a picture.
// Room: platform/image/transforms/rows.
#pragma once

#include <cstddef>
#include <cstdint>

#include "src/platform/image_buffer.h"

namespace transforms
{

/// Bytes per row.
inline std::size_t Stride(const ImageBuffer& image)
{
    return static_cast<std::size_t>(image.width) * static_cast<std::size_t>(image.channels);
}
inline const std::uint8_t* Row(const ImageBuffer& image, std::int32_t y)
{
    return image.bytes.data() + static_cast<std::size_t>(y) * Stride(image);
}
inline std::uint8_t* Row(ImageBuffer& image, std::int32_t y)
{
    return image.bytes.data() + static_cast<std::size_t>(y) * Stride(image);
}

}  // namespace transforms

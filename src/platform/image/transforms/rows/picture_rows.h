// Where the rows of a picture lie.
// Room: platform/image/transforms/rows.
#pragma once

#include <cstddef>
#include <cstdint>

#include "src/platform/image_buffer.h"

namespace transforms
{

/// The bytes of one row.
inline std::size_t nStride(const ImageBuffer& aImage)
{
    return static_cast<std::size_t>(aImage.width) * static_cast<std::size_t>(aImage.channels);
}
inline const std::uint8_t* pRow(const ImageBuffer& aImage, std::int32_t y)
{
    return aImage.bytes.data() + static_cast<std::size_t>(y) * nStride(aImage);
}
inline std::uint8_t* pRow(ImageBuffer& aImage, std::int32_t y)
{
    return aImage.bytes.data() + static_cast<std::size_t>(y) * nStride(aImage);
}

}  // namespace transforms

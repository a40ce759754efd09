// New pixels for a picture, which take the place of the old ones whole or not at all.
// Room: platform/image/transforms/rows.
#pragma once

#include <exception>

#include "src/platform/image_buffer.h"

namespace transforms
{

/// What the body returns; False when it throws, for want of memory. A body changes its picture last.
template <typename Body>
bool bGuarded(const Body& fnBody)
{
    try {
        return fnBody();
    } catch (const std::exception&) {
        return false;
    }
}

/// A picture of the same size and channels, its bytes of no particular value; throws std::bad_alloc.
ImageBuffer aLike(const ImageBuffer& aImage);
/// Gives aImage the size and pixels of aPixels; profile, resolution and metadata stay.
void TakePixels(ImageBuffer& aImage, ImageBuffer&& aPixels);

}  // namespace transforms

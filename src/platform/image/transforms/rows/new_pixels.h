// Replaces a picture's pixels, all or nothing.
// Room: platform/image/transforms/rows.
#pragma once

#include <exception>

#include "src/platform/image_buffer.h"

namespace transforms
{

/// What the body returns; False when it throws, for want of memory. A body changes its picture last.
template <typename Body>
bool RunGuarded(const Body& body)
{
    try {
        return body();
    } catch (const std::exception&) {
        return false;
    }
}

/// A picture of the same size and channels, its bytes of no particular value; throws std::bad_alloc.
ImageBuffer EmptyLike(const ImageBuffer& image);
/// Gives image the size and pixels of pixels; profile, resolution and metadata stay.
void TakePixels(ImageBuffer& image, ImageBuffer&& pixels);

}  // namespace transforms

// Replaces a picture's pixels, all or nothing.
// Room: platform/image/transforms/rows.
#pragma once

#include <exception>

#include "src/platform/image_buffer.h"

namespace transforms
{

/// Returns what body returns, or false if it throws because memory ran out. body must change its picture
/// last.
template <typename Body>
bool RunGuarded(const Body& body)
{
    try {
        return body();
    } catch (const std::exception&) {
        return false;
    }
}

/// A picture of the same size and channels with uninitialised pixels. Throws std::bad_alloc.
ImageBuffer EmptyLike(const ImageBuffer& image);
/// Moves size and pixels into image; its profile, resolution and metadata stay.
void TakePixels(ImageBuffer& image, ImageBuffer&& pixels);

}  // namespace transforms

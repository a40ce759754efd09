// Allocates new pixels and puts them into place.
#include "src/platform/image/transforms/rows/new_pixels.h"

#include <utility>

#include "src/platform/image/base/picture_memory.h"

namespace transforms
{

ImageBuffer EmptyLike(const ImageBuffer& image)
{
    ImageBuffer result;
    ResizeFresh(result.bytes, image.bytes.size());
    result.width = image.width;
    result.height = image.height;
    result.channels = image.channels;
    return result;
}

void TakePixels(ImageBuffer& image, ImageBuffer&& pixels)
{
    image.width = pixels.width;
    image.height = pixels.height;
    image.channels = pixels.channels;
    image.bytes = std::move(pixels.bytes);
}

}  // namespace transforms

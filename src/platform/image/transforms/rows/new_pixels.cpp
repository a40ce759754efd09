// Makes room for new pixels and puts them into place.
#include "src/platform/image/transforms/rows/new_pixels.h"

#include <utility>

#include "src/platform/image/base/picture_memory.h"

namespace transforms
{

ImageBuffer aLike(const ImageBuffer& aImage)
{
    ImageBuffer aResult;
    ResizeFresh(aResult.bytes, aImage.bytes.size());
    aResult.width = aImage.width;
    aResult.height = aImage.height;
    aResult.channels = aImage.channels;
    return aResult;
}

void TakePixels(ImageBuffer& aImage, ImageBuffer&& aPixels)
{
    aImage.width = aPixels.width;
    aImage.height = aPixels.height;
    aImage.channels = aPixels.channels;
    aImage.bytes = std::move(aPixels.bytes);
}

}  // namespace transforms

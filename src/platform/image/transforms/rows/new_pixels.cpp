// Makes room for new pixels and puts them into place.
#include "src/platform/image/transforms/rows/new_pixels.h"

#include <utility>

#include "src/platform/image/base/picture_memory.h"

namespace transforms
{

ImageBuffer aLike(const ImageBuffer& aImage)
{
    ImageBuffer aResult;
    ResizeFresh(aResult.aBytes, aImage.aBytes.size());
    aResult.lWidth = aImage.lWidth;
    aResult.lHeight = aImage.lHeight;
    aResult.lChannels = aImage.lChannels;
    return aResult;
}

void TakePixels(ImageBuffer& aImage, ImageBuffer&& aPixels)
{
    aImage.lWidth = aPixels.lWidth;
    aImage.lHeight = aPixels.lHeight;
    aImage.lChannels = aPixels.lChannels;
    aImage.aBytes = std::move(aPixels.aBytes);
}

}  // namespace transforms

// Holds the picture that the kernels change.
#include "src/platform/image/transforms/kernel_image_transform.h"

#include <utility>

#include "src/platform/image/base/limits.h"

void KernelImageTransform::SetImage(ImageBuffer& image)
{
    image_ = std::exchange(image, {});
}

void KernelImageTransform::GetImageBytes(ImageBuffer& image)
{
    image = std::exchange(image_, {});
}

void KernelImageTransform::GetMaskBytes(ImageBuffer& mask)
{
    mask = {};
    ImageBuffer result;
    if (!Allocate(result, static_cast<std::uint64_t>(image_.width), static_cast<std::uint64_t>(image_.height),
                  1))
        return;
    constexpr std::size_t kAlpha = 3;
    for (std::size_t i = 0; i < result.bytes.size(); ++i)
        result.bytes[i] = image_.channels == 4 ? image_.bytes[i * 4 + kAlpha] : 255;
    mask = std::move(result);
}

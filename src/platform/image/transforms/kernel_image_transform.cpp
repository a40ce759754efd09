// Holds the picture that the kernels work on.
#include "src/platform/image/transforms/kernel_image_transform.h"

#include <utility>

#include "src/platform/image/base/limits.h"

void KernelImageTransform::SetImage(ImageBuffer& aImage)
{
    m_aImage = std::exchange(aImage, {});
}

void KernelImageTransform::GetImageBytes(ImageBuffer& aImage)
{
    aImage = std::exchange(m_aImage, {});
}

void KernelImageTransform::GetMaskBytes(ImageBuffer& aMask)
{
    aMask = {};
    ImageBuffer aResult;
    if (!Allocate(aResult, static_cast<std::uint64_t>(m_aImage.width),
                  static_cast<std::uint64_t>(m_aImage.height), 1))
        return;
    constexpr std::size_t kAlpha = 3;
    for (std::size_t i = 0; i < aResult.bytes.size(); ++i)
        aResult.bytes[i] = m_aImage.channels == 4 ? m_aImage.bytes[i * 4 + kAlpha] : 255;
    aMask = std::move(aResult);
}

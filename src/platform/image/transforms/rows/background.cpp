// Brings backgrounds and pictures to the same channels.
#include "src/platform/image/transforms/rows/background.h"

#include "src/platform/image/base/limits.h"
#include "src/platform/image/transforms/rows/intensity.h"

namespace transforms
{

bool bGrey(Colour lColour)
{
    return (lColour & 255) == ((lColour >> 8) & 255) && (lColour & 255) == ((lColour >> 16) & 255);
}

PixelValue aBackground(const ImageBuffer& aImage, Colour lColour)
{
    const auto nRed = static_cast<std::uint8_t>(lColour & 255);
    const auto nGreen = static_cast<std::uint8_t>((lColour >> 8) & 255);
    const auto nBlue = static_cast<std::uint8_t>((lColour >> 16) & 255);
    if (aImage.channels == 1)
        return {nIntensity(nBlue, nGreen, nRed), 0, 0, 0};
    return {nBlue, nGreen, nRed, 255};
}

bool bWidened(const ImageBuffer& aGrey, ImageBuffer& aWide)
{
    if (!Allocate(aWide, static_cast<std::uint64_t>(aGrey.width), static_cast<std::uint64_t>(aGrey.height),
                  3))
        return false;
    for (std::size_t i = 0; i < aGrey.bytes.size(); ++i)
        aWide.bytes[3 * i] = aWide.bytes[3 * i + 1] = aWide.bytes[3 * i + 2] = aGrey.bytes[i];
    return true;
}

}  // namespace transforms

// Brings backgrounds and pictures to the same channels.
#include "src/platform/image/transforms/rows/background.h"

#include "src/platform/image/base/limits.h"
#include "src/platform/image/transforms/rows/intensity.h"

namespace transforms
{

bool IsGrey(Colour colour)
{
    return (colour & 255) == ((colour >> 8) & 255) && (colour & 255) == ((colour >> 16) & 255);
}

PixelValue Background(const ImageBuffer& image, Colour colour)
{
    const auto red = static_cast<std::uint8_t>(colour & 255);
    const auto green = static_cast<std::uint8_t>((colour >> 8) & 255);
    const auto blue = static_cast<std::uint8_t>((colour >> 16) & 255);
    if (image.channels == 1)
        return {IntensityOfPixel(blue, green, red), 0, 0, 0};
    return {blue, green, red, 255};
}

bool WidenGrey(const ImageBuffer& grey, ImageBuffer& wide)
{
    if (!Allocate(wide, static_cast<std::uint64_t>(grey.width), static_cast<std::uint64_t>(grey.height), 3))
        return false;
    for (std::size_t i = 0; i < grey.bytes.size(); ++i)
        wide.bytes[3 * i] = wide.bytes[3 * i + 1] = wide.bytes[3 * i + 2] = grey.bytes[i];
    return true;
}

}  // namespace transforms

// Mixes pixels with white.
#include "src/platform/image/pixels/alpha.h"

#include <cstddef>

#include "src/platform/image/base/picture_memory.h"

ImageBuffer aLaidOnWhite(const ImageBuffer& aImage)
{
    ImageBuffer aResult;
    aResult.width = aImage.width;
    aResult.height = aImage.height;
    aResult.channels = 3;
    aResult.icc_profile = aImage.icc_profile;
    aResult.dots_per_inch_x = aImage.dots_per_inch_x;
    aResult.dots_per_inch_y = aImage.dots_per_inch_y;
    aResult.metadata = aImage.metadata;
    const std::size_t nPixels =
        static_cast<std::size_t>(aImage.width) * static_cast<std::size_t>(aImage.height);
    ResizeFresh(aResult.bytes, nPixels * 3);
    const std::uint8_t* pIn = aImage.bytes.data();
    std::uint8_t* pOut = aResult.bytes.data();
    for (std::size_t i = 0; i < nPixels; ++i, pIn += 4, pOut += 3) {
        const unsigned nAlpha = pIn[3];
        for (int c = 0; c < 3; ++c) {
            // x / 255 rounded, exact for all products of two bytes.
            const unsigned nMixed = pIn[c] * nAlpha + 255u * (255u - nAlpha) + 128u;
            pOut[c] = static_cast<std::uint8_t>((nMixed + (nMixed >> 8)) >> 8);
        }
    }
    return aResult;
}

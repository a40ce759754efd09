// Mixes pixels with white.
#include "src/platform/image/pixels/alpha.h"

#include <cstddef>

#include "src/platform/image/base/picture_memory.h"

ImageBuffer aLaidOnWhite(const ImageBuffer& aImage)
{
    ImageBuffer aResult;
    aResult.lWidth = aImage.lWidth;
    aResult.lHeight = aImage.lHeight;
    aResult.lChannels = 3;
    aResult.aIccProfile = aImage.aIccProfile;
    aResult.dDotsPerInchX = aImage.dDotsPerInchX;
    aResult.dDotsPerInchY = aImage.dDotsPerInchY;
    aResult.objMetadata = aImage.objMetadata;
    const std::size_t nPixels =
        static_cast<std::size_t>(aImage.lWidth) * static_cast<std::size_t>(aImage.lHeight);
    ResizeFresh(aResult.aBytes, nPixels * 3);
    const std::uint8_t* pIn = aImage.aBytes.data();
    std::uint8_t* pOut = aResult.aBytes.data();
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

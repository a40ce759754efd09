// What of a colour is brightness.
#include "src/platform/image/transforms/rows/intensity.h"

#include <algorithm>
#include <cstring>

#include "src/platform/image/base/picture_memory.h"
#include "src/platform/image/transforms/rows/bands.h"
#include "src/platform/image/transforms/rows/picture_rows.h"
#include "src/platform/image/transforms/rows/planes.h"
#include "src/platform/image/transforms/rows/row_loop.h"

namespace transforms
{

constexpr std::size_t kBlock = 1024;  // pixels at a time: they stay in the nearest cache

void IntensityRow(const std::uint8_t* pPixels, std::size_t nPixels, std::int32_t lChannels,
                  std::uint8_t* pIntensity)
{
    if (lChannels == 1) {
        std::memcpy(pIntensity, pPixels, nPixels);
        return;
    }
    const auto nChannels = static_cast<std::size_t>(lChannels);
    Planes objPlanes;
    for (std::size_t i = 0; i < nPixels; i += kPlaneBlock) {
        const std::size_t nPart = std::min(kPlaneBlock, nPixels - i);
        SplitPixels(pPixels + i * nChannels, nPart, nChannels, objPlanes);
        IntensityOf(objPlanes, nPart, pIntensity + i);
    }
}

ROW_LOOP static void CutRow(std::uint8_t* __restrict pValues, std::size_t nCount, std::uint8_t nLevel)
{
    for (std::size_t i = 0; i < nCount; ++i)
        pValues[i] = pValues[i] > nLevel ? 255 : 0;
}

ROW_LOOP static void WriteGrey3(const std::uint8_t* __restrict pGrey, std::size_t nPixels,
                                std::uint8_t* __restrict pPixels)
{
    for (std::size_t i = 0; i < nPixels; ++i)
        pPixels[3 * i] = pPixels[3 * i + 1] = pPixels[3 * i + 2] = pGrey[i];
}

ROW_LOOP static void WriteGrey4(const std::uint8_t* __restrict pGrey, std::size_t nPixels,
                                std::uint8_t* __restrict pPixels)
{
    for (std::size_t i = 0; i < nPixels; ++i) {
        const std::uint8_t nAlpha = pPixels[4 * i + 3];
        pPixels[4 * i] = pPixels[4 * i + 1] = pPixels[4 * i + 2] = pGrey[i];
        pPixels[4 * i + 3] = nAlpha;
    }
}

// Gives every pixel the grey that Change makes of its intensity.
template <typename Change>
static void MakeGrey(ImageBuffer& aImage, const Change& ChangeRow)
{
    const auto nChannels = static_cast<std::size_t>(aImage.channels);
    const auto nWidth = static_cast<std::size_t>(aImage.width);
    RunBands(aImage, [&](std::int32_t lFirst, std::int32_t lEnd) {
        std::uint8_t aGrey[kBlock];
        const std::size_t nLast = nWidth * static_cast<std::size_t>(lEnd);
        for (std::size_t i = nWidth * static_cast<std::size_t>(lFirst); i < nLast; i += kBlock) {
            const std::size_t nPixels = std::min(kBlock, nLast - i);
            std::uint8_t* pPixels = aImage.bytes.data() + i * nChannels;
            IntensityRow(pPixels, nPixels, aImage.channels, aGrey);
            ChangeRow(aGrey, nPixels);
            if (nChannels == 1)
                std::memcpy(pPixels, aGrey, nPixels);
            else if (nChannels == 3)
                WriteGrey3(aGrey, nPixels, pPixels);
            else
                WriteGrey4(aGrey, nPixels, pPixels);
        }
    });
}

ImageBuffer aIntensity(const ImageBuffer& aImage)
{
    ImageBuffer aResult;
    aResult.width = aImage.width;
    aResult.height = aImage.height;
    aResult.channels = 1;
    if (aImage.channels == 1) {
        aResult.bytes = aImage.bytes;
        return aResult;
    }
    ResizeFresh(aResult.bytes, aImage.bytes.size() / static_cast<std::size_t>(aImage.channels));
    EachRows(aImage.height, nStride(aImage), [&](std::int32_t lFirst, std::int32_t lLast) {
        for (std::int32_t y = lFirst; y < lLast; ++y)
            IntensityRow(pRow(aImage, y), static_cast<std::size_t>(aImage.width), aImage.channels,
                         pRow(aResult, y));
    });
    return aResult;
}

bool Intensity(ImageBuffer& aImage)
{
    if (aImage.channels > 1)
        MakeGrey(aImage, [](std::uint8_t*, std::size_t) {});
    return true;
}

bool Threshold(ImageBuffer& aImage, std::uint8_t nLevel)
{
    MakeGrey(aImage, [=](std::uint8_t* pGrey, std::size_t nPixels) { CutRow(pGrey, nPixels, nLevel); });
    return true;
}

}  // namespace transforms

// The greatest or smallest value around each pixel by OpenCV, and what of it the level and threshold let
// through.
#include "src/platform/image/transforms/dilation.h"

#include <opencv2/imgproc.hpp>
#include <utility>

#include "src/platform/image/transforms/kernel_support.h"
#include "src/platform/image/transforms/row_loop.h"

namespace transforms
{

// aAround holds the greatest values and takes the result.
ROW_LOOP static void Grow(const std::uint8_t* __restrict aValues, std::size_t nCount, std::uint8_t nLimit,
                          std::uint8_t nThreshold, std::uint8_t* __restrict aAround)
{
    for (std::size_t i = 0; i < nCount; ++i) {
        const std::uint8_t nValue = aValues[i], nMost = aAround[i];
        const auto nGrowth = static_cast<std::uint8_t>(nMost - nValue);
        const auto nGrown = static_cast<std::uint8_t>(nValue + (nGrowth < nLimit ? nGrowth : nLimit));
        aAround[i] = nMost > nThreshold ? nGrown : nValue;
    }
}

// The same with the smallest values.
ROW_LOOP static void Wear(const std::uint8_t* __restrict aValues, std::size_t nCount, std::uint8_t nLimit,
                          std::uint8_t nThreshold, std::uint8_t* __restrict aAround)
{
    for (std::size_t i = 0; i < nCount; ++i) {
        const std::uint8_t nValue = aValues[i];
        const auto nLoss = static_cast<std::uint8_t>(nValue - aAround[i]);
        const auto nWorn = static_cast<std::uint8_t>(nValue - (nLoss < nLimit ? nLoss : nLimit));
        aAround[i] = nValue > nThreshold ? nWorn : nValue;
    }
}

static bool bGrownOrWorn(ImageBuffer& aImage, std::uint8_t nLimit, std::uint8_t nThreshold, bool bSquare,
                         bool bGrow)
{
    if (nLimit == 0)
        return true;
    return bGuarded([&] {
        ImageBuffer aResult = aLike(aImage);
        const int lType = CV_8UC(aImage.lChannels);
        const cv::Mat objFrom(aImage.lHeight, aImage.lWidth, lType, aImage.aBytes.data());
        cv::Mat objTo(aImage.lHeight, aImage.lWidth, lType, aResult.aBytes.data());
        const cv::Mat objShape =
            cv::getStructuringElement(bSquare ? cv::MORPH_RECT : cv::MORPH_CROSS, cv::Size(3, 3));
        if (bGrow)
            cv::dilate(objFrom, objTo, objShape);
        else
            cv::erode(objFrom, objTo, objShape);
        EachRows(aImage.lHeight, nStride(aImage), [&](std::int32_t lFirst, std::int32_t lLast) {
            for (std::int32_t y = lFirst; y < lLast; ++y) {
                (bGrow ? Grow : Wear)(pRow(aImage, y), nStride(aImage), nLimit, nThreshold, pRow(aResult, y));
                for (std::size_t i = 3; aImage.lChannels == 4 && i < nStride(aImage); i += 4)
                    pRow(aResult, y)[i] = pRow(aImage, y)[i];
            }
        });
        TakePixels(aImage, std::move(aResult));
        return true;
    });
}

bool Dilation(ImageBuffer& aImage, std::uint8_t nLevel, std::uint8_t nThreshold, bool bSquare)
{
    return bGrownOrWorn(aImage, nLevel, nThreshold, bSquare, true);
}

bool Erosion(ImageBuffer& aImage, std::uint8_t nLevel, std::uint8_t nThreshold, bool bSquare)
{
    return bGrownOrWorn(aImage, nLevel, nThreshold, bSquare, false);
}

}  // namespace transforms

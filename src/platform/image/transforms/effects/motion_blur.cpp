// Means along straight lines, by sums of shifted rows.
#include "src/platform/image/transforms/effects/motion_blur.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>
#include <vector>

#include "src/platform/image/transforms/rows/bands.h"
#include "src/platform/image/transforms/rows/hidden.h"
#include "src/platform/image/transforms/rows/new_pixels.h"
#include "src/platform/image/transforms/rows/picture_rows.h"
#include "src/platform/image/transforms/rows/row_loop.h"

namespace transforms
{

namespace
{

ROW_LOOP void AddBytes(const std::uint8_t* __restrict pBytes, std::size_t nCount,
                       std::uint16_t* __restrict aSums)
{
    for (std::size_t i = 0; i < nCount; ++i)
        aSums[i] = static_cast<std::uint16_t>(aSums[i] + pBytes[i]);
}

// floor(sum / n + 0.5), exactly: half a unit more keeps the quotient off the whole numbers.
ROW_LOOP void Divide(const std::uint16_t* __restrict aSums, std::size_t nCount, std::int32_t lDivisor,
                     std::uint8_t* __restrict pTarget)
{
    const float dInverse = 1.F / static_cast<float>(lDivisor);
    const std::int32_t lHalf = lDivisor / 2;
    for (std::size_t i = 0; i < nCount; ++i)
        pTarget[i] = static_cast<std::uint8_t>(
            static_cast<std::int32_t>((static_cast<float>(aSums[i] + lHalf) + 0.5F) * dInverse));
}

void AddPixel(const std::uint8_t* pPixel, std::size_t nTimes, std::size_t nChannels, std::uint16_t* aSums)
{
    for (std::size_t i = 0; i < nTimes; ++i) {
        for (std::size_t c = 0; c < nChannels; ++c, ++aSums)
            *aSums = static_cast<std::uint16_t>(*aSums + pPixel[c]);
    }
}

// Adds a row moved left by lX pixels, its border pixels repeated into what that uncovers.
void AddMoved(const std::uint8_t* pSource, std::int32_t lX, std::int32_t lWidth, std::size_t nChannels,
              std::uint16_t* aSums)
{
    const auto nWidth = static_cast<std::size_t>(lWidth);
    const auto nMoved = std::min(nWidth, static_cast<std::size_t>(std::abs(lX)));
    const std::size_t nKept = (nWidth - nMoved) * nChannels;
    if (lX >= 0) {
        AddBytes(pSource + nMoved * nChannels, nKept, aSums);
        AddPixel(pSource + (nWidth - 1) * nChannels, nMoved, nChannels, aSums + nKept);
    } else {
        AddPixel(pSource, nMoved, nChannels, aSums);
        AddBytes(pSource, nKept, aSums + nMoved * nChannels);
    }
}

struct Offset {
    std::int32_t lX, lY;
};

std::vector<Offset> aLine(double dAngle, std::int32_t lCount)
{
    // Half turns leave the line as it is; quarters are exact, so that no sine's last digit moves a pixel.
    const double dTurn = std::fmod(std::fmod(dAngle, 180) + 180, 180);
    const double dCos = dTurn == 90 ? 0 : std::cos(dTurn * std::numbers::pi / 180),
                 dSin = std::sin(dTurn * std::numbers::pi / 180);
    std::vector<Offset> aOffsets;
    for (std::int32_t k = 0; k < lCount; ++k) {
        const std::int32_t t = k - (lCount - 1) / 2;
        aOffsets.push_back({static_cast<std::int32_t>(std::floor(t * dCos + 0.5)),
                            -static_cast<std::int32_t>(std::floor(t * dSin + 0.5))});
    }
    return aOffsets;
}

}  // namespace

bool MotionBlur(ImageBuffer& aImage, double dAngle, std::int32_t lAmount)
{
    const std::int32_t lCount = std::min(lAmount, 255);
    if (lCount < 2 || !std::isfinite(dAngle))
        return true;
    return bAmongVisible(aImage, [&] {
        const std::vector<Offset> aOffsets = aLine(dAngle, lCount);
        const auto nChannels = static_cast<std::size_t>(aImage.channels);
        const std::size_t nRow = nStride(aImage);
        ImageBuffer aResult = aLike(aImage);
        EachRows(aImage.height, nRow * aOffsets.size(), [&](std::int32_t lFirst, std::int32_t lLast) {
            std::vector<std::uint16_t> aSums(nRow);
            for (std::int32_t y = lFirst; y < lLast; ++y) {
                std::fill(aSums.begin(), aSums.end(), std::uint16_t{0});
                for (const Offset& objOffset : aOffsets)
                    AddMoved(pRow(aImage, std::clamp(y + objOffset.lY, 0, aImage.height - 1)), objOffset.lX,
                             aImage.width, nChannels, aSums.data());
                std::uint8_t* pTarget = pRow(aResult, y);
                Divide(aSums.data(), nRow, lCount, pTarget);
                for (std::size_t i = 3; nChannels == 4 && i < nRow; i += 4)
                    pTarget[i] = pRow(aImage, y)[i];
            }
        });
        TakePixels(aImage, std::move(aResult));
        return true;
    });
}

}  // namespace transforms

// Draws the mean of one picture through two straight maps.
#include <algorithm>
#include <cstring>
#include <vector>

#include "src/platform/image/transforms/geometry/warp.h"
#include "src/platform/image/transforms/geometry/warp_fours.h"
#include "src/platform/image/transforms/rows/bands.h"
#include "src/platform/image/transforms/rows/picture_rows.h"

namespace transforms
{

namespace
{

// One pixel whose place may lie outside, and with pUnmoved its mean with that.
template <int nChannels>
void DrawPixel(const ImageBuffer& aSource, std::int32_t lX, std::int32_t lY, const std::uint8_t* pUnmoved,
               std::uint8_t* pTarget)
{
    const std::int32_t x = std::clamp(lX, 0, (aSource.width - 1) * kPlaceUnit);
    const std::int32_t y = std::clamp(lY, 0, (aSource.height - 1) * kPlaceUnit);
    const std::int32_t lRight = x & 255, lDown = y & 255;
    const std::uint8_t* pUpper = pRow(aSource, y >> 8) + static_cast<std::ptrdiff_t>(x >> 8) * nChannels;
    const std::uint8_t* pLower = lDown ? pUpper + nStride(aSource) : pUpper;
    const std::ptrdiff_t nNext = lRight ? nChannels : 0;
    for (int c = 0; c < (nChannels == 1 ? 1 : 3); ++c) {
        const std::int32_t lUpper = pUpper[c] * (256 - lRight) + pUpper[c + nNext] * lRight;
        const std::int32_t lLower = pLower[c] * (256 - lRight) + pLower[c + nNext] * lRight;
        const std::int32_t lDrawn = lUpper * (256 - lDown) + lLower * lDown;  // 65536 a level
        pTarget[c] = static_cast<std::uint8_t>(pUnmoved ? (lDrawn / 2 + (pUnmoved[c] << 15) + (1 << 15)) >> 16
                                                        : (lDrawn + (1 << 15)) >> 16);
    }
}

template <int nChannels>
void DrawRow(const ImageBuffer& aSource, const std::int32_t* aX, const std::int32_t* aY,
             const std::uint8_t* pUnmoved, std::uint8_t* pTarget)
{
    const auto fnAt = [](auto* p, std::int32_t i) {
        return p ? p + static_cast<std::ptrdiff_t>(i) * nChannels : nullptr;
    };
    for (std::int32_t i = 0; i < aSource.width;) {
        if constexpr (nChannels > 1)
            i += lDrawFours(aSource, aX + i, aY + i, fnAt(pUnmoved, i), aSource.width - i, fnAt(pTarget, i));
        for (const std::int32_t lEnd = std::min(i + 4, aSource.width); i < lEnd; ++i)
            DrawPixel<nChannels>(aSource, aX[i], aY[i], fnAt(pUnmoved, i), fnAt(pTarget, i));
    }
}

bool bIdentity(const StraightMap& objMap)
{
    return objMap.dXX == 1 && objMap.dXY == 0 && objMap.dX0 == 0 && objMap.dYX == 0 && objMap.dYY == 1 &&
           objMap.dY0 == 0;
}

}  // namespace

void DrawWarpedMean(const ImageBuffer& aSource, ImageBuffer& aTarget, const StraightMap& objOne,
                    const StraightMap& objOther)
{
    const auto fnDraw = aSource.channels == 1 ? DrawRow<1> : aSource.channels == 3 ? DrawRow<3> : DrawRow<4>;
    EachRows(aTarget.height, 4 * nStride(aSource), [&](std::int32_t lFirst, std::int32_t lLast) {
        std::vector<std::int32_t> aX(static_cast<std::size_t>(aSource.width)), aY(aX.size());
        std::vector<std::uint8_t> aFirst(nStride(aSource));
        for (std::int32_t y = lFirst; y < lLast; ++y) {
            const std::uint8_t* pFirst = pRow(aSource, y);
            if (!bIdentity(objOne)) {
                StraightPlaces(objOne, y, aSource.width, aX.data(), aY.data());
                fnDraw(aSource, aX.data(), aY.data(), nullptr, aFirst.data());
                pFirst = aFirst.data();
            }
            StraightPlaces(objOther, y, aSource.width, aX.data(), aY.data());
            std::uint8_t* pTarget = pRow(aTarget, y);
            fnDraw(aSource, aX.data(), aY.data(), pFirst, pTarget);
            for (std::size_t i = 3; aSource.channels == 4 && i < nStride(aSource); i += 4)
                pTarget[i] = pRow(aSource, y)[i];
        }
    });
}

}  // namespace transforms

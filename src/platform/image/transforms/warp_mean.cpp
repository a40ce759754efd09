// Draws the mean of one picture through two straight maps.
#include <algorithm>
#include <cstring>
#include <vector>

#include "src/platform/image/transforms/row_loop.h"
#include "src/platform/image/transforms/warp.h"

namespace transforms
{

namespace
{

// One row's sums of 16 bits: a level is 128, so that two maps' together still fit.
template <int nChannels>
void AddRow(const ImageBuffer& aSource, const std::int32_t* __restrict aX, const std::int32_t* __restrict aY,
            std::uint16_t* __restrict aSums)
{
    constexpr int kColours = nChannels == 1 ? 1 : 3;
    const std::int32_t lRight = aSource.lWidth - 1, lBottom = aSource.lHeight - 1;
    for (std::int32_t i = 0; i < aSource.lWidth; ++i, aSums += nChannels) {
        std::int32_t x = std::clamp(aX[i], 0, lRight * kPlaceUnit);
        const std::int32_t y = std::clamp(aY[i], 0, lBottom * kPlaceUnit);
        const std::int32_t lY = y & 255, lX = x & 255;
        x >>= 8;
        const std::uint8_t* pUpper = pRow(aSource, y >> 8) + static_cast<std::ptrdiff_t>(x) * nChannels;
        const std::uint8_t* pLower = lY ? pUpper + nStride(aSource) : pUpper;
        const std::ptrdiff_t nNext = lX ? nChannels : 0;
        for (int c = 0; c < kColours; ++c) {
            const std::int32_t lUpper = pUpper[c] * (256 - lX) + pUpper[c + nNext] * lX;
            const std::int32_t lLower = pLower[c] * (256 - lX) + pLower[c + nNext] * lX;
            aSums[c] =
                static_cast<std::uint16_t>(aSums[c] + ((lUpper * (256 - lY) + lLower * lY + 256) >> 9));
        }
    }
}

ROW_LOOP void AddUnmoved(const std::uint8_t* __restrict pSource, std::size_t nCount,
                         std::uint16_t* __restrict aSums)
{
    for (std::size_t i = 0; i < nCount; ++i)
        aSums[i] = static_cast<std::uint16_t>(aSums[i] + pSource[i] * 128);
}

ROW_LOOP void Mean(const std::uint16_t* __restrict aSums, std::size_t nCount,
                   std::uint8_t* __restrict pTarget)
{
    for (std::size_t i = 0; i < nCount; ++i)
        pTarget[i] = static_cast<std::uint8_t>((aSums[i] + 128) >> 8);
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
    const auto fnAdd = aSource.lChannels == 1 ? AddRow<1> : aSource.lChannels == 3 ? AddRow<3> : AddRow<4>;
    const std::size_t nRow = nStride(aSource);
    EachRows(aTarget.lHeight, 4 * nRow, [&](std::int32_t lFirst, std::int32_t lLast) {
        std::vector<std::int32_t> aX(static_cast<std::size_t>(aSource.lWidth)), aY(aX.size());
        std::vector<std::uint16_t> aSums(nRow);
        for (std::int32_t y = lFirst; y < lLast; ++y) {
            std::fill(aSums.begin(), aSums.end(), std::uint16_t{0});
            for (const StraightMap* pMap : {&objOne, &objOther}) {
                if (bIdentity(*pMap)) {
                    AddUnmoved(pRow(aSource, y), nRow, aSums.data());
                } else {
                    StraightPlaces(*pMap, y, aSource.lWidth, aX.data(), aY.data());
                    fnAdd(aSource, aX.data(), aY.data(), aSums.data());
                }
            }
            std::uint8_t* pTarget = pRow(aTarget, y);
            Mean(aSums.data(), nRow, pTarget);
            for (std::size_t i = 3; aSource.lChannels == 4 && i < nRow; i += 4)
                pTarget[i] = pRow(aSource, y)[i];
        }
    });
}

}  // namespace transforms

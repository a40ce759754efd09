// Slopes towards the light, row by row in whole numbers.
#include "src/platform/image/transforms/emboss.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <functional>
#include <utility>
#include <vector>

#include "src/platform/image/transforms/bands.h"
#include "src/platform/image/transforms/gaussian.h"
#include "src/platform/image/transforms/hidden.h"
#include "src/platform/image/transforms/kernel_support.h"
#include "src/platform/image/transforms/row_loop.h"

namespace transforms
{

namespace
{

constexpr std::int32_t kOne = 4096;

struct Light {
    std::int32_t lRight, lUp;  // the cosine and the sine times their factor, in 1/4096
};

Light objLight(double dAngle, double dFactor)
{
    const double dTurn = std::fmod(dAngle, 360) * kPi / 180;
    return {static_cast<std::int32_t>(std::lround(std::cos(dTurn) * dFactor * kOne)),
            static_cast<std::int32_t>(std::lround(std::sin(dTurn) * dFactor * kOne))};
}

// The slopes of one row of nCount values. pLeft and pRight are the row itself, moved, with its ends repeated.
ROW_LOOP void Slopes(const std::uint8_t* __restrict pLeft, const std::uint8_t* __restrict pRight,
                     const std::uint8_t* __restrict pUpper, const std::uint8_t* __restrict pLower,
                     Light objFrom, std::size_t nCount, std::int32_t* __restrict aSlopes)
{
    for (std::size_t i = 0; i < nCount; ++i)
        aSlopes[i] =
            (objFrom.lRight * (pLeft[i] - pRight[i]) + objFrom.lUp * (pLower[i] - pUpper[i]) + kOne / 2) >>
            12;
}

ROW_LOOP void AroundGrey(const std::int32_t* __restrict aSlopes, std::size_t nCount,
                         std::uint8_t* __restrict pTarget)
{
    for (std::size_t i = 0; i < nCount; ++i) {
        const std::int32_t lValue = 128 + aSlopes[i];
        pTarget[i] = static_cast<std::uint8_t>(lValue < 0 ? 0 : lValue > 255 ? 255 : lValue);
    }
}

// The slopes towards the light of the rows that it is asked for.
class SlopeRows
{
public:
    SlopeRows(const ImageBuffer& aImage, Light objFrom, std::int32_t lDistance)
        : m_aImage(aImage),
          m_objFrom(objFrom),
          m_lDistance(lDistance),
          m_nReach(static_cast<std::size_t>(lDistance) * static_cast<std::size_t>(aImage.lChannels)),
          m_aWide(nStride(aImage) + 2 * m_nReach),
          m_aSlopes(nStride(aImage))
    {
    }
    const std::vector<std::int32_t>& aRow(std::int32_t y)
    {
        const auto nChannels = static_cast<std::size_t>(m_aImage.lChannels);
        const std::size_t nRow = nStride(m_aImage);
        const std::uint8_t* pSource = pRow(m_aImage, y);
        std::uint8_t* pWide = m_aWide.data() + m_nReach;
        std::memcpy(pWide, pSource, nRow);
        for (std::size_t i = 0; i < m_nReach; ++i) {
            pWide[nRow + i] = pSource[nRow - nChannels + i % nChannels];
            m_aWide[i] = pSource[i % nChannels];
        }
        Slopes(pWide - m_nReach, pWide + m_nReach, pRow(m_aImage, std::max(y - m_lDistance, 0)),
               pRow(m_aImage, std::min(y + m_lDistance, m_aImage.lHeight - 1)), m_objFrom, nRow,
               m_aSlopes.data());
        return m_aSlopes;
    }

private:
    const ImageBuffer& m_aImage;
    Light m_objFrom;
    std::int32_t m_lDistance;
    std::size_t m_nReach;
    std::vector<std::uint8_t> m_aWide;  // the row with its ends repeated
    std::vector<std::int32_t> m_aSlopes;
};

}  // namespace

bool Emboss(ImageBuffer& aImage, double dAngle, std::int32_t lHeight, double dBrightness)
{
    if (lHeight <= 0 || !std::isfinite(dAngle) || std::isnan(dBrightness))
        return true;
    return bAmongVisible(aImage, [&] {
        const Light objFrom = objLight(dAngle, dClamped(dBrightness, 0, 1000) / 10);
        const std::int32_t lDistance = std::min(lHeight, 16);
        ImageBuffer aResult = aLike(aImage);
        EachRows(aImage.lHeight, nStride(aImage), [&](std::int32_t lFirst, std::int32_t lLast) {
            SlopeRows objSlopes(aImage, objFrom, lDistance);
            for (std::int32_t y = lFirst; y < lLast; ++y) {
                AroundGrey(objSlopes.aRow(y).data(), nStride(aImage), pRow(aResult, y));
                for (std::size_t i = 3; aImage.lChannels == 4 && i < nStride(aImage); i += 4)
                    pRow(aResult, y)[i] = pRow(aImage, y)[i];
            }
        });
        TakePixels(aImage, std::move(aResult));
        return true;
    });
}

bool Relief(ImageBuffer& aImage, double dAngle, double dBrightness, double dSmoothness)
{
    if (!(dBrightness > 0) || !std::isfinite(dAngle) || std::isnan(dSmoothness))
        return true;
    return bAmongVisible(aImage, [&] {
        ImageBuffer aMap = aIntensity(aImage);
        if (dSmoothness > 0)
            aMap = aBlurred(aMap, std::max(0.1, std::min(dSmoothness, 16.0) / 4));
        const Light objFrom = objLight(dAngle, std::min(dBrightness, 100.0));
        std::vector<SlopeRows> aSlopes(nBands(aImage), SlopeRows(aMap, objFrom, 1));
        const std::int32_t lColours = aImage.lChannels == 1 ? 1 : 3;
        const auto fnBand = [&](std::size_t nBand, std::int32_t lFirst, std::int32_t lEnd) {
            for (std::int32_t y = lFirst; y < lEnd; ++y) {
                std::uint8_t* pPixel = pRow(aImage, y);
                for (const std::int32_t lSlope : aSlopes[nBand].aRow(y)) {
                    for (std::int32_t c = 0; c < lColours; ++c)
                        pPixel[c] = nLevel(pPixel[c] + lSlope);
                    pPixel += aImage.lChannels;
                }
            }
        };
        RunBands(aImage, aSlopes.size(), std::ref(fnBand));
        return true;
    });
}

}  // namespace transforms

// Means of squares, their blur, and the way back to the full size.
#include "src/platform/image/transforms/filters/small_picture.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "src/platform/image/transforms/filters/gaussian_curve.h"
#include "src/platform/image/transforms/rows/bands.h"
#include "src/platform/image/transforms/rows/picture_rows.h"
#include "src/platform/image/transforms/rows/row_loop.h"

namespace transforms
{

using Four = float __attribute__((vector_size(16)));

static std::size_t nCells(std::int32_t lSide, std::int32_t lStep)
{
    return static_cast<std::size_t>((lSide + lStep - 1) / lStep + 2);
}

SmallPicture::SmallPicture(const ImageBuffer& aImage, std::int32_t lStep)
    : m_lStep(lStep),
      m_nChannels(static_cast<std::size_t>(aImage.channels)),
      m_nColumns(nCells(aImage.width, lStep)),
      m_nRows(nCells(aImage.height, lStep)),
      m_aMeans(m_nRows * nRow())
{
    EachRows(static_cast<std::int32_t>(m_nRows), nStride(aImage) * static_cast<std::size_t>(lStep),
             [&](std::int32_t lFirst, std::int32_t lLast) {
                 std::vector<std::uint32_t> aSums(nStride(aImage));
                 for (std::int32_t y = lFirst; y < lLast; ++y)
                     ReduceRows(aImage, (y - 1) * m_lStep, aSums,
                                m_aMeans.data() + static_cast<std::size_t>(y) * nRow());
             });
}

ROW_LOOP static void AddBytes(const std::uint8_t* __restrict pBytes, std::size_t nCount,
                              std::uint32_t* __restrict aSums)
{
    for (std::size_t i = 0; i < nCount; ++i)
        aSums[i] += pBytes[i];
}

// The squares whose first row is y, which may lie beyond the border.
void SmallPicture::ReduceRows(const ImageBuffer& aImage, std::int32_t y, std::vector<std::uint32_t>& aSums,
                              std::int16_t* pMeans) const
{
    std::fill(aSums.begin(), aSums.end(), 0U);
    for (std::int32_t i = 0; i < m_lStep; ++i)
        AddBytes(pRow(aImage, std::clamp(y + i, 0, aImage.height - 1)), aSums.size(), aSums.data());
    const auto nPixels = static_cast<std::uint32_t>(m_lStep) * static_cast<std::uint32_t>(m_lStep);
    const std::int64_t nLast = aImage.width - 1, nChannels = aImage.channels;
    for (std::size_t nCell = 0; nCell < m_nColumns; ++nCell) {
        const std::int64_t nLeft = (static_cast<std::int64_t>(nCell) - 1) * m_lStep;
        for (std::int64_t c = 0; c < nChannels; ++c) {
            std::uint64_t nSum = 0;
            for (std::int64_t x = nLeft; x < nLeft + m_lStep; ++x)
                nSum +=
                    aSums[static_cast<std::size_t>(std::clamp<std::int64_t>(x, 0, nLast) * nChannels + c)];
            *pMeans++ = static_cast<std::int16_t>((nSum * kSteps + nPixels / 2) / nPixels);
        }
    }
}

void SmallPicture::Blur(double dDeviation)
{
    const GaussianCurve objCurve(dDeviation);
    const std::size_t nPadding = objCurve.nReach() * m_nChannels;
    std::vector<std::int16_t> aResult(m_aMeans.size());
    EachRows(static_cast<std::int32_t>(m_nRows), 4 * nRow(), [&](std::int32_t lFirst, std::int32_t lLast) {
        std::vector<std::int16_t> aDown(nRow() + 2 * nPadding);
        std::vector<const std::int16_t*> aRows(2 * objCurve.nReach() + 1);
        for (std::int32_t y = lFirst; y < lLast; ++y) {
            for (std::size_t i = 0; i < aRows.size(); ++i) {
                const auto lRow =
                    y + static_cast<std::int32_t>(i) - static_cast<std::int32_t>(objCurve.nReach());
                aRows[i] = m_aMeans.data() + static_cast<std::size_t>(std::clamp(
                                                 lRow, 0, static_cast<std::int32_t>(m_nRows) - 1)) *
                                                 nRow();
            }
            std::int16_t* pDown = aDown.data() + nPadding;
            objCurve.Down(aRows.data(), nRow(), pDown);
            RepeatEnds(pDown, nRow(), m_nChannels, objCurve.nReach());
            objCurve.Along(pDown, nRow(), m_nChannels, aResult.data() + static_cast<std::size_t>(y) * nRow());
        }
    });
    m_aMeans = std::move(aResult);
}

std::vector<SmallPicture::Tap> SmallPicture::aTaps(std::int32_t lSide) const
{
    std::vector<Tap> aResult(static_cast<std::size_t>(lSide));
    for (std::int32_t i = 0; i < lSide; ++i) {
        const std::int32_t lHalves = 2 * i + 1 + m_lStep;  // from the middle of the first square, in halves
        aResult[static_cast<std::size_t>(i)] = {
            lHalves / (2 * m_lStep),
            static_cast<float>(lHalves % (2 * m_lStep)) / static_cast<float>(2 * m_lStep)};
    }
    return aResult;
}

// Two rows of squares mixed, in levels.
ROW_LOOP static void MixRows(const std::int16_t* __restrict pOne, const std::int16_t* __restrict pOther,
                             std::size_t nCount, float dOther, float* __restrict aMixed)
{
    for (std::size_t i = 0; i < nCount; ++i) {
        const auto dOne = static_cast<float>(pOne[i]);
        aMixed[i] = (dOne + (static_cast<float>(pOther[i]) - dOne) * dOther) / kSteps;
    }
}

template <int nChannels>
void SmallPicture::EnlargeRow(const float* aMixed, const std::vector<Tap>& aAcross, std::uint8_t* pTarget)
{
    constexpr Four kHalf{0.5F, 0.5F, 0.5F, 0.5F};
    for (const Tap& objTap : aAcross) {
        // Whatever stands behind the pixel is read along and not used; the row is longer by that much.
        const float* pLeft = aMixed + static_cast<std::ptrdiff_t>(objTap.lCell) * nChannels;
        Four aLeft, aRight;
        std::memcpy(&aLeft, pLeft, sizeof aLeft);
        std::memcpy(&aRight, pLeft + nChannels, sizeof aRight);
        const Four aValue = aLeft + (aRight - aLeft) * objTap.dWeight + kHalf;
        for (int c = 0; c < nChannels; ++c)
            *pTarget++ = static_cast<std::uint8_t>(static_cast<std::int32_t>(aValue[c]));
    }
}

void SmallPicture::Enlarge(ImageBuffer& aTarget) const
{
    const std::vector<Tap> aAcross = aTaps(aTarget.width), aDown = aTaps(aTarget.height);
    const auto fnRow = aTarget.channels == 1   ? EnlargeRow<1>
                       : aTarget.channels == 3 ? EnlargeRow<3>
                                               : EnlargeRow<4>;
    EachRows(aTarget.height, nStride(aTarget), [&](std::int32_t lFirst, std::int32_t lLast) {
        std::vector<float> aMixed(nRow() + 4);
        for (std::int32_t y = lFirst; y < lLast; ++y) {
            const Tap& objTap = aDown[static_cast<std::size_t>(y)];
            const std::int16_t* pUpper = m_aMeans.data() + static_cast<std::size_t>(objTap.lCell) * nRow();
            MixRows(pUpper, pUpper + nRow(), nRow(), objTap.dWeight, aMixed.data());
            fnRow(aMixed.data(), aAcross, pRow(aTarget, y));
        }
    });
}

}  // namespace transforms

// Blurs at full size for small deviations and on a smaller picture for great ones.
#include "src/platform/image/transforms/gaussian.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <opencv2/imgproc.hpp>
#include <utility>
#include <vector>

#include "src/platform/image/transforms/kernel_support.h"
#include "src/platform/image/transforms/row_loop.h"

namespace transforms
{

namespace
{

using Four = float __attribute__((vector_size(16)));

void Blur(const cv::Mat& objFrom, cv::Mat& objTo, double dDeviation)
{
    const int nSize = 2 * static_cast<int>(std::ceil(3 * dDeviation)) + 1;
    cv::GaussianBlur(objFrom, objTo, cv::Size(nSize, nSize), dDeviation, dDeviation, cv::BORDER_REPLICATE);
}

// What averaging over nStep pixels and going back bilinearly add to the variance is taken off the blur's.
double dRest(double dDeviation, std::int32_t lStep)
{
    const double dSquare = static_cast<double>(lStep) * lStep;
    return std::sqrt(dDeviation * dDeviation - (dSquare - 1) / 12 - dSquare / 6) / lStep;
}

ROW_LOOP void AddBytes(const std::uint8_t* __restrict pBytes, std::size_t nCount,
                       std::uint32_t* __restrict aSums)
{
    for (std::size_t i = 0; i < nCount; ++i)
        aSums[i] += pBytes[i];
}

// The picture of the means over squares of lStep pixels. One square beyond the border on each side belongs to
// it: there stand the border's pixels alone, and so do they in all squares further out.
class SmallPicture
{
public:
    SmallPicture(const ImageBuffer& aImage, std::int32_t lStep)
        : m_lStep(lStep),
          m_objMeans((aImage.lHeight + lStep - 1) / lStep + 2, (aImage.lWidth + lStep - 1) / lStep + 2,
                     CV_32FC(aImage.lChannels))
    {
        EachRows(m_objMeans.rows, nStride(aImage) * static_cast<std::size_t>(lStep),
                 [&](std::int32_t lFirst, std::int32_t lLast) {
                     std::vector<std::uint32_t> aSums(nStride(aImage));
                     for (std::int32_t y = lFirst; y < lLast; ++y)
                         ReduceRows(aImage, (y - 1) * lStep, aSums, m_objMeans.ptr<float>(y));
                 });
    }
    void BlurBy(double dDeviation) { Blur(m_objMeans, m_objMeans, dDeviation); }
    // Fills aTarget bilinearly.
    void Enlarge(ImageBuffer& aTarget) const
    {
        const std::vector<Tap> aAcross = aTaps(aTarget.lWidth), aDown = aTaps(aTarget.lHeight);
        const auto fnRow = aTarget.lChannels == 1   ? EnlargeRow<1>
                           : aTarget.lChannels == 3 ? EnlargeRow<3>
                                                    : EnlargeRow<4>;
        const auto nCells = static_cast<std::size_t>(m_objMeans.cols);
        EachRows(aTarget.lHeight, nStride(aTarget), [&](std::int32_t lFirst, std::int32_t lLast) {
            std::vector<float> aMixed(nCells * 4 + 4);
            for (std::int32_t y = lFirst; y < lLast; ++y) {
                const Tap objTap = aDown[static_cast<std::size_t>(y)];
                const float* pUpper = m_objMeans.ptr<float>(objTap.lCell);
                const float* pLower = m_objMeans.ptr<float>(objTap.lCell + 1);
                const auto nValues = nCells * static_cast<std::size_t>(aTarget.lChannels);
                for (std::size_t i = 0; i < nValues; ++i)
                    aMixed[i] = pUpper[i] + (pLower[i] - pUpper[i]) * objTap.dWeight;
                fnRow(aMixed.data(), aAcross, pRow(aTarget, y));
            }
        });
    }

private:
    // The square left of or above a pixel's middle, and how much the next one weighs.
    struct Tap {
        std::int32_t lCell;
        float dWeight;
    };
    std::vector<Tap> aTaps(std::int32_t lSide) const
    {
        std::vector<Tap> aResult(static_cast<std::size_t>(lSide));
        for (std::int32_t i = 0; i < lSide; ++i) {
            const std::int32_t lHalves = 2 * i + 1 + m_lStep;  // from the middle of the first square, in 1/2
            aResult[static_cast<std::size_t>(i)] = {
                lHalves / (2 * m_lStep),
                static_cast<float>(lHalves % (2 * m_lStep)) / static_cast<float>(2 * m_lStep)};
        }
        return aResult;
    }

    // The squares whose first row is y, which may lie beyond the border.
    void ReduceRows(const ImageBuffer& aImage, std::int32_t y, std::vector<std::uint32_t>& aSums,
                    float* pMeans) const
    {
        std::fill(aSums.begin(), aSums.end(), 0U);
        for (std::int32_t i = 0; i < m_lStep; ++i)
            AddBytes(pRow(aImage, std::clamp(y + i, 0, aImage.lHeight - 1)), aSums.size(), aSums.data());
        const float dShare = 1.F / (static_cast<float>(m_lStep) * static_cast<float>(m_lStep));
        const std::int64_t nChannels = aImage.lChannels;
        for (std::int32_t lCell = 0; lCell < m_objMeans.cols; ++lCell) {
            for (std::int64_t c = 0; c < nChannels; ++c) {
                std::uint32_t nSum = 0;
                for (std::int32_t x = (lCell - 1) * m_lStep; x < lCell * m_lStep; ++x)
                    nSum +=
                        aSums[static_cast<std::size_t>(std::clamp(x, 0, aImage.lWidth - 1) * nChannels + c)];
                *pMeans++ = static_cast<float>(nSum) * dShare;
            }
        }
    }

    template <int nChannels>
    static void EnlargeRow(const float* aMixed, const std::vector<Tap>& aAcross, std::uint8_t* pTarget)
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

    std::int32_t m_lStep;
    cv::Mat m_objMeans;
};

}  // namespace

ImageBuffer aBlurred(const ImageBuffer& aImage, double dDeviation)
{
    constexpr double kSampled = 6;
    constexpr std::size_t kSmall = 1 << 14;  // pixels
    ImageBuffer aResult = aLike(aImage);
    if (dDeviation > kSampled && aImage.aBytes.size() > kSmall * static_cast<std::size_t>(aImage.lChannels)) {
        const auto lStep = static_cast<std::int32_t>(dDeviation / 3);
        SmallPicture objSmall(aImage, lStep);
        objSmall.BlurBy(dRest(dDeviation, lStep));
        objSmall.Enlarge(aResult);
        return aResult;
    }
    const int nType = CV_8UC(aImage.lChannels);
    const cv::Mat objFrom(aImage.lHeight, aImage.lWidth, nType,
                          const_cast<std::uint8_t*>(aImage.aBytes.data()));
    cv::Mat objTo(aImage.lHeight, aImage.lWidth, nType, aResult.aBytes.data());
    Blur(objFrom, objTo, dDeviation);
    return aResult;
}

bool GaussianBlur(ImageBuffer& aImage, std::int32_t lFuzziness)
{
    if (lFuzziness <= 0)
        return true;
    return bGuarded([&] {
        ImageBuffer aResult = aBlurred(aImage, std::min(lFuzziness, 255));
        for (std::size_t i = 3; aImage.lChannels == 4 && i < aImage.aBytes.size(); i += 4)
            aResult.aBytes[i] = aImage.aBytes[i];
        TakePixels(aImage, std::move(aResult));
        return true;
    });
}

}  // namespace transforms

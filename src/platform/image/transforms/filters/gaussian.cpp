// Blurs at full size for small deviations and on a smaller picture for great ones.
#include "src/platform/image/transforms/filters/gaussian.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "src/platform/image/transforms/filters/gaussian_curve.h"
#include "src/platform/image/transforms/filters/small_picture.h"
#include "src/platform/image/transforms/rows/bands.h"
#include "src/platform/image/transforms/rows/hidden.h"
#include "src/platform/image/transforms/rows/new_pixels.h"
#include "src/platform/image/transforms/rows/picture_rows.h"
#include "src/platform/image/transforms/rows/row_loop.h"

namespace transforms
{

ROW_LOOP static void RoundRow(const std::int16_t* __restrict pValues, std::size_t nCount,
                              std::uint8_t* __restrict pTarget)
{
    for (std::size_t i = 0; i < nCount; ++i)
        pTarget[i] = static_cast<std::uint8_t>(static_cast<std::uint16_t>(pValues[i] + kSteps / 2) / kSteps);
}

static void BlurAtFullSize(const ImageBuffer& aImage, double dDeviation, ImageBuffer& aResult)
{
    const GaussianCurve objCurve(dDeviation);
    const auto nReach = static_cast<std::int32_t>(objCurve.nReach());
    const auto nChannels = static_cast<std::size_t>(aImage.channels);
    const std::size_t nRow = nStride(aImage), nPadding = objCurve.nReach() * nChannels;
    EachRows(aImage.height, 4 * nRow, [&](std::int32_t lFirst, std::int32_t lLast) {
        std::vector<std::int16_t> aDown(nRow + 2 * nPadding), aAlong(nRow);
        std::vector<const std::uint8_t*> aRows(2 * objCurve.nReach() + 1);
        for (std::int32_t y = lFirst; y < lLast; ++y) {
            for (std::size_t i = 0; i < aRows.size(); ++i)
                aRows[i] =
                    pRow(aImage, std::clamp(y + static_cast<std::int32_t>(i) - nReach, 0, aImage.height - 1));
            std::int16_t* pDown = aDown.data() + nPadding;
            objCurve.Down(aRows.data(), nRow, pDown);
            RepeatEnds(pDown, nRow, nChannels, objCurve.nReach());
            objCurve.Along(pDown, nRow, nChannels, aAlong.data());
            RoundRow(aAlong.data(), nRow, pRow(aResult, y));
        }
    });
}

// What averaging over step pixels and going back bilinearly add to the variance is taken off the blur's.
static double dRest(double dDeviation, std::int32_t lStep)
{
    const double dSquare = static_cast<double>(lStep) * lStep;
    return std::sqrt(dDeviation * dDeviation - (dSquare - 1) / 12 - dSquare / 6) / lStep;
}

ImageBuffer aBlurred(const ImageBuffer& aImage, double dDeviation)
{
    ImageBuffer aResult = aLike(aImage);
    if (dDeviation <= kGreatestCurve) {
        BlurAtFullSize(aImage, dDeviation, aResult);
        return aResult;
    }
    const auto lStep = static_cast<std::int32_t>(dDeviation / 3);
    SmallPicture objSmall(aImage, lStep);
    objSmall.Blur(dRest(dDeviation, lStep));
    objSmall.Enlarge(aResult);
    return aResult;
}

bool GaussianBlur(ImageBuffer& aImage, std::int32_t lFuzziness)
{
    if (lFuzziness <= 0)
        return true;
    return bAmongVisible(aImage, [&] {
        ImageBuffer aResult = aBlurred(aImage, std::min(lFuzziness, 255));
        for (std::size_t i = 3; aImage.channels == 4 && i < aImage.bytes.size(); i += 4)
            aResult.bytes[i] = aImage.bytes[i];
        TakePixels(aImage, std::move(aResult));
        return true;
    });
}

}  // namespace transforms

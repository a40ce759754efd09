// Compares each value with those right of it and below it.
#include "src/platform/image/transforms/filters/contours.h"

#include <algorithm>
#include <cstring>
#include <utility>
#include <vector>

#include "src/platform/image/transforms/rows/bands.h"
#include "src/platform/image/transforms/rows/hidden.h"
#include "src/platform/image/transforms/rows/intensity.h"
#include "src/platform/image/transforms/rows/new_pixels.h"
#include "src/platform/image/transforms/rows/picture_rows.h"
#include "src/platform/image/transforms/rows/row_loop.h"

namespace transforms
{

// A row, its neighbours nStep bytes on, and the row below it.
ROW_LOOP static void Trace(const std::uint8_t* __restrict pOwn, const std::uint8_t* __restrict pRight,
                           const std::uint8_t* __restrict pBelow, std::size_t nCount, std::uint8_t nLimit,
                           std::uint8_t nThreshold, std::uint8_t* __restrict pTarget)
{
    for (std::size_t i = 0; i < nCount; ++i) {
        const std::uint8_t nOwn = pOwn[i];
        const auto nToRight =
            static_cast<std::uint8_t>(std::max(nOwn, pRight[i]) - std::min(nOwn, pRight[i]));
        const auto nToBelow =
            static_cast<std::uint8_t>(std::max(nOwn, pBelow[i]) - std::min(nOwn, pBelow[i]));
        const bool bContour =
            ((nOwn < nLimit) != (pRight[i] < nLimit)) | ((nOwn < nLimit) != (pBelow[i] < nLimit));
        const bool bOutline = (nToRight > nThreshold) | (nToBelow > nThreshold);
        pTarget[i] = (bContour | bOutline) ? 0 : 255;
    }
}

// The lines of aValues, as a picture of the same channels.
static ImageBuffer aLines(const ImageBuffer& aValues, std::uint8_t nLimit, std::uint8_t nThreshold)
{
    ImageBuffer aResult = aLike(aValues);
    const auto nChannels = static_cast<std::size_t>(aValues.channels);
    const std::size_t nRow = nStride(aValues);
    EachRows(aValues.height, nRow, [&](std::int32_t lFirst, std::int32_t lLast) {
        std::vector<std::uint8_t> aRight(nRow);
        for (std::int32_t y = lFirst; y < lLast; ++y) {
            const std::uint8_t* pOwn = pRow(aValues, y);
            std::memcpy(aRight.data(), pOwn + nChannels, nRow - nChannels);
            std::memcpy(aRight.data() + nRow - nChannels, pOwn + nRow - nChannels, nChannels);
            Trace(pOwn, aRight.data(), pRow(aValues, std::min(y + 1, aValues.height - 1)), nRow, nLimit,
                  nThreshold, pRow(aResult, y));
        }
    });
    return aResult;
}

bool TraceContours(ImageBuffer& aImage, std::uint8_t nLevel, std::uint8_t nThreshold, bool bIntensity)
{
    return bAmongVisible(aImage, [&] {
        if (aImage.channels == 1 || !bIntensity) {
            ImageBuffer aResult = aLines(aImage, nLevel, nThreshold);
            for (std::size_t i = 3; aImage.channels == 4 && i < aImage.bytes.size(); i += 4)
                aResult.bytes[i] = aImage.bytes[i];
            TakePixels(aImage, std::move(aResult));
            return true;
        }
        const ImageBuffer aGrey = aLines(aIntensity(aImage), nLevel, nThreshold);
        const auto nChannels = static_cast<std::size_t>(aImage.channels);
        for (std::size_t i = 0; i < aGrey.bytes.size(); ++i) {
            for (std::size_t c = 0; c < 3; ++c)
                aImage.bytes[i * nChannels + c] = aGrey.bytes[i];
        }
        return true;
    });
}

}  // namespace transforms

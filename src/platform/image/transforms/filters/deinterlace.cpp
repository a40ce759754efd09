// Taking one of the two half pictures out of an interlaced one.
#include "src/platform/image/transforms/filters/deinterlace.h"

#include <cstddef>
#include <cstdint>

#include "src/platform/image/transforms/rows/bands.h"
#include "src/platform/image/transforms/rows/hidden.h"
#include "src/platform/image/transforms/rows/row_loop.h"

namespace transforms
{

ROW_LOOP static void MeanRow(const std::uint8_t* pAbove, const std::uint8_t* pBelow, std::size_t nBytes,
                             std::uint8_t* __restrict pTarget)
{
    for (std::size_t i = 0; i < nBytes; ++i)
        pTarget[i] = static_cast<std::uint8_t>((pAbove[i] + pBelow[i] + 1) >> 1);
}

ROW_LOOP static void MeanRowBesideAlpha(const std::uint8_t* pAbove, const std::uint8_t* pBelow,
                                        std::size_t nBytes, std::uint8_t* __restrict pTarget)
{
    for (std::size_t i = 0; i < nBytes; i += 4) {
        const std::uint8_t nAlpha = pTarget[i + 3];
        for (std::size_t c = 0; c < 3; ++c)
            pTarget[i + c] = static_cast<std::uint8_t>((pAbove[i + c] + pBelow[i + c] + 1) >> 1);
        pTarget[i + 3] = nAlpha;
    }
}

bool Deinterlace(ImageBuffer& aImage, bool bOddLines, bool bInterpolate)
{
    if (aImage.height < 2)
        return true;
    const std::size_t nRowBytes =
        static_cast<std::size_t>(aImage.width) * static_cast<std::size_t>(aImage.channels);
    const auto fnRow = [&](std::int32_t y) {
        return aImage.bytes.data() + nRowBytes * static_cast<std::size_t>(y);
    };
    const auto fnRows = [&](std::int32_t lFirst, std::int32_t lEnd) {
        for (std::int32_t y = lFirst; y < lEnd; ++y) {
            if ((y % 2 == 1) != bOddLines)
                continue;
            const std::uint8_t* pAbove = fnRow(y > 0 ? y - 1 : 1);
            const std::uint8_t* pBelow = bInterpolate && y + 1 < aImage.height ? fnRow(y + 1) : pAbove;
            (aImage.channels == 4 ? MeanRowBesideAlpha : MeanRow)(pAbove, pBelow, nRowBytes, fnRow(y));
        }
    };
    return bAmongVisible(aImage, [&] {
        RunBands(aImage, fnRows);
        return true;
    });
}

}  // namespace transforms

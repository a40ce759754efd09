// The greatest or smallest value around each pixel, and what of it the level and threshold let through.
#include "src/platform/image/transforms/filters/dilation.h"

#include <array>
#include <cstddef>
#include <functional>

#include "src/platform/image/transforms/filters/convolution.h"
#include "src/platform/image/transforms/rows/row_loop.h"

namespace transforms
{

namespace
{

struct Limits {
    std::uint8_t nLevel, nThreshold;
};

// A row and those around it, from one pixel before its first on.
struct Around {
    const std::uint8_t *pAbove, *pOwn, *pBelow;
    std::size_t nChannels;
};

ROW_LOOP_PART std::uint8_t nGreater(std::uint8_t nOne, std::uint8_t nOther)
{
    return nOne < nOther ? nOther : nOne;
}
ROW_LOOP_PART std::uint8_t nLesser(std::uint8_t nOne, std::uint8_t nOther)
{
    return nOne < nOther ? nOne : nOther;
}

template <bool bSquare, bool bGrow>
ROW_LOOP_PART void ChangeRow(const Around& obj, std::size_t nCount, Limits objLimits,
                             std::uint8_t* __restrict pTarget)
{
    const std::uint8_t* __restrict a = obj.pAbove;
    const std::uint8_t* __restrict m = obj.pOwn;
    const std::uint8_t* __restrict b = obj.pBelow;
    const std::size_t c = obj.nChannels;
    const std::uint8_t nLevel = objLimits.nLevel, nThreshold = objLimits.nThreshold;
    for (std::size_t i = 0; i < nCount; ++i) {
        const std::uint8_t nValue = m[i + c];
        if constexpr (bGrow) {
            std::uint8_t nMost =
                nGreater(nGreater(nGreater(m[i], nValue), m[i + 2 * c]), nGreater(a[i + c], b[i + c]));
            if constexpr (bSquare)
                nMost = nGreater(nMost, nGreater(nGreater(a[i], a[i + 2 * c]), nGreater(b[i], b[i + 2 * c])));
            const auto nGrowth = nLesser(static_cast<std::uint8_t>(nMost - nValue), nLevel);
            pTarget[i] = nMost > nThreshold ? static_cast<std::uint8_t>(nValue + nGrowth) : nValue;
        } else {
            std::uint8_t nLeast =
                nLesser(nLesser(nLesser(m[i], nValue), m[i + 2 * c]), nLesser(a[i + c], b[i + c]));
            if constexpr (bSquare)
                nLeast = nLesser(nLeast, nLesser(nLesser(a[i], a[i + 2 * c]), nLesser(b[i], b[i + 2 * c])));
            const auto nLoss = nLesser(static_cast<std::uint8_t>(nValue - nLeast), nLevel);
            pTarget[i] = nValue > nThreshold ? static_cast<std::uint8_t>(nValue - nLoss) : nValue;
        }
    }
}

ROW_LOOP void GrowSquare(const Around& obj, std::size_t nCount, Limits objLimits, std::uint8_t* pTarget)
{
    ChangeRow<true, true>(obj, nCount, objLimits, pTarget);
}
ROW_LOOP void GrowCross(const Around& obj, std::size_t nCount, Limits objLimits, std::uint8_t* pTarget)
{
    ChangeRow<false, true>(obj, nCount, objLimits, pTarget);
}
ROW_LOOP void WearSquare(const Around& obj, std::size_t nCount, Limits objLimits, std::uint8_t* pTarget)
{
    ChangeRow<true, false>(obj, nCount, objLimits, pTarget);
}
ROW_LOOP void WearCross(const Around& obj, std::size_t nCount, Limits objLimits, std::uint8_t* pTarget)
{
    ChangeRow<false, false>(obj, nCount, objLimits, pTarget);
}

using RowChange = void (*)(const Around&, std::size_t, Limits, std::uint8_t*);

// Beyond the border stand the border's own values, which are neither greater nor smaller than what is there.
bool bChange(ImageBuffer& aImage, Limits objLimits, RowChange fnChange)
{
    if (objLimits.nLevel == 0)
        return true;
    const auto fnRow = [&](const std::array<const std::uint8_t*, 3>& aRows, std::size_t nCount,
                           std::size_t nChannels, std::uint8_t* pTarget) {
        fnChange({aRows[0] - nChannels, aRows[1] - nChannels, aRows[2] - nChannels, nChannels}, nCount,
                 objLimits, pTarget);
    };
    return FilterNeighbourhoods(aImage, std::ref(fnRow));
}

}  // namespace

bool Dilation(ImageBuffer& aImage, std::uint8_t nLevel, std::uint8_t nThreshold, bool bSquare)
{
    return bChange(aImage, {nLevel, nThreshold}, bSquare ? GrowSquare : GrowCross);
}

bool Erosion(ImageBuffer& aImage, std::uint8_t nLevel, std::uint8_t nThreshold, bool bSquare)
{
    return bChange(aImage, {nLevel, nThreshold}, bSquare ? WearSquare : WearCross);
}

}  // namespace transforms

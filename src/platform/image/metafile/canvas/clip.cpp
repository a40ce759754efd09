// Sets of pixels and what can be done with two of them.
#include "src/platform/image/metafile/canvas/clip.h"

#include <cstdlib>

#include "src/platform/image/metafile/canvas/raster_ops.h"

// Coverage stays in memory as long as a saved state holds it, so a byte of it costs more than a painted
// pixel.
static constexpr std::uint64_t kCostOfCoverage = 8;

static std::uint8_t nCombinedLevel(unsigned nOld, unsigned nNew, ClipMode eMode)
{
    switch (eMode) {
        case ClipMode::And:
            return static_cast<std::uint8_t>(nDividedBy255(nOld * nNew));
        case ClipMode::Or:
            return static_cast<std::uint8_t>(nOld + nNew - nDividedBy255(nOld * nNew));
        case ClipMode::Xor:
            return static_cast<std::uint8_t>(nOld > nNew ? nOld - nNew : nNew - nOld);
        case ClipMode::Difference:
            return static_cast<std::uint8_t>(nDividedBy255(nOld * (255 - nNew)));
        case ClipMode::Copy:
            break;
    }
    return static_cast<std::uint8_t>(nNew);
}

Clip Combined(const Clip& clipOld, const Clip& clipNew, ClipMode eMode, Budget& objBudget)
{
    const Box boxBoth = Intersection(clipOld.box, clipNew.box);
    switch (eMode) {
        case ClipMode::Copy:
            return clipNew;
        case ClipMode::And:
            if (boxBoth.Empty() || (!clipOld.pCoverage && !clipNew.pCoverage))
                return {boxBoth, nullptr};
            break;
        case ClipMode::Difference:
            if (boxBoth.Empty())
                return clipOld;
            if (!clipNew.pCoverage && boxBoth == clipOld.box)
                return {};
            break;
        case ClipMode::Or:
        case ClipMode::Xor:
            if (clipOld.box.Empty())
                return clipNew;
            if (clipNew.box.Empty())
                return clipOld;
            break;
        default:
            return clipOld;
    }
    const Box boxResult = eMode == ClipMode::And          ? boxBoth
                          : eMode == ClipMode::Difference ? clipOld.box
                                                          : Around(clipOld.box, clipNew.box);
    if (!objBudget.Spend(boxResult.Area() * kCostOfCoverage))
        return clipOld;
    auto pCoverage = std::make_shared<Coverage>(boxResult);
    for (std::int32_t y = boxResult.lTop; y < boxResult.lBottom; ++y) {
        std::uint8_t* pRow = pCoverage->Row(y);
        for (std::int32_t x = boxResult.lLeft; x < boxResult.lRight; ++x)
            *pRow++ = nCombinedLevel(clipOld.Level(x, y), clipNew.Level(x, y), eMode);
    }
    return {boxResult, std::move(pCoverage)};
}

Clip Moved(const Clip& clip, std::int32_t lRight, std::int32_t lDown, const Box& boxLimit, Budget& objBudget)
{
    const Box boxMoved{clip.box.lLeft + lRight, clip.box.lTop + lDown, clip.box.lRight + lRight,
                       clip.box.lBottom + lDown};
    const Box boxResult = Intersection(boxMoved, boxLimit);
    if (boxResult.Empty())
        return {};
    if (!clip.pCoverage || !objBudget.Spend(boxResult.Area() * kCostOfCoverage))
        return {boxResult, nullptr};
    auto pCoverage = std::make_shared<Coverage>(boxResult);
    for (std::int32_t y = boxResult.lTop; y < boxResult.lBottom; ++y) {
        const std::uint8_t* pFrom =
            clip.pCoverage->Row(y - lDown) + (boxResult.lLeft - lRight - clip.box.lLeft);
        std::copy(pFrom, pFrom + boxResult.Width(), pCoverage->Row(y));
    }
    return {boxResult, std::move(pCoverage)};
}

// How often each level occurs in a picture.
#include "src/platform/image/transforms/rows/histogram.h"

#include <algorithm>
#include <cstddef>
#include <mutex>

#include "src/platform/image/transforms/rows/bands.h"
#include "src/platform/image/transforms/rows/intensity.h"

namespace transforms
{

constexpr std::size_t kBlock = 1024;

// Four tables in turn: a run of equal levels would otherwise wait each time for the count before it.
struct Counters {
    std::array<std::array<std::uint32_t, 256>, 4> aCounts{};
};

// The levels stand nStep bytes apart; pAlpha, if any, 4.
static void Count(Counters& objCounters, const std::uint8_t* pLevels, std::size_t nStep, std::size_t nPixels,
                  const std::uint8_t* pAlpha)
{
    std::size_t i = 0;
    if (pAlpha) {
        for (; i < nPixels; ++i)
            objCounters.aCounts[i & 3][pLevels[i * nStep]] += pAlpha[4 * i] != 0;
        return;
    }
    for (; i + 4 <= nPixels; i += 4)
        for (std::size_t n = 0; n < 4; ++n)
            ++objCounters.aCounts[n][pLevels[(i + n) * nStep]];
    for (; i < nPixels; ++i)
        ++objCounters.aCounts[0][pLevels[i * nStep]];
}

// lChannel -1 is the intensity.
static Histogram aHistogram(const ImageBuffer& aImage, std::int32_t lChannel)
{
    Histogram aResult{};
    std::mutex objLock;
    const auto nChannels = static_cast<std::size_t>(aImage.channels);
    const auto nWidth = static_cast<std::size_t>(aImage.width);
    RunBands(aImage, [&](std::int32_t lFirst, std::int32_t lEnd) {
        Counters objCounters;
        const std::size_t nLast = nWidth * static_cast<std::size_t>(lEnd);
        for (std::size_t i = nWidth * static_cast<std::size_t>(lFirst); i < nLast; i += kBlock) {
            const std::size_t nPixels = std::min(kBlock, nLast - i);
            const std::uint8_t* pPixels = aImage.bytes.data() + i * nChannels;
            const std::uint8_t* pAlpha = nChannels == 4 ? pPixels + 3 : nullptr;
            if (lChannel >= 0) {
                Count(objCounters, pPixels + lChannel, nChannels, nPixels, pAlpha);
                continue;
            }
            std::uint8_t aLevels[kBlock];
            IntensityRow(pPixels, nPixels, aImage.channels, aLevels);
            Count(objCounters, aLevels, 1, nPixels, pAlpha);
        }
        const std::lock_guard objGuard(objLock);
        for (const auto& aCounts : objCounters.aCounts)
            for (std::size_t n = 0; n < aResult.size(); ++n)
                aResult[n] += aCounts[n];
    });
    return aResult;
}

Histogram aChannelHistogram(const ImageBuffer& aImage, std::int32_t lChannel)
{
    return aHistogram(aImage, lChannel);
}

Histogram aIntensityHistogram(const ImageBuffer& aImage)
{
    return aHistogram(aImage, -1);
}

}  // namespace transforms

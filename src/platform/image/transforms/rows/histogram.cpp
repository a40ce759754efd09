// Histograms of a picture.
#include "src/platform/image/transforms/rows/histogram.h"

#include <algorithm>
#include <cstddef>
#include <mutex>

#include "src/platform/image/transforms/rows/bands.h"
#include "src/platform/image/transforms/rows/intensity.h"

namespace transforms
{

constexpr std::size_t kBlock = 1024;

namespace
{
// Four interleaved tables: in a run of equal levels, each increment would otherwise wait for the previous
// store.
struct Counters {
    std::array<std::array<std::uint32_t, 256>, 4> counts{};
};
}  // namespace

// Levels are step bytes apart; alpha, if given, 4 bytes.
static void Count(Counters& counters, const std::uint8_t* levels, std::size_t step, std::size_t pixels,
                  const std::uint8_t* alpha)
{
    std::size_t i = 0;
    if (alpha) {
        for (; i < pixels; ++i)
            counters.counts[i & 3][levels[i * step]] += alpha[4 * i] != 0;
        return;
    }
    for (; i + 4 <= pixels; i += 4)
        for (std::size_t n = 0; n < 4; ++n)
            ++counters.counts[n][levels[(i + n) * step]];
    for (; i < pixels; ++i)
        ++counters.counts[0][levels[i * step]];
}

// channel -1 means the intensity.
static Histogram HistogramOf(const ImageBuffer& image, std::int32_t channel)
{
    Histogram result{};
    std::mutex lock;
    const auto channels = static_cast<std::size_t>(image.channels);
    const auto width = static_cast<std::size_t>(image.width);
    RunBands(image, [&](std::int32_t first, std::int32_t end) {
        Counters counters;
        const std::size_t last = width * static_cast<std::size_t>(end);
        for (std::size_t i = width * static_cast<std::size_t>(first); i < last; i += kBlock) {
            const std::size_t pixel_count = std::min(kBlock, last - i);
            const std::uint8_t* pixels = image.bytes.data() + i * channels;
            const std::uint8_t* alpha = channels == 4 ? pixels + 3 : nullptr;
            if (channel >= 0) {
                Count(counters, pixels + channel, channels, pixel_count, alpha);
                continue;
            }
            std::uint8_t levels[kBlock];
            IntensityRow(pixels, pixel_count, image.channels, levels);
            Count(counters, levels, 1, pixel_count, alpha);
        }
        const std::lock_guard guard(lock);
        for (const auto& counts : counters.counts)
            for (std::size_t n = 0; n < result.size(); ++n)
                result[n] += counts[n];
    });
    return result;
}

Histogram ChannelHistogram(const ImageBuffer& image, std::int32_t channel)
{
    return HistogramOf(image, channel);
}

Histogram IntensityHistogram(const ImageBuffer& image)
{
    return HistogramOf(image, -1);
}

}  // namespace transforms

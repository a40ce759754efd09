// Histogram equalisation that keeps colours.
#include "src/platform/image/transforms/colour/equalize.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "src/platform/image/transforms/rows/bands.h"
#include "src/platform/image/transforms/rows/clamping.h"
#include "src/platform/image/transforms/rows/histogram.h"
#include "src/platform/image/transforms/rows/intensity.h"
#include "src/platform/image/transforms/rows/planes.h"
#include "src/platform/image/transforms/rows/row_loop.h"
#include "src/platform/image/transforms/rows/tables.h"
#include "src/platform/image/transforms/rows/target.h"

namespace transforms
{

static Table EqualizeTable(const Histogram& counts, double level)
{
    Table table = IdentityTable();
    std::uint64_t all = 0, darkest = 0, so_far = 0;
    for (const std::uint64_t count : counts) {
        darkest = all == 0 ? count : darkest;
        all += count;
    }
    if (all == darkest)
        return table;
    for (std::size_t n = 0; n < table.size(); ++n) {
        so_far += counts[n];
        const double whole = so_far < darkest ? 0
                                              : 255.0 * static_cast<double>(so_far - darkest) /
                                                    static_cast<double>(all - darkest);
        const auto old = static_cast<double>(n);
        table[n] = ClampToLevel(old + level * (whole - old));
    }
    return table;
}

// The largest share of the chroma that doesn't clip at one end of the range.
ROW_LOOP_PART static float AllowedShare(float room, float reach)
{
    const float share = room / (reach < 1.0F ? 1.0F : reach);
    return reach <= 0.0F || share > 1.0F ? 1.0F : share;
}

ROW_LOOP static void MovePlanes(FloatPlanes& planes, std::size_t pixels, const float* __restrict old_levels,
                                const float* __restrict new_levels)
{
    float* __restrict blue = planes.blue;
    float* __restrict green = planes.green;
    float* __restrict red = planes.red;
    for (std::size_t i = 0; i < pixels; ++i) {
        const float b = blue[i], g = green[i], r = red[i];
        const float old_level = old_levels[i], new_level = new_levels[i];
        float max = b < g ? g : b;
        max = max < r ? r : max;
        float min = b < g ? b : g;
        min = min < r ? min : r;
        const float above = AllowedShare(255.0F - new_level, max - old_level);
        const float below = AllowedShare(new_level, old_level - min);
        const float kept = above < below ? above : below;
        blue[i] = new_level + kept * (b - old_level);
        green[i] = new_level + kept * (g - old_level);
        red[i] = new_level + kept * (r - old_level);
    }
}

// True if every channel can move as far as its pixel's intensity without clipping.
ROW_LOOP static bool AllFit(const Planes& planes, std::size_t first, std::size_t count,
                            const std::uint8_t* __restrict old_levels,
                            const std::uint8_t* __restrict new_levels)
{
    const std::uint8_t* __restrict blue = planes.blue + first;
    const std::uint8_t* __restrict green = planes.green + first;
    const std::uint8_t* __restrict red = planes.red + first;
    std::uint16_t all = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const auto move = static_cast<std::uint16_t>(new_levels[i] - old_levels[i]);
        all = static_cast<std::uint16_t>(all | static_cast<std::uint16_t>(blue[i] + move) |
                                         static_cast<std::uint16_t>(green[i] + move) |
                                         static_cast<std::uint16_t>(red[i] + move));
    }
    return all < 256;
}

ROW_LOOP static void MoveAll(std::uint8_t* __restrict levels, std::size_t count,
                             const std::uint8_t* __restrict old_levels,
                             const std::uint8_t* __restrict new_levels)
{
    for (std::size_t i = 0; i < count; ++i)
        levels[i] = static_cast<std::uint8_t>(levels[i] + new_levels[i] - old_levels[i]);
}

// Moves a block group by group. Where nothing clips, which is nearly everywhere, that is a plain addition.
static void MoveBlock(Planes& planes, std::size_t pixels, const std::uint8_t* old_levels,
                      const std::uint8_t* new_levels)
{
    constexpr std::size_t kGroup = 32;
    FloatPlanes float_planes;
    float old_floats[kGroup], new_floats[kGroup];
    for (std::size_t i = 0; i < pixels; i += kGroup) {
        const std::size_t count = std::min(kGroup, pixels - i);
        std::uint8_t* const channel_rows[3] = {planes.blue + i, planes.green + i, planes.red + i};
        if (AllFit(planes, i, count, old_levels + i, new_levels + i)) {
            for (std::uint8_t* row : channel_rows)
                MoveAll(row, count, old_levels + i, new_levels + i);
            continue;
        }
        float* const channels[3] = {float_planes.blue, float_planes.green, float_planes.red};
        for (std::size_t c = 0; c < 3; ++c)
            Widen(channel_rows[c], count, channels[c]);
        Widen(old_levels + i, count, old_floats);
        Widen(new_levels + i, count, new_floats);
        MovePlanes(float_planes, count, old_floats, new_floats);
        for (std::size_t c = 0; c < 3; ++c)
            Round(channels[c], count, channel_rows[c]);
    }
}

OperationResult Equalize(const ImageBuffer& source, ImageBuffer& result, double level)
{
    if (!(level > 0))
        return OperationResult::Unchanged;
    const Table table = EqualizeTable(IntensityHistogram(source), std::min(level, 1.0));
    if (source.channels == 1)
        return ApplyTable(source, result, table);
    const auto channels = static_cast<std::size_t>(source.channels);
    const auto width = static_cast<std::size_t>(source.width);
    Target target(source, result);
    RunBands(source, [&](std::int32_t first, std::int32_t end) {
        Planes planes;
        std::uint8_t old_levels[kPlaneBlock], new_levels[kPlaneBlock];
        const std::size_t last = width * static_cast<std::size_t>(end);
        for (std::size_t i = width * static_cast<std::size_t>(first); i < last; i += kPlaneBlock) {
            const std::size_t pixel_count = std::min(kPlaneBlock, last - i);
            std::uint8_t* pixels = target.Load(i * channels, pixel_count * channels);
            SplitPixels(pixels, pixel_count, channels, planes);
            IntensityOf(planes, pixel_count, old_levels);
            for (std::size_t n = 0; n < pixel_count; ++n)
                new_levels[n] = table[old_levels[n]];
            MoveBlock(planes, pixel_count, old_levels, new_levels);
            JoinPixels(planes, pixel_count, channels, pixels);
        }
    });
    return target.Finish();
}

}  // namespace transforms

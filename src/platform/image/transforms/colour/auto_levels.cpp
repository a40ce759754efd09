// Stretches a picture's levels to the full range.
#include "src/platform/image/transforms/colour/auto_levels.h"

#include <algorithm>
#include <array>

#include "src/platform/image/transforms/rows/clamping.h"
#include "src/platform/image/transforms/rows/histogram.h"
#include "src/platform/image/transforms/rows/tables.h"

namespace transforms
{

namespace
{
struct LevelRange {
    int low = 255;
    int high = 0;  // less than low if no pixel was counted
};
}  // namespace

static LevelRange LevelRangeOf(const ImageBuffer& image, std::int32_t channel)
{
    const Histogram counts = ChannelHistogram(image, channel);
    LevelRange found;
    for (int n = 0; n < 256; ++n)
        if (counts[static_cast<std::size_t>(n)] > 0) {
            found.low = std::min(found.low, n);
            found.high = n;
        }
    return found;
}

static Table StretchTable(const LevelRange& level_range)
{
    Table table = IdentityTable();
    if (level_range.high <= level_range.low)
        return table;
    for (int n = 0; n < 256; ++n)
        table[static_cast<std::size_t>(n)] =
            ClampToLevel(255.0 * (n - level_range.low) / (level_range.high - level_range.low));
    return table;
}

OperationResult Autocontrast(const ImageBuffer& source, ImageBuffer& result)
{
    LevelRange all;
    for (std::int32_t channel = 0; channel < std::min(source.channels, 3); ++channel) {
        const LevelRange level_range = LevelRangeOf(source, channel);
        all = {std::min(all.low, level_range.low), std::max(all.high, level_range.high)};
    }
    return ApplyTable(source, result, StretchTable(all));
}

OperationResult AutoLevel(const ImageBuffer& source, ImageBuffer& result)
{
    std::array<Table, 3> tables;
    for (std::int32_t channel = 0; channel < 3; ++channel)
        tables[static_cast<std::size_t>(channel)] =
            StretchTable(LevelRangeOf(source, std::min(channel, source.channels - 1)));
    return ApplyTables(source, result, tables[0], tables[1], tables[2]);
}

}  // namespace transforms

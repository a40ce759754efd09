// Stretching a picture's levels to the whole scale.
#include "src/platform/image/transforms/colour/auto_levels.h"

#include <algorithm>
#include <array>

#include "src/platform/image/transforms/rows/clamping.h"
#include "src/platform/image/transforms/rows/histogram.h"
#include "src/platform/image/transforms/rows/tables.h"

namespace transforms
{

struct LevelRange {
    int lLow = 255;
    int lHigh = 0;  // below lLow: no pixel was counted
};

static LevelRange objRange(const ImageBuffer& aImage, std::int32_t lChannel)
{
    const Histogram aCounts = aChannelHistogram(aImage, lChannel);
    LevelRange objFound;
    for (int n = 0; n < 256; ++n)
        if (aCounts[static_cast<std::size_t>(n)] > 0) {
            objFound.lLow = std::min(objFound.lLow, n);
            objFound.lHigh = n;
        }
    return objFound;
}

static Table aStretched(const LevelRange& obj)
{
    Table aTable = aIdentityTable();
    if (obj.lHigh <= obj.lLow)
        return aTable;
    for (int n = 0; n < 256; ++n)
        aTable[static_cast<std::size_t>(n)] = nLevel(255.0 * (n - obj.lLow) / (obj.lHigh - obj.lLow));
    return aTable;
}

bool Autocontrast(ImageBuffer& aImage)
{
    LevelRange objAll;
    for (std::int32_t lChannel = 0; lChannel < std::min(aImage.channels, 3); ++lChannel) {
        const LevelRange obj = objRange(aImage, lChannel);
        objAll = {std::min(objAll.lLow, obj.lLow), std::max(objAll.lHigh, obj.lHigh)};
    }
    ApplyTable(aImage, aStretched(objAll));
    return true;
}

bool AutoLevel(ImageBuffer& aImage)
{
    std::array<Table, 3> aTables;
    for (std::int32_t lChannel = 0; lChannel < 3; ++lChannel)
        aTables[static_cast<std::size_t>(lChannel)] =
            aStretched(objRange(aImage, std::min(lChannel, aImage.channels - 1)));
    ApplyTables(aImage, aTables[0], aTables[1], aTables[2]);
    return true;
}

}  // namespace transforms

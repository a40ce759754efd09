// Changing every value of a channel by a table.
#include "src/platform/image/transforms/rows/tables.h"

#include <cstddef>

#include "src/platform/image/transforms/rows/bands.h"
#include "src/platform/image/transforms/rows/intensity.h"

namespace transforms
{

Table aIdentityTable()
{
    Table aTable;
    for (std::size_t n = 0; n < aTable.size(); ++n)
        aTable[n] = static_cast<std::uint8_t>(n);
    return aTable;
}

static void ApplyGrey(std::uint8_t* __restrict pBytes, std::size_t nCount, const Table& aTable)
{
    for (std::size_t i = 0; i < nCount; ++i)
        pBytes[i] = aTable[pBytes[i]];
}

template <int kChannels>
static void ApplyColour(std::uint8_t* __restrict pBytes, std::size_t nPixels, const Table& aBlue,
                        const Table& aGreen, const Table& aRed)
{
    for (std::size_t i = 0; i < nPixels; ++i, pBytes += kChannels) {
        pBytes[0] = aBlue[pBytes[0]];
        pBytes[1] = aGreen[pBytes[1]];
        pBytes[2] = aRed[pBytes[2]];
    }
}

void ApplyTables(ImageBuffer& aImage, const Table& aBlue, const Table& aGreen, const Table& aRed)
{
    Table aGrey;
    for (std::size_t n = 0; n < aGrey.size(); ++n)
        aGrey[n] = nIntensity(aBlue[n], aGreen[n], aRed[n]);
    const auto nWidth = static_cast<std::size_t>(aImage.width);
    RunBands(aImage, [&](std::int32_t lFirst, std::int32_t lEnd) {
        const auto nPixels = nWidth * static_cast<std::size_t>(lEnd - lFirst);
        const auto nBegin = nWidth * static_cast<std::size_t>(lFirst);
        std::uint8_t* pBytes = aImage.bytes.data() + nBegin * static_cast<std::size_t>(aImage.channels);
        if (aImage.channels == 1)
            ApplyGrey(pBytes, nPixels, aGrey);
        else if (aImage.channels == 3)
            ApplyColour<3>(pBytes, nPixels, aBlue, aGreen, aRed);
        else
            ApplyColour<4>(pBytes, nPixels, aBlue, aGreen, aRed);
    });
}

void ApplyTable(ImageBuffer& aImage, const Table& aTable)
{
    ApplyTables(aImage, aTable, aTable, aTable);
}

}  // namespace transforms

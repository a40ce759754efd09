// Applies lookup tables to channels.
#include "src/platform/image/transforms/rows/tables.h"

#include <cstddef>

#include "src/platform/image/transforms/rows/background.h"
#include "src/platform/image/transforms/rows/bands.h"
#include "src/platform/image/transforms/rows/target.h"

namespace transforms
{

Table IdentityTable()
{
    Table table;
    for (std::size_t n = 0; n < table.size(); ++n)
        table[n] = static_cast<std::uint8_t>(n);
    return table;
}

static void ApplyGrey(std::uint8_t* __restrict bytes, std::size_t count, const Table& table)
{
    for (std::size_t i = 0; i < count; ++i)
        bytes[i] = table[bytes[i]];
}

template <int kChannels>
static void ApplyColour(std::uint8_t* __restrict bytes, std::size_t pixels, const Table& blue,
                        const Table& green, const Table& red)
{
    for (std::size_t i = 0; i < pixels; ++i, bytes += kChannels) {
        bytes[0] = blue[bytes[0]];
        bytes[1] = green[bytes[1]];
        bytes[2] = red[bytes[2]];
    }
}

OperationResult ApplyTables(const ImageBuffer& source, ImageBuffer& result, const Table& blue,
                            const Table& green, const Table& red)
{
    if (source.channels == 1 && (blue != green || green != red))
        return InColour(source, result, [&](const ImageBuffer& image, ImageBuffer& changed) {
            return ApplyTables(image, changed, blue, green, red);
        });
    Target target(source, result);
    const auto width = static_cast<std::size_t>(source.width);
    RunBands(source, [&](std::int32_t first, std::int32_t end) {
        for (std::int32_t y = first; y < end; ++y) {
            std::uint8_t* bytes = target.LoadRow(y);
            if (source.channels == 1)
                ApplyGrey(bytes, width, blue);
            else if (source.channels == 3)
                ApplyColour<3>(bytes, width, blue, green, red);
            else
                ApplyColour<4>(bytes, width, blue, green, red);
        }
    });
    return target.Finish();
}

OperationResult ApplyTable(const ImageBuffer& source, ImageBuffer& result, const Table& table)
{
    return ApplyTables(source, result, table, table, table);
}

}  // namespace transforms

// Reads palette entries.
#include "src/platform/image/metafile/records/palette_records.h"

bool ReadPaletteColors(ByteReader& reader, std::uint64_t count, std::vector<std::uint32_t>& colors)
{
    if (reader.Failed() || reader.Left() / 4 < count)
        return false;
    for (std::uint64_t n = 0; n < count; ++n) {
        const std::uint32_t red = reader.U8();
        const std::uint32_t green = reader.U8();
        const std::uint32_t blue = reader.U8();
        reader.U8();  // flags
        colors.push_back(red << 16 | green << 8 | blue);
    }
    return true;
}

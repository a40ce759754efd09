// Reads the entries of a palette.
#include "src/platform/image/metafile/records/palette_records.h"

bool bReadPaletteColors(ByteReader& rd, std::uint64_t nCount, std::vector<std::uint32_t>& aColors)
{
    if (rd.Failed() || rd.Left() / 4 < nCount)
        return false;
    for (std::uint64_t n = 0; n < nCount; ++n) {
        const std::uint32_t nRed = rd.U8();
        const std::uint32_t nGreen = rd.U8();
        const std::uint32_t nBlue = rd.U8();
        rd.U8();  // flags
        aColors.push_back(nRed << 16 | nGreen << 8 | nBlue);
    }
    return true;
}

// Writes the bitmap of a metafile, and recognises one.
#include "src/platform/image/codecs/metafile/metafile_dib.h"

#include <cstring>
#include <utility>
#include <vector>

#include "src/platform/image/base/output_file.h"
#include "src/platform/image/dib/dib.h"

static constexpr std::uint32_t kHeaderSize = 40;
static constexpr std::uint32_t kGreyPaletteSize = 256 * 4;

static std::uint64_t nStride(const ImageBuffer& aImage)
{
    const auto nRow = static_cast<std::uint64_t>(aImage.width) * static_cast<std::uint64_t>(aImage.channels);
    return (nRow + 3) / 4 * 4;
}

std::uint32_t nMetafileDibHeaderSize(const ImageBuffer& aImage)
{
    return kHeaderSize + (aImage.channels == 1 ? kGreyPaletteSize : 0);
}

std::uint64_t nMetafileDibBitsSize(const ImageBuffer& aImage)
{
    return nStride(aImage) * static_cast<std::uint64_t>(aImage.height);
}

bool bWriteMetafileDib(const ImageBuffer& aImage, OutputFile& objOut)
{
    const bool bGrey = aImage.channels == 1;
    objOut.WriteU32Le(kHeaderSize);
    objOut.WriteU32Le(static_cast<std::uint32_t>(aImage.width));
    objOut.WriteU32Le(static_cast<std::uint32_t>(aImage.height));
    objOut.WriteU16Le(1);
    objOut.WriteU16Le(bGrey ? 8 : 24);
    objOut.WriteU32Le(0);  // not compressed
    objOut.WriteU32Le(static_cast<std::uint32_t>(nMetafileDibBitsSize(aImage)));
    objOut.WriteU32Le(0);  // resolution: not said
    objOut.WriteU32Le(0);
    objOut.WriteU32Le(bGrey ? 256 : 0);  // colours used: some readers don't know that 0 means all
    objOut.WriteU32Le(0);
    for (std::uint32_t n = 0; bGrey && n < 256; ++n)
        objOut.WriteU32Le(n * 0x10101);
    std::vector<std::uint8_t> aRow(nStride(aImage));
    const auto nRow = static_cast<std::size_t>(aImage.width) * static_cast<std::size_t>(aImage.channels);
    for (auto y = static_cast<std::size_t>(aImage.height); y-- > 0 && !objOut.Failed();) {
        std::memcpy(aRow.data(), aImage.bytes.data() + y * nRow, nRow);
        objOut.Write(aRow);
    }
    return !objOut.Failed();
}

bool bDecodeOnlyBitmap(Bytes aHeader, Bytes aBits, std::int32_t lWidth, std::int32_t lHeight,
                       ImageBuffer& aImage)
{
    DibHeader objHeader;
    ImageBuffer aResult;
    if (!ReadDibHeader(aHeader, objHeader) || objHeader.storage != DibStorage::kRaw ||
        objHeader.width != static_cast<std::uint64_t>(lWidth) ||
        objHeader.height != static_cast<std::uint64_t>(lHeight) || DibChannels(objHeader) == 4 ||
        !DecodeDibBits(objHeader, aBits, aResult))
        return false;
    aImage = std::move(aResult);
    return true;
}

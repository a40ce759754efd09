// Writes a metafile's bitmap, and recognises metafiles that are just a bitmap.
#include "src/platform/image/codecs/metafile/metafile_dib.h"

#include <cstring>
#include <utility>
#include <vector>

#include "src/platform/files/output_file.h"
#include "src/platform/image/dib/dib.h"

static constexpr std::uint32_t kHeaderSize = 40;
static constexpr std::uint32_t kGreyPaletteSize = 256 * 4;

static std::uint64_t Stride(const ImageBuffer& image)
{
    const auto row = static_cast<std::uint64_t>(image.width) * static_cast<std::uint64_t>(image.channels);
    return (row + 3) / 4 * 4;
}

std::uint32_t MetafileDibHeaderSize(const ImageBuffer& image)
{
    return kHeaderSize + (image.channels == 1 ? kGreyPaletteSize : 0);
}

std::uint64_t MetafileDibBitsSize(const ImageBuffer& image)
{
    return Stride(image) * static_cast<std::uint64_t>(image.height);
}

bool WriteMetafileDib(const ImageBuffer& image, OutputFile& out)
{
    const bool is_grey = image.channels == 1;
    out.WriteU32Le(kHeaderSize);
    out.WriteU32Le(static_cast<std::uint32_t>(image.width));
    out.WriteU32Le(static_cast<std::uint32_t>(image.height));
    out.WriteU16Le(1);
    out.WriteU16Le(is_grey ? 8 : 24);
    out.WriteU32Le(0);  // uncompressed
    out.WriteU32Le(static_cast<std::uint32_t>(MetafileDibBitsSize(image)));
    out.WriteU32Le(0);  // resolution: unknown
    out.WriteU32Le(0);
    out.WriteU32Le(is_grey ? 256 : 0);  // colours used: some readers don't know that 0 means all
    out.WriteU32Le(0);
    for (std::uint32_t n = 0; is_grey && n < 256; ++n)
        out.WriteU32Le(n * 0x10101);
    std::vector<std::uint8_t> row(Stride(image));
    const auto row_index = static_cast<std::size_t>(image.width) * static_cast<std::size_t>(image.channels);
    for (auto y = static_cast<std::size_t>(image.height); y-- > 0 && !out.Failed();) {
        std::memcpy(row.data(), image.bytes.data() + y * row_index, row_index);
        out.Write(row);
    }
    return !out.Failed();
}

bool DecodeOnlyBitmap(Bytes header_bytes, Bytes bits, std::int32_t width, std::int32_t height,
                      ImageBuffer& image)
{
    DibHeader header;
    ImageBuffer result;
    if (!ReadDibHeader(header_bytes, header) || header.storage != DibStorage::kRaw ||
        header.width != static_cast<std::uint64_t>(width) ||
        header.height != static_cast<std::uint64_t>(height) || DibChannels(header) == 4 ||
        !DecodeDibBits(header, bits, result))
        return false;
    image = std::move(result);
    return true;
}

// Reads and writes Windows bitmaps.
#include "src/platform/image/codecs/bmp/bmp.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <utility>
#include <vector>

#include "src/platform/files/output_file.h"
#include "src/platform/image/base/input_file.h"
#include "src/platform/image/base/limits.h"
#include "src/platform/image/codecs/single_page.h"
#include "src/platform/image/dib/dib.h"
#include "src/platform/image/dib/dib_rows.h"
#include "src/platform/image/pixels/pixel_rows.h"
#include "src/platform/image/pixels/stored_rows.h"

static constexpr std::uint64_t kFileHeaderSize = 14;
static constexpr std::uint32_t kInfoHeaderSize = 40;
static constexpr std::uint64_t kPaletteSize = 256 * 4;
/// Upper bound of header, masks and palette.
static constexpr std::uint64_t kLongestHeader = 4096;
static constexpr std::uint64_t kMaxProfile = 16 << 20;

static bool Sniff(Bytes head, std::string_view)
{
    ByteReader reader(head);
    const bool has_magic = reader.U8() == 'B' && reader.U8() == 'M';
    reader.Take(12);
    const std::uint32_t header_size = reader.U32Le();
    return has_magic && !reader.Failed() && (header_size == 12 || (header_size >= 16 && header_size <= 1024));
}

namespace
{
/// Result of reading the headers.
struct BmpFile {
    DibHeader header;
    std::uint64_t bits_offset = 0;  ///< in the file
};
}  // namespace

// Pixel data starts where the file header says or, if that is implausible, right after the palette.
static bool ReadHeader(InputFile& file, BmpFile& bmp)
{
    std::array<std::uint8_t, kLongestHeader> start;
    const Bytes head = Bytes(start).first(file.ReadAt(0, start));
    if (!Sniff(head, ""))
        return false;
    ByteReader reader(head.subspan(10));
    bmp.bits_offset = reader.U32Le();
    const std::uint64_t header_end = kFileHeaderSize + reader.U32Le();
    // Pixel data may start before the palette's nominal end and thus truncate it.
    const bool says_where = bmp.bits_offset >= header_end;
    const std::uint64_t end =
        says_where ? std::min<std::uint64_t>(bmp.bits_offset, head.size()) : head.size();
    if (!ReadDibHeader(head.first(end).subspan(kFileHeaderSize), bmp.header))
        return false;
    if (!says_where)
        bmp.bits_offset = kFileHeaderSize + bmp.header.bits_offset;
    return bmp.bits_offset < file.Size();
}

// True for an RGB profile, judging by its header.
static bool IsColourProfile(Bytes profile)
{
    constexpr std::size_t kHeaderSize = 128;
    return profile.size() >= kHeaderSize && std::memcmp(profile.data() + 16, "RGB ", 4) == 0 &&
           std::memcmp(profile.data() + 36, "acsp", 4) == 0;
}

// Reads the embedded profile if it fits the picture. An RGB profile doesn't fit grey pixels, for example.
static void ReadProfile(InputFile& file, const DibHeader& header, ImageBuffer& image)
{
    const std::uint64_t offset = kFileHeaderSize + header.profile_offset;
    if (image.channels == 1 || header.profile_size == 0 || header.profile_size > kMaxProfile ||
        offset > file.Size() || header.profile_size > file.Size() - offset)
        return;
    std::vector<std::uint8_t> profile(header.profile_size);
    if (file.ReadAt(offset, profile) == profile.size() && IsColourProfile(profile))
        image.icc_profile = std::move(profile);
}

// Fast path for large uncompressed bitmaps: decodes from the file straight into the picture.
static bool DecodeRawFile(InputFile& file, const BmpFile& bmp, ImageBuffer& image)
{
    const DibHeader& header = bmp.header;
    if (!IsSizeAllowed(header.width, header.height))
        return false;
    const StoredRows layout{bmp.bits_offset, DibStride(header), (header.width * header.bits + 7) / 8,
                            header.height};
    ImageBuffer result;
    if (!HoldsRows(file, layout) || !Allocate(result, header.width, header.height, DibChannels(header)))
        return false;
    const DibRows rows(header);
    const std::uint64_t row_size = header.width * static_cast<std::uint64_t>(result.channels);
    const bool read = ReadRows(file, layout, [&](std::uint64_t stored_row, const std::uint8_t* row) {
        const std::uint64_t y = header.top_down ? stored_row : header.height - 1 - stored_row;
        rows.Convert(row, result.bytes.data() + y * row_size, header.width);
    });
    if (!read)
        return false;
    DropUnsetAlpha(result);
    result.dots_per_inch_x = header.dots_per_inch_x;
    result.dots_per_inch_y = header.dots_per_inch_y;
    image = std::move(result);
    return true;
}

static bool Decode(InputFile& file, const BmpFile& bmp, ImageBuffer& image)
{
    if (bmp.header.storage == DibStorage::kRaw) {
        if (!DecodeRawFile(file, bmp, image))
            return false;
    } else {
        const Bytes all = file.All();
        if (bmp.bits_offset > all.size() || !DecodeDibBits(bmp.header, all.subspan(bmp.bits_offset), image))
            return false;
    }
    if (image.icc_profile.empty())
        ReadProfile(file, bmp.header, image);
    return true;
}

static std::unique_ptr<ImageDecoder> Open(InputFile& file)
{
    BmpFile bmp;
    if (!ReadHeader(file, bmp))
        return nullptr;
    return SinglePage([&file, bmp](ImageBuffer& image) { return Decode(file, bmp, image); });
}

static std::uint32_t DotsPerMetre(double dots_per_inch)
{
    const double dots = dots_per_inch / 0.0254;
    return dots > 0 && dots < 1e9 ? static_cast<std::uint32_t>(std::lround(dots)) : 0;
}

static void WriteHeaders(const ImageBuffer& image, std::uint64_t stride, OutputFile& out)
{
    const bool grey = image.channels == 1;
    const std::uint64_t bits_offset = kFileHeaderSize + kInfoHeaderSize + (grey ? kPaletteSize : 0);
    const std::uint64_t bits = stride * static_cast<std::uint64_t>(image.height);
    out.WriteU8('B');
    out.WriteU8('M');
    out.WriteU32Le(static_cast<std::uint32_t>(bits_offset + bits));
    out.WriteU32Le(0);
    out.WriteU32Le(static_cast<std::uint32_t>(bits_offset));
    out.WriteU32Le(kInfoHeaderSize);
    out.WriteU32Le(static_cast<std::uint32_t>(image.width));
    out.WriteU32Le(static_cast<std::uint32_t>(image.height));
    out.WriteU16Le(1);
    out.WriteU16Le(grey ? 8 : 24);
    out.WriteU32Le(0);
    out.WriteU32Le(static_cast<std::uint32_t>(bits));
    out.WriteU32Le(DotsPerMetre(image.dots_per_inch_x));
    out.WriteU32Le(DotsPerMetre(image.dots_per_inch_y));
    out.WriteU32Le(grey ? 256 : 0);
    out.WriteU32Le(0);
    for (std::uint32_t level = 0; grey && level < 256; ++level)
        out.WriteU32Le(level * 0x10101);
}

static bool Encode(const ImageBuffer& image, const SaveSettings&, OutputFile& out)
{
    const std::uint64_t row_size =
        static_cast<std::uint64_t>(image.width) * static_cast<std::uint64_t>(image.channels);
    const std::uint64_t stride = (row_size + 3) / 4 * 4;
    const auto height = static_cast<std::uint64_t>(image.height);
    if (stride * height > UINT32_MAX - 2 * kPaletteSize)  // the header's size fields have 32 bits
        return false;
    WriteHeaders(image, stride, out);

    // Writes row by row, bottom up, gathered into large blocks: handing the rows to the kernel where they are
    // in the picture takes three times as long.
    static constexpr std::array<std::uint8_t, 3> kFilling{};
    for (std::uint64_t y = height; y-- > 0;) {
        out.Write(Bytes(image.bytes).subspan(y * row_size, row_size));
        out.Write(Bytes(kFilling).first(stride - row_size));
    }
    return !out.Failed();
}

const Codec kBmpCodec{FileType::kBmp, false, false, Sniff, Open, Encode};

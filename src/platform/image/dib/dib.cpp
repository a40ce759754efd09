// Reads DIB headers and decodes the pixels.
#include "src/platform/image/dib/dib.h"

#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

#include "src/platform/image/base/input_file.h"
#include "src/platform/image/base/limits.h"
#include "src/platform/image/codecs/registry.h"
#include "src/platform/image/dib/dib_rle.h"
#include "src/platform/image/dib/dib_rows.h"
#include "src/platform/image/pixels/pixel_rows.h"

static constexpr std::uint32_t kOs2Header = 12;
static constexpr std::uint32_t kOs2LongHeader = 64;
static constexpr std::uint32_t kWindowsHeader = 40;
static constexpr std::uint32_t kColourMasksHeader = 52;  // also all longer ones
static constexpr std::uint32_t kAlphaMaskHeader = 56;
static constexpr std::uint32_t kVersion5Header = 124;

// Values of the compression field. In OS/2 headers 3 and 4 have other meanings.
static constexpr std::uint32_t kRgb = 0;
static constexpr std::uint32_t kRle8 = 1;
static constexpr std::uint32_t kRle4 = 2;
static constexpr std::uint32_t kBitfields = 3;
static constexpr std::uint32_t kOs2Rle24 = 4;
static constexpr std::uint32_t kJpeg = 4;
static constexpr std::uint32_t kPng = 5;
static constexpr std::uint32_t kAlphaBitfields = 6;

static constexpr std::uint32_t kEmbeddedProfile = 0x4D424544;  // "MBED"

namespace
{
/// Header fields as stored; those past the end of a shorter header are 0.
struct RawHeader {
    std::uint32_t size = 0;
    bool os2 = false;
    std::uint32_t compression = 0;
    std::uint64_t colours_used = 0;
};
}  // namespace

static double InchesFromMetres(std::int32_t dots_per_metre)
{
    return dots_per_metre > 0 ? dots_per_metre * 0.0254 : 0;
}

// Reads the fields from a zero-padded copy, since OS/2 allows headers to stop after any field.
static bool ReadFields(Bytes dib, DibHeader& header, RawHeader& raw)
{
    ByteReader size(dib);
    raw.size = size.U32Le();
    if (raw.size > dib.size() || (raw.size < 16 && raw.size != kOs2Header))
        return false;
    std::array<std::uint8_t, kVersion5Header> filled{};
    const Bytes stored = dib.first(std::min<std::size_t>(raw.size, filled.size()));
    std::copy(stored.begin(), stored.end(), filled.begin());
    ByteReader reader(Bytes(filled).subspan(4));

    const bool core_header = raw.size == kOs2Header;
    raw.os2 = raw.size < kWindowsHeader || raw.size == kOs2LongHeader;
    const std::int64_t width = core_header ? reader.U16Le() : reader.I32Le();
    const std::int64_t height = core_header ? reader.U16Le() : reader.I32Le();
    reader.U16Le();  // planes: always 1, whatever the field holds
    header.bits = reader.U16Le();
    if (width <= 0 || height == 0)
        return false;
    header.width = static_cast<std::uint64_t>(width);
    header.height = static_cast<std::uint64_t>(height < 0 ? -height : height);
    header.top_down = height < 0;
    if (core_header)
        return true;
    raw.compression = reader.U32Le();
    reader.U32Le();  // data size: many writers leave it 0, so don't rely on it
    header.dots_per_inch_x = InchesFromMetres(reader.I32Le());
    header.dots_per_inch_y = InchesFromMetres(reader.I32Le());
    raw.colours_used = reader.U32Le();
    reader.U32Le();  // important colours
    if (raw.os2)
        return true;
    for (std::uint32_t& mask : header.masks)
        mask = reader.U32Le();
    if (raw.size < kAlphaMaskHeader)
        header.masks[3] = 0;
    const std::uint32_t colour_space = reader.U32Le();
    reader.Take(12 * 4);  // endpoints, gammas
    reader.U32Le();       // intent
    if (raw.size >= kVersion5Header && colour_space == kEmbeddedProfile) {
        header.profile_offset = reader.U32Le();
        header.profile_size = reader.U32Le();
    }
    return true;
}

static bool ReadStorage(const RawHeader& raw, DibHeader& header)
{
    const std::uint32_t bits = header.bits;
    switch (raw.compression) {
        case kRgb:
            return bits == 1 || bits == 2 || bits == 4 || bits == 8 || bits == 16 || bits == 24 || bits == 32;
        case kRle8:
            header.storage = DibStorage::kRle8;
            return bits == 8;
        case kRle4:
            header.storage = DibStorage::kRle4;
            return bits == 4;
        case kBitfields:  // in OS/2 headers a fax compression that no program wrote
            return !raw.os2 && (bits == 16 || bits == 32);
        case kAlphaBitfields:
            return !raw.os2 && (bits == 16 || bits == 32);
        case kJpeg:
            static_assert(kJpeg == kOs2Rle24);
            header.storage = raw.os2 ? DibStorage::kRle24 : DibStorage::kJpeg;
            return !raw.os2 || bits == 24;
        case kPng:
            header.storage = DibStorage::kPng;
            return !raw.os2;
        default:
            return false;
    }
}

// Picks the masks: from the header, after the header, or the defaults. Returns the bytes that masks take
// after the header.
static std::uint64_t ReadMasks(const RawHeader& raw, Bytes behind_header, DibHeader& header)
{
    const bool named = raw.compression == kBitfields || raw.compression == kAlphaBitfields;
    if (named && raw.size < kColourMasksHeader) {
        const std::size_t count = raw.compression == kAlphaBitfields ? 4 : 3;
        ByteReader reader(behind_header);
        for (std::size_t i = 0; i < count; ++i)
            header.masks[i] = reader.U32Le();
        return count * 4;
    }
    if (!named) {
        // Without bitfields compression, the colour masks are meaningless; an alpha mask counts if it is the
        // top byte.
        const bool has_alpha = header.bits == 32 && header.masks[3] == 0xFF000000;
        if (header.bits == 16)
            header.masks = {0x7C00, 0x3E0, 0x1F, 0};
        else
            header.masks = {0xFF0000, 0xFF00, 0xFF, has_alpha ? 0xFF000000 : 0};
    }
    return 0;
}

static void ReadPalette(Bytes colours, std::size_t entry_size, std::uint64_t entries, DibHeader& header)
{
    const std::uint64_t available = std::min<std::uint64_t>(entries, colours.size() / entry_size);
    header.grey_palette = true;
    if (available == 0) {  // without a palette, indices are grey levels
        for (std::uint64_t i = 0; i < 1u << header.bits; ++i)
            header.palette[i].fill(static_cast<std::uint8_t>(i * 255 / ((1u << header.bits) - 1)));
    }
    for (std::size_t i = 0; i < available; ++i) {
        const Bytes entry = colours.subspan(i * entry_size, 3);
        std::copy(entry.begin(), entry.end(), header.palette[i].begin());
        header.grey_palette = header.grey_palette && entry[0] == entry[1] && entry[1] == entry[2];
    }
}

bool ReadDibHeader(Bytes dib, DibHeader& header)
{
    DibHeader result;
    RawHeader raw;
    if (!ReadFields(dib, result, raw) || !ReadStorage(raw, result))
        return false;
    const bool embedded = result.storage == DibStorage::kJpeg || result.storage == DibStorage::kPng;
    if (embedded)
        result.bits = 0;

    const std::uint64_t masks = ReadMasks(raw, dib.subspan(raw.size), result);
    const bool indexes = !embedded && result.bits <= 8;
    const std::uint64_t max = indexes ? 1ull << result.bits : 0;
    const std::uint64_t named = raw.colours_used > 0 ? raw.colours_used : max;
    const std::uint64_t palette_offset = raw.size + masks;
    // Some writers of long OS/2 headers kept the short header's palette of three bytes per colour.
    const bool has_short_entries =
        raw.size == kOs2Header || (raw.os2 && indexes && dib.size() == palette_offset + 3 * named);
    const std::size_t entry_size = has_short_entries ? 3 : 4;
    result.bits_offset = palette_offset + named * entry_size;
    if (indexes && palette_offset <= dib.size())
        ReadPalette(dib.subspan(palette_offset), entry_size, std::min(named, max), result);
    header = result;
    return true;
}

std::int32_t DibChannels(const DibHeader& header)
{
    if (header.bits <= 8)
        return header.grey_palette ? 1 : 3;
    return header.bits != 24 && header.masks[3] != 0 ? 4 : 3;
}

std::uint64_t DibStride(const DibHeader& header)
{
    return (header.width * header.bits + 31) / 32 * 4;
}

static std::uint8_t* RowOf(ImageBuffer& image, const DibHeader& header, std::uint64_t stored)
{
    const std::uint64_t y = header.top_down ? stored : header.height - 1 - stored;
    return image.bytes.data() + y * header.width * static_cast<std::uint64_t>(image.channels);
}

static bool DecodeRaw(const DibHeader& header, Bytes bits, ImageBuffer& image)
{
    // The last row's padding may be missing.
    const std::uint64_t stride = DibStride(header);
    const std::uint64_t last_row = (header.width * header.bits + 7) / 8;
    if (!IsSizeAllowed(header.width, header.height) ||
        bits.size() < stride * (header.height - 1) + last_row ||
        !Allocate(image, header.width, header.height, DibChannels(header)))
        return false;
    const DibRows rows(header);
    for (std::uint64_t y = 0; y < header.height; ++y)
        rows.Convert(bits.data() + y * stride, RowOf(image, header, y), header.width);
    return true;
}

static bool DecodeRuns(const DibHeader& header, Bytes bits, ImageBuffer& image)
{
    // Two bytes encode a run of at most 255 pixels, which limits the size of a picture that isn't mostly
    // skips. Small pictures may skip as much as they like.
    constexpr std::uint64_t kSmall = 1 << 20;
    if (!IsSizeAllowed(header.width, header.height))
        return false;
    const std::uint64_t pixels = header.width * header.height;
    if (pixels > kSmall && pixels / 128 > bits.size())
        return false;
    DibHeader unpacked = header;
    unpacked.bits = header.bits == 24 ? 24 : 8;
    if (!Allocate(image, header.width, header.height, DibChannels(header)))
        return false;
    const DibRows rows(unpacked);
    DibRuns runs(header, bits);
    std::vector<std::uint8_t> row(header.width * unpacked.bits / 8);
    for (std::uint64_t y = 0; y < header.height; ++y) {
        runs.NextRow(row);
        rows.Convert(row.data(), RowOf(image, header, y), header.width);
    }
    return runs.IsComplete();
}

// Decodes a bitmap whose pixels are a complete JPEG or PNG file.
static bool DecodeEmbedded(FileType type, Bytes bits, ImageBuffer& image)
{
    const Codec* codec = CodecOfType(type);
    InputFile file(bits);
    if (!codec || !codec->sniff(file.Head(), ""))
        return false;
    const std::unique_ptr<ImageDecoder> decoder = codec->open(file);
    return decoder && decoder->DecodeFrame(0, image);
}

bool DecodeDibBits(const DibHeader& header, Bytes bits, ImageBuffer& image)
{
    if (header.storage == DibStorage::kJpeg)
        return DecodeEmbedded(FileType::kJpeg, bits, image);
    if (header.storage == DibStorage::kPng)
        return DecodeEmbedded(FileType::kPng, bits, image);
    ImageBuffer result;
    if (!(header.storage == DibStorage::kRaw ? DecodeRaw(header, bits, result)
                                             : DecodeRuns(header, bits, result)))
        return false;
    DropUnsetAlpha(result);
    result.dots_per_inch_x = header.dots_per_inch_x;
    result.dots_per_inch_y = header.dots_per_inch_y;
    image = std::move(result);
    return true;
}

bool DecodeDib(Bytes header_and_palette, Bytes bits, ImageBuffer& image)
{
    DibHeader header;
    return ReadDibHeader(header_and_palette, header) && DecodeDibBits(header, bits, image);
}

bool DecodePackedDib(Bytes dib, ImageBuffer& image)
{
    DibHeader header;
    return ReadDibHeader(dib, header) && header.bits_offset <= dib.size() &&
           DecodeDibBits(header, dib.subspan(header.bits_offset), image);
}

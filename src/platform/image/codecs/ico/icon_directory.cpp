// Reads the directory and pictures of icons and cursors.
#include "src/platform/image/codecs/ico/icon_directory.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "src/platform/image/base/input_file.h"
#include "src/platform/image/base/limits.h"
#include "src/platform/image/codecs/registry.h"
#include "src/platform/image/dib/dib.h"
#include "src/platform/image/pixels/pixel_rows.h"

static constexpr std::uint64_t kDirectoryHeaderSize = 6;
static constexpr std::uint64_t kEntrySize = 16;

std::vector<IconEntry> IconEntries(Bytes file)
{
    ByteReader reader(file);
    const std::uint32_t reserved = reader.U16Le();
    const std::uint32_t kind = reader.U16Le();
    const std::uint64_t claimed = reader.U16Le();
    if (reader.Failed() || reserved != 0 || (kind != 1 && kind != 2))
        return {};
    std::vector<IconEntry> entries;
    for (std::uint64_t left = std::min(claimed, reader.Left() / kEntrySize); left > 0; --left) {
        IconEntry entry;
        const std::uint32_t width = reader.U8(), height = reader.U8();
        entry.width = width == 0 ? 256 : width;
        entry.height = height == 0 ? 256 : height;
        reader.Take(6);  // colours, reserved, then planes and bits of an icon or the hot spot of a cursor
        entry.size = reader.U32Le();
        entry.offset = reader.U32Le();
        entries.push_back(entry);
    }
    return entries;
}

bool IsIconFile(Bytes head, IconKind kind)
{
    ByteReader reader(head);
    const bool reserved = reader.U16Le() == 0;
    const bool right_kind = reader.U16Le() == static_cast<std::uint16_t>(kind);
    const std::uint64_t directory = kDirectoryHeaderSize + reader.U16Le() * kEntrySize;
    if (!reserved || !right_kind)
        return false;
    const std::vector<IconEntry> entries = IconEntries(head);
    return std::any_of(entries.begin(), entries.end(), [directory](const IconEntry& entry) {
        return entry.size > 0 && entry.offset >= directory;
    });
}

static bool IsPng(Bytes picture)
{
    static constexpr std::array<std::uint8_t, 8> kSignature = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
    return picture.size() >= kSignature.size() &&
           std::equal(kSignature.begin(), kSignature.end(), picture.begin());
}

static bool DecodePng(Bytes picture, ImageBuffer& image)
{
    const Codec* codec = CodecOfType(FileType::kPng);
    InputFile file(picture);
    const std::unique_ptr<ImageDecoder> decoder = codec ? codec->open(file) : nullptr;
    ImageBuffer result;
    if (!decoder || !decoder->DecodeFrame(0, result) || !AddAlpha(result))
        return false;
    image = std::move(result);
    return true;
}

namespace
{
/// The AND mask after the colours: one bit per pixel, set where the screen shows through.
struct IconMask {
    const std::uint8_t* rows = nullptr;
    std::uint64_t stride = 0;
    bool top_down = false;
};
}  // namespace

static bool FindMask(const DibHeader& colours, Bytes picture, IconMask& mask)
{
    const std::uint64_t offset = colours.bits_offset + DibStride(colours) * colours.height;
    mask.stride = (colours.width + 31) / 32 * 4;
    mask.top_down = colours.top_down;
    const std::uint64_t size = mask.stride * (colours.height - 1) + (colours.width + 7) / 8;
    if (offset > picture.size() || size > picture.size() - offset)
        return false;
    mask.rows = picture.data() + offset;
    return true;
}

// Makes masked-out pixels transparent; false if no pixel is left visible.
static bool ApplyMask(const IconMask& mask, ImageBuffer& image)
{
    const auto width = static_cast<std::uint64_t>(image.width);
    const auto height = static_cast<std::uint64_t>(image.height);
    bool visible = false;
    for (std::uint64_t y = 0; y < height; ++y) {
        const std::uint8_t* mask_row = mask.rows + (mask.top_down ? y : height - 1 - y) * mask.stride;
        std::uint8_t* row = image.bytes.data() + y * width * 4;
        for (std::uint64_t x = 0; x < width; ++x) {
            const bool through = (mask_row[x / 8] >> (7 - x % 8) & 1) != 0;
            row[x * 4 + 3] = through ? 0 : 255;
            visible = visible || !through;
        }
    }
    return visible;
}

// Shows the inverting pixels (transparent in the mask, colour not black) as they look on white.
static void ShowInverted(ImageBuffer& image)
{
    for (std::size_t i = 0; i + 3 < image.bytes.size(); i += 4) {
        std::uint8_t* pixel = image.bytes.data() + i;
        if ((pixel[0] | pixel[1] | pixel[2]) == 0)
            continue;
        for (int c = 0; c < 3; ++c)
            pixel[c] = static_cast<std::uint8_t>(255 - pixel[c]);
        pixel[3] = 255;
    }
}

// Reads a bitmap's header and takes the mask's rows, which it counts, off its height. has_mask becomes false
// for the few writers that omitted both. Such a header agrees with the directory, but so does one beside a
// directory that counts the mask's rows too; the data tells them apart, except with one bit per pixel, where
// colours and mask are equally long.
static bool ReadIconBitmap(Bytes picture, const IconEntry& entry, DibHeader& header, bool& has_mask)
{
    if (!ReadDibHeader(picture, header) || header.storage != DibStorage::kRaw ||
        header.bits_offset > picture.size() || !IsSizeAllowed(header.width, header.height))
        return false;
    const bool agrees = header.width == entry.width && header.height == entry.height;
    const std::uint64_t rows_end =
        DibStride(header) * (header.height - 1) + (header.width * header.bits + 7) / 8;
    const bool holds_all_rows = picture.size() - header.bits_offset >= rows_end;
    const bool is_doubled_square = header.bits == 1 && header.height == 2 * header.width;
    has_mask = !agrees || !holds_all_rows || is_doubled_square;
    if (has_mask)
        header.height /= 2;
    return header.height > 0;
}

static bool DecodeBitmap(Bytes picture, const IconEntry& entry, ImageBuffer& image)
{
    DibHeader header;
    bool counts_mask = false;
    if (!ReadIconBitmap(picture, entry, header, counts_mask))
        return false;
    if (header.bits == 32 && header.masks[3] == 0)
        header.masks[3] = 0xFF000000;
    ImageBuffer result;
    if (!DecodeDibBits(header, picture.subspan(header.bits_offset), result))
        return false;
    if (result.channels != 4) {
        IconMask mask;
        const bool has_mask = counts_mask && FindMask(header, picture, mask);
        const bool needed = counts_mask && header.bits != 32;
        if ((needed && !has_mask) || !AddAlpha(result))
            return false;
        if (has_mask && !ApplyMask(mask, result))
            ShowInverted(result);
    }
    image = std::move(result);
    return true;
}

// The bytes of an entry; empty if they aren't all in the file.
static Bytes PictureOf(Bytes file, const IconEntry& entry)
{
    if (entry.offset > file.size() || entry.size > file.size() - entry.offset)
        return {};
    return file.subspan(entry.offset, entry.size);
}

static IconSize SizeOfPng(Bytes picture)
{
    static constexpr std::array<std::uint32_t, 7> kSamples = {1, 0, 3, 1, 2, 0, 4};  // by colour type
    ByteReader reader(picture);
    reader.Take(16);  // signature, length and type of the header chunk
    IconSize size;
    size.pixels = reader.U32Be();
    size.pixels *= reader.U32Be();
    size.bits = reader.U8();
    const std::uint32_t colour = reader.U8();
    if (reader.Failed() || colour >= kSamples.size())
        return {};
    size.bits *= kSamples[colour];
    return size;
}

IconSize SizeOfIconEntry(Bytes file, const IconEntry& entry)
{
    const Bytes picture = PictureOf(file, entry);
    if (IsPng(picture))
        return SizeOfPng(picture);
    DibHeader header;
    bool has_mask = false;
    if (!ReadIconBitmap(picture, entry, header, has_mask))
        return {};
    return {header.width * header.height, header.bits};
}

std::size_t LargestIconEntry(Bytes file, const std::vector<IconEntry>& entries)
{
    std::size_t largest = 0;
    IconSize largest_size = SizeOfIconEntry(file, entries[0]);
    for (std::size_t i = 1; i < entries.size(); ++i) {
        const IconSize size = SizeOfIconEntry(file, entries[i]);
        if (size > largest_size) {
            largest = i;
            largest_size = size;
        }
    }
    return largest;
}

bool DecodeIconEntry(Bytes file, const IconEntry& entry, ImageBuffer& image)
{
    const Bytes picture = PictureOf(file, entry);
    return IsPng(picture) ? DecodePng(picture, image) : DecodeBitmap(picture, entry, image);
}

namespace
{
/// An open icon or cursor.
class IconDecoder : public ImageDecoder
{
public:
    IconDecoder(InputFile& file, std::vector<IconEntry> entries) : file_(file), entries_(std::move(entries))
    {
    }

    std::int32_t FrameCount() override { return static_cast<std::int32_t>(entries_.size()); }

    std::int32_t MainFrame() override
    {
        return static_cast<std::int32_t>(LargestIconEntry(file_.All(), entries_));
    }

    bool DecodeFrame(std::int32_t frame, ImageBuffer& image) override
    {
        return frame >= 0 && frame < FrameCount() &&
               DecodeIconEntry(file_.All(), entries_[static_cast<std::size_t>(frame)], image);
    }

private:
    InputFile& file_;
    std::vector<IconEntry> entries_;
};
}  // namespace

std::unique_ptr<ImageDecoder> OpenIcon(InputFile& file)
{
    std::vector<IconEntry> entries = IconEntries(file.All());
    if (entries.empty())
        return nullptr;
    return std::make_unique<IconDecoder>(file, std::move(entries));
}

// Reads and writes Sun rasterfiles.
#include "src/platform/image/codecs/ras/ras.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>
#include <vector>

#include "src/platform/files/output_file.h"
#include "src/platform/image/base/input_file.h"
#include "src/platform/image/base/limits.h"
#include "src/platform/image/codecs/single_page.h"
#include "src/platform/image/pixels/pixel_rows.h"
#include "src/platform/image/pixels/stored_rows.h"

static constexpr std::uint32_t kMagic = 0x59A66A95;
static constexpr std::uint64_t kHeaderSize = 32;
static constexpr std::uint8_t kEscape = 0x80;

// File types. Type 0, old, differs from standard only in a header field that we don't use.
static constexpr std::uint32_t kStandard = 1;
static constexpr std::uint32_t kByteEncoded = 2;
static constexpr std::uint32_t kRgb = 3;

static constexpr std::uint32_t kMapOfColours = 1;  // all reds, then all greens, then all blues

namespace
{
struct RasHeader {
    std::uint64_t width = 0;
    std::uint64_t height = 0;
    std::uint32_t bits = 0;
    std::uint32_t kind = 0;
    std::uint32_t map_kind = 0;
    std::uint64_t map_size = 0;

    std::uint64_t RowBytes() const { return (width * bits + 7) / 8; }
    std::uint64_t Stride() const { return (RowBytes() + 1) / 2 * 2; }  ///< rows are padded to 16 bits
    std::uint64_t BitsOffset() const { return kHeaderSize + map_size; }
};

/// Maps stored values to levels, per channel: B, G, R.
struct RasColours {
    std::int32_t channels = 3;
    std::array<std::array<std::uint8_t, 256>, 3> levels{};
    bool plain = true;  ///< identity
};
}  // namespace

static bool Sniff(Bytes head, std::string_view)
{
    return ByteReader(head).U32Be() == kMagic;
}

static bool ReadHeader(InputFile& file, RasHeader& header)
{
    ByteReader reader(file.Head());
    const bool has_magic = reader.U32Be() == kMagic;
    header.width = reader.U32Be();
    header.height = reader.U32Be();
    header.bits = reader.U32Be();
    reader.U32Be();  // data size: 0 in old files, so don't rely on it
    header.kind = reader.U32Be();
    header.map_kind = reader.U32Be();
    header.map_size = reader.U32Be();
    const bool known_depth = header.bits == 1 || header.bits == 8 || header.bits == 24 || header.bits == 32;
    return has_magic && !reader.Failed() && known_depth && header.kind <= kRgb &&
           header.BitsOffset() < file.Size();
}

// Reads the map. For 24 or 32 bits per pixel it maps the levels of each channel.
static bool ReadColours(InputFile& file, const RasHeader& header, RasColours& colours)
{
    constexpr std::uint64_t kLongestMap = 3 * 65536;
    const std::size_t entries = std::min<std::uint64_t>(header.map_size / 3, header.bits == 1 ? 2 : 256);
    const bool has_map = header.map_kind == kMapOfColours && entries > 0;
    colours.channels = header.bits <= 8 ? 1 : 3;
    colours.plain = !has_map && header.bits != 1;
    for (auto& levels : colours.levels) {
        for (std::size_t i = 0; i < levels.size(); ++i)
            levels[i] = static_cast<std::uint8_t>(header.bits == 1 ? (i == 0 ? 255 : 0) : i);
    }
    if (!has_map)
        return true;
    if (header.map_size > kLongestMap)
        return false;
    std::vector<std::uint8_t> map(header.map_size);
    if (file.ReadAt(kHeaderSize, map) != map.size())
        return false;
    for (std::size_t c = 0; c < 3; ++c) {
        colours.levels[2 - c].fill(0);
        std::copy_n(map.begin() + static_cast<std::ptrdiff_t>(c * (header.map_size / 3)), entries,
                    colours.levels[2 - c].begin());
    }
    const bool is_grey = colours.levels[0] == colours.levels[1] && colours.levels[1] == colours.levels[2];
    if (header.bits <= 8 && !is_grey)
        colours.channels = 3;
    return true;
}

// Converts 1 or 8-bit indices or levels.
static void ConvertSmall(const RasHeader& header, const RasColours& colours, const std::uint8_t* row,
                         std::uint8_t* out)
{
    for (std::uint64_t x = 0; x < header.width; ++x) {
        const std::uint32_t index = header.bits == 8 ? row[x] : row[x / 8] >> (7 - x % 8) & 1;
        for (std::int32_t c = 0; c < colours.channels; ++c)
            *out++ = colours.levels[static_cast<std::size_t>(c)][index];
    }
}

static void ConvertColours(const RasHeader& header, const RasColours& colours, const std::uint8_t* row,
                           std::uint8_t* out)
{
    const std::uint64_t width = header.width;
    const bool is_rgb = header.kind == kRgb;
    if (header.bits == 24 && is_rgb) {
        SwapRedAndBlue(row, out, width);
    } else if (header.bits == 24) {
        std::memcpy(out, row, width * 3);
    } else {
        // The padding byte comes first.
        for (std::uint64_t x = 0; x < width; ++x)
            std::memcpy(out + x * 3, row + x * 4 + 1, 3);
        if (is_rgb)
            SwapRedAndBlue(out, out, width);
    }
    for (std::uint64_t i = 0; !colours.plain && i < width * 3; ++i)
        out[i] = colours.levels[i % 3][out[i]];
}

static void ConvertRow(const RasHeader& header, const RasColours& colours, const std::uint8_t* row,
                       std::uint8_t* out)
{
    if (header.bits > 8)
        ConvertColours(header, colours, row, out);
    else if (header.bits == 8 && colours.plain)
        std::memcpy(out, row, header.width);
    else
        ConvertSmall(header, colours, row, out);
}

namespace
{
/// Decodes type byte-encoded: 0x80, count - 1, byte is a run; 0x80 0 is a literal 0x80. Runs may cross rows.
class RasRuns
{
public:
    explicit RasRuns(Bytes data) : left_(data) {}

    bool NextRow(std::span<std::uint8_t> row)
    {
        std::size_t done = 0;
        while (done < row.size()) {
            const std::size_t room = row.size() - done;
            if (run_ > 0) {
                const std::size_t count = std::min(run_, room);
                std::memset(row.data() + done, run_value_, count);
                done += count;
                run_ -= count;
                continue;
            }
            const std::size_t plain = BytesToEscape(room);
            std::copy_n(left_.begin(), plain, row.begin() + static_cast<std::ptrdiff_t>(done));
            done += plain;
            left_ = left_.subspan(plain);
            if (done < row.size() && !TakeRun())
                return false;
        }
        return true;
    }

private:
    std::size_t BytesToEscape(std::size_t room) const
    {
        const std::size_t max = std::min(left_.size(), room);
        if (max == 0)
            return 0;
        const void* found = std::memchr(left_.data(), kEscape, max);
        return found ? static_cast<std::size_t>(static_cast<const std::uint8_t*>(found) - left_.data()) : max;
    }

    bool TakeRun()
    {
        if (left_.size() < 2)
            return false;
        const std::size_t code = left_[1];
        if (code > 0 && left_.size() < 3)
            return false;
        run_ = code + 1;
        run_value_ = code > 0 ? left_[2] : kEscape;
        left_ = left_.subspan(code > 0 ? 3 : 2);
        return true;
    }

    Bytes left_;
    std::size_t run_ = 0;
    std::uint8_t run_value_ = 0;
};
}  // namespace

static bool DecodeRuns(InputFile& file, const RasHeader& header, const RasColours& colours,
                       ImageBuffer& image)
{
    const Bytes bytes = file.All();
    if (bytes.size() < header.BitsOffset())
        return false;
    const Bytes data = bytes.subspan(header.BitsOffset());
    // Three bytes decode to at most 256. The last row's padding may be missing.
    const std::uint64_t needed = header.Stride() * (header.height - 1) + header.RowBytes();
    if (needed > (data.size() + 2) / 3 * 256 ||
        !Allocate(image, header.width, header.height, colours.channels))
        return false;
    RasRuns runs(data);
    std::vector<std::uint8_t> row(header.Stride());
    const std::uint64_t row_size = header.width * static_cast<std::uint64_t>(colours.channels);
    for (std::uint64_t y = 0; y < header.height; ++y) {
        const bool last = y + 1 == header.height;
        if (!runs.NextRow(std::span(row).first(last ? header.RowBytes() : row.size())))
            return false;
        ConvertRow(header, colours, row.data(), image.bytes.data() + y * row_size);
    }
    return true;
}

static bool DecodeRaw(InputFile& file, const RasHeader& header, const RasColours& colours, ImageBuffer& image)
{
    const StoredRows stored{header.BitsOffset(), header.Stride(), header.RowBytes(), header.height};
    if (!HoldsRows(file, stored) || !Allocate(image, header.width, header.height, colours.channels))
        return false;
    const std::uint64_t row_size = header.width * static_cast<std::uint64_t>(colours.channels);
    return ReadRows(file, stored, [&](std::uint64_t y, const std::uint8_t* row) {
        ConvertRow(header, colours, row, image.bytes.data() + y * row_size);
    });
}

static bool Decode(InputFile& file, const RasHeader& header, ImageBuffer& image)
{
    RasColours colours;
    ImageBuffer result;
    if (!IsSizeAllowed(header.width, header.height) || !ReadColours(file, header, colours))
        return false;
    if (!(header.kind == kByteEncoded ? DecodeRuns(file, header, colours, result)
                                      : DecodeRaw(file, header, colours, result)))
        return false;
    image = std::move(result);
    return true;
}

static std::unique_ptr<ImageDecoder> Open(InputFile& file)
{
    RasHeader header;
    if (!ReadHeader(file, header))
        return nullptr;
    return SinglePage([&file, header](ImageBuffer& image) { return Decode(file, header, image); });
}

static bool Encode(const ImageBuffer& image, const SaveSettings&, OutputFile& out)
{
    const auto height = static_cast<std::uint64_t>(image.height);
    const std::uint64_t row_size =
        static_cast<std::uint64_t>(image.width) * static_cast<std::uint64_t>(image.channels);
    const std::uint64_t stride = (row_size + 1) / 2 * 2;
    if (stride * height > UINT32_MAX)  // the header's size field has 32 bits
        return false;
    out.WriteU32Be(kMagic);
    out.WriteU32Be(static_cast<std::uint32_t>(image.width));
    out.WriteU32Be(static_cast<std::uint32_t>(image.height));
    out.WriteU32Be(image.channels == 1 ? 8 : 24);
    out.WriteU32Be(static_cast<std::uint32_t>(stride * height));
    out.WriteU32Be(kStandard);
    out.WriteU32Be(0);
    out.WriteU32Be(0);
    if (stride == row_size)
        return out.Write(image.bytes);
    for (std::uint64_t y = 0; y < height && !out.Failed(); ++y) {
        out.Write(Bytes(image.bytes).subspan(y * row_size, row_size));
        out.WriteU8(0);
    }
    return !out.Failed();
}

const Codec kRasCodec{FileType::kRas, false, false, Sniff, Open, Encode};

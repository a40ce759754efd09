// Reads and writes PCX files.
#include "src/platform/image/codecs/pcx/pcx.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <utility>
#include <vector>

#include "src/platform/files/output_file.h"
#include "src/platform/image/base/input_file.h"
#include "src/platform/image/base/limits.h"
#include "src/platform/image/codecs/pcx/pcx_runs.h"
#include "src/platform/image/codecs/single_page.h"
#include "src/platform/image/pixels/pixel_rows.h"

static constexpr std::size_t kHeaderSize = 128;
static constexpr std::uint8_t kMagic = 10;
static constexpr std::uint8_t kVersionWithLongPalette = 5;
static constexpr std::size_t kLongPaletteSize = 769;  // a marker and 256 entries, at the very end of the file
static constexpr std::uint8_t kLongPaletteMark = 12;
static constexpr std::uint16_t kPaletteOfColours = 1;
static constexpr std::uint16_t kPaletteOfGreys = 2;

namespace
{
using Palette = std::array<std::array<std::uint8_t, 3>, 256>;  // BGR
}  // namespace

// The EGA's default colours (RGB), for files without a palette.
static constexpr std::array<std::array<std::uint8_t, 3>, 16> kEgaColours = {{{0x00, 0x00, 0x00},
                                                                             {0x00, 0x00, 0xAA},
                                                                             {0x00, 0xAA, 0x00},
                                                                             {0x00, 0xAA, 0xAA},
                                                                             {0xAA, 0x00, 0x00},
                                                                             {0xAA, 0x00, 0xAA},
                                                                             {0xAA, 0x55, 0x00},
                                                                             {0xAA, 0xAA, 0xAA},
                                                                             {0x55, 0x55, 0x55},
                                                                             {0x55, 0x55, 0xFF},
                                                                             {0x55, 0xFF, 0x55},
                                                                             {0x55, 0xFF, 0xFF},
                                                                             {0xFF, 0x55, 0x55},
                                                                             {0xFF, 0x55, 0xFF},
                                                                             {0xFF, 0xFF, 0x55},
                                                                             {0xFF, 0xFF, 0xFF}}};

namespace
{
struct PcxHeader {
    std::uint8_t version = 0;
    bool packed = false;
    std::uint32_t bits = 0;  ///< per plane
    std::uint32_t planes = 0;
    std::uint64_t width = 0;
    std::uint64_t height = 0;
    std::uint64_t bytes_per_line = 0;  ///< per plane
    std::uint32_t dots_x = 0;
    std::uint32_t dots_y = 0;
    bool greys = false;                      ///< the header declares a grey palette
    std::array<std::uint8_t, 48> colours{};  ///< 16 RGB entries

    std::uint64_t RowSize() const { return bytes_per_line * planes; }
    std::uint32_t ColourBits() const { return bits * planes; }
};
}  // namespace

static bool ReadHeader(Bytes head, PcxHeader& header)
{
    ByteReader reader(head);
    const bool has_magic = reader.U8() == kMagic;
    header.version = reader.U8();
    const std::uint8_t encoding = reader.U8();
    header.packed = encoding == 1;
    header.bits = reader.U8();
    const std::uint32_t left = reader.U16Le(), top = reader.U16Le(), right = reader.U16Le(),
                        bottom = reader.U16Le();
    header.dots_x = reader.U16Le();
    header.dots_y = reader.U16Le();
    const Bytes colours = reader.Take(header.colours.size());
    reader.U8();
    header.planes = reader.U8();
    header.bytes_per_line = reader.U16Le();
    header.greys = reader.U16Le() == kPaletteOfGreys;
    reader.Take(58);  // screen size, padding
    if (reader.Failed() || !has_magic || header.version > kVersionWithLongPalette || encoding > 1 ||
        right < left || bottom < top)
        return false;
    std::copy(colours.begin(), colours.end(), header.colours.begin());
    header.width = right - left + 1;
    header.height = bottom - top + 1;
    const std::uint32_t bits = header.bits, planes = header.planes;
    const bool known = (bits == 1 && planes >= 1 && planes <= 4) ||
                       ((bits == 2 || bits == 4) && planes == 1) ||
                       (bits == 8 && (planes == 1 || planes == 3 || planes == 4));
    return known && header.bytes_per_line * 8 >= header.width * bits;
}

static bool Sniff(Bytes head, std::string_view)
{
    PcxHeader header;
    return ReadHeader(head, header);
}

// True if the file ends with a 256-colour palette, which the pixel data must not run into.
static bool HasLongPalette(const PcxHeader& header, Bytes file)
{
    return header.version == kVersionWithLongPalette && header.ColourBits() == 8 &&
           file.size() >= kHeaderSize + kLongPaletteSize &&
           file[file.size() - kLongPaletteSize] == kLongPaletteMark;
}

static void SetColour(Palette& palette, std::size_t index, const std::uint8_t* red_green_blue)
{
    palette[index] = {red_green_blue[2], red_green_blue[1], red_green_blue[0]};
}

static Palette PaletteOf(const PcxHeader& header, Bytes file)
{
    Palette palette{};
    if (header.ColourBits() == 1) {
        palette[1] = {255, 255, 255};
    } else if (HasLongPalette(header, file)) {
        const Bytes entries = file.last(kLongPaletteSize - 1);
        for (std::size_t i = 0; i < 256; ++i)
            SetColour(palette, i, entries.data() + i * 3);
    } else if (header.ColourBits() == 8) {
        for (std::size_t i = 0; i < 256; ++i)
            palette[i].fill(static_cast<std::uint8_t>(i));
    } else {
        // Versions 0 and 3 have no palette, whatever the header holds.
        const bool none = header.version == 0 || header.version == 3 ||
                          std::all_of(header.colours.begin(), header.colours.end(),
                                      [](std::uint8_t byte) { return byte == 0; });
        for (std::size_t i = 0; i < 16; ++i)
            SetColour(palette, i, none ? kEgaColours[i].data() : header.colours.data() + i * 3);
    }
    return palette;
}

// Unpacks a row's indices, from one plane or several, to one byte each.
static void UnpackIndexes(const PcxHeader& header, const std::uint8_t* row, std::uint8_t* indexes)
{
    const std::uint32_t bits = header.bits;
    const std::uint32_t mask = (1u << bits) - 1;
    for (std::uint64_t x = 0; x < header.width; ++x) {
        const std::uint64_t bit = x * bits;
        std::uint32_t index = 0;
        for (std::uint32_t plane = 0; plane < header.planes; ++plane) {
            const std::uint32_t byte = row[plane * header.bytes_per_line + bit / 8];
            index |= (byte >> (8 - bits - bit % 8) & mask) << (plane * bits);
        }
        indexes[x] = static_cast<std::uint8_t>(index);
    }
}

// Sets the resolution unless it equals a screen size or the picture's size, which some programs store there.
static void SetResolution(const PcxHeader& header, ImageBuffer& image)
{
    static constexpr std::array<std::array<std::uint32_t, 2>, 9> kScreens = {{{320, 200},
                                                                              {640, 200},
                                                                              {640, 350},
                                                                              {640, 400},
                                                                              {640, 480},
                                                                              {720, 348},
                                                                              {720, 350},
                                                                              {800, 600},
                                                                              {1024, 768}}};
    const std::array<std::uint32_t, 2> dots = {header.dots_x, header.dots_y};
    const bool screen = std::find(kScreens.begin(), kScreens.end(), dots) != kScreens.end();
    const bool is_picture = dots[0] == header.width && dots[1] == header.height;
    if (dots[0] == 0 || dots[1] == 0 || screen || is_picture)
        return;
    image.dots_per_inch_x = dots[0];
    image.dots_per_inch_y = dots[1];
}

static void ConvertPlanes(const PcxHeader& header, const std::uint8_t* row, std::uint8_t* out)
{
    const std::uint8_t* red = row;
    const std::uint8_t* green = row + header.bytes_per_line;
    const std::uint8_t* blue = green + header.bytes_per_line;
    const std::uint8_t* alpha = blue + header.bytes_per_line;
    if (header.planes == 3) {
        for (std::uint64_t x = 0; x < header.width; ++x, out += 3) {
            out[0] = blue[x];
            out[1] = green[x];
            out[2] = red[x];
        }
        return;
    }
    for (std::uint64_t x = 0; x < header.width; ++x, out += 4) {
        out[0] = blue[x];
        out[1] = green[x];
        out[2] = red[x];
        out[3] = alpha[x];
    }
}

static bool Decode(InputFile& file, const PcxHeader& header, ImageBuffer& image)
{
    const Bytes bytes = file.All();
    if (bytes.size() < kHeaderSize || !IsSizeAllowed(header.width, header.height))
        return false;
    // Version 5 stores 8-bit colours at the end of the file; without them it is truncated.
    if (header.version == kVersionWithLongPalette && header.ColourBits() == 8 && !header.greys &&
        !HasLongPalette(header, bytes))
        return false;
    const std::size_t end = bytes.size() - (HasLongPalette(header, bytes) ? kLongPaletteSize : 0);
    const Bytes data = bytes.first(end).subspan(kHeaderSize);
    // Two bytes decode to at most 63.
    if (header.RowSize() * header.height > (header.packed ? data.size() * 63 / 2 : data.size()))
        return false;

    const Palette palette = PaletteOf(header, bytes);
    const bool indexed = header.ColourBits() <= 8;
    const std::size_t colours = indexed ? std::size_t{1} << header.ColourBits() : 0;
    const bool is_grey =
        indexed &&
        std::all_of(palette.begin(), palette.begin() + static_cast<std::ptrdiff_t>(colours),
                    [](const auto& entry) { return entry[0] == entry[1] && entry[1] == entry[2]; });
    const std::int32_t channels = is_grey ? 1 : header.planes == 4 && !indexed ? 4 : 3;
    ImageBuffer result;
    if (!Allocate(result, header.width, header.height, channels))
        return false;

    PcxRuns runs(data, header.packed);
    std::vector<std::uint8_t> row(header.RowSize());
    std::vector<std::uint8_t> indexes(indexed ? header.width : 0);
    std::uint8_t* out = result.bytes.data();
    for (std::uint64_t y = 0; y < header.height; ++y) {
        if (!runs.NextRow(row))
            return false;
        if (!indexed) {
            ConvertPlanes(header, row.data(), out);
        } else {
            UnpackIndexes(header, row.data(), indexes.data());
            for (std::uint64_t x = 0; x < header.width; ++x)
                std::memcpy(out + x * static_cast<std::uint64_t>(channels), palette[indexes[x]].data(),
                            static_cast<std::size_t>(channels));
        }
        out += header.width * static_cast<std::uint64_t>(channels);
    }
    DropUnsetAlpha(result);
    SetResolution(header, result);
    image = std::move(result);
    return true;
}

static std::unique_ptr<ImageDecoder> Open(InputFile& file)
{
    PcxHeader header;
    if (!ReadHeader(file.Head(), header))
        return nullptr;
    return SinglePage([&file, header](ImageBuffer& image) { return Decode(file, header, image); });
}

static std::uint16_t ToDots(double dots_per_inch)
{
    return static_cast<std::uint16_t>(std::lround(std::clamp(dots_per_inch, 0.0, 65535.0)));
}

static void WriteHeader(const ImageBuffer& image, std::uint64_t bytes_per_line, OutputFile& out)
{
    const bool is_grey = image.channels == 1;
    const std::array<std::uint8_t, 4> begin = {kMagic, kVersionWithLongPalette, 1, 8};
    out.Write(begin);
    out.WriteU32Le(0);  // left, top
    out.WriteU16Le(static_cast<std::uint16_t>(image.width - 1));
    out.WriteU16Le(static_cast<std::uint16_t>(image.height - 1));
    out.WriteU16Le(ToDots(image.dots_per_inch_x));
    out.WriteU16Le(ToDots(image.dots_per_inch_y));
    out.Write(std::array<std::uint8_t, 48>{});
    out.WriteU8(0);
    out.WriteU8(is_grey ? 1 : 3);
    out.WriteU16Le(static_cast<std::uint16_t>(bytes_per_line));
    out.WriteU16Le(is_grey ? kPaletteOfGreys : kPaletteOfColours);
    out.Write(std::array<std::uint8_t, 58>{});
}

// Each plane of a row is packed separately: strict readers don't expect a run to cross planes.
static bool Encode(const ImageBuffer& image, const SaveSettings&, OutputFile& out)
{
    const auto width = static_cast<std::size_t>(image.width);
    const auto channels = static_cast<std::size_t>(image.channels);
    const std::size_t bytes_per_line = (width + 1) / 2 * 2;
    WriteHeader(image, bytes_per_line, out);

    std::vector<std::uint8_t> planes(bytes_per_line * 3);
    std::vector<std::uint8_t> packed(bytes_per_line * 3 * 2);
    const std::uint8_t* row = image.bytes.data();
    for (std::int32_t y = 0; y < image.height && !out.Failed(); ++y, row += width * channels) {
        if (channels == 1) {
            std::memcpy(planes.data(), row, width);
        } else {
            std::uint8_t* red = planes.data();
            std::uint8_t* green = red + bytes_per_line;
            std::uint8_t* blue = green + bytes_per_line;
            for (std::size_t x = 0; x < width; ++x) {
                blue[x] = row[x * 3];
                green[x] = row[x * 3 + 1];
                red[x] = row[x * 3 + 2];
            }
        }
        std::size_t packed_size = 0;
        for (std::size_t plane_index = 0; plane_index < channels; ++plane_index) {
            // Pad with the last pixel, which packs best.
            const std::span<std::uint8_t> plane =
                std::span(planes).subspan(plane_index * bytes_per_line, bytes_per_line);
            plane[bytes_per_line - 1] = plane[width - 1];
            packed_size += PackPcxRow(plane, packed.data() + packed_size);
        }
        out.Write(Bytes(packed).first(packed_size));
    }
    if (channels == 1) {
        out.WriteU8(kLongPaletteMark);
        for (std::uint32_t grey = 0; grey < 256; ++grey)
            out.Write(std::array<std::uint8_t, 3>{static_cast<std::uint8_t>(grey),
                                                  static_cast<std::uint8_t>(grey),
                                                  static_cast<std::uint8_t>(grey)});
    }
    return !out.Failed();
}

const Codec kPcxCodec{FileType::kPcx, false, false, Sniff, Open, Encode};

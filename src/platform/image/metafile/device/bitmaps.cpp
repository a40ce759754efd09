// Normalises the bitmaps of records for the DIB decoder.
#include "src/platform/image/metafile/device/bitmaps.h"

#include <algorithm>
#include <array>
#include <vector>

#include "src/platform/image/metafile/device/device_context.h"

static constexpr std::uint32_t kOldHeader = 12;
static constexpr std::uint32_t kHeader = 40;
static constexpr std::uint32_t kHeaderWithAlphaMask = 56;
static constexpr std::uint32_t kBitfields = 3;

std::optional<DibShape> DibShapeOf(Bytes header)
{
    ByteReader reader(header);
    const std::uint32_t size = reader.U32Le();
    DibShape shape;
    shape.width = size == kOldHeader ? reader.U16Le() : reader.I32Le();
    shape.height = size == kOldHeader ? reader.U16Le() : reader.I32Le();
    reader.U16Le();
    shape.bits = reader.U16Le();
    shape.top_down = shape.height < 0;
    shape.height = shape.top_down ? -shape.height : shape.height;
    if (reader.Failed() || shape.width <= 0 || shape.height == 0)
        return std::nullopt;
    return shape;
}

namespace
{
// Offset and number of entries of the colour table.
struct PalettePlace {
    std::uint64_t offset = 0;
    std::uint64_t entries = 0;
};
}  // namespace

static PalettePlace FindPalette(Bytes header)
{
    ByteReader reader(header);
    const std::uint32_t size = reader.U32Le();
    reader.Take(size == kOldHeader ? 6 : 10);
    const std::uint32_t bits = reader.U16Le();
    const std::uint64_t max = bits <= 8 ? 1ull << bits : 0;
    if (size == kOldHeader)
        return {size, max};
    const std::uint32_t compression = reader.U32Le();
    reader.Take(12);
    const std::uint32_t used = reader.U32Le();
    // A 40-byte header is followed by the colour masks.
    const std::uint64_t masks = size > kHeader              ? 0
                                : compression == kBitfields ? 12
                                : compression == 6          ? 16
                                                            : 0;
    return {size + masks, used != 0 ? used : max};
}

DibSource PackedDib(Bytes dib, bool indexes_palette)
{
    const auto shape = DibShapeOf(dib);
    if (!shape)
        return {};
    const PalettePlace place = FindPalette(dib);
    const bool old_header = dib[0] == kOldHeader;
    const std::uint64_t entry = indexes_palette && shape->bits <= 8 ? 2 : old_header ? 3 : 4;
    const std::uint64_t bits_offset = place.offset + place.entries * entry;
    if (bits_offset > dib.size())
        return {};
    return {dib.first(bits_offset), dib.subspan(bits_offset), indexes_palette};
}

static void PutU32(std::vector<std::uint8_t>& bytes, std::size_t offset, std::uint32_t value)
{
    for (std::size_t n = 0; n < 4; ++n)
        bytes[offset + n] = static_cast<std::uint8_t>(value >> 8 * n);
}

// A copy of the header with these colours (red, green, blue) as its colour table.
static std::vector<std::uint8_t> WithPalette(Bytes header, const std::vector<std::uint32_t>& colors)
{
    const std::uint64_t palette = std::min<std::uint64_t>(FindPalette(header).offset, header.size());
    std::vector<std::uint8_t> result(header.begin(), header.begin() + static_cast<std::ptrdiff_t>(palette));
    const bool old_header = header[0] == kOldHeader;
    if (!old_header && result.size() >= 36)
        PutU32(result, 32, static_cast<std::uint32_t>(colors.size()));
    for (const std::uint32_t color : colors) {
        for (unsigned shift = 0; shift < 24; shift += 8)
            result.push_back(static_cast<std::uint8_t>(color >> shift));
        if (!old_header)
            result.push_back(0);
    }
    return result;
}

// Looks up a colour table of 16-bit palette indexes.
static std::vector<std::uint32_t> IndexedColors(Bytes header, const DeviceContext& dc)
{
    const PalettePlace place = FindPalette(header);
    ByteReader reader(header);
    reader.Take(place.offset);
    std::vector<std::uint32_t> colors;
    for (std::uint64_t n = 0; n < std::min<std::uint64_t>(place.entries, 256) && reader.Left() >= 2; ++n)
        colors.push_back(dc.ResolveColor(0x01000000u | reader.U16Le()));
    return colors;
}

// A copy of a 32-bit header with a mask for alpha: the bits that no colour uses.
static std::vector<std::uint8_t> WithAlphaMask(Bytes header)
{
    std::vector<std::uint8_t> result(header.begin(), header.end());
    const std::uint32_t size = ByteReader(header).U32Le();
    const std::uint32_t compression = ByteReader(header.subspan(16)).U32Le();
    if (size < kHeader || (compression != 0 && compression != kBitfields))
        return result;
    std::array<std::uint32_t, 4> masks{0xFF0000, 0xFF00, 0xFF, 0};
    if (compression == kBitfields) {
        // In the header itself or behind it, the masks are at the same offset.
        ByteReader reader(header.subspan(kHeader));
        for (std::size_t n = 0; n < (size >= kHeaderWithAlphaMask ? 4u : 3u); ++n)
            masks[n] = reader.U32Le();
        if (reader.Failed() || masks[3] != 0)
            return result;
    }
    masks[3] = ~(masks[0] | masks[1] | masks[2]);
    result.resize(std::max(size, kHeaderWithAlphaMask));
    PutU32(result, 0, std::max(size, kHeaderWithAlphaMask));
    PutU32(result, 16, kBitfields);
    PutU32(result, 32, 0);
    for (std::size_t n = 0; n < 4; ++n)
        PutU32(result, kHeader + 4 * n, masks[n]);
    return result;
}

std::vector<std::uint8_t> WithHeight(Bytes header, const DibShape& shape, std::int64_t height)
{
    std::vector<std::uint8_t> result(header.begin(), header.end());
    const auto stored = static_cast<std::uint32_t>(shape.top_down ? -height : height);
    const bool old_header = result[0] == 12;
    for (std::size_t n = 0; n < (old_header ? 2u : 4u); ++n)
        result[(old_header ? 6 : 8) + n] = static_cast<std::uint8_t>(stored >> 8 * n);
    return result;
}

bool DecodeBitmap(const DibSource& dib, const DeviceContext& dc, DibColors colors, ImageBuffer& image)
{
    const auto shape = DibShapeOf(dib.header);
    const auto decode = dc.Request().decode_dib;
    if (!shape || !decode)
        return false;
    const auto pixels = static_cast<std::uint64_t>(shape->width) * static_cast<std::uint64_t>(shape->height);
    if (!dc.Work().Spend(pixels))
        return false;
    std::vector<std::uint8_t> header;
    if (shape->bits == 1 && colors == DibColors::kTextAndBack)
        header = WithPalette(dib.header,
                             {dc.ResolveColor(dc.state.text_color), dc.ResolveColor(dc.state.back_color)});
    else if (dib.indexes_palette && shape->bits <= 8 && shape->bits > 0)
        header = WithPalette(dib.header, IndexedColors(dib.header, dc));
    else if (colors == DibColors::kWithAlpha && shape->bits == 32 && dib.header.size() >= kHeader)
        header = WithAlphaMask(dib.header);
    if (!decode(header.empty() ? dib.header : Bytes(header), dib.bits, image))
        return false;
    // An embedded JPEG or PNG may be larger than the header says.
    return dc.Work().Spend(static_cast<std::uint64_t>(image.width) *
                           static_cast<std::uint64_t>(image.height));
}

bool DecodeBitmap(const Bitmap16Source& bitmap, const DeviceContext& dc, ImageBuffer& image)
{
    const std::uint32_t bits = bitmap.bits_per_pixel;
    if (bitmap.width <= 0 || bitmap.height <= 0 || (bits != 1 && bits != 24 && bits != 32))
        return false;
    const auto width = static_cast<std::uint64_t>(bitmap.width);
    const auto height = static_cast<std::uint64_t>(bitmap.height);
    if (bitmap.bytes_per_row < (width * bits + 7) / 8 || bitmap.bits.size() < bitmap.bytes_per_row * height ||
        !dc.Work().Spend(width * height))
        return false;
    ImageBuffer result;
    result.width = bitmap.width;
    result.height = bitmap.height;
    result.channels = 3;
    result.bytes.resize(width * height * 3);
    const std::uint32_t colors[2] = {dc.ResolveColor(dc.state.text_color),
                                     dc.ResolveColor(dc.state.back_color)};
    std::uint8_t* out = result.bytes.data();
    for (std::uint64_t y = 0; y < height; ++y) {
        const Bytes row = bitmap.bits.subspan(y * bitmap.bytes_per_row, bitmap.bytes_per_row);
        for (std::uint64_t x = 0; x < width; ++x) {
            for (std::uint64_t c = 0; c < 3; ++c)
                *out++ = bits == 1 ? static_cast<std::uint8_t>(colors[row[x / 8] >> (7 - x % 8) & 1] >> 8 * c)
                                   : row[x * (bits / 8) + c];
        }
    }
    image = std::move(result);
    return true;
}

static std::uint32_t PixelAt(const std::uint8_t* pixel, std::int32_t channels, bool has_alpha)
{
    const std::uint32_t blue = pixel[0];
    if (channels == 1)
        return 0xFF000000 | blue * 0x10101;
    const std::uint32_t alpha = !has_alpha ? 255 : channels == 4 ? pixel[3] : 0;
    return alpha << 24 | std::uint32_t{pixel[2]} << 16 | std::uint32_t{pixel[1]} << 8 | blue;
}

Pixels PixelsOf(const ImageBuffer& image, const Box& box, std::int32_t step_x, std::int32_t step_y,
                bool has_alpha)
{
    Pixels pixels;
    pixels.width = (box.Width() + step_x - 1) / step_x;
    pixels.height = (box.Height() + step_y - 1) / step_y;
    pixels.pixels.resize(static_cast<std::size_t>(pixels.width) * static_cast<std::size_t>(pixels.height));
    const auto at = [&](std::int32_t x, std::int32_t y) {
        return image.bytes.data() + (static_cast<std::size_t>(y) * static_cast<std::size_t>(image.width) +
                                     static_cast<std::size_t>(x)) *
                                        static_cast<std::size_t>(image.channels);
    };
    std::uint32_t* out = pixels.pixels.data();
    for (std::int32_t y = box.top; y < box.bottom; y += step_y) {
        for (std::int32_t x = box.left; x < box.right; x += step_x) {
            if (step_x == 1 && step_y == 1) {
                *out++ = PixelAt(at(x, y), image.channels, has_alpha);
                continue;
            }
            std::uint64_t sum[4] = {};
            std::uint64_t count = 0;
            for (std::int32_t v = y; v < std::min(y + step_y, box.bottom); ++v)
                for (std::int32_t u = x; u < std::min(x + step_x, box.right); ++u, ++count) {
                    const std::uint32_t pixel = PixelAt(at(u, v), image.channels, has_alpha);
                    for (unsigned c = 0; c < 4; ++c)
                        sum[c] += pixel >> 8 * c & 255;
                }
            std::uint32_t mean = 0;
            for (unsigned c = 0; c < 4; ++c)
                mean |= static_cast<std::uint32_t>((sum[c] + count / 2) / count) << 8 * c;
            *out++ = mean;
        }
    }
    return pixels;
}

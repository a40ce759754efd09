// Reads images: raw pixels, or files in other formats.
#include <array>

#include "src/platform/image/metafile/canvas/raster_ops.h"
#include "src/platform/image/metafile/emfplus/objects.h"
#include "src/platform/image_buffer.h"

static constexpr std::uint32_t kBitmap = 1;
static constexpr std::uint32_t kMetafile = 2;
static constexpr std::uint32_t kRawPixels = 0;

static constexpr std::int64_t kMaxSide = 65500;

namespace
{
enum PixelFormat : std::uint32_t {
    kIndexed1 = 0x00030101,
    kIndexed4 = 0x00030402,
    kIndexed8 = 0x00030803,
    kGrey16 = 0x00101004,
    kRgb555 = 0x00021005,
    kRgb565 = 0x00021006,
    kArgb1555 = 0x00061007,
    kRgb24 = 0x00021808,
    kRgb32 = 0x00022009,
    kArgb32 = 0x0026200A,
    kPremultiplied32 = 0x000E200B,
    kRgb48 = 0x0010300C,
    kArgb64 = 0x0034400D,
    kPremultiplied64 = 0x001C400E,
};
}  // namespace

// The second byte of a format is its size.
static std::uint32_t BitsOf(std::uint32_t format)
{
    return format >> 8 & 0xFF;
}

static std::uint32_t Premultiplied(std::uint32_t argb)
{
    const std::uint32_t alpha = argb >> 24;
    return alpha << 24 | (ScalePixel(argb, alpha) & 0xFFFFFF);
}

static std::uint32_t FromRgb(std::uint32_t red, std::uint32_t green, std::uint32_t blue)
{
    return 0xFF000000 | red << 16 | green << 8 | blue;
}

// A channel of few bits as a byte.
static std::uint32_t Widened(std::uint32_t value, std::uint32_t bits)
{
    const std::uint32_t max = (1u << bits) - 1;
    return ((value & max) * 255 + max / 2) / max;
}

// Reads pixel x of a row, premultiplied.
static std::uint32_t PixelOf(Bytes row, std::uint32_t x, std::uint32_t format,
                             const std::array<std::uint32_t, 256>& palette)
{
    const std::uint32_t bits = BitsOf(format);
    if (bits < 8)
        return palette[row[x * bits / 8] >> (8 - bits - x * bits % 8) & ((1u << bits) - 1)];
    ByteReader reader(row.subspan(std::size_t{x} * bits / 8));
    switch (format) {
        case kIndexed8:
            return palette[reader.U8()];
        case kGrey16: {
            const std::uint32_t level = reader.U16Le() >> 8;
            return FromRgb(level, level, level);
        }
        case kRgb555:
        case kArgb1555: {
            const std::uint32_t n = reader.U16Le();
            const bool is_clear = format == kArgb1555 && (n & 0x8000) == 0;
            return is_clear ? 0 : FromRgb(Widened(n >> 10, 5), Widened(n >> 5, 5), Widened(n, 5));
        }
        case kRgb565: {
            const std::uint32_t n = reader.U16Le();
            return FromRgb(Widened(n >> 11, 5), Widened(n >> 5, 6), Widened(n, 5));
        }
        case kRgb24: {
            const std::uint32_t blue = reader.U8();
            const std::uint32_t green = reader.U8();
            return FromRgb(reader.U8(), green, blue);
        }
        case kRgb32:
            return reader.U32Le() | 0xFF000000;
        case kArgb32:
            return Premultiplied(reader.U32Le());
        case kPremultiplied32:
            return reader.U32Le();
        default: {  // 16 bits per channel, of which 13 count
            const auto level = [&reader] { return std::min(255u, reader.U16Le() * 255u / 8192u); };
            const std::uint32_t blue = level();
            const std::uint32_t green = level();
            const std::uint32_t red = level();
            if (format == kRgb48)
                return FromRgb(red, green, blue);
            const std::uint32_t argb = level() << 24 | red << 16 | green << 8 | blue;
            return format == kArgb64 ? Premultiplied(argb) : argb;
        }
    }
}

static bool IsKnown(std::uint32_t format)
{
    switch (format) {
        case kIndexed1:
        case kIndexed4:
        case kIndexed8:
        case kGrey16:
        case kRgb555:
        case kRgb565:
        case kArgb1555:
        case kRgb24:
        case kRgb32:
        case kArgb32:
        case kPremultiplied32:
        case kRgb48:
        case kArgb64:
        case kPremultiplied64:
            return true;
        default:
            return false;
    }
}

static std::shared_ptr<const Pixels> ReadRawPixels(ByteReader& reader, std::int64_t width,
                                                   std::int64_t height, std::int64_t stride,
                                                   std::uint32_t format)
{
    const bool valid = width > 0 && height > 0 && width <= kMaxSide && height <= kMaxSide && IsKnown(format);
    if (!valid)
        return nullptr;
    std::array<std::uint32_t, 256> palette{};
    if (BitsOf(format) <= 8) {
        reader.U32Le();  // flags
        const std::uint32_t count = reader.U32Le();
        if (count > palette.size())
            return nullptr;
        for (std::uint32_t n = 0; n < count; ++n)
            palette[n] = Premultiplied(reader.U32Le());
    }
    const std::uint64_t row_size = (static_cast<std::uint64_t>(width) * BitsOf(format) + 7) / 8;
    const auto pitch = static_cast<std::uint64_t>(stride < 0 ? -stride : stride);
    if (reader.Failed() || pitch < row_size ||
        reader.Left() < pitch * static_cast<std::uint64_t>(height - 1) + row_size)
        return nullptr;
    const Bytes bits = reader.Take(reader.Left());
    auto pixels = std::make_shared<Pixels>();
    pixels->width = static_cast<std::int32_t>(width);
    pixels->height = static_cast<std::int32_t>(height);
    pixels->pixels.resize(static_cast<std::size_t>(width * height));
    for (std::int32_t y = 0; y < pixels->height; ++y) {
        const Bytes row = bits.subspan(pitch * static_cast<std::uint64_t>(y), row_size);
        for (std::int32_t x = 0; x < pixels->width; ++x)
            pixels->Row(y)[x] = PixelOf(row, static_cast<std::uint32_t>(x), format, palette);
    }
    return pixels;
}

static std::shared_ptr<const Pixels> DecodeFile(Bytes file, const ImageFileDecoder& decode)
{
    ImageBuffer image;
    if (!decode || !decode(file, image))
        return nullptr;
    auto pixels = std::make_shared<Pixels>();
    pixels->width = image.width;
    pixels->height = image.height;
    pixels->pixels.reserve(static_cast<std::size_t>(image.width) * static_cast<std::size_t>(image.height));
    const std::uint8_t* in = image.bytes.data();
    const std::size_t count = pixels->pixels.capacity();
    for (std::size_t n = 0; n < count; ++n, in += image.channels) {
        if (image.channels == 1)
            pixels->pixels.push_back(FromRgb(in[0], in[0], in[0]));
        else if (image.channels == 3)
            pixels->pixels.push_back(FromRgb(in[2], in[1], in[0]));
        else
            pixels->pixels.push_back(
                Premultiplied((FromRgb(in[2], in[1], in[0]) & 0xFFFFFF) | std::uint32_t{in[3]} << 24));
    }
    return pixels;
}

std::optional<PlusImage> ReadPlusImage(ByteReader& reader, const ImageFileDecoder& decode)
{
    reader.U32Le();  // version
    const std::uint32_t type = reader.U32Le();
    PlusImage image;
    if (type == kMetafile) {
        reader.U32Le();  // kind
        image.metafile = reader.Take(std::min<std::uint64_t>(reader.U32Le(), reader.Left()));
        return reader.Failed() ? std::nullopt : std::optional(image);
    }
    if (type != kBitmap)
        return std::nullopt;
    const std::int64_t width = reader.I32Le();
    const std::int64_t height = reader.I32Le();
    const std::int64_t stride = reader.I32Le();
    const std::uint32_t format = reader.U32Le();
    const std::uint32_t storage = reader.U32Le();
    if (reader.Failed())
        return std::nullopt;
    if (storage == kRawPixels)
        image.pixels = ReadRawPixels(reader, width, height, stride, format);
    else
        image.pixels = DecodeFile(reader.Take(reader.Left()), decode);
    if (!image.pixels)
        return std::nullopt;
    return image;
}

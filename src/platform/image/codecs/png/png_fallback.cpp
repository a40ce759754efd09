// Decodes PNG files with libpng.
#include "src/platform/image/codecs/png/png_fallback.h"

#include <png.h>

#include <optional>
#include <utility>
#include <vector>

#include "src/platform/image/base/input_file.h"
#include "src/platform/image/base/limits.h"
#include "src/platform/image/codecs/png/png_colour.h"
#include "src/platform/image/codecs/png/png_pixels.h"

static constexpr bool kLittleEndian = __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__;

bool PngNeedsFallback(const PngInfo& info)
{
    const PngHeader& header = info.header;
    const bool transparent_colour = header.colour != PngColour::kPalette && !info.transparency.empty();
    return header.interlaced || header.depth == 16 || header.colour == PngColour::kGreyAlpha ||
           transparent_colour;
}

namespace
{
// What the libpng calls use. It lives outside the function that calls setjmp, so a longjmp skips no
// destructors.
struct Decoding {
    InputFile& file;
    std::uint64_t position = 0;
    png_structp png = nullptr;
    png_infop info = nullptr;
    std::vector<png_bytep> rows;
    std::size_t stride = 0;
    bool keeps_16_bits = false;  ///< in RGB order and host byte order, to be converted

    explicit Decoding(InputFile& source) : file(source) {}
    ~Decoding() { png_destroy_read_struct(&png, &info, nullptr); }
    Decoding(const Decoding&) = delete;
    Decoding& operator=(const Decoding&) = delete;
};
}  // namespace

static void ReadBytes(png_structp png, png_bytep out, std::size_t count)
{
    auto& decoding = *static_cast<Decoding*>(png_get_io_ptr(png));
    if (decoding.file.ReadAt(decoding.position, {out, count}) != count)
        png_error(png, "cut short");
    decoding.position += count;
}

[[noreturn]] static void JumpBack(png_structp png, png_const_charp)
{
    png_longjmp(png, 1);
}

static void Ignore(png_structp, png_const_charp) {}

// Neither this function nor its callees may hold objects with destructors: errors longjmp out of them.
static bool ReadRows(Decoding& decoding, const PngInfo& info)
{
    png_structp png = decoding.png;
    png_infop library_info = decoding.info;
    if (setjmp(png_jmpbuf(png)))  // NOLINT: the library's way of reporting
        return false;
    png_set_read_fn(png, &decoding, &ReadBytes);
    // Ancillary chunks are read in png_info.cpp; here they could only cause errors.
    png_set_keep_unknown_chunks(png, PNG_HANDLE_CHUNK_NEVER, nullptr, -1);
    png_set_user_limits(png, static_cast<png_uint_32>(kMaxSide), static_cast<png_uint_32>(kMaxSide));
    png_read_info(png, library_info);

    const PngHeader& header = info.header;
    if (header.colour == PngColour::kPalette) {
        png_set_packing(png);  // one index per byte
    } else {
        if (decoding.keeps_16_bits && kLittleEndian)
            png_set_swap(png);
        else if (header.depth == 16 && !decoding.keeps_16_bits)
            png_set_scale_16(png);
        if (header.depth < 8)
            png_set_expand_gray_1_2_4_to_8(png);
        if (!info.transparency.empty())
            png_set_tRNS_to_alpha(png);
        if (header.colour == PngColour::kGreyAlpha || !info.transparency.empty())
            png_set_gray_to_rgb(png);
        if (!decoding.keeps_16_bits)
            png_set_bgr(png);
    }
    png_set_interlace_handling(png);
    png_read_update_info(png, library_info);
    if (png_get_rowbytes(png, library_info) != decoding.stride ||
        png_get_image_height(png, library_info) != header.height)
        return false;
    png_read_image(png, decoding.rows.data());
    return true;
}

static bool SpreadIndices(const PngInfo& info, const ImageBuffer& indices, ImageBuffer& result)
{
    const PngPalette palette = PaletteOf(info);
    if (!Allocate(result, info.header.width, info.header.height, palette.channels))
        return false;
    LookUpRow(palette, 8, indices.bytes.data(), result.bytes.data(), indices.bytes.size());
    return true;
}

bool DecodePngByLibrary(InputFile& file, const PngInfo& info, ImageBuffer& image)
{
    const PngHeader& header = info.header;
    const bool has_palette = header.colour == PngColour::kPalette;
    const bool has_alpha = header.SampleCount() % 2 == 0 || (!has_palette && !info.transparency.empty());
    const std::int32_t channels = has_alpha ? 4 : header.colour == PngColour::kRgb ? 3 : 1;
    ImageBuffer read;
    if (!Allocate(read, header.width, header.height, channels))
        return false;

    const std::optional<RgbSpace> space = SpaceToConvert(info);
    Decoding decoding(file);
    decoding.keeps_16_bits = header.depth == 16 && space;
    const std::size_t samples = read.bytes.size();
    std::vector<std::uint16_t> wide(decoding.keeps_16_bits ? samples : 0);
    auto* rows = decoding.keeps_16_bits ? reinterpret_cast<png_bytep>(wide.data()) : read.bytes.data();
    decoding.stride = samples / header.height * (decoding.keeps_16_bits ? 2 : 1);
    for (std::size_t y = 0; y < header.height; ++y)
        decoding.rows.push_back(rows + y * decoding.stride);
    decoding.png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, &JumpBack, &Ignore);
    decoding.info = decoding.png ? png_create_info_struct(decoding.png) : nullptr;
    if (!decoding.info || !ReadRows(decoding, info))
        return false;

    const std::size_t pixels = std::size_t{header.width} * header.height;
    if (decoding.keeps_16_bits)
        RgbSpaceToSrgb(*space, 16).Convert(wide.data(), channels, pixels, read.bytes.data());
    ImageBuffer result;
    if (has_palette && !SpreadIndices(info, read, result))
        return false;
    if (!has_palette)
        result = std::move(read);
    if (space && !decoding.keeps_16_bits)
        RgbSpaceToSrgb(*space, 8).Convert(result.bytes.data(), result.channels, pixels);
    image = std::move(result);
    return true;
}

// Decodes PNG files: common layouts strip by strip within the cache, the others through libpng.
#include "src/platform/image/codecs/png/png.h"

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

#include "src/platform/image/base/input_file.h"
#include "src/platform/image/base/limits.h"
#include "src/platform/image/codecs/png/filters/png_unfilter.h"
#include "src/platform/image/codecs/png/png_chunks.h"
#include "src/platform/image/codecs/png/png_colour.h"
#include "src/platform/image/codecs/png/png_fallback.h"
#include "src/platform/image/codecs/png/png_inflate.h"
#include "src/platform/image/codecs/png/png_info.h"
#include "src/platform/image/codecs/png/png_pixels.h"
#include "src/platform/image/colour/colour_profile.h"

static constexpr std::size_t kStripSize = 192 * 1024;
static constexpr std::size_t kSlack = 16;  // the kernels may read this far past a strip or row

namespace
{
class PngDecoder : public ImageDecoder
{
public:
    explicit PngDecoder(InputFile& file) : file_(file), reader_(file) {}
    bool ReadInfo() { return ReadPngInfo(reader_, info_); }

    std::int32_t FrameCount() override { return 1; }
    bool DecodeFrame(std::int32_t frame, ImageBuffer& image) override;

private:
    bool DecodePixels(ImageBuffer& result, std::uint64_t& after_data);
    bool DecodeDirect(PngInflater& inflater, UnfilterPngRows unfilter_rows, ImageBuffer& result);
    bool DecodeIndices(PngInflater& inflater, ImageBuffer& result);

    InputFile& file_;
    PngChunkReader reader_;
    PngInfo info_;
};
}  // namespace

// Deflate expands by at most 1032:1. Rejects a header that claims more pixels than the file can hold, before
// memory is allocated for them.
static bool FileCanHold(const InputFile& file, const PngHeader& header)
{
    return (header.RowBytes() + 1) * header.height / 1032 <= file.Size();
}

// Samples in the buffer's layout apart from red and blue being swapped: unfilters rows straight into the
// picture.
bool PngDecoder::DecodeDirect(PngInflater& inflater, UnfilterPngRows unfilter_rows, ImageBuffer& result)
{
    const std::size_t bytes = info_.header.RowBytes();
    const std::size_t height = info_.header.height;
    const std::size_t strip_rows = std::max<std::size_t>(1, kStripSize / (bytes + 1));
    PixelBytes strip;
    strip.resize(strip_rows * (bytes + 1) + kSlack);
    const std::vector<std::uint8_t> zeros(bytes + kSlack);
    for (std::size_t y = 0; y < height; y += strip_rows) {
        const std::size_t rows = std::min(strip_rows, height - y);
        if (!inflater.Fill(std::span(strip).first(rows * (bytes + 1))))
            return false;
        std::uint8_t* out = result.bytes.data() + y * bytes;
        if (!unfilter_rows({strip.data(), bytes + 1, out, y ? out - bytes : zeros.data(), bytes, rows}))
            return false;
    }
    return true;
}

// Samples that need a lookup: palette indices, or greys of fewer than 8 bits.
bool PngDecoder::DecodeIndices(PngInflater& inflater, ImageBuffer& result)
{
    const PngHeader& header = info_.header;
    const PngPalette palette = PaletteOf(info_);
    const std::size_t bytes = header.RowBytes();
    const std::size_t height = header.height;
    const std::size_t strip_rows = std::max<std::size_t>(1, kStripSize / (bytes + 1));
    const std::size_t out_row = std::size_t{header.width} * static_cast<std::size_t>(palette.channels);
    PixelBytes strip;
    strip.resize(strip_rows * (bytes + 1) + kSlack);
    // The first row holds the row above the strip.
    std::vector<std::uint8_t> unfiltered((strip_rows + 1) * bytes);
    for (std::size_t y = 0; y < height; y += strip_rows) {
        const std::size_t row_count = std::min(strip_rows, height - y);
        if (!inflater.Fill(std::span(strip).first(row_count * (bytes + 1))))
            return false;
        std::uint8_t* rows = unfiltered.data() + bytes;
        if (!PngUnfiltersFor().one_byte({strip.data(), bytes + 1, rows, unfiltered.data(), bytes, row_count}))
            return false;
        for (std::size_t i = 0; i < row_count; ++i)
            LookUpRow(palette, header.depth, rows + i * bytes, result.bytes.data() + (y + i) * out_row,
                      header.width);
        std::copy_n(rows + (row_count - 1) * bytes, bytes, unfiltered.data());
    }
    return true;
}

bool PngDecoder::DecodePixels(ImageBuffer& result, std::uint64_t& after_data)
{
    const PngHeader& header = info_.header;
    if (PngNeedsFallback(info_)) {
        after_data = PngChunkReader::PlaceAfter(info_.first_data);
        return DecodePngByLibrary(file_, info_, result);
    }
    const bool look_up = header.colour == PngColour::kPalette || header.depth < 8;
    const std::int32_t channels =
        look_up ? PaletteOf(info_).channels : static_cast<std::int32_t>(header.SampleCount());
    if (!Allocate(result, header.width, header.height, channels))
        return false;
    PngInflater inflater(reader_, info_.first_data);
    const PngUnfilters& unfilters = PngUnfiltersFor();
    const bool done = look_up         ? DecodeIndices(inflater, result)
                      : channels == 1 ? DecodeDirect(inflater, unfilters.one_byte, result)
                      : channels == 3 ? DecodeDirect(inflater, unfilters.rgb, result)
                                      : DecodeDirect(inflater, unfilters.rgba, result);
    if (!done || !inflater.Finish())
        return false;
    after_data = inflater.PlaceAfter();
    if (const std::optional<RgbSpace> space = SpaceToConvert(info_))
        RgbSpaceToSrgb(*space, 8).Convert(result.bytes.data(), channels,
                                          result.bytes.size() / static_cast<std::size_t>(channels));
    return true;
}

// A grey profile doesn't fit a picture that has become BGRA, so the pixels are converted to sRGB: all 256
// greys are converted as one small picture, which then serves as a LUT.
static void ApplyGreyProfile(const std::vector<std::uint8_t>& profile, ImageBuffer& image)
{
    ImageBuffer greys;
    if (!Allocate(greys, 256, 1, 1))
        return;
    std::array<std::uint8_t, 256> table{};
    for (std::size_t i = 0; i < table.size(); ++i)
        greys.bytes[i] = static_cast<std::uint8_t>(i);
    greys.icc_profile = profile;
    if (!ConvertToSrgb(greys) || greys.bytes.size() != table.size())
        return;
    std::copy(greys.bytes.begin(), greys.bytes.end(), table.begin());
    ApplyTable(table, image.channels, image.bytes.data(), image.bytes.size() / 4);
}

bool PngDecoder::DecodeFrame(std::int32_t frame, ImageBuffer& image)
{
    const PngHeader& header = info_.header;
    if (frame != 0 || !IsSizeAllowed(header.width, header.height) || !FileCanHold(file_, header))
        return false;
    ImageBuffer result;
    std::uint64_t after_data = 0;
    PngInfo info = info_;
    if (!DecodePixels(result, after_data) || !ReadPngTail(reader_, after_data, info))
        return false;
    if (!info.icc_profile.empty() && header.IsGrey() && result.channels == 4)
        ApplyGreyProfile(info.icc_profile, result);
    else
        result.icc_profile = std::move(info.icc_profile);
    result.dots_per_inch_x = info.dots_per_inch_x;
    result.dots_per_inch_y = info.dots_per_inch_y;
    result.metadata = std::move(info.metadata);
    image = std::move(result);
    return true;
}

std::unique_ptr<ImageDecoder> OpenPng(InputFile& file)
{
    auto decoder = std::make_unique<PngDecoder>(file);
    if (!decoder->ReadInfo())
        return nullptr;
    return decoder;
}

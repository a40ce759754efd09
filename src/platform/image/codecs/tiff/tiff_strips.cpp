// Encodes strips.
#include "src/platform/image/codecs/tiff/tiff_strips.h"

#include <algorithm>
#include <memory>

#include "src/platform/image/base/parallel.h"
#include "src/platform/image/codecs/tiff/tiff_handle.h"
#include "src/platform/image/codecs/tiff/tiff_pixels.h"
#include "src/platform/image/lzw/tiff_lzw.h"
#include "src/platform/image/pixels/alpha.h"
#include "src/platform/image/pixels/pixel_rows.h"

static constexpr std::size_t kStripBytes = 256 * 1024;  // fits in the L2 cache
static constexpr std::size_t kStripsPerPart = 2;        // encoded by a thread in one go

static std::size_t RowBytes(const ImageBuffer& image)
{
    return static_cast<std::size_t>(image.width) * static_cast<std::size_t>(image.channels);
}

static std::uint32_t RowsForStrips(const ImageBuffer& image)
{
    const std::size_t rows = std::max<std::size_t>(1, kStripBytes / RowBytes(image));
    return static_cast<std::uint32_t>(std::min(rows, static_cast<std::size_t>(image.height)));
}

// Copies pixels as RGB(A), the channel order of TIFF.
static void CopyPixels(const std::uint8_t* in, std::size_t pixels, std::int32_t channels, std::uint8_t* out)
{
    if (channels == 1)
        std::copy_n(in, pixels, out);
    else
        (channels == 3 ? SwapRedAndBlue : SwapRedAndBlueOfFour)(in, out, pixels);
}

bool EncodePlainStrips(const ImageBuffer& image, const TakeBytes& take, TiffStrips& strips)
{
    const std::size_t row = RowBytes(image);
    const auto height = static_cast<std::uint32_t>(image.height);
    strips.rows_per_strip = RowsForStrips(image);
    std::vector<std::uint8_t> strip(image.channels == 1 ? 0 : strips.rows_per_strip * row);
    for (std::uint32_t y = 0; y < height; y += strips.rows_per_strip) {
        const std::uint32_t rows = std::min(strips.rows_per_strip, height - y);
        Bytes bytes = Bytes(image.bytes).subspan(y * row, rows * row);
        if (image.channels != 1) {
            CopyPixels(bytes.data(), bytes.size() / static_cast<std::size_t>(image.channels), image.channels,
                       strip.data());
            bytes = Bytes(strip).first(bytes.size());
        }
        if (!take(bytes))
            return false;
        strips.sizes.push_back(bytes.size());
    }
    return true;
}

namespace
{
/// A thread's working memory.
struct LzwWork {
    TiffLzwEncoder encoder;
    std::vector<std::uint8_t> pixels;
    std::vector<std::uint8_t> differences;
};
}  // namespace

static void EncodeLzwStrip(const ImageBuffer& image, std::uint32_t y, std::uint32_t rows, LzwWork& work,
                           std::vector<std::uint8_t>& codes)
{
    const std::size_t row = RowBytes(image);
    work.pixels.resize(row);
    work.differences.resize(row * rows);
    for (std::uint32_t i = 0; i < rows; ++i) {
        CopyPixels(image.bytes.data() + (y + i) * row, static_cast<std::size_t>(image.width), image.channels,
                   work.pixels.data());
        SubtractLeft(work.pixels.data(), row, static_cast<std::uint32_t>(image.channels),
                     work.differences.data() + i * row);
    }
    work.encoder.Encode(work.differences, codes);
}

bool EncodeLzwStrips(const ImageBuffer& image, const TakeBytes& take, TiffStrips& strips)
{
    const auto height = static_cast<std::uint32_t>(image.height);
    strips.rows_per_strip = RowsForStrips(image);
    const std::size_t strip_count = (height - 1) / strips.rows_per_strip + 1;
    // Encodes one batch of strips on all cores, then delivers them in order.
    const std::size_t parts = std::min(CoreCount(), (strip_count + kStripsPerPart - 1) / kStripsPerPart);
    const std::size_t batch = parts * kStripsPerPart;
    std::vector<std::unique_ptr<LzwWork>> work;
    for (std::size_t i = 0; i < parts; ++i)
        work.push_back(std::make_unique<LzwWork>());
    std::vector<std::vector<std::uint8_t>> codes(batch);
    for (std::size_t first = 0; first < strip_count; first += batch) {
        const std::size_t now = std::min(batch, strip_count - first);
        RunParts(parts, [&](std::size_t part) {
            for (std::size_t i = part; i < now; i += parts) {
                const auto y = static_cast<std::uint32_t>((first + i) * strips.rows_per_strip);
                EncodeLzwStrip(image, y, std::min(strips.rows_per_strip, height - y), *work[part], codes[i]);
            }
        });
        for (std::size_t i = 0; i < now; ++i) {
            if (!take(codes[i]))
                return false;
            strips.sizes.push_back(codes[i].size());
        }
    }
    return true;
}

static bool SetFaxTags(TIFF* tiff, const ImageBuffer& image, std::uint16_t compression)
{
    const auto height = static_cast<std::uint32_t>(image.height);
    return TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, static_cast<std::uint32_t>(image.width)) &&
           TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, height) && TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, 1) &&
           TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, 1) &&
           TIFFSetField(tiff, TIFFTAG_ROWSPERSTRIP, height) &&
           TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_MINISWHITE) &&
           TIFFSetField(tiff, TIFFTAG_COMPRESSION, compression) &&
           (compression != COMPRESSION_CCITTFAX3 ||
            TIFFSetField(tiff, TIFFTAG_GROUP3OPTIONS, GROUP3OPT_FILLBITS));
}

bool EncodeFaxStrip(const ImageBuffer& image, std::uint16_t compression, const TakeBytes& take,
                    TiffStrips& strips)
{
    if (image.channels == 4)
        return EncodeFaxStrip(LayOnWhite(image), compression, take, strips);
    const auto width = static_cast<std::size_t>(image.width);
    const auto height = static_cast<std::size_t>(image.height);
    const std::size_t packed_row = (width + 7) / 8;
    std::vector<std::uint8_t> levels(width);
    std::vector<std::uint8_t> packed(packed_row * height);
    for (std::size_t y = 0; y < height; ++y) {
        Threshold(image.bytes.data() + y * RowBytes(image), width, static_cast<std::uint32_t>(image.channels),
                  levels.data());
        PackDarkBits(levels.data(), width, packed.data() + y * packed_row);
    }
    TiffStripEncoder encoder;
    if (!encoder.Handle() || !SetFaxTags(encoder.Handle(), image, compression))
        return false;
    const std::vector<std::uint8_t> codes = encoder.Encode(0, packed);
    strips.rows_per_strip = static_cast<std::uint32_t>(height);
    strips.sizes = {codes.size()};
    return !codes.empty() && take(codes);
}

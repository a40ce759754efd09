// Encodes pictures as baseline JPEG files.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <new>
#include <vector>

#include "src/platform/files/output_file.h"
#include "src/platform/image/codecs/jpeg/jpeg.h"
#include "src/platform/image/codecs/jpeg/jpeg_library.h"
#include "src/platform/image/codecs/jpeg/jpeg_segments.h"
#include "src/platform/image/colour/colour_profile.h"
#include "src/platform/image/metadata/metadata.h"

// The largest write that OutputFile doesn't copy.
static constexpr std::size_t kPartSize = 128 * 1024;
static constexpr std::int32_t kFullColourQuality = 90;
static constexpr std::size_t kRowsAtOnce = 16;

namespace
{
// libjpeg destination that writes to the file in parts.
struct Destination {
    jpeg_destination_mgr manager{};  // first, so that libjpeg's pointer to it also points to the whole struct
    OutputFile* out = nullptr;
    std::vector<std::uint8_t> part;

    void Empty()
    {
        manager.next_output_byte = part.data();
        manager.free_in_buffer = part.size();
    }
    // No exception may propagate through libjpeg.
    bool Write(std::size_t count) noexcept
    try {
        return out->Write(Bytes(part).first(count));
    } catch (const std::bad_alloc&) {
        return false;
    }
};

struct Compressor {
    JpegErrors errors{};
    Destination destination;
    jpeg_compress_struct jpeg{};

    explicit Compressor(OutputFile& out);
    ~Compressor() { jpeg_destroy_compress(&jpeg); }
    Compressor(const Compressor&) = delete;
    Compressor& operator=(const Compressor&) = delete;
};
}  // namespace

static Destination& DestinationOf(j_compress_ptr jpeg)
{
    return *reinterpret_cast<Destination*>(jpeg->dest);
}

static void StartDestination(j_compress_ptr jpeg)
{
    DestinationOf(jpeg).Empty();
}

static boolean EmptyPart(j_compress_ptr jpeg)
{
    Destination& destination = DestinationOf(jpeg);
    if (!destination.Write(destination.part.size()))
        FailJpeg(reinterpret_cast<j_common_ptr>(jpeg));
    destination.Empty();
    return TRUE;
}

static void EndDestination(j_compress_ptr jpeg)
{
    Destination& destination = DestinationOf(jpeg);
    if (!destination.Write(destination.part.size() - destination.manager.free_in_buffer))
        FailJpeg(reinterpret_cast<j_common_ptr>(jpeg));
}

Compressor::Compressor(OutputFile& out)
{
    destination.manager.init_destination = StartDestination;
    destination.manager.empty_output_buffer = EmptyPart;
    destination.manager.term_destination = EndDestination;
    destination.out = &out;
    destination.part.resize(kPartSize);
    jpeg.err = Install(errors);
}

// JFIF stores whole dots per inch or per centimetre: uses the unit that is more exact. Declares square pixels
// if there is no resolution.
static void SetDensity(jpeg_compress_struct& jpeg, double dots_per_inch_x, double dots_per_inch_y)
{
    const auto whole = [](double d) { return std::abs(d - std::round(d)) < 0.005; };
    const auto fits = [](double d) { return d >= 0.5 && d < 65535; };
    if (!fits(dots_per_inch_x) || !fits(dots_per_inch_y))
        return;
    const bool centimetres = (!whole(dots_per_inch_x) || !whole(dots_per_inch_y)) &&
                             whole(dots_per_inch_x / 2.54) && whole(dots_per_inch_y / 2.54);
    const double unit = centimetres ? 2.54 : 1;
    jpeg.density_unit = centimetres ? 2 : 1;
    jpeg.X_density = static_cast<UINT16>(std::lround(dots_per_inch_x / unit));
    jpeg.Y_density = static_cast<UINT16>(std::lround(dots_per_inch_y / unit));
}

static std::vector<JpegSegment> SegmentsOf(const ImageBuffer& image, const ImageInfoTexts& texts)
{
    ImageMetadata metadata = image.metadata;
    metadata.exif = ExifForSave(image, texts);
    if (metadata.exif.size() > kLongestExif) {
        // The source block is too long for a segment, which other formats allow. Write at least the texts.
        metadata.exif = ExifForSave(ImageBuffer{}, texts);
    }
    const bool keep_profile = ProfileFits(image.icc_profile, image.channels);
    return SegmentsToWrite(metadata, keep_profile ? Bytes(image.icc_profile) : Bytes{});
}

static void StartFile(jpeg_compress_struct& jpeg, const ImageBuffer& image, std::int32_t quality)
{
    jpeg.image_width = static_cast<JDIMENSION>(image.width);
    jpeg.image_height = static_cast<JDIMENSION>(image.height);
    jpeg.input_components = image.channels;
    jpeg.in_color_space = image.channels == 1   ? JCS_GRAYSCALE
                          : image.channels == 3 ? JCS_EXT_BGR
                                                : JCS_EXT_BGRX;
    jpeg_set_defaults(&jpeg);
    jpeg_set_quality(&jpeg, quality, TRUE);
    if (quality >= kFullColourQuality) {
        jpeg.comp_info[0].h_samp_factor = 1;
        jpeg.comp_info[0].v_samp_factor = 1;
    }
    SetDensity(jpeg, image.dots_per_inch_x, image.dots_per_inch_y);
    jpeg_start_compress(&jpeg, TRUE);
}

bool EncodeJpeg(const ImageBuffer& image, const SaveSettings& settings, OutputFile& out)
{
    const std::vector<JpegSegment> segments = SegmentsOf(image, settings.texts);
    Compressor compressor(out);
    jpeg_compress_struct& jpeg = compressor.jpeg;
    const std::int32_t quality = std::clamp(settings.jpeg_quality, 1, 100);
    const auto stride = static_cast<std::size_t>(image.width) * static_cast<std::size_t>(image.channels);
    // libjpeg takes pointers to non-const rows but only reads them.
    auto* picture = const_cast<std::uint8_t*>(image.bytes.data());
    return Try(compressor.errors, [&] {
        jpeg_create_compress(&jpeg);
        jpeg.dest = &compressor.destination.manager;
        StartFile(jpeg, image, quality);
        for (std::size_t i = 0; i < segments.size(); ++i)
            jpeg_write_marker(&jpeg, JPEG_APP0 + segments[i].application, segments[i].bytes.data(),
                              static_cast<unsigned>(segments[i].bytes.size()));
        while (jpeg.next_scanline < jpeg.image_height) {
            std::array<JSAMPROW, kRowsAtOnce> rows;
            const JDIMENSION row_count =
                std::min<JDIMENSION>(kRowsAtOnce, jpeg.image_height - jpeg.next_scanline);
            for (JDIMENSION i = 0; i < row_count; ++i)
                rows[i] = picture + (jpeg.next_scanline + i) * stride;
            jpeg_write_scanlines(&jpeg, rows.data(), row_count);
        }
        jpeg_finish_compress(&jpeg);
    });
}

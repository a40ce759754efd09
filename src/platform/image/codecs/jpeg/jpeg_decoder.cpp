// Decodes JPEG files straight into the rows of a picture.
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "src/platform/image/base/input_file.h"
#include "src/platform/image/base/limits.h"
#include "src/platform/image/base/picture_memory.h"
#include "src/platform/image/codecs/jpeg/jpeg.h"
#include "src/platform/image/codecs/jpeg/jpeg_coefficients.h"
#include "src/platform/image/codecs/jpeg/jpeg_library.h"
#include "src/platform/image/codecs/jpeg/jpeg_segments.h"
#include "src/platform/image/colour/colour_profile.h"
#include "src/platform/image/metadata/metadata.h"

// A Huffman code has at least one bit, and a block of 8x8 pixels at least one code.
static constexpr std::uint64_t kMaxPixelsPerByte = 512;
// Encoders make about ten scans. Each visits all blocks of its components, however few bytes it has, at up to
// 80 ns a block. The limit is about ten seconds; ten scans of the largest picture make 112 million visits.
static constexpr int kMaxScans = 500;
static constexpr std::uint64_t kMaxBlockVisits = 125'000'000;
static constexpr std::size_t kRowsAtOnce = 16;
// Bytes by which the coefficients may exceed the picture before they are freed progressively. Freeing has a
// price: the next picture has to fault the memory in again.
static constexpr std::uint64_t kMaxOverPicture = std::uint64_t{16} << 20;
static constexpr std::uint64_t kWorthReturning = 8 * 1024 * 1024;  // bytes; less is kept for the next file

// The whole file is in memory, so the source needs no setup, refill or cleanup.
static void StartSource(j_decompress_ptr) {}

// A truncated file gets an end marker, so that libjpeg outputs what it has.
static boolean EndAtMarker(j_decompress_ptr jpeg)
{
    static constexpr std::array<JOCTET, 2> kEnd = {0xFF, JPEG_EOI};
    jpeg->src->next_input_byte = kEnd.data();
    jpeg->src->bytes_in_buffer = kEnd.size();
    return TRUE;
}

static void SkipBytes(j_decompress_ptr jpeg, long count)
{
    if (count <= 0)
        return;
    const std::size_t skipped = std::min(static_cast<std::size_t>(count), jpeg->src->bytes_in_buffer);
    jpeg->src->next_input_byte += skipped;
    jpeg->src->bytes_in_buffer -= skipped;
}

static std::uint64_t BlockCount(const jpeg_component_info& component)
{
    return static_cast<std::uint64_t>(component.width_in_blocks) * component.height_in_blocks;
}

static std::uint64_t BlockCount(const jpeg_decompress_struct& jpeg)
{
    std::uint64_t sum = 0;
    for (int i = 0; i < jpeg.num_components; ++i)
        sum += BlockCount(jpeg.comp_info[i]);
    return sum;
}

namespace
{
// libjpeg's progress monitor, which limits the time spent on scans.
struct ScanBudget {
    jpeg_progress_mgr manager{};  // first, so that libjpeg's pointer to it also points to the whole struct
    int last_scan = 0;
    std::uint64_t block_visits = 0;
};
}  // namespace

// Called for every row of blocks while scans are read.
static void WatchScans(j_common_ptr common)
{
    const auto& jpeg = *reinterpret_cast<j_decompress_ptr>(common);
    auto& budget = *reinterpret_cast<ScanBudget*>(jpeg.progress);
    if (jpeg.input_scan_number == budget.last_scan)
        return;
    budget.last_scan = jpeg.input_scan_number;
    for (int i = 0; i < jpeg.comps_in_scan; ++i)
        budget.block_visits += BlockCount(*jpeg.cur_comp_info[i]);
    if (budget.last_scan > kMaxScans || budget.block_visits > kMaxBlockVisits)
        FailJpeg(common);
}

namespace
{
// A libjpeg decompressor and everything it points to.
struct Decompressor {
    JpegErrors errors{};
    jpeg_source_mgr source{};
    ScanBudget budget{};
    JpegCoefficients coefficients{};
    jpeg_decompress_struct jpeg{};
    std::uint64_t held_coefficients = 0;  ///< bytes

    explicit Decompressor(Bytes file)
    {
        source.next_input_byte = file.data();
        source.bytes_in_buffer = file.size();
        source.init_source = StartSource;
        source.fill_input_buffer = EndAtMarker;
        source.skip_input_data = SkipBytes;
        source.resync_to_restart = jpeg_resync_to_restart;
        source.term_source = StartSource;
        budget.manager.progress_monitor = WatchScans;
        jpeg.err = Install(errors);
    }
    ~Decompressor()
    {
        jpeg_destroy_decompress(&jpeg);
        // The coefficients of a component are as large as a channel, and no later step asks for such a block.
        if (held_coefficients >= kWorthReturning)
            ReturnFreedMemory();
    }
    Decompressor(const Decompressor&) = delete;
    Decompressor& operator=(const Decompressor&) = delete;

    bool ReadHeader()
    {
        return Try(errors, [this] {
            jpeg_create_decompress(&jpeg);
            jpeg.src = &source;
            jpeg.progress = &budget.manager;
            jpeg_read_header(&jpeg, TRUE);
        });
    }
};

class JpegDecoder : public ImageDecoder
{
public:
    JpegDecoder(Bytes file, JpegSegments segments) : file_(file), segments_(std::move(segments)) {}
    std::int32_t FrameCount() override { return 1; }
    void SetSmallestSize(SmallestSize upright) override { smallest_size_ = upright; }
    bool DecodeFrame(std::int32_t frame, ImageBuffer& image) override;

private:
    Bytes file_;
    JpegSegments segments_;
    SmallestSize smallest_size_;
};
}  // namespace

// The largest factor that leaves the picture at least as large as size.
static std::int32_t ReductionFactor(const jpeg_decompress_struct& jpeg, SmallestSize size)
{
    if (size.width <= 0 && size.height <= 0)
        return 1;
    for (const std::int32_t factor : {8, 4, 2})
        if (jpeg.image_width / static_cast<JDIMENSION>(factor) >= static_cast<JDIMENSION>(size.width) &&
            jpeg.image_height / static_cast<JDIMENSION>(factor) >= static_cast<JDIMENSION>(size.height))
            return factor;
    return 1;
}

// Decodes pictures that libjpeg can output as grey or BGR directly.
static bool DecodeRows(Decompressor& decompressor, ImageBuffer& image)
{
    jpeg_decompress_struct& jpeg = decompressor.jpeg;
    const auto stride = static_cast<std::size_t>(image.width) * static_cast<std::size_t>(image.channels);
    std::uint8_t* picture = image.bytes.data();
    return Try(decompressor.errors, [&jpeg, picture, stride] {
        jpeg_start_decompress(&jpeg);
        while (jpeg.output_scanline < jpeg.output_height) {
            std::array<JSAMPROW, kRowsAtOnce> rows;
            const JDIMENSION row_count =
                std::min<JDIMENSION>(kRowsAtOnce, jpeg.output_height - jpeg.output_scanline);
            for (JDIMENSION i = 0; i < row_count; ++i)
                rows[i] = picture + (jpeg.output_scanline + i) * stride;
            jpeg_read_scanlines(&jpeg, rows.data(), row_count);
        }
        jpeg_finish_decompress(&jpeg);
    });
}

static bool DecodeInkRows(Decompressor& decompressor, Bytes profile, ImageBuffer& image)
{
    jpeg_decompress_struct& jpeg = decompressor.jpeg;
    // CMYK is stored inverted, a convention that Adobe's programs began. A file without Adobe's marker has
    // lost it: every CMYK writer sets one.
    const CmykToBgr colours(profile, true);
    const auto width = static_cast<std::size_t>(image.width);
    PixelBytes ink_rows;
    ink_rows.resize(width * 4);
    std::uint8_t* inks = ink_rows.data();
    std::uint8_t* picture = image.bytes.data();
    return Try(decompressor.errors, [&jpeg, &colours, inks, picture, width] {
        jpeg_start_decompress(&jpeg);
        while (jpeg.output_scanline < jpeg.output_height) {
            std::uint8_t* row = picture + jpeg.output_scanline * width * 3;
            JSAMPROW row_of_inks = inks;
            if (jpeg_read_scanlines(&jpeg, &row_of_inks, 1) == 1)
                colours.Convert(inks, row, width);
        }
        jpeg_finish_decompress(&jpeg);
    });
}

// True if only the first unit of blocks may have data: all pixels outside it are alike. libjpeg fills a unit
// whose data stops with zeros, which isn't grey.
static bool IsEmptyPicture(const jpeg_decompress_struct& jpeg, const ImageBuffer& image)
{
    const int block = jpeg.min_DCT_scaled_size;  // pixels
    const auto left = static_cast<std::size_t>(std::min(image.width, jpeg.max_h_samp_factor * block));
    const auto top = static_cast<std::size_t>(std::min(image.height, jpeg.max_v_samp_factor * block));
    const auto pixel = static_cast<std::size_t>(image.channels);
    const std::size_t stride = static_cast<std::size_t>(image.width) * pixel;
    const Bytes bytes(image.bytes);
    const Bytes fill = bytes.last(pixel);
    for (std::size_t at = 0; at < bytes.size(); at += pixel) {
        const bool first_unit = at / stride < top && at % stride / pixel < left;
        if (!first_unit &&
            !std::equal(fill.begin(), fill.end(), bytes.begin() + static_cast<std::ptrdiff_t>(at)))
            return false;
    }
    return true;
}

static void SetResolution(const jpeg_decompress_struct& jpeg, ImageBuffer& image)
{
    const double inch = jpeg.density_unit == 1 ? 1 : jpeg.density_unit == 2 ? 2.54 : 0;
    if (jpeg.saw_JFIF_marker && inch > 0 && jpeg.X_density > 0 && jpeg.Y_density > 0) {
        image.dots_per_inch_x = jpeg.X_density * inch;
        image.dots_per_inch_y = jpeg.Y_density * inch;
        return;
    }
    const ExifResolution resolution = ReadExifResolution(image.metadata.exif);
    image.dots_per_inch_x = resolution.dots_per_inch_x;
    image.dots_per_inch_y = resolution.dots_per_inch_y;
}

bool JpegDecoder::DecodeFrame(std::int32_t frame, ImageBuffer& image)
{
    const std::uint64_t pixels = static_cast<std::uint64_t>(segments_.width) * segments_.height;
    if (frame != 0 || !IsSizeAllowed(segments_.width, segments_.height) || segments_.bytes_of_scans == 0 ||
        (!segments_.arithmetic && pixels / kMaxPixelsPerByte > segments_.bytes_of_scans))
        return false;
    Decompressor decompressor(file_);
    jpeg_decompress_struct& jpeg = decompressor.jpeg;
    if (!decompressor.ReadHeader())
        return false;
    const J_COLOR_SPACE space = jpeg.jpeg_color_space;
    const bool is_grey = space == JCS_GRAYSCALE;
    const bool has_inks = space == JCS_CMYK || space == JCS_YCCK;
    if (!is_grey && !has_inks && space != JCS_YCbCr && space != JCS_RGB)
        return false;
    jpeg.out_color_space = is_grey ? JCS_GRAYSCALE : has_inks ? JCS_CMYK : JCS_EXT_BGR;

    SmallestSize smallest = smallest_size_;
    if (OrientationSwapsSides(segments_.metadata.exif))
        std::swap(smallest.width, smallest.height);
    const std::int32_t factor = ReductionFactor(jpeg, smallest);
    jpeg.scale_num = 1;
    jpeg.scale_denom = static_cast<unsigned>(factor);
    if (!Try(decompressor.errors, [&jpeg] { jpeg_calc_output_dimensions(&jpeg); }))
        return false;
    ImageBuffer result;
    if (!Allocate(result, jpeg.output_width, jpeg.output_height, is_grey ? 1 : 3))
        return false;
    if (factor > 1)
        result.reduction = {factor, static_cast<std::int32_t>(jpeg.image_width),
                            static_cast<std::int32_t>(jpeg.image_height)};
    result.lossy = true;
    if (jpeg_has_multiple_scans(&jpeg)) {
        // libjpeg keeps all coefficients until the last scan.
        const std::uint64_t coefficients = BlockCount(jpeg) * sizeof(JBLOCK);
        decompressor.held_coefficients = coefficients;
        ExpectLibraryMemory(coefficients);
        if (coefficients > result.bytes.size() + kMaxOverPicture)
            decompressor.coefficients.Follow(jpeg);
    }
    const bool done = has_inks ? DecodeInkRows(decompressor, segments_.icc_profile, result)
                               : DecodeRows(decompressor, result);
    if (!done || (decompressor.errors.ends_in_first_rows && IsEmptyPicture(jpeg, result)))
        return false;
    if (!has_inks && ProfileFits(segments_.icc_profile, result.channels))
        result.icc_profile = segments_.icc_profile;
    result.metadata = segments_.metadata;
    SetResolution(jpeg, result);
    image = std::move(result);
    return true;
}

std::unique_ptr<ImageDecoder> OpenJpeg(InputFile& file)
{
    // No picture within the limits has a larger file; don't read one into memory to find out.
    constexpr std::uint64_t kLargestFile = std::uint64_t{4} << 30;
    if (file.Size() > kLargestFile)
        return nullptr;
    const Bytes bytes = WithoutTruncatedSegment(file.All());
    JpegSegments segments = ReadSegments(bytes);
    if (!segments.has_frame)
        return nullptr;
    return std::make_unique<JpegDecoder>(bytes, std::move(segments));
}

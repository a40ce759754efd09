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

// A Huffman code has at least one bit, and a block of 8 by 8 pixels at least one code.
static constexpr std::uint64_t kMostPixelsPerByte = 512;
// Encoders make about ten scans. Each scan walks over all blocks, however few bytes it has.
static constexpr std::uint64_t kMostScans = 500;
static constexpr std::uint64_t kMostBlockVisits = 1'000'000'000;
static constexpr std::size_t kRowsAtOnce = 16;
// Coefficients may take so many bytes more than the picture before they are given back bit by bit: then the
// next picture has to get its memory from the system again.
static constexpr std::uint64_t kMostOverPicture = std::uint64_t{16} << 20;

// The whole file is in memory: there is nothing to begin, to refill or to close.
static void StartSource(j_decompress_ptr) {}

static boolean NothingLeft(j_decompress_ptr pJpeg)
{
    FailJpeg(reinterpret_cast<j_common_ptr>(pJpeg));
}

static void SkipBytes(j_decompress_ptr pJpeg, long nCount)
{
    if (nCount <= 0)
        return;
    if (static_cast<std::size_t>(nCount) > pJpeg->src->bytes_in_buffer)
        FailJpeg(reinterpret_cast<j_common_ptr>(pJpeg));
    pJpeg->src->next_input_byte += nCount;
    pJpeg->src->bytes_in_buffer -= static_cast<std::size_t>(nCount);
}

static std::uint64_t nBlocks(const jpeg_decompress_struct& objJpeg)
{
    std::uint64_t nSum = 0;
    for (int i = 0; i < objJpeg.num_components; ++i) {
        const jpeg_component_info& objComponent = objJpeg.comp_info[i];
        nSum += static_cast<std::uint64_t>(objComponent.width_in_blocks) * objComponent.height_in_blocks;
    }
    return nSum;
}

// Called now and then while scans are read.
static void WatchScans(j_common_ptr pJpeg)
{
    const auto& objJpeg = *reinterpret_cast<j_decompress_ptr>(pJpeg);
    const auto nScan = static_cast<std::uint64_t>(objJpeg.input_scan_number);
    if (nScan > kMostScans || nScan * nBlocks(objJpeg) > kMostBlockVisits)
        FailJpeg(pJpeg);
}

namespace
{
// A libjpeg object with what it points to.
struct Decompressor {
    JpegErrors objErrors{};
    jpeg_source_mgr objSource{};
    jpeg_progress_mgr objProgress{};
    JpegCoefficients objCoefficients{};
    jpeg_decompress_struct objJpeg{};

    explicit Decompressor(Bytes aFile)
    {
        objSource.next_input_byte = aFile.data();
        objSource.bytes_in_buffer = aFile.size();
        objSource.init_source = StartSource;
        objSource.fill_input_buffer = NothingLeft;
        objSource.skip_input_data = SkipBytes;
        objSource.resync_to_restart = jpeg_resync_to_restart;
        objSource.term_source = StartSource;
        objProgress.progress_monitor = WatchScans;
        objJpeg.err = pInstalled(objErrors);
    }
    ~Decompressor() { jpeg_destroy_decompress(&objJpeg); }
    Decompressor(const Decompressor&) = delete;
    Decompressor& operator=(const Decompressor&) = delete;

    bool bReadHeader()
    {
        return bTried(objErrors, [this] {
            jpeg_create_decompress(&objJpeg);
            objJpeg.src = &objSource;
            objJpeg.progress = &objProgress;
            jpeg_read_header(&objJpeg, TRUE);
        });
    }
};

class JpegDecoder : public ImageDecoder
{
public:
    JpegDecoder(Bytes aFile, JpegSegments objSegments) : m_aFile(aFile), m_objSegments(std::move(objSegments))
    {
    }
    std::int32_t FrameCount() override { return 1; }
    bool DecodeFrame(std::int32_t lFrame, ImageBuffer& aImage) override;

private:
    Bytes m_aFile;
    JpegSegments m_objSegments;
};
}  // namespace

// Grey and BGR rows come from libjpeg as the picture wants them.
static bool bDecodeRows(Decompressor& objDecompressor, ImageBuffer& aImage)
{
    jpeg_decompress_struct& objJpeg = objDecompressor.objJpeg;
    const auto nStride = static_cast<std::size_t>(aImage.width) * static_cast<std::size_t>(aImage.channels);
    std::uint8_t* pPicture = aImage.bytes.data();
    return bTried(objDecompressor.objErrors, [&objJpeg, pPicture, nStride] {
        jpeg_start_decompress(&objJpeg);
        while (objJpeg.output_scanline < objJpeg.output_height) {
            std::array<JSAMPROW, kRowsAtOnce> aRows;
            const JDIMENSION nRows =
                std::min<JDIMENSION>(kRowsAtOnce, objJpeg.output_height - objJpeg.output_scanline);
            for (JDIMENSION i = 0; i < nRows; ++i)
                aRows[i] = pPicture + (objJpeg.output_scanline + i) * nStride;
            jpeg_read_scanlines(&objJpeg, aRows.data(), nRows);
        }
        jpeg_finish_decompress(&objJpeg);
    });
}

static bool bDecodeInkRows(Decompressor& objDecompressor, Bytes aProfile, ImageBuffer& aImage)
{
    jpeg_decompress_struct& objJpeg = objDecompressor.objJpeg;
    // Inks are stored inverted, as Adobe's programs began to do. A file without Adobe's marker has lost it:
    // all that write such files set it.
    const CmykToBgr objColours(aProfile, true);
    const auto nWidth = static_cast<std::size_t>(aImage.width);
    PixelBytes aInks;
    aInks.resize(nWidth * 4);
    std::uint8_t* pInks = aInks.data();
    std::uint8_t* pPicture = aImage.bytes.data();
    return bTried(objDecompressor.objErrors, [&objJpeg, &objColours, pInks, pPicture, nWidth] {
        jpeg_start_decompress(&objJpeg);
        while (objJpeg.output_scanline < objJpeg.output_height) {
            std::uint8_t* pRow = pPicture + objJpeg.output_scanline * nWidth * 3;
            JSAMPROW pRowOfInks = pInks;
            if (jpeg_read_scanlines(&objJpeg, &pRowOfInks, 1) == 1)
                objColours.Convert(pInks, pRow, nWidth);
        }
        jpeg_finish_decompress(&objJpeg);
    });
}

static void SetResolution(const jpeg_decompress_struct& objJpeg, ImageBuffer& aImage)
{
    const double dInch = objJpeg.density_unit == 1 ? 1 : objJpeg.density_unit == 2 ? 2.54 : 0;
    if (objJpeg.saw_JFIF_marker && dInch > 0 && objJpeg.X_density > 0 && objJpeg.Y_density > 0) {
        aImage.dots_per_inch_x = objJpeg.X_density * dInch;
        aImage.dots_per_inch_y = objJpeg.Y_density * dInch;
        return;
    }
    const ExifResolution objResolution = ReadExifResolution(aImage.metadata.exif);
    aImage.dots_per_inch_x = objResolution.dots_per_inch_x;
    aImage.dots_per_inch_y = objResolution.dots_per_inch_y;
}

bool JpegDecoder::DecodeFrame(std::int32_t lFrame, ImageBuffer& aImage)
{
    const std::uint64_t nPixels = static_cast<std::uint64_t>(m_objSegments.nWidth) * m_objSegments.nHeight;
    if (lFrame != 0 || !IsSizeAllowed(m_objSegments.nWidth, m_objSegments.nHeight) ||
        (!m_objSegments.bArithmetic && nPixels / kMostPixelsPerByte > m_objSegments.nBytesOfScans))
        return false;
    Decompressor objDecompressor(m_aFile);
    jpeg_decompress_struct& objJpeg = objDecompressor.objJpeg;
    if (!objDecompressor.bReadHeader())
        return false;
    const J_COLOR_SPACE nSpace = objJpeg.jpeg_color_space;
    const bool bGrey = nSpace == JCS_GRAYSCALE;
    const bool bInks = nSpace == JCS_CMYK || nSpace == JCS_YCCK;
    if (!bGrey && !bInks && nSpace != JCS_YCbCr && nSpace != JCS_RGB)
        return false;
    objJpeg.out_color_space = bGrey ? JCS_GRAYSCALE : bInks ? JCS_CMYK : JCS_EXT_BGR;

    ImageBuffer aResult;
    if (!Allocate(aResult, objJpeg.image_width, objJpeg.image_height, bGrey ? 1 : 3))
        return false;
    if (jpeg_has_multiple_scans(&objJpeg)) {
        // All coefficients are kept until the last scan.
        const std::uint64_t nCoefficients = nBlocks(objJpeg) * sizeof(JBLOCK);
        ExpectLibraryMemory(nCoefficients);
        if (nCoefficients > aResult.bytes.size() + kMostOverPicture)
            objDecompressor.objCoefficients.Follow(objJpeg);
    }
    const bool bDone = bInks ? bDecodeInkRows(objDecompressor, m_objSegments.aIccProfile, aResult)
                             : bDecodeRows(objDecompressor, aResult);
    if (!bDone)
        return false;
    if (!bInks && ProfileFits(m_objSegments.aIccProfile, aResult.channels))
        aResult.icc_profile = m_objSegments.aIccProfile;
    aResult.metadata = m_objSegments.objMetadata;
    SetResolution(objJpeg, aResult);
    aImage = std::move(aResult);
    return true;
}

std::unique_ptr<ImageDecoder> pOpenJpeg(InputFile& objFile)
{
    // More than any picture within the limits takes; it isn't read into memory to find that out.
    constexpr std::uint64_t kLargestFile = std::uint64_t{4} << 30;
    if (objFile.Size() > kLargestFile)
        return nullptr;
    const Bytes aFile = objFile.All();
    JpegSegments objSegments = objReadSegments(aFile);
    if (!objSegments.bHasFrame)
        return nullptr;
    return std::make_unique<JpegDecoder>(aFile, std::move(objSegments));
}

// Encodes pictures as baseline JPEG files.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <new>
#include <vector>

#include "src/platform/image/base/output_file.h"
#include "src/platform/image/codecs/jpeg/jpeg.h"
#include "src/platform/image/codecs/jpeg/jpeg_library.h"
#include "src/platform/image/codecs/jpeg/jpeg_segments.h"
#include "src/platform/image/colour/colour_profile.h"
#include "src/platform/image/metadata/metadata.h"

// As much as OutputFile writes in one go without copying it.
static constexpr std::size_t kPartSize = 128 * 1024;
static constexpr std::int32_t kFullColourQuality = 90;
static constexpr std::size_t kRowsAtOnce = 16;

namespace
{
// Hands the bytes on in parts.
struct Destination {
    jpeg_destination_mgr objManager{};  // first, so that libjpeg's pointer to it is a pointer to the whole
    OutputFile* pOut = nullptr;
    std::vector<std::uint8_t> aPart;

    void Empty()
    {
        objManager.next_output_byte = aPart.data();
        objManager.free_in_buffer = aPart.size();
    }
    // No exception may pass through libjpeg.
    bool bWrite(std::size_t nCount) noexcept
    try {
        return pOut->Write(Bytes(aPart).first(nCount));
    } catch (const std::bad_alloc&) {
        return false;
    }
};

struct Compressor {
    JpegErrors objErrors{};
    Destination objDestination;
    jpeg_compress_struct objJpeg{};

    explicit Compressor(OutputFile& objOut);
    ~Compressor() { jpeg_destroy_compress(&objJpeg); }
    Compressor(const Compressor&) = delete;
    Compressor& operator=(const Compressor&) = delete;
};
}  // namespace

static Destination& objDestinationOf(j_compress_ptr pJpeg)
{
    return *reinterpret_cast<Destination*>(pJpeg->dest);
}

static void StartDestination(j_compress_ptr pJpeg)
{
    objDestinationOf(pJpeg).Empty();
}

static boolean EmptyPart(j_compress_ptr pJpeg)
{
    Destination& objDestination = objDestinationOf(pJpeg);
    if (!objDestination.bWrite(objDestination.aPart.size()))
        FailJpeg(reinterpret_cast<j_common_ptr>(pJpeg));
    objDestination.Empty();
    return TRUE;
}

static void EndDestination(j_compress_ptr pJpeg)
{
    Destination& objDestination = objDestinationOf(pJpeg);
    if (!objDestination.bWrite(objDestination.aPart.size() - objDestination.objManager.free_in_buffer))
        FailJpeg(reinterpret_cast<j_common_ptr>(pJpeg));
}

Compressor::Compressor(OutputFile& objOut)
{
    objDestination.objManager.init_destination = StartDestination;
    objDestination.objManager.empty_output_buffer = EmptyPart;
    objDestination.objManager.term_destination = EndDestination;
    objDestination.pOut = &objOut;
    objDestination.aPart.resize(kPartSize);
    objJpeg.err = pInstalled(objErrors);
}

// JFIF holds whole dots per inch or per centimetre: whichever says it more exactly. Without a resolution the
// pixels are said to be square.
static void SetDensity(jpeg_compress_struct& objJpeg, double dDotsPerInchX, double dDotsPerInchY)
{
    const auto bWhole = [](double d) { return std::abs(d - std::round(d)) < 0.005; };
    const auto bFits = [](double d) { return d >= 0.5 && d < 65535; };
    if (!bFits(dDotsPerInchX) || !bFits(dDotsPerInchY))
        return;
    const bool bCentimetres = (!bWhole(dDotsPerInchX) || !bWhole(dDotsPerInchY)) &&
                              bWhole(dDotsPerInchX / 2.54) && bWhole(dDotsPerInchY / 2.54);
    const double dUnit = bCentimetres ? 2.54 : 1;
    objJpeg.density_unit = bCentimetres ? 2 : 1;
    objJpeg.X_density = static_cast<UINT16>(std::lround(dDotsPerInchX / dUnit));
    objJpeg.Y_density = static_cast<UINT16>(std::lround(dDotsPerInchY / dUnit));
}

static std::vector<JpegSegment> aSegmentsOf(const ImageBuffer& aImage, const ImageInfoTexts& objTexts)
{
    ImageMetadata objMetadata = aImage.metadata;
    objMetadata.exif = ExifForSave(aImage, objTexts);
    if (objMetadata.exif.size() > kLongestExif) {
        // The source's block came from a format that holds longer ones. The texts at least are written.
        objMetadata.exif = ExifForSave(ImageBuffer{}, objTexts);
    }
    const bool bKeepProfile = ProfileFits(aImage.icc_profile, aImage.channels);
    return aSegmentsToWrite(objMetadata, bKeepProfile ? Bytes(aImage.icc_profile) : Bytes{});
}

static void StartFile(jpeg_compress_struct& objJpeg, const ImageBuffer& aImage, std::int32_t lQuality)
{
    objJpeg.image_width = static_cast<JDIMENSION>(aImage.width);
    objJpeg.image_height = static_cast<JDIMENSION>(aImage.height);
    objJpeg.input_components = aImage.channels;
    objJpeg.in_color_space = aImage.channels == 1   ? JCS_GRAYSCALE
                             : aImage.channels == 3 ? JCS_EXT_BGR
                                                    : JCS_EXT_BGRX;
    jpeg_set_defaults(&objJpeg);
    jpeg_set_quality(&objJpeg, lQuality, TRUE);
    if (lQuality >= kFullColourQuality) {
        objJpeg.comp_info[0].h_samp_factor = 1;
        objJpeg.comp_info[0].v_samp_factor = 1;
    }
    SetDensity(objJpeg, aImage.dots_per_inch_x, aImage.dots_per_inch_y);
    jpeg_start_compress(&objJpeg, TRUE);
}

bool bEncodeJpeg(const ImageBuffer& aImage, const SaveSettings& objSettings, OutputFile& objOut)
{
    const std::vector<JpegSegment> aSegments = aSegmentsOf(aImage, objSettings.objTexts);
    Compressor objCompressor(objOut);
    jpeg_compress_struct& objJpeg = objCompressor.objJpeg;
    const std::int32_t lQuality = std::clamp(objSettings.lJPEGQuality, 1, 100);
    const auto nStride = static_cast<std::size_t>(aImage.width) * static_cast<std::size_t>(aImage.channels);
    // libjpeg takes rows that may be written, but doesn't write to them.
    auto* pPicture = const_cast<std::uint8_t*>(aImage.bytes.data());
    return bTried(objCompressor.objErrors, [&] {
        jpeg_create_compress(&objJpeg);
        objJpeg.dest = &objCompressor.objDestination.objManager;
        StartFile(objJpeg, aImage, lQuality);
        for (std::size_t i = 0; i < aSegments.size(); ++i)
            jpeg_write_marker(&objJpeg, JPEG_APP0 + aSegments[i].nApplication, aSegments[i].aBytes.data(),
                              static_cast<unsigned>(aSegments[i].aBytes.size()));
        while (objJpeg.next_scanline < objJpeg.image_height) {
            std::array<JSAMPROW, kRowsAtOnce> aRows;
            const JDIMENSION nRows =
                std::min<JDIMENSION>(kRowsAtOnce, objJpeg.image_height - objJpeg.next_scanline);
            for (JDIMENSION i = 0; i < nRows; ++i)
                aRows[i] = pPicture + (objJpeg.next_scanline + i) * nStride;
            jpeg_write_scanlines(&objJpeg, aRows.data(), nRows);
        }
        jpeg_finish_compress(&objJpeg);
    });
}

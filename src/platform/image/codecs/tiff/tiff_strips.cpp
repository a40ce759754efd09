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

static constexpr std::size_t kStripBytes = 256 * 1024;  // stays in the processor's cache
static constexpr std::size_t kStripsAPart = 2;          // what a thread encodes before it asks for more

static std::size_t nRowBytes(const ImageBuffer& aImage)
{
    return static_cast<std::size_t>(aImage.width) * static_cast<std::size_t>(aImage.channels);
}

static std::uint32_t nRowsForStrips(const ImageBuffer& aImage)
{
    const std::size_t nRows = std::max<std::size_t>(1, kStripBytes / nRowBytes(aImage));
    return static_cast<std::uint32_t>(std::min(nRows, static_cast<std::size_t>(aImage.height)));
}

// Pixels in the order of TIFF.
static void CopyPixels(const std::uint8_t* pIn, std::size_t nPixels, std::int32_t lChannels,
                       std::uint8_t* pOut)
{
    if (lChannels == 1)
        std::copy_n(pIn, nPixels, pOut);
    else
        (lChannels == 3 ? SwapRedAndBlue : SwapRedAndBlueOfFour)(pIn, pOut, nPixels);
}

bool bPlainStrips(const ImageBuffer& aImage, const TakeBytes& fnTake, TiffStrips& objStrips)
{
    const std::size_t nRow = nRowBytes(aImage);
    const auto nHeight = static_cast<std::uint32_t>(aImage.height);
    objStrips.nRowsAStrip = nRowsForStrips(aImage);
    std::vector<std::uint8_t> aStrip(aImage.channels == 1 ? 0 : objStrips.nRowsAStrip * nRow);
    for (std::uint32_t y = 0; y < nHeight; y += objStrips.nRowsAStrip) {
        const std::uint32_t nRows = std::min(objStrips.nRowsAStrip, nHeight - y);
        Bytes aBytes = Bytes(aImage.bytes).subspan(y * nRow, nRows * nRow);
        if (aImage.channels != 1) {
            CopyPixels(aBytes.data(), aBytes.size() / static_cast<std::size_t>(aImage.channels),
                       aImage.channels, aStrip.data());
            aBytes = Bytes(aStrip).first(aBytes.size());
        }
        if (!fnTake(aBytes))
            return false;
        objStrips.aSizes.push_back(aBytes.size());
    }
    return true;
}

namespace
{
/// What one thread needs to encode strips.
struct LzwWork {
    TiffLzwEncoder objEncoder;
    std::vector<std::uint8_t> aPixels;
    std::vector<std::uint8_t> aDifferences;
};
}  // namespace

static void EncodeLzwStrip(const ImageBuffer& aImage, std::uint32_t y, std::uint32_t nRows, LzwWork& objWork,
                           std::vector<std::uint8_t>& aCodes)
{
    const std::size_t nRow = nRowBytes(aImage);
    objWork.aPixels.resize(nRow);
    objWork.aDifferences.resize(nRow * nRows);
    for (std::uint32_t i = 0; i < nRows; ++i) {
        CopyPixels(aImage.bytes.data() + (y + i) * nRow, static_cast<std::size_t>(aImage.width),
                   aImage.channels, objWork.aPixels.data());
        SubtractLeft(objWork.aPixels.data(), nRow, static_cast<std::uint32_t>(aImage.channels),
                     objWork.aDifferences.data() + i * nRow);
    }
    objWork.objEncoder.Encode(objWork.aDifferences, aCodes);
}

bool bLzwStrips(const ImageBuffer& aImage, const TakeBytes& fnTake, TiffStrips& objStrips)
{
    const auto nHeight = static_cast<std::uint32_t>(aImage.height);
    objStrips.nRowsAStrip = nRowsForStrips(aImage);
    const std::size_t nStrips = (nHeight - 1) / objStrips.nRowsAStrip + 1;
    // As many strips at a time as the cores take together; then those are handed over in their order.
    const std::size_t nParts = std::min(CoreCount(), (nStrips + kStripsAPart - 1) / kStripsAPart);
    const std::size_t nBatch = nParts * kStripsAPart;
    std::vector<std::unique_ptr<LzwWork>> aWork;
    for (std::size_t i = 0; i < nParts; ++i)
        aWork.push_back(std::make_unique<LzwWork>());
    std::vector<std::vector<std::uint8_t>> aCodes(nBatch);
    for (std::size_t nFirst = 0; nFirst < nStrips; nFirst += nBatch) {
        const std::size_t nNow = std::min(nBatch, nStrips - nFirst);
        RunParts(nParts, [&](std::size_t nPart) {
            for (std::size_t i = nPart; i < nNow; i += nParts) {
                const auto y = static_cast<std::uint32_t>((nFirst + i) * objStrips.nRowsAStrip);
                EncodeLzwStrip(aImage, y, std::min(objStrips.nRowsAStrip, nHeight - y), *aWork[nPart],
                               aCodes[i]);
            }
        });
        for (std::size_t i = 0; i < nNow; ++i) {
            if (!fnTake(aCodes[i]))
                return false;
            objStrips.aSizes.push_back(aCodes[i].size());
        }
    }
    return true;
}

static bool bSetFaxTags(TIFF* pTiff, const ImageBuffer& aImage, std::uint16_t nCompression)
{
    const auto nHeight = static_cast<std::uint32_t>(aImage.height);
    return TIFFSetField(pTiff, TIFFTAG_IMAGEWIDTH, static_cast<std::uint32_t>(aImage.width)) &&
           TIFFSetField(pTiff, TIFFTAG_IMAGELENGTH, nHeight) &&
           TIFFSetField(pTiff, TIFFTAG_BITSPERSAMPLE, 1) && TIFFSetField(pTiff, TIFFTAG_SAMPLESPERPIXEL, 1) &&
           TIFFSetField(pTiff, TIFFTAG_ROWSPERSTRIP, nHeight) &&
           TIFFSetField(pTiff, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_MINISWHITE) &&
           TIFFSetField(pTiff, TIFFTAG_COMPRESSION, nCompression) &&
           (nCompression != COMPRESSION_CCITTFAX3 ||
            TIFFSetField(pTiff, TIFFTAG_GROUP3OPTIONS, GROUP3OPT_FILLBITS));
}

bool bFaxStrip(const ImageBuffer& aImage, std::uint16_t nCompression, const TakeBytes& fnTake,
               TiffStrips& objStrips)
{
    if (aImage.channels == 4)
        return bFaxStrip(LayOnWhite(aImage), nCompression, fnTake, objStrips);
    const auto nWidth = static_cast<std::size_t>(aImage.width);
    const auto nHeight = static_cast<std::size_t>(aImage.height);
    const std::size_t nPackedRow = (nWidth + 7) / 8;
    std::vector<std::uint8_t> aLevels(nWidth);
    std::vector<std::uint8_t> aPacked(nPackedRow * nHeight);
    for (std::size_t y = 0; y < nHeight; ++y) {
        LevelsAtHalf(aImage.bytes.data() + y * nRowBytes(aImage), nWidth,
                     static_cast<std::uint32_t>(aImage.channels), aLevels.data());
        PackDarkBits(aLevels.data(), nWidth, aPacked.data() + y * nPackedRow);
    }
    TiffStripEncoder objEncoder;
    if (!objEncoder.Handle() || !bSetFaxTags(objEncoder.Handle(), aImage, nCompression))
        return false;
    const std::vector<std::uint8_t> aCodes = objEncoder.aEncoded(0, aPacked);
    objStrips.nRowsAStrip = static_cast<std::uint32_t>(nHeight);
    objStrips.aSizes = {aCodes.size()};
    return !aCodes.empty() && fnTake(aCodes);
}

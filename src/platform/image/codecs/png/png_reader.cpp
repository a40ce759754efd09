// Decodes PNG files: the common kinds in strips that stay in the cache, the others through the library.
#include "src/platform/image/codecs/png/png_reader.h"

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

#include "src/platform/image/base/input_file.h"
#include "src/platform/image/base/limits.h"
#include "src/platform/image/codecs/png/filters/png_unfilter.h"
#include "src/platform/image/codecs/png/png_chunks.h"
#include "src/platform/image/codecs/png/png_fallback.h"
#include "src/platform/image/codecs/png/png_inflate.h"
#include "src/platform/image/codecs/png/png_info.h"
#include "src/platform/image/codecs/png/png_pixels.h"
#include "src/platform/image/colour/colour_profile.h"

static constexpr std::size_t kStripSize = 192 * 1024;
static constexpr std::size_t kSlack = 16;  // what the kernels may read behind a strip or a row

namespace
{
class PngDecoder : public ImageDecoder
{
public:
    explicit PngDecoder(InputFile& objFile) : m_objFile(objFile), m_objReader(objFile) {}
    bool ReadInfo() { return bReadPngInfo(m_objReader, m_objInfo); }

    std::int32_t FrameCount() override { return 1; }
    bool DecodeFrame(std::int32_t lFrame, ImageBuffer& aImage) override;

private:
    bool DecodePixels(ImageBuffer& aResult, std::uint64_t& nAfterData);
    bool DecodeDirect(PngInflater& objInflater, UnfilterPngRows UnfilterRows, ImageBuffer& aResult);
    bool DecodeIndices(PngInflater& objInflater, ImageBuffer& aResult);

    InputFile& m_objFile;
    PngChunkReader m_objReader;
    PngInfo m_objInfo;
};
}  // namespace

// Deflate makes at most 1032 bytes of one: a header that claims more than the file can hold is lying, and is
// found out before there is memory taken for it.
static bool bFileCanHold(const InputFile& objFile, const PngHeader& objHeader)
{
    return (objHeader.nRowBytes() + 1) * objHeader.nHeight / 1032 <= objFile.Size();
}

// Samples whose order in the file is ours but for red and blue: rows go straight into the picture.
bool PngDecoder::DecodeDirect(PngInflater& objInflater, UnfilterPngRows UnfilterRows, ImageBuffer& aResult)
{
    const std::size_t nBytes = m_objInfo.objHeader.nRowBytes();
    const std::size_t nHeight = m_objInfo.objHeader.nHeight;
    const std::size_t nStripRows = std::max<std::size_t>(1, kStripSize / (nBytes + 1));
    PixelBytes aStrip;
    aStrip.resize(nStripRows * (nBytes + 1) + kSlack);
    const std::vector<std::uint8_t> aZeros(nBytes + kSlack);
    for (std::size_t y = 0; y < nHeight; y += nStripRows) {
        const std::size_t nRows = std::min(nStripRows, nHeight - y);
        if (!objInflater.Fill(std::span(aStrip).first(nRows * (nBytes + 1))))
            return false;
        std::uint8_t* pOut = aResult.bytes.data() + y * nBytes;
        if (!UnfilterRows(
                {aStrip.data(), nBytes + 1, pOut, y ? pOut - nBytes : aZeros.data(), nBytes, nRows}))
            return false;
    }
    return true;
}

// Samples that are looked up, because they are indices or fewer than 8 bits wide.
bool PngDecoder::DecodeIndices(PngInflater& objInflater, ImageBuffer& aResult)
{
    const PngHeader& objHeader = m_objInfo.objHeader;
    const PngPalette objPalette = objPaletteOf(m_objInfo);
    const std::size_t nBytes = objHeader.nRowBytes();
    const std::size_t nHeight = objHeader.nHeight;
    const std::size_t nStripRows = std::max<std::size_t>(1, kStripSize / (nBytes + 1));
    const std::size_t nOutRow =
        std::size_t{objHeader.nWidth} * static_cast<std::size_t>(objPalette.lChannels);
    PixelBytes aStrip;
    aStrip.resize(nStripRows * (nBytes + 1) + kSlack);
    // The first row is the one above the strip.
    std::vector<std::uint8_t> aUnfiltered((nStripRows + 1) * nBytes);
    for (std::size_t y = 0; y < nHeight; y += nStripRows) {
        const std::size_t nRows = std::min(nStripRows, nHeight - y);
        if (!objInflater.Fill(std::span(aStrip).first(nRows * (nBytes + 1))))
            return false;
        std::uint8_t* pRows = aUnfiltered.data() + nBytes;
        if (!objPngUnfilters().OneByte({aStrip.data(), nBytes + 1, pRows, aUnfiltered.data(), nBytes, nRows}))
            return false;
        for (std::size_t i = 0; i < nRows; ++i)
            LookUpRow(objPalette, objHeader.nDepth, pRows + i * nBytes,
                      aResult.bytes.data() + (y + i) * nOutRow, objHeader.nWidth);
        std::copy_n(pRows + (nRows - 1) * nBytes, nBytes, aUnfiltered.data());
    }
    return true;
}

bool PngDecoder::DecodePixels(ImageBuffer& aResult, std::uint64_t& nAfterData)
{
    const PngHeader& objHeader = m_objInfo.objHeader;
    if (bPngNeedsFallback(m_objInfo)) {
        nAfterData = PngChunkReader::nAfter(m_objInfo.objFirstData);
        return bDecodePngByLibrary(m_objFile, m_objInfo, aResult);
    }
    const bool bLookUp = objHeader.objColour == PngColour::Palette || objHeader.nDepth < 8;
    const std::int32_t lChannels =
        bLookUp ? objPaletteOf(m_objInfo).lChannels : static_cast<std::int32_t>(objHeader.nSamples());
    if (!Allocate(aResult, objHeader.nWidth, objHeader.nHeight, lChannels))
        return false;
    PngInflater objInflater(m_objReader, m_objInfo.objFirstData);
    const PngUnfilters& objUnfilters = objPngUnfilters();
    const bool bDone = bLookUp          ? DecodeIndices(objInflater, aResult)
                       : lChannels == 1 ? DecodeDirect(objInflater, objUnfilters.OneByte, aResult)
                       : lChannels == 3 ? DecodeDirect(objInflater, objUnfilters.Rgb, aResult)
                                        : DecodeDirect(objInflater, objUnfilters.Rgba, aResult);
    if (!bDone || !objInflater.Finish())
        return false;
    nAfterData = objInflater.nAfter();
    const double dExponent = dPngGammaExponent(m_objInfo);
    if (dExponent != 1)
        ApplyGamma(dExponent, lChannels, aResult.bytes.data(),
                   aResult.bytes.size() / static_cast<std::size_t>(lChannels));
    return true;
}

// A grey picture's profile can't stay with one that became B, G, R, A: its pixels are turned to what they
// mean. All 256 greys go through the profile as a picture of their own, and the picture through what comes of
// them.
static void ApplyGreyProfile(const std::vector<std::uint8_t>& aProfile, ImageBuffer& aImage)
{
    ImageBuffer aGreys;
    if (!Allocate(aGreys, 256, 1, 1))
        return;
    std::array<std::uint8_t, 256> aTable{};
    for (std::size_t i = 0; i < aTable.size(); ++i)
        aGreys.bytes[i] = static_cast<std::uint8_t>(i);
    aGreys.icc_profile = aProfile;
    if (!ConvertToSrgb(aGreys) || aGreys.bytes.size() != aTable.size())
        return;
    std::copy(aGreys.bytes.begin(), aGreys.bytes.end(), aTable.begin());
    ApplyTable(aTable, aImage.channels, aImage.bytes.data(), aImage.bytes.size() / 4);
}

bool PngDecoder::DecodeFrame(std::int32_t lFrame, ImageBuffer& aImage)
{
    const PngHeader& objHeader = m_objInfo.objHeader;
    if (lFrame != 0 || !IsSizeAllowed(objHeader.nWidth, objHeader.nHeight) ||
        !bFileCanHold(m_objFile, objHeader))
        return false;
    ImageBuffer aResult;
    std::uint64_t nAfterData = 0;
    PngInfo objInfo = m_objInfo;
    if (!DecodePixels(aResult, nAfterData) || !bReadPngTail(m_objReader, nAfterData, objInfo))
        return false;
    if (!objInfo.aIccProfile.empty() && objHeader.bGrey() && aResult.channels == 4)
        ApplyGreyProfile(objInfo.aIccProfile, aResult);
    else
        aResult.icc_profile = std::move(objInfo.aIccProfile);
    aResult.dots_per_inch_x = objInfo.dDotsPerInchX;
    aResult.dots_per_inch_y = objInfo.dDotsPerInchY;
    aResult.metadata = std::move(objInfo.objMetadata);
    aImage = std::move(aResult);
    return true;
}

std::unique_ptr<ImageDecoder> pOpenPng(InputFile& objFile)
{
    auto pDecoder = std::make_unique<PngDecoder>(objFile);
    if (!pDecoder->ReadInfo())
        return nullptr;
    return pDecoder;
}

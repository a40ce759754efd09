// Writes JPEG 2000 codestreams with OpenJPEG.
#include <algorithm>
#include <string>

#include "src/platform/image/base/output_file.h"
#include "src/platform/image/codecs/j2k/j2k.h"
#include "src/platform/image/codecs/j2k/j2k_library.h"
#include "src/platform/image/metadata/info_lines.h"

// Pixels a side. Tiles keep the memory small, and the smaller ones are a little faster; the seams of larger
// ones are fewer where something is lost.
static constexpr std::int32_t kLosslessTile = 1024;
static constexpr std::int32_t kLossyTile = 4096;
// The library misses its target by far in pictures of a few pixels, where loss saves nothing.
static constexpr std::size_t kPixelsWorthLoss = 1024;
static constexpr std::size_t kMostComment = 65000;  // bytes; the segment's length has 16 bits

// One more than how often a tile's shorter side can be halved, and no more than 6.
static int nResolutions(std::int32_t lWidth, std::int32_t lHeight)
{
    int nCount = 1;
    for (std::int32_t lSide = std::min(lWidth, lHeight); lSide > 1 && nCount < 6; lSide /= 2)
        ++nCount;
    return nCount;
}

static J2kImage pDescription(const ImageBuffer& aImage)
{
    opj_image_cmptparm_t aComponents[4] = {};
    for (auto& objComponent : aComponents) {
        objComponent.dx = objComponent.dy = 1;
        objComponent.w = static_cast<OPJ_UINT32>(aImage.width);
        objComponent.h = static_cast<OPJ_UINT32>(aImage.height);
        objComponent.prec = 8;
    }
    const auto nChannels = static_cast<OPJ_UINT32>(aImage.channels);
    J2kImage pImage(
        opj_image_tile_create(nChannels, aComponents, nChannels == 1 ? OPJ_CLRSPC_GRAY : OPJ_CLRSPC_SRGB));
    if (pImage) {
        pImage->x1 = static_cast<OPJ_UINT32>(aImage.width);
        pImage->y1 = static_cast<OPJ_UINT32>(aImage.height);
    }
    return pImage;
}

// A tile's samples, one component after the other: R, G, B, A.
static void FillTile(const ImageBuffer& aImage, std::int32_t lLeft, std::int32_t lTop, std::int32_t lWidth,
                     std::int32_t lHeight, std::vector<std::uint8_t>& aTile)
{
    const auto nChannels = static_cast<std::size_t>(aImage.channels);
    const auto nWidth = static_cast<std::size_t>(lWidth), nHeight = static_cast<std::size_t>(lHeight);
    aTile.resize(nWidth * nHeight * nChannels);
    std::uint8_t* pOut = aTile.data();
    for (std::size_t nComponent = 0; nComponent < nChannels; ++nComponent) {
        const std::size_t nChannel = nComponent < 3 && nChannels >= 3 ? 2 - nComponent : nComponent;
        for (std::size_t y = 0; y < nHeight; ++y, pOut += nWidth) {
            const std::size_t nFirst =
                (static_cast<std::size_t>(lTop) + y) * static_cast<std::size_t>(aImage.width) +
                static_cast<std::size_t>(lLeft);
            const std::uint8_t* pIn = aImage.bytes.data() + nFirst * nChannels + nChannel;
            for (std::size_t x = 0; x < nWidth; ++x)
                pOut[x] = pIn[x * nChannels];
        }
    }
}

bool bEncodeJ2k(const ImageBuffer& aImage, const SaveSettings& objSettings, OutputFile& objOut)
{
    const auto nPixels = static_cast<std::size_t>(aImage.width) * static_cast<std::size_t>(aImage.height);
    const bool bLossless = objSettings.lJPEGQuality >= 100 || nPixels < kPixelsWorthLoss;
    const std::int32_t lTile = bLossless ? kLosslessTile : kLossyTile;
    const std::int32_t lTileWidth = std::min(lTile, aImage.width),
                       lTileHeight = std::min(lTile, aImage.height);

    opj_cparameters_t objParameters;
    opj_set_default_encoder_parameters(&objParameters);
    objParameters.tile_size_on = OPJ_TRUE;
    objParameters.cp_tdx = lTileWidth;
    objParameters.cp_tdy = lTileHeight;
    objParameters.numresolution = nResolutions(lTileWidth, lTileHeight);
    objParameters.tcp_mct = aImage.channels >= 3 ? 1 : 0;
    objParameters.tcp_numlayers = 1;
    if (bLossless) {
        objParameters.cp_disto_alloc = 1;
        objParameters.tcp_rates[0] = 0;
    } else {
        objParameters.irreversible = 1;
        objParameters.cp_fixed_quality = 1;
        objParameters.tcp_distoratio[0] = static_cast<float>(dTargetPsnr(aImage, objSettings.lJPEGQuality));
    }
    std::string sComment = InfoLines(objSettings.objTexts).substr(0, kMostComment);
    if (!sComment.empty())
        objParameters.cp_comment = sComment.data();  // copied by the library

    const J2kImage pImage = pDescription(aImage);
    const J2kCodec objCodec(opj_create_compress(OPJ_CODEC_J2K));
    if (!pImage || !opj_setup_encoder(objCodec.get(), &objParameters, pImage.get()))
        return false;
    objCodec.UseThreads(static_cast<std::uint64_t>(lTileWidth) * static_cast<std::uint64_t>(lTileHeight));
    const J2kStream objStream(objOut);
    if (!opj_start_compress(objCodec.get(), pImage.get(), objStream.get()))
        return false;
    std::vector<std::uint8_t> aTile;
    OPJ_UINT32 nTile = 0;
    for (std::int32_t lTop = 0; lTop < aImage.height; lTop += lTileHeight)
        for (std::int32_t lLeft = 0; lLeft < aImage.width; lLeft += lTileWidth) {
            FillTile(aImage, lLeft, lTop, std::min(lTileWidth, aImage.width - lLeft),
                     std::min(lTileHeight, aImage.height - lTop), aTile);
            if (!opj_write_tile(objCodec.get(), nTile++, aTile.data(), static_cast<OPJ_UINT32>(aTile.size()),
                                objStream.get()))
                return false;
        }
    return opj_end_compress(objCodec.get(), objStream.get()) && !objOut.Failed();
}

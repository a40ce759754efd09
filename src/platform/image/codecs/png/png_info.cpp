// Reads the chunks around a PNG's pixels.
#include "src/platform/image/codecs/png/png_info.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "src/platform/image/codecs/png/png_metadata.h"
#include "src/platform/image/colour/colour_profile.h"

static constexpr double kMetresPerInch = 0.0254;

std::uint32_t PngHeader::nSamples() const
{
    switch (objColour) {
        case PngColour::Rgb:
            return 3;
        case PngColour::GreyAlpha:
            return 2;
        case PngColour::Rgba:
            return 4;
        default:
            return 1;
    }
}

static bool bDepthFits(std::uint32_t nColour, std::uint32_t nDepth)
{
    const bool bWhole = nDepth == 8;
    const bool bPacked = nDepth == 1 || nDepth == 2 || nDepth == 4;
    switch (nColour) {
        case 0:
            return bPacked || bWhole || nDepth == 16;
        case 3:
            return bPacked || bWhole;
        case 2:
        case 4:
        case 6:
            return bWhole || nDepth == 16;
        default:
            return false;
    }
}

static bool bParseHeader(Bytes aData, PngHeader& objHeader)
{
    ByteReader objReader(aData);
    objHeader.nWidth = objReader.U32Be();
    objHeader.nHeight = objReader.U32Be();
    objHeader.nDepth = objReader.U8();
    const std::uint32_t nColour = objReader.U8();
    const std::uint32_t nCompression = objReader.U8();
    const std::uint32_t nFilter = objReader.U8();
    const std::uint32_t nInterlace = objReader.U8();
    if (objReader.Failed() || objReader.Left() != 0 || objHeader.nWidth == 0 || objHeader.nHeight == 0 ||
        !bDepthFits(nColour, objHeader.nDepth) || nCompression != 0 || nFilter != 0 || nInterlace > 1)
        return false;
    objHeader.objColour = static_cast<PngColour>(nColour);
    objHeader.bInterlaced = nInterlace == 1;
    return true;
}

// A file counts pixels a metre, people count them an inch: 300 an inch are written as 11811 a metre. What is
// within the rounding of a whole number is that number.
static double dDotsPerInch(std::uint32_t nPerMetre)
{
    const double dExact = nPerMetre * kMetresPerInch;
    const double dWhole = std::round(dExact);
    return std::abs(dExact - dWhole) <= kMetresPerInch / 2 ? dWhole : dExact;
}

static void ParsePhysical(Bytes aData, PngInfo& objInfo)
{
    ByteReader objReader(aData);
    const std::uint32_t nX = objReader.U32Be();
    const std::uint32_t nY = objReader.U32Be();
    const bool bMetre = objReader.U8() == 1;
    if (objReader.Failed() || !bMetre || nX == 0 || nY == 0)
        return;
    objInfo.dDotsPerInchX = dDotsPerInch(nX);
    objInfo.dDotsPerInchY = dDotsPerInch(nY);
}

static void ParseTransparency(Bytes aData, PngInfo& objInfo)
{
    bool bFits = false;
    switch (objInfo.objHeader.objColour) {
        case PngColour::Grey:
            bFits = aData.size() == 2;
            break;
        case PngColour::Rgb:
            bFits = aData.size() == 6;
            break;
        case PngColour::Palette:
            bFits =
                !aData.empty() && aData.size() <= objInfo.aPalette.size() / 3 &&
                std::any_of(aData.begin(), aData.end(), [](std::uint8_t nAlpha) { return nAlpha != 255; });
            break;
        default:
            break;
    }
    if (bFits)
        objInfo.aTransparency.assign(aData.begin(), aData.end());
}

// A chunk that the picture can do without. Nothing in it can be a reason to refuse the file.
static void ReadAncillary(PngChunkReader& objReader, const PngChunk& objChunk, PngInfo& objInfo)
{
    const auto aDataOf = [&](std::uint32_t nMost) {
        auto aFound = objReader.aDataOf(objChunk, nMost);
        return aFound ? std::move(*aFound) : std::vector<std::uint8_t>{};
    };
    switch (objChunk.nType) {
        case nPngType("tRNS"):
            ParseTransparency(aDataOf(256), objInfo);
            break;
        case nPngType("pHYs"):
            ParsePhysical(aDataOf(9), objInfo);
            break;
        case nPngType("gAMA"): {
            const auto aData = aDataOf(4);
            objInfo.dGamma = ByteReader(aData).U32Be() / 100'000.0;
            break;
        }
        case nPngType("sRGB"):
            objInfo.bColourSpace = objInfo.bColourSpace || aDataOf(1).size() == 1;
            break;
        case nPngType("iCCP"): {
            auto aProfile = aPngProfile(aDataOf(kPngMetadataMost));
            if (ProfileFits(aProfile, objInfo.objHeader.bGrey() ? 1 : 3)) {
                objInfo.aIccProfile = std::move(aProfile);
                objInfo.bColourSpace = true;
            }
            break;
        }
        case nPngType("eXIf"):
            ReadPngExif(aDataOf(kPngMetadataMost), objInfo.objMetadata);
            break;
        case nPngType("tEXt"):
        case nPngType("zTXt"):
        case nPngType("iTXt"):
            ReadPngText(objChunk.nType, aDataOf(kPngMetadataMost), objInfo.objMetadata);
            break;
        default:
            break;
    }
}

static bool bReadPalette(PngChunkReader& objReader, const PngChunk& objChunk, PngInfo& objInfo)
{
    auto aData = objReader.aDataOf(objChunk, 768);
    const bool bNeeded = objInfo.objHeader.objColour == PngColour::Palette;
    if (!aData || aData->empty() || aData->size() % 3 != 0 || !objInfo.aPalette.empty())
        return !bNeeded;  // with true colour it only suggests what to quantise to
    objInfo.aPalette = std::move(*aData);
    return true;
}

bool bReadPngInfo(PngChunkReader& objReader, PngInfo& objInfo)
{
    const Bytes aSignature = objReader.SomeAt(0, kPngSignature.size());
    if (!std::equal(aSignature.begin(), aSignature.end(), kPngSignature.begin(), kPngSignature.end()))
        return false;
    std::optional<PngChunk> objChunk = objReader.objChunkAt(kPngSignature.size());
    if (!objChunk || objChunk->nType != nPngType("IHDR"))
        return false;
    const auto aHeader = objReader.aDataOf(*objChunk, 13);
    if (!aHeader || !bParseHeader(*aHeader, objInfo.objHeader))
        return false;
    while ((objChunk = objReader.objChunkAt(PngChunkReader::nAfter(*objChunk)))) {
        if (objChunk->nType == nPngType("IDAT")) {
            objInfo.objFirstData = *objChunk;
            return objInfo.objHeader.objColour != PngColour::Palette || !objInfo.aPalette.empty();
        }
        if (objChunk->nType == nPngType("PLTE")) {
            if (!bReadPalette(objReader, *objChunk, objInfo))
                return false;
        } else if (bPngCritical(objChunk->nType)) {
            return false;
        } else {
            ReadAncillary(objReader, *objChunk, objInfo);
        }
    }
    return false;
}

bool bReadPngTail(PngChunkReader& objReader, std::uint64_t nPosition, PngInfo& objInfo)
{
    std::optional<PngChunk> objChunk = objReader.objChunkAt(nPosition);
    for (; objChunk; objChunk = objReader.objChunkAt(PngChunkReader::nAfter(*objChunk))) {
        switch (objChunk->nType) {
            case nPngType("IEND"):
                return true;
            case nPngType("eXIf"):
            case nPngType("tEXt"):
            case nPngType("zTXt"):
            case nPngType("iTXt"):
                ReadAncillary(objReader, *objChunk, objInfo);
                break;
            default:
                break;
        }
    }
    return false;
}

// Reads and checks the tags that describe pixels.
#include "src/platform/image/codecs/tiff/tiff_layout.h"

#include <algorithm>
#include <array>
#include <limits>
#include <vector>

#include "src/platform/image/base/input_file.h"
#include "src/platform/image/base/limits.h"
#include "src/platform/image/codecs/tiff/directory/tiff_directory.h"

static constexpr std::uint64_t kMaxSamples = 64;
static constexpr std::uint64_t kMaxChunks = 4'000'000;
static constexpr std::uint64_t kAnyTileBytes =
    16 * 1024 * 1024;  // a tile may be so large on the smallest page

std::uint32_t TiffLayout::nColours() const
{
    switch (enColour) {
        case TiffColour::kGrey:
        case TiffColour::kPalette:
            return 1;
        case TiffColour::kCmyk:
            return 4;
        default:
            return 3;
    }
}

static std::uint64_t nTagNumber(InputFile& objFile, const TiffHeader& objHeader,
                                const std::vector<TiffEntry>& aEntries, std::uint16_t nTag,
                                std::uint64_t nMissing)
{
    const TiffEntry* pEntry = pEntryOf(aEntries, nTag);
    return pEntry ? nReadNumber(objFile, objHeader, *pEntry).value_or(nMissing) : nMissing;
}

static std::uint16_t nShort(TIFF* pTiff, std::uint32_t nTag, std::uint16_t nMissing)
{
    std::uint16_t nValue = nMissing;
    return TIFFGetFieldDefaulted(pTiff, nTag, &nValue) ? nValue : nMissing;
}

static std::uint64_t nParts(std::uint64_t nWhole, std::uint64_t nPart)
{
    return (nWhole + nPart - 1) / nPart;
}

bool bDirectoryPlausible(InputFile& objFile, const TiffHeader& objHeader, std::uint64_t nDirectory)
{
    const std::vector<TiffEntry> aEntries = aReadEntries(objFile, objHeader, nDirectory);
    const auto nNumber = [&](std::uint16_t nTag, std::uint64_t nMissing) {
        return nTagNumber(objFile, objHeader, aEntries, nTag, nMissing);
    };
    const std::uint64_t nWidth = nNumber(TIFFTAG_IMAGEWIDTH, 0);
    const std::uint64_t nHeight = nNumber(TIFFTAG_IMAGELENGTH, 0);
    const std::uint64_t nSamples = nNumber(TIFFTAG_SAMPLESPERPIXEL, 1);
    if (!IsSizeAllowed(nWidth, nHeight) || nSamples < 1 || nSamples > kMaxSamples)
        return false;

    const TiffEntry* pOffsets = pEntryOf(aEntries, TIFFTAG_TILEOFFSETS);
    const bool bTiled = pOffsets != nullptr || pEntryOf(aEntries, TIFFTAG_TILEWIDTH) != nullptr;
    if (!pOffsets)
        pOffsets = pEntryOf(aEntries, TIFFTAG_STRIPOFFSETS);
    if (!pOffsets)  // the old style of JPEG names its stream by a tag of its own
        return nNumber(TIFFTAG_COMPRESSION, 1) == COMPRESSION_OJPEG &&
               pEntryOf(aEntries, TIFFTAG_JPEGIFOFFSET) != nullptr;
    const std::uint64_t nChunkWidth = bTiled ? nNumber(TIFFTAG_TILEWIDTH, 0) : nWidth;
    std::uint64_t nChunkHeight =
        nNumber(bTiled ? TIFFTAG_TILELENGTH : TIFFTAG_ROWSPERSTRIP, bTiled ? 0 : nHeight);
    if (nChunkWidth < 1 || nChunkHeight < 1)
        return false;
    const std::uint64_t nPlanes = nNumber(TIFFTAG_PLANARCONFIG, 1) == PLANARCONFIG_SEPARATE ? nSamples : 1;
    const std::uint64_t nChunks = nParts(nWidth, nChunkWidth) * nParts(nHeight, nChunkHeight) * nPlanes;
    return nChunks <= kMaxChunks && nChunks <= pOffsets->nCount;
}

// Bytes that a byte of the file can become at most; 0 where there is no such limit. Longest runs: LZW's table
// full of ever longer strings, deflate's 258 bytes from 2 bits, 128 equal bytes from 2; a block of 64 samples
// from 2 bits.
static std::uint64_t nMostFromAByte(const TiffLayout& objLayout)
{
    switch (objLayout.nCompression) {
        case COMPRESSION_NONE:
            return 1;
        case COMPRESSION_LZW:
        case COMPRESSION_JPEG:
        case COMPRESSION_OJPEG:
            return 2048;
        case COMPRESSION_ADOBE_DEFLATE:
        case COMPRESSION_DEFLATE:
            return 1100;
        case COMPRESSION_PACKBITS:
            return 64;
        case COMPRESSION_CCITTRLE:
        case COMPRESSION_CCITTRLEW:
        case COMPRESSION_CCITTFAX3:
        case COMPRESSION_CCITTFAX4:
            return objLayout.nChunkWidth + 8;  // a bit may stand for a whole row
        default:
            return 0;
    }
}

// libjbig allocates by the sizes in the stream's own header, which has to agree with the page's.
static bool bJbigHeaderFits(TIFF* pTiff, InputFile& objFile, std::uint64_t nOffset,
                            const TiffLayout& objLayout)
{
    std::array<std::uint8_t, 20> aHeader{};
    if (objFile.ReadAt(nOffset, aHeader) != aHeader.size())
        return false;
    // The stream is stored, and read, with its bits turned round where the file's order of bits is libtiff's
    // own.
    const std::uint16_t nOwnOrder = TIFFIsMSB2LSB(pTiff) ? FILLORDER_MSB2LSB : FILLORDER_LSB2MSB;
    if (nShort(pTiff, TIFFTAG_FILLORDER, FILLORDER_MSB2LSB) == nOwnOrder)
        TIFFReverseBits(aHeader.data(), static_cast<tmsize_t>(aHeader.size()));
    ByteReader rd(aHeader);
    const std::uint8_t nFirstLayer = rd.U8();
    const std::uint8_t nLastLayer = rd.U8();
    const std::uint8_t nPlanes = rd.U8();
    rd.Take(1);
    const std::uint32_t nWidth = rd.U32Be();
    const std::uint32_t nHeight = rd.U32Be();
    return nFirstLayer == 0 && nLastLayer == 0 && nPlanes == 1 && nWidth == objLayout.nChunkWidth &&
           nHeight >= 1 && nHeight <= objLayout.nChunkHeight;
}

// Whether the chunks that are in the file can hold the pixels that the tags claim.
static bool bChunksSuffice(TIFF* pTiff, const TiffLayout& objLayout, InputFile& objFile)
{
    const std::uint64_t nChunkBytes = objLayout.bTiled ? TIFFTileSize64(pTiff) : TIFFStripSize64(pTiff);
    const std::uint32_t nChunks = objLayout.bTiled ? TIFFNumberOfTiles(pTiff) : TIFFNumberOfStrips(pTiff);
    if (nChunkBytes == 0 || nChunks == 0 || nChunkBytes > std::numeric_limits<std::uint32_t>::max())
        return false;
    const std::uint64_t nPageBytes = std::uint64_t{objLayout.nWidth} * objLayout.nHeight *
                                     nParts(std::uint64_t{objLayout.nBits} * objLayout.nSamples, 8);
    if (objLayout.bTiled && nChunkBytes > std::max(kAnyTileBytes, 4 * nPageBytes))
        return false;
    if (objLayout.nCompression == COMPRESSION_OJPEG)
        return true;  // its stream need not be where the tags say that the strips are
    std::uint64_t nStored = 0;
    for (std::uint32_t i = 0; i < nChunks; ++i) {
        const std::uint64_t nOffset = TIFFGetStrileOffset(pTiff, i);
        const std::uint64_t nBytes = TIFFGetStrileByteCount(pTiff, i);
        if (nOffset < 8 || nOffset >= objFile.Size() || nBytes == 0)
            return false;
        if (objLayout.nCompression == COMPRESSION_JBIG &&
            !bJbigHeaderFits(pTiff, objFile, nOffset, objLayout))
            return false;
        nStored += std::min(nBytes, objFile.Size() - nOffset);
    }
    const std::uint64_t nMost = nMostFromAByte(objLayout);
    const std::uint64_t nRowBytes = objLayout.bTiled ? TIFFTileRowSize64(pTiff) : TIFFScanlineSize64(pTiff);
    const std::uint64_t nPlanes = objLayout.bSeparate ? objLayout.nSamples : 1;
    const std::uint64_t nNeeded =
        objLayout.bTiled ? nChunkBytes * nChunks : nRowBytes * objLayout.nHeight * nPlanes;
    return nMost == 0 || nStored * nMost >= nNeeded;
}

// The first sample beyond the colours that is alpha. One that the file doesn't explain is none: editors keep
// masks and spot colours there.
static void ReadAlpha(TIFF* pTiff, TiffLayout& objLayout)
{
    std::uint16_t nExtra = 0;
    std::uint16_t* pKinds = nullptr;
    if (!TIFFGetField(pTiff, TIFFTAG_EXTRASAMPLES, &nExtra, &pKinds))
        return;
    for (std::uint16_t i = 0; i < nExtra && objLayout.nColours() + i < objLayout.nSamples; ++i) {
        if (pKinds[i] != EXTRASAMPLE_ASSOCALPHA && pKinds[i] != EXTRASAMPLE_UNASSALPHA)
            continue;
        objLayout.enAlpha =
            pKinds[i] == EXTRASAMPLE_ASSOCALPHA ? TiffAlpha::kAssociated : TiffAlpha::kUnassociated;
        objLayout.nAlphaSample = static_cast<std::uint16_t>(objLayout.nColours() + i);
        return;
    }
}

// False for a kind of colour that isn't known.
static bool bReadColour(TIFF* pTiff, TiffLayout& objLayout)
{
    std::uint16_t nPhotometric = 0;
    if (!TIFFGetField(pTiff, TIFFTAG_PHOTOMETRIC, &nPhotometric)) {
        const bool bFax =
            objLayout.nCompression >= COMPRESSION_CCITTRLE && objLayout.nCompression <= COMPRESSION_CCITTFAX4;
        nPhotometric = objLayout.nSamples >= 3 ? PHOTOMETRIC_RGB
                       : bFax                  ? PHOTOMETRIC_MINISWHITE
                                               : PHOTOMETRIC_MINISBLACK;
    }
    switch (nPhotometric) {
        case PHOTOMETRIC_MINISWHITE:
        case PHOTOMETRIC_MINISBLACK:
        case PHOTOMETRIC_MASK:
            objLayout.enColour = TiffColour::kGrey;
            objLayout.bMinIsWhite = nPhotometric == PHOTOMETRIC_MINISWHITE;
            break;
        case PHOTOMETRIC_RGB:
            objLayout.enColour = objLayout.nSamples >= 3 ? TiffColour::kRgb : TiffColour::kGrey;
            break;
        case PHOTOMETRIC_PALETTE:
            objLayout.enColour = TiffColour::kPalette;
            break;
        case PHOTOMETRIC_SEPARATED:
            objLayout.enColour = TiffColour::kCmyk;
            break;
        case PHOTOMETRIC_YCBCR:
            objLayout.enColour = TiffColour::kYCbCr;
            break;
        case PHOTOMETRIC_CIELAB:
            objLayout.enColour = TiffColour::kLab;
            break;
        case PHOTOMETRIC_ICCLAB:
            objLayout.enColour = TiffColour::kIccLab;
            break;
        case PHOTOMETRIC_LOGL:
        case PHOTOMETRIC_LOGLUV:
            if (!TIFFSetField(pTiff, TIFFTAG_SGILOGDATAFMT, SGILOGDATAFMT_8BIT))
                return false;
            objLayout.enColour = nPhotometric == PHOTOMETRIC_LOGL ? TiffColour::kGrey : TiffColour::kRgb;
            break;
        default:
            return false;
    }
    return objLayout.nSamples >= objLayout.nColours();
}

static void ReadYCbCr(TIFF* pTiff, TiffLayout& objLayout)
{
    if (objLayout.nCompression == COMPRESSION_JPEG && !objLayout.bSeparate) {
        TIFFSetField(pTiff, TIFFTAG_JPEGCOLORMODE, JPEGCOLORMODE_RGB);
        objLayout.enColour = TiffColour::kRgb;
        return;
    }
    TIFFGetFieldDefaulted(pTiff, TIFFTAG_YCBCRSUBSAMPLING, &objLayout.nSubsamplingX,
                          &objLayout.nSubsamplingY);
}

// What libtiff calls the range of float and of wide whole samples, if the file has it; else the type's own.
static void ReadRange(TIFF* pTiff, TiffLayout& objLayout)
{
    if (objLayout.nFormat != SAMPLEFORMAT_IEEEFP && objLayout.nBits <= 16)
        return;
    if (objLayout.nFormat != SAMPLEFORMAT_IEEEFP) {
        double dSpan = 1;
        for (int i = 0; i < objLayout.nBits; ++i)
            dSpan *= 2;
        objLayout.dLowest = objLayout.nFormat == SAMPLEFORMAT_INT ? -dSpan / 2 : 0;
        objLayout.dHighest = objLayout.dLowest + dSpan - 1;
    }
    double dLowest = 0;
    double dHighest = 0;
    if (TIFFGetField(pTiff, TIFFTAG_SMINSAMPLEVALUE, &dLowest) &&
        TIFFGetField(pTiff, TIFFTAG_SMAXSAMPLEVALUE, &dHighest) && dHighest > dLowest) {
        objLayout.dLowest = dLowest;
        objLayout.dHighest = dHighest;
    }
}

static bool bBitsKnown(const TiffLayout& objLayout)
{
    if (objLayout.nFormat == SAMPLEFORMAT_IEEEFP && objLayout.enColour != TiffColour::kPalette)
        return objLayout.nBits == 16 || objLayout.nBits == 24 || objLayout.nBits == 32 ||
               objLayout.nBits == 64;
    if (objLayout.nFormat != SAMPLEFORMAT_UINT && objLayout.nFormat != SAMPLEFORMAT_INT)
        return false;
    if (objLayout.enColour == TiffColour::kPalette && objLayout.nBits > 16)
        return false;
    if (objLayout.enColour == TiffColour::kLab || objLayout.enColour == TiffColour::kIccLab)
        return objLayout.nBits == 8 || objLayout.nBits == 16;
    return (objLayout.nBits >= 1 && objLayout.nBits <= 16) || objLayout.nBits == 24 ||
           objLayout.nBits == 32 || objLayout.nBits == 64;
}

std::optional<TiffLayout> objReadLayout(TIFF* pTiff, InputFile& objFile)
{
    TiffLayout objLayout;
    TIFFGetField(pTiff, TIFFTAG_IMAGEWIDTH, &objLayout.nWidth);
    TIFFGetField(pTiff, TIFFTAG_IMAGELENGTH, &objLayout.nHeight);
    objLayout.nSamples = nShort(pTiff, TIFFTAG_SAMPLESPERPIXEL, 1);
    objLayout.nCompression = nShort(pTiff, TIFFTAG_COMPRESSION, COMPRESSION_NONE);
    objLayout.nOrientation = nShort(pTiff, TIFFTAG_ORIENTATION, ORIENTATION_TOPLEFT);
    objLayout.bSeparate = objLayout.nSamples > 1 &&
                          nShort(pTiff, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG) == PLANARCONFIG_SEPARATE;
    objLayout.bTiled = TIFFIsTiled(pTiff) != 0;
    if (!IsSizeAllowed(objLayout.nWidth, objLayout.nHeight) || objLayout.nSamples < 1 ||
        objLayout.nSamples > kMaxSamples || !TIFFIsCODECConfigured(objLayout.nCompression) ||
        !bReadColour(pTiff, objLayout))
        return std::nullopt;

    if (objLayout.enColour == TiffColour::kYCbCr)
        ReadYCbCr(pTiff, objLayout);
    // After the choices of the decoder's output, which change both.
    objLayout.nBits = nShort(pTiff, TIFFTAG_BITSPERSAMPLE, 1);
    objLayout.nFormat = nShort(pTiff, TIFFTAG_SAMPLEFORMAT, SAMPLEFORMAT_UINT);
    if (objLayout.nFormat == SAMPLEFORMAT_VOID)
        objLayout.nFormat = SAMPLEFORMAT_UINT;
    if (!bBitsKnown(objLayout))
        return std::nullopt;
    const bool bPowers = objLayout.nSubsamplingX >= 1 && objLayout.nSubsamplingX <= 4 &&
                         objLayout.nSubsamplingY >= 1 && objLayout.nSubsamplingY <= 4;
    if (!bPowers ||
        (objLayout.bSubsampled() && (objLayout.bSeparate || objLayout.nBits != 8 || objLayout.nSamples != 3)))
        return std::nullopt;
    ReadAlpha(pTiff, objLayout);
    ReadRange(pTiff, objLayout);

    objLayout.nChunkWidth = objLayout.nWidth;
    if (objLayout.bTiled) {
        TIFFGetField(pTiff, TIFFTAG_TILEWIDTH, &objLayout.nChunkWidth);
        TIFFGetField(pTiff, TIFFTAG_TILELENGTH, &objLayout.nChunkHeight);
    } else {
        TIFFGetFieldDefaulted(pTiff, TIFFTAG_ROWSPERSTRIP, &objLayout.nChunkHeight);
        objLayout.nChunkHeight = std::min(objLayout.nChunkHeight, objLayout.nHeight);
    }
    if (objLayout.nChunkWidth < 1 || objLayout.nChunkHeight < 1 || !bChunksSuffice(pTiff, objLayout, objFile))
        return std::nullopt;
    return objLayout;
}

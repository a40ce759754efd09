// Reads the headers of device-independent bitmaps and decodes their bits.
#include "src/platform/image/dib/dib.h"

#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

#include "src/platform/image/base/input_file.h"
#include "src/platform/image/base/limits.h"
#include "src/platform/image/codecs/registry.h"
#include "src/platform/image/dib/dib_rle.h"
#include "src/platform/image/dib/dib_rows.h"
#include "src/platform/image/pixels/pixel_rows.h"

static constexpr std::uint32_t kOs2Header = 12;
static constexpr std::uint32_t kOs2LongHeader = 64;
static constexpr std::uint32_t kWindowsHeader = 40;
static constexpr std::uint32_t kColourMasksHeader = 52;  // and each later one
static constexpr std::uint32_t kAlphaMaskHeader = 56;
static constexpr std::uint32_t kVersion5Header = 124;

// The compression field. OS/2 has its own meaning for 3 and 4.
static constexpr std::uint32_t kRgb = 0;
static constexpr std::uint32_t kRle8 = 1;
static constexpr std::uint32_t kRle4 = 2;
static constexpr std::uint32_t kBitfields = 3;
static constexpr std::uint32_t kOs2Rle24 = 4;
static constexpr std::uint32_t kJpeg = 4;
static constexpr std::uint32_t kPng = 5;
static constexpr std::uint32_t kAlphaBitfields = 6;

static constexpr std::uint32_t kEmbeddedProfile = 0x4D424544;  // "MBED"
static constexpr std::int32_t kJpegType = 1;
static constexpr std::int32_t kPngType = 8;

/// The numbers of a header as they stand in it; those that it is too short for are 0.
struct RawHeader {
    std::uint32_t nSize = 0;
    bool bOs2 = false;
    std::uint32_t nCompression = 0;
    std::uint64_t nColoursUsed = 0;
};

static double dInchesFromMetres(std::int32_t lDotsPerMetre)
{
    return lDotsPerMetre > 0 ? lDotsPerMetre * 0.0254 : 0;
}

// Reads the fields from a copy of the header filled up with zeros, since OS/2 allows to leave off any at the
// end.
static bool bReadFields(Bytes aDib, DibHeader& objHeader, RawHeader& objRaw)
{
    ByteReader rdSize(aDib);
    objRaw.nSize = rdSize.U32Le();
    if (objRaw.nSize > aDib.size() || (objRaw.nSize < 16 && objRaw.nSize != kOs2Header))
        return false;
    std::array<std::uint8_t, kVersion5Header> aFilled{};
    const Bytes aStored = aDib.first(std::min<std::size_t>(objRaw.nSize, aFilled.size()));
    std::copy(aStored.begin(), aStored.end(), aFilled.begin());
    ByteReader rd(Bytes(aFilled).subspan(4));

    const bool bShort = objRaw.nSize == kOs2Header;
    objRaw.bOs2 = objRaw.nSize < kWindowsHeader || objRaw.nSize == kOs2LongHeader;
    const std::int64_t nWidth = bShort ? rd.U16Le() : rd.I32Le();
    const std::int64_t nHeight = bShort ? rd.U16Le() : rd.I32Le();
    rd.U16Le();  // planes: always 1, whatever stands here
    objHeader.nBits = rd.U16Le();
    if (nWidth <= 0 || nHeight == 0)
        return false;
    objHeader.nWidth = static_cast<std::uint64_t>(nWidth);
    objHeader.nHeight = static_cast<std::uint64_t>(nHeight < 0 ? -nHeight : nHeight);
    objHeader.bTopDown = nHeight < 0;
    if (bShort)
        return true;
    objRaw.nCompression = rd.U32Le();
    rd.U32Le();  // size of the bits: many writers leave it 0, so it is not believed
    objHeader.dDotsPerInchX = dInchesFromMetres(rd.I32Le());
    objHeader.dDotsPerInchY = dInchesFromMetres(rd.I32Le());
    objRaw.nColoursUsed = rd.U32Le();
    rd.U32Le();  // important colours
    if (objRaw.bOs2)
        return true;
    for (std::uint32_t& nMask : objHeader.aMasks)
        nMask = rd.U32Le();
    if (objRaw.nSize < kAlphaMaskHeader)
        objHeader.aMasks[3] = 0;
    const std::uint32_t nColourSpace = rd.U32Le();
    rd.Take(12 * 4);  // end points, gammas
    rd.U32Le();       // intent
    if (objRaw.nSize >= kVersion5Header && nColourSpace == kEmbeddedProfile) {
        objHeader.nProfileOffset = rd.U32Le();
        objHeader.nProfileSize = rd.U32Le();
    }
    return true;
}

static bool bStorageOf(const RawHeader& objRaw, DibHeader& objHeader)
{
    const std::uint32_t nBits = objHeader.nBits;
    switch (objRaw.nCompression) {
        case kRgb:
            return nBits == 1 || nBits == 2 || nBits == 4 || nBits == 8 || nBits == 16 || nBits == 24 ||
                   nBits == 32;
        case kRle8:
            objHeader.eStorage = DibStorage::kRle8;
            return nBits == 8;
        case kRle4:
            objHeader.eStorage = DibStorage::kRle4;
            return nBits == 4;
        case kBitfields:  // for OS/2 this is a fax code, which nobody wrote
            return !objRaw.bOs2 && (nBits == 16 || nBits == 32);
        case kAlphaBitfields:
            return !objRaw.bOs2 && (nBits == 16 || nBits == 32);
        case kJpeg:
            static_assert(kJpeg == kOs2Rle24);
            objHeader.eStorage = objRaw.bOs2 ? DibStorage::kRle24 : DibStorage::kJpeg;
            return !objRaw.bOs2 || nBits == 24;
        case kPng:
            objHeader.eStorage = DibStorage::kPng;
            return !objRaw.bOs2;
        default:
            return false;
    }
}

// The masks that count: those of the header, those behind it, or the usual ones. Returns how many bytes they
// take behind the header.
static std::uint64_t nSettleMasks(const RawHeader& objRaw, Bytes aBehindHeader, DibHeader& objHeader)
{
    const bool bNamed = objRaw.nCompression == kBitfields || objRaw.nCompression == kAlphaBitfields;
    if (bNamed && objRaw.nSize < kColourMasksHeader) {
        const std::size_t nCount = objRaw.nCompression == kAlphaBitfields ? 4 : 3;
        ByteReader rd(aBehindHeader);
        for (std::size_t i = 0; i < nCount; ++i)
            objHeader.aMasks[i] = rd.U32Le();
        return nCount * 4;
    }
    if (!bNamed) {
        // The colour masks of the header have no meaning then; that for alpha does, and only in one place.
        const bool bAlpha = objHeader.nBits == 32 && objHeader.aMasks[3] == 0xFF000000;
        if (objHeader.nBits == 16)
            objHeader.aMasks = {0x7C00, 0x3E0, 0x1F, 0};
        else
            objHeader.aMasks = {0xFF0000, 0xFF00, 0xFF, bAlpha ? 0xFF000000 : 0};
    }
    return 0;
}

static void ReadPalette(Bytes aColours, std::size_t nEntrySize, std::uint64_t nEntries, DibHeader& objHeader)
{
    const std::uint64_t nThere = std::min<std::uint64_t>(nEntries, aColours.size() / nEntrySize);
    objHeader.bGreyPalette = true;
    if (nThere == 0) {  // without any palette the indexes are levels
        for (std::uint64_t i = 0; i < 1u << objHeader.nBits; ++i)
            objHeader.aPalette[i].fill(static_cast<std::uint8_t>(i * 255 / ((1u << objHeader.nBits) - 1)));
    }
    for (std::size_t i = 0; i < nThere; ++i) {
        const Bytes aEntry = aColours.subspan(i * nEntrySize, 3);
        std::copy(aEntry.begin(), aEntry.end(), objHeader.aPalette[i].begin());
        objHeader.bGreyPalette = objHeader.bGreyPalette && aEntry[0] == aEntry[1] && aEntry[1] == aEntry[2];
    }
}

bool bReadDibHeader(Bytes aDib, DibHeader& objHeader)
{
    DibHeader objResult;
    RawHeader objRaw;
    if (!bReadFields(aDib, objResult, objRaw) || !bStorageOf(objRaw, objResult))
        return false;
    const bool bEmbedded = objResult.eStorage == DibStorage::kJpeg || objResult.eStorage == DibStorage::kPng;
    if (bEmbedded)
        objResult.nBits = 0;

    const std::uint64_t nMasks = nSettleMasks(objRaw, aDib.subspan(objRaw.nSize), objResult);
    const std::size_t nEntrySize = objRaw.nSize == kOs2Header ? 3 : 4;
    const bool bIndexes = !bEmbedded && objResult.nBits <= 8;
    const std::uint64_t nMost = bIndexes ? 1ull << objResult.nBits : 0;
    const std::uint64_t nNamed = objRaw.nColoursUsed > 0 ? objRaw.nColoursUsed : nMost;
    const std::uint64_t nPaletteOffset = objRaw.nSize + nMasks;
    objResult.nBitsOffset = nPaletteOffset + nNamed * nEntrySize;
    if (bIndexes && nPaletteOffset <= aDib.size())
        ReadPalette(aDib.subspan(nPaletteOffset), nEntrySize, std::min(nNamed, nMost), objResult);
    objHeader = objResult;
    return true;
}

std::int32_t lDibChannels(const DibHeader& objHeader)
{
    if (objHeader.nBits <= 8)
        return objHeader.bGreyPalette ? 1 : 3;
    return objHeader.nBits != 24 && objHeader.aMasks[3] != 0 ? 4 : 3;
}

std::uint64_t nDibStride(const DibHeader& objHeader)
{
    return (objHeader.nWidth * objHeader.nBits + 31) / 32 * 4;
}

static std::uint8_t* pRowOf(ImageBuffer& aImage, const DibHeader& objHeader, std::uint64_t nStored)
{
    const std::uint64_t y = objHeader.bTopDown ? nStored : objHeader.nHeight - 1 - nStored;
    return aImage.bytes.data() + y * objHeader.nWidth * static_cast<std::uint64_t>(aImage.channels);
}

static bool bDecodeRaw(const DibHeader& objHeader, Bytes aBits, ImageBuffer& aImage)
{
    // The last row's filling may be missing.
    const std::uint64_t nStride = nDibStride(objHeader);
    const std::uint64_t nLastRow = (objHeader.nWidth * objHeader.nBits + 7) / 8;
    if (!IsSizeAllowed(objHeader.nWidth, objHeader.nHeight) ||
        aBits.size() < nStride * (objHeader.nHeight - 1) + nLastRow ||
        !Allocate(aImage, objHeader.nWidth, objHeader.nHeight, lDibChannels(objHeader)))
        return false;
    const DibRows objRows(objHeader);
    for (std::uint64_t y = 0; y < objHeader.nHeight; ++y)
        objRows.Convert(aBits.data() + y * nStride, pRowOf(aImage, objHeader, y), objHeader.nWidth);
    return true;
}

static bool bDecodeRuns(const DibHeader& objHeader, Bytes aBits, ImageBuffer& aImage)
{
    // Two bytes hold a run of up to 255 pixels, so there is a least size for a picture that is more than its
    // skips. Small ones may skip as they like.
    constexpr std::uint64_t kSmall = 1 << 20;
    if (!IsSizeAllowed(objHeader.nWidth, objHeader.nHeight))
        return false;
    const std::uint64_t nPixels = objHeader.nWidth * objHeader.nHeight;
    if (nPixels > kSmall && nPixels / 128 > aBits.size())
        return false;
    DibHeader objUnpacked = objHeader;
    objUnpacked.nBits = objHeader.nBits == 24 ? 24 : 8;
    if (!Allocate(aImage, objHeader.nWidth, objHeader.nHeight, lDibChannels(objHeader)))
        return false;
    const DibRows objRows(objUnpacked);
    DibRuns objRuns(objHeader, aBits);
    std::vector<std::uint8_t> aRow(objHeader.nWidth * objUnpacked.nBits / 8);
    for (std::uint64_t y = 0; y < objHeader.nHeight; ++y) {
        objRuns.NextRow(aRow);
        objRows.Convert(aRow.data(), pRowOf(aImage, objHeader, y), objHeader.nWidth);
    }
    return objRuns.bComplete();
}

// A whole file of another format takes the place of the bits.
static bool bDecodeEmbedded(std::int32_t lType, Bytes aBits, ImageBuffer& aImage)
{
    const Codec* pCodec = pCodecOfType(lType);
    InputFile objFile(aBits);
    if (!pCodec || !pCodec->Sniff(objFile.Head(), ""))
        return false;
    const std::unique_ptr<ImageDecoder> pDecoder = pCodec->Open(objFile);
    return pDecoder && pDecoder->DecodeFrame(0, aImage);
}

bool bDecodeDibBits(const DibHeader& objHeader, Bytes aBits, ImageBuffer& aImage)
{
    if (objHeader.eStorage == DibStorage::kJpeg)
        return bDecodeEmbedded(kJpegType, aBits, aImage);
    if (objHeader.eStorage == DibStorage::kPng)
        return bDecodeEmbedded(kPngType, aBits, aImage);
    ImageBuffer aResult;
    if (!(objHeader.eStorage == DibStorage::kRaw ? bDecodeRaw(objHeader, aBits, aResult)
                                                 : bDecodeRuns(objHeader, aBits, aResult)))
        return false;
    DropUnsetAlpha(aResult);
    aResult.dots_per_inch_x = objHeader.dDotsPerInchX;
    aResult.dots_per_inch_y = objHeader.dDotsPerInchY;
    aImage = std::move(aResult);
    return true;
}

bool bDecodeDib(Bytes aHeaderAndPalette, Bytes aBits, ImageBuffer& aImage)
{
    DibHeader objHeader;
    return bReadDibHeader(aHeaderAndPalette, objHeader) && bDecodeDibBits(objHeader, aBits, aImage);
}

bool bDecodePackedDib(Bytes aDib, ImageBuffer& aImage)
{
    DibHeader objHeader;
    return bReadDibHeader(aDib, objHeader) && objHeader.nBitsOffset <= aDib.size() &&
           bDecodeDibBits(objHeader, aDib.subspan(objHeader.nBitsOffset), aImage);
}

// Reads and writes PCX files.
#include "src/platform/image/codecs/pcx/pcx.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <utility>
#include <vector>

#include "src/platform/image/base/input_file.h"
#include "src/platform/image/base/limits.h"
#include "src/platform/image/base/output_file.h"
#include "src/platform/image/codecs/pcx/pcx_runs.h"
#include "src/platform/image/codecs/single_page.h"
#include "src/platform/image/pixels/pixel_rows.h"

static constexpr std::size_t kHeaderSize = 128;
static constexpr std::uint8_t kMagic = 10;
static constexpr std::uint8_t kVersionWithLongPalette = 5;
static constexpr std::size_t kLongPaletteSize = 769;  // a mark and 256 entries, at the very end of the file
static constexpr std::uint8_t kLongPaletteMark = 12;
static constexpr std::uint16_t kPaletteOfColours = 1;
static constexpr std::uint16_t kPaletteOfGreys = 2;

using Palette = std::array<std::array<std::uint8_t, 3>, 256>;  // B, G, R

// Red, green, blue of the colours that the card had when the file names none.
static constexpr std::array<std::array<std::uint8_t, 3>, 16> kEgaColours = {{{0x00, 0x00, 0x00},
                                                                             {0x00, 0x00, 0xAA},
                                                                             {0x00, 0xAA, 0x00},
                                                                             {0x00, 0xAA, 0xAA},
                                                                             {0xAA, 0x00, 0x00},
                                                                             {0xAA, 0x00, 0xAA},
                                                                             {0xAA, 0x55, 0x00},
                                                                             {0xAA, 0xAA, 0xAA},
                                                                             {0x55, 0x55, 0x55},
                                                                             {0x55, 0x55, 0xFF},
                                                                             {0x55, 0xFF, 0x55},
                                                                             {0x55, 0xFF, 0xFF},
                                                                             {0xFF, 0x55, 0x55},
                                                                             {0xFF, 0x55, 0xFF},
                                                                             {0xFF, 0xFF, 0x55},
                                                                             {0xFF, 0xFF, 0xFF}}};

struct PcxHeader {
    std::uint8_t nVersion = 0;
    bool bPacked = false;
    std::uint32_t nBits = 0;  ///< in one plane
    std::uint32_t nPlanes = 0;
    std::uint64_t nWidth = 0;
    std::uint64_t nHeight = 0;
    std::uint64_t nBytesPerLine = 0;  ///< of one plane
    std::uint32_t nDotsX = 0;
    std::uint32_t nDotsY = 0;
    bool bGreys = false;                      ///< the header calls the palette one of greys
    std::array<std::uint8_t, 48> aColours{};  ///< red, green, blue of 16 entries

    std::uint64_t nRowSize() const { return nBytesPerLine * nPlanes; }
    std::uint32_t nColourBits() const { return nBits * nPlanes; }
};

static bool bReadHeader(Bytes aHead, PcxHeader& objHeader)
{
    ByteReader rd(aHead);
    const bool bMagic = rd.U8() == kMagic;
    objHeader.nVersion = rd.U8();
    const std::uint8_t nEncoding = rd.U8();
    objHeader.bPacked = nEncoding == 1;
    objHeader.nBits = rd.U8();
    const std::uint32_t nLeft = rd.U16Le(), nTop = rd.U16Le(), nRight = rd.U16Le(), nBottom = rd.U16Le();
    objHeader.nDotsX = rd.U16Le();
    objHeader.nDotsY = rd.U16Le();
    const Bytes aColours = rd.Take(objHeader.aColours.size());
    rd.U8();
    objHeader.nPlanes = rd.U8();
    objHeader.nBytesPerLine = rd.U16Le();
    objHeader.bGreys = rd.U16Le() == kPaletteOfGreys;
    rd.Take(58);  // screen size, filling
    if (rd.Failed() || !bMagic || objHeader.nVersion > kVersionWithLongPalette || nEncoding > 1 ||
        nRight < nLeft || nBottom < nTop)
        return false;
    std::copy(aColours.begin(), aColours.end(), objHeader.aColours.begin());
    objHeader.nWidth = nRight - nLeft + 1;
    objHeader.nHeight = nBottom - nTop + 1;
    const std::uint32_t nBits = objHeader.nBits, nPlanes = objHeader.nPlanes;
    const bool bKnown = (nBits == 1 && nPlanes >= 1 && nPlanes <= 4) ||
                        ((nBits == 2 || nBits == 4) && nPlanes == 1) ||
                        (nBits == 8 && (nPlanes == 1 || nPlanes == 3 || nPlanes == 4));
    return bKnown && objHeader.nBytesPerLine * 8 >= objHeader.nWidth * nBits;
}

static bool Sniff(Bytes aHead, std::string_view)
{
    PcxHeader objHeader;
    return bReadHeader(aHead, objHeader);
}

// Where the pixel data ends: before the long palette, if there is one.
static bool bHasLongPalette(const PcxHeader& objHeader, Bytes aFile)
{
    return objHeader.nVersion == kVersionWithLongPalette && objHeader.nColourBits() == 8 &&
           aFile.size() >= kHeaderSize + kLongPaletteSize &&
           aFile[aFile.size() - kLongPaletteSize] == kLongPaletteMark;
}

static void SetColour(Palette& aPalette, std::size_t nIndex, const std::uint8_t* pRedGreenBlue)
{
    aPalette[nIndex] = {pRedGreenBlue[2], pRedGreenBlue[1], pRedGreenBlue[0]};
}

static Palette aPaletteOf(const PcxHeader& objHeader, Bytes aFile)
{
    Palette aPalette{};
    if (objHeader.nColourBits() == 1) {
        aPalette[1] = {255, 255, 255};
    } else if (bHasLongPalette(objHeader, aFile)) {
        const Bytes aEntries = aFile.last(kLongPaletteSize - 1);
        for (std::size_t i = 0; i < 256; ++i)
            SetColour(aPalette, i, aEntries.data() + i * 3);
    } else if (objHeader.nColourBits() == 8) {
        for (std::size_t i = 0; i < 256; ++i)
            aPalette[i].fill(static_cast<std::uint8_t>(i));
    } else {
        // Versions 0 and 3 have no palette, whatever stands in its place.
        const bool bNone = objHeader.nVersion == 0 || objHeader.nVersion == 3 ||
                           std::all_of(objHeader.aColours.begin(), objHeader.aColours.end(),
                                       [](std::uint8_t nByte) { return nByte == 0; });
        for (std::size_t i = 0; i < 16; ++i)
            SetColour(aPalette, i, bNone ? kEgaColours[i].data() : objHeader.aColours.data() + i * 3);
    }
    return aPalette;
}

// Brings the indexes of one row, packed in a plane or spread over several, to one byte each.
static void UnpackIndexes(const PcxHeader& objHeader, const std::uint8_t* pRow, std::uint8_t* pIndexes)
{
    const std::uint32_t nBits = objHeader.nBits;
    const std::uint32_t nMask = (1u << nBits) - 1;
    for (std::uint64_t x = 0; x < objHeader.nWidth; ++x) {
        const std::uint64_t nBit = x * nBits;
        std::uint32_t nIndex = 0;
        for (std::uint32_t nPlane = 0; nPlane < objHeader.nPlanes; ++nPlane) {
            const std::uint32_t nByte = pRow[nPlane * objHeader.nBytesPerLine + nBit / 8];
            nIndex |= (nByte >> (8 - nBits - nBit % 8) & nMask) << (nPlane * nBits);
        }
        pIndexes[x] = static_cast<std::uint8_t>(nIndex);
    }
}

// The resolution, unless it is the size of a screen or of the picture, which some programs put there.
static void SetResolution(const PcxHeader& objHeader, ImageBuffer& aImage)
{
    static constexpr std::array<std::array<std::uint32_t, 2>, 9> kScreens = {{{320, 200},
                                                                              {640, 200},
                                                                              {640, 350},
                                                                              {640, 400},
                                                                              {640, 480},
                                                                              {720, 348},
                                                                              {720, 350},
                                                                              {800, 600},
                                                                              {1024, 768}}};
    const std::array<std::uint32_t, 2> aDots = {objHeader.nDotsX, objHeader.nDotsY};
    const bool bScreen = std::find(kScreens.begin(), kScreens.end(), aDots) != kScreens.end();
    const bool bPicture = aDots[0] == objHeader.nWidth && aDots[1] == objHeader.nHeight;
    if (aDots[0] == 0 || aDots[1] == 0 || bScreen || bPicture)
        return;
    aImage.dots_per_inch_x = aDots[0];
    aImage.dots_per_inch_y = aDots[1];
}

static void ConvertPlanes(const PcxHeader& objHeader, const std::uint8_t* pRow, std::uint8_t* pOut)
{
    const std::uint8_t* pRed = pRow;
    const std::uint8_t* pGreen = pRow + objHeader.nBytesPerLine;
    const std::uint8_t* pBlue = pGreen + objHeader.nBytesPerLine;
    const std::uint8_t* pAlpha = pBlue + objHeader.nBytesPerLine;
    if (objHeader.nPlanes == 3) {
        for (std::uint64_t x = 0; x < objHeader.nWidth; ++x, pOut += 3) {
            pOut[0] = pBlue[x];
            pOut[1] = pGreen[x];
            pOut[2] = pRed[x];
        }
        return;
    }
    for (std::uint64_t x = 0; x < objHeader.nWidth; ++x, pOut += 4) {
        pOut[0] = pBlue[x];
        pOut[1] = pGreen[x];
        pOut[2] = pRed[x];
        pOut[3] = pAlpha[x];
    }
}

static bool bDecode(InputFile& objFile, const PcxHeader& objHeader, ImageBuffer& aImage)
{
    const Bytes aFile = objFile.All();
    if (aFile.size() < kHeaderSize || !IsSizeAllowed(objHeader.nWidth, objHeader.nHeight))
        return false;
    // Version 5 puts the colours of 8 bits at the end: without them the file has been cut.
    if (objHeader.nVersion == kVersionWithLongPalette && objHeader.nColourBits() == 8 && !objHeader.bGreys &&
        !bHasLongPalette(objHeader, aFile))
        return false;
    const std::size_t nEnd = aFile.size() - (bHasLongPalette(objHeader, aFile) ? kLongPaletteSize : 0);
    const Bytes aData = aFile.first(nEnd).subspan(kHeaderSize);
    // Two bytes hold 63 at most.
    if (objHeader.nRowSize() * objHeader.nHeight > (objHeader.bPacked ? aData.size() * 63 / 2 : aData.size()))
        return false;

    const Palette aPalette = aPaletteOf(objHeader, aFile);
    const bool bIndexes = objHeader.nColourBits() <= 8;
    const std::size_t nColours = bIndexes ? std::size_t{1} << objHeader.nColourBits() : 0;
    const bool bGrey =
        bIndexes &&
        std::all_of(aPalette.begin(), aPalette.begin() + static_cast<std::ptrdiff_t>(nColours),
                    [](const auto& aEntry) { return aEntry[0] == aEntry[1] && aEntry[1] == aEntry[2]; });
    const std::int32_t lChannels = bGrey ? 1 : objHeader.nPlanes == 4 && !bIndexes ? 4 : 3;
    ImageBuffer aResult;
    if (!Allocate(aResult, objHeader.nWidth, objHeader.nHeight, lChannels))
        return false;

    PcxRuns objRuns(aData, objHeader.bPacked);
    std::vector<std::uint8_t> aRow(objHeader.nRowSize());
    std::vector<std::uint8_t> aIndexes(bIndexes ? objHeader.nWidth : 0);
    std::uint8_t* pOut = aResult.bytes.data();
    for (std::uint64_t y = 0; y < objHeader.nHeight; ++y) {
        if (!objRuns.bNextRow(aRow))
            return false;
        if (!bIndexes) {
            ConvertPlanes(objHeader, aRow.data(), pOut);
        } else {
            UnpackIndexes(objHeader, aRow.data(), aIndexes.data());
            for (std::uint64_t x = 0; x < objHeader.nWidth; ++x)
                std::memcpy(pOut + x * static_cast<std::uint64_t>(lChannels), aPalette[aIndexes[x]].data(),
                            static_cast<std::size_t>(lChannels));
        }
        pOut += objHeader.nWidth * static_cast<std::uint64_t>(lChannels);
    }
    DropUnsetAlpha(aResult);
    SetResolution(objHeader, aResult);
    aImage = std::move(aResult);
    return true;
}

static std::unique_ptr<ImageDecoder> Open(InputFile& objFile)
{
    PcxHeader objHeader;
    if (!bReadHeader(objFile.Head(), objHeader))
        return nullptr;
    return pSinglePage(
        [&objFile, objHeader](ImageBuffer& aImage) { return bDecode(objFile, objHeader, aImage); });
}

static std::uint16_t nDots(double dDotsPerInch)
{
    return static_cast<std::uint16_t>(std::lround(std::clamp(dDotsPerInch, 0.0, 65535.0)));
}

static void WriteHeader(const ImageBuffer& aImage, std::uint64_t nBytesPerLine, OutputFile& objOut)
{
    const bool bGrey = aImage.channels == 1;
    const std::array<std::uint8_t, 4> aBegin = {kMagic, kVersionWithLongPalette, 1, 8};
    objOut.Write(aBegin);
    objOut.WriteU32Le(0);  // left, top
    objOut.WriteU16Le(static_cast<std::uint16_t>(aImage.width - 1));
    objOut.WriteU16Le(static_cast<std::uint16_t>(aImage.height - 1));
    objOut.WriteU16Le(nDots(aImage.dots_per_inch_x));
    objOut.WriteU16Le(nDots(aImage.dots_per_inch_y));
    objOut.Write(std::array<std::uint8_t, 48>{});
    objOut.WriteU8(0);
    objOut.WriteU8(bGrey ? 1 : 3);
    objOut.WriteU16Le(static_cast<std::uint16_t>(nBytesPerLine));
    objOut.WriteU16Le(bGrey ? kPaletteOfGreys : kPaletteOfColours);
    objOut.Write(std::array<std::uint8_t, 58>{});
}

// Each plane of a row is packed by itself: readers that keep to the rule expect no run to cross its end.
static bool bEncode(const ImageBuffer& aImage, const SaveSettings&, OutputFile& objOut)
{
    const auto nWidth = static_cast<std::size_t>(aImage.width);
    const auto nChannels = static_cast<std::size_t>(aImage.channels);
    const std::size_t nBytesPerLine = (nWidth + 1) / 2 * 2;
    WriteHeader(aImage, nBytesPerLine, objOut);

    std::vector<std::uint8_t> aPlanes(nBytesPerLine * 3);
    std::vector<std::uint8_t> aPacked(nBytesPerLine * 3 * 2);
    const std::uint8_t* pRow = aImage.bytes.data();
    for (std::int32_t y = 0; y < aImage.height && !objOut.Failed(); ++y, pRow += nWidth * nChannels) {
        if (nChannels == 1) {
            std::memcpy(aPlanes.data(), pRow, nWidth);
        } else {
            std::uint8_t* pRed = aPlanes.data();
            std::uint8_t* pGreen = pRed + nBytesPerLine;
            std::uint8_t* pBlue = pGreen + nBytesPerLine;
            for (std::size_t x = 0; x < nWidth; ++x) {
                pBlue[x] = pRow[x * 3];
                pGreen[x] = pRow[x * 3 + 1];
                pRed[x] = pRow[x * 3 + 2];
            }
        }
        std::size_t nPacked = 0;
        for (std::size_t nPlane = 0; nPlane < nChannels; ++nPlane) {
            // The filling repeats the last pixel, which packs best.
            const std::span<std::uint8_t> aPlane =
                std::span(aPlanes).subspan(nPlane * nBytesPerLine, nBytesPerLine);
            aPlane[nBytesPerLine - 1] = aPlane[nWidth - 1];
            nPacked += nPackPcxRow(aPlane, aPacked.data() + nPacked);
        }
        objOut.Write(Bytes(aPacked).first(nPacked));
    }
    if (nChannels == 1) {
        objOut.WriteU8(kLongPaletteMark);
        for (std::uint32_t nGrey = 0; nGrey < 256; ++nGrey)
            objOut.Write(std::array<std::uint8_t, 3>{static_cast<std::uint8_t>(nGrey),
                                                     static_cast<std::uint8_t>(nGrey),
                                                     static_cast<std::uint8_t>(nGrey)});
    }
    return !objOut.Failed();
}

const Codec codecPcx{7, false, false, Sniff, Open, bEncode};

// Brings the bitmaps of records into the form that the decoder of bitmaps takes.
#include "src/platform/image/metafile/device/bitmaps.h"

#include <algorithm>
#include <vector>

#include "src/platform/image/metafile/device/device_context.h"

static constexpr std::uint32_t kOldHeader = 12;
static constexpr std::uint32_t kHeader = 40;
static constexpr std::uint32_t kHeaderWithAlphaMask = 56;
static constexpr std::uint32_t kBitfields = 3;

std::optional<DibShape> objDibShape(Bytes aHeader)
{
    ByteReader rd(aHeader);
    const std::uint32_t nSize = rd.U32Le();
    DibShape objShape;
    objShape.lWidth = nSize == kOldHeader ? rd.U16Le() : rd.I32Le();
    objShape.lHeight = nSize == kOldHeader ? rd.U16Le() : rd.I32Le();
    rd.U16Le();
    objShape.nBits = rd.U16Le();
    objShape.bTopDown = objShape.lHeight < 0;
    objShape.lHeight = objShape.bTopDown ? -objShape.lHeight : objShape.lHeight;
    if (rd.Failed() || objShape.lWidth <= 0 || objShape.lHeight == 0)
        return std::nullopt;
    return objShape;
}

// How many palette entries the header is followed by, and where they begin.
struct PalettePlace {
    std::uint64_t nOffset = 0;
    std::uint64_t nEntries = 0;
};

static PalettePlace objPalettePlace(Bytes aHeader)
{
    ByteReader rd(aHeader);
    const std::uint32_t nSize = rd.U32Le();
    rd.Take(nSize == kOldHeader ? 6 : 10);
    const std::uint32_t nBits = rd.U16Le();
    const std::uint64_t nMost = nBits <= 8 ? 1ull << nBits : 0;
    if (nSize == kOldHeader)
        return {nSize, nMost};
    const std::uint32_t nCompression = rd.U32Le();
    rd.Take(12);
    const std::uint32_t nUsed = rd.U32Le();
    // Between a short header and the palette stand the masks.
    const std::uint64_t nMasks = nSize > kHeader              ? 0
                                 : nCompression == kBitfields ? 12
                                 : nCompression == 6          ? 16
                                                              : 0;
    return {nSize + nMasks, nUsed != 0 ? nUsed : nMost};
}

DibSource objPackedDib(Bytes aDib, bool bIndexesPalette)
{
    const auto objShape = objDibShape(aDib);
    if (!objShape)
        return {};
    const PalettePlace objPlace = objPalettePlace(aDib);
    const bool bOld = aDib[0] == kOldHeader;
    const std::uint64_t nEntry = bIndexesPalette && objShape->nBits <= 8 ? 2 : bOld ? 3 : 4;
    const std::uint64_t nBitsOffset = objPlace.nOffset + objPlace.nEntries * nEntry;
    if (nBitsOffset > aDib.size())
        return {};
    return {aDib.first(nBitsOffset), aDib.subspan(nBitsOffset), bIndexesPalette};
}

static void PutU32(std::vector<std::uint8_t>& aBytes, std::size_t nOffset, std::uint32_t nValue)
{
    for (std::size_t n = 0; n < 4; ++n)
        aBytes[nOffset + n] = static_cast<std::uint8_t>(nValue >> 8 * n);
}

// The header with these colours (red, green, blue) as its palette.
static std::vector<std::uint8_t> aWithPalette(Bytes aHeader, const std::vector<std::uint32_t>& aColors)
{
    const std::uint64_t nPalette = std::min<std::uint64_t>(objPalettePlace(aHeader).nOffset, aHeader.size());
    std::vector<std::uint8_t> aResult(aHeader.begin(),
                                      aHeader.begin() + static_cast<std::ptrdiff_t>(nPalette));
    const bool bOld = aHeader[0] == kOldHeader;
    if (!bOld && aResult.size() >= 36)
        PutU32(aResult, 32, static_cast<std::uint32_t>(aColors.size()));
    for (const std::uint32_t nColor : aColors) {
        for (unsigned nShift = 0; nShift < 24; nShift += 8)
            aResult.push_back(static_cast<std::uint8_t>(nColor >> nShift));
        if (!bOld)
            aResult.push_back(0);
    }
    return aResult;
}

// The colours behind a palette of 16-bit indexes.
static std::vector<std::uint32_t> aIndexedColors(Bytes aHeader, const DeviceContext& dc)
{
    const PalettePlace objPlace = objPalettePlace(aHeader);
    ByteReader rd(aHeader);
    rd.Take(objPlace.nOffset);
    std::vector<std::uint32_t> aColors;
    for (std::uint64_t n = 0; n < std::min<std::uint64_t>(objPlace.nEntries, 256) && rd.Left() >= 2; ++n)
        aColors.push_back(dc.Resolved(0x01000000u | rd.U16Le()));
    return aColors;
}

// The header of a bitmap of 32 bits with a mask for alpha.
static std::vector<std::uint8_t> aWithAlphaMask(Bytes aHeader)
{
    std::vector<std::uint8_t> aResult(aHeader.begin(), aHeader.end());
    const std::uint32_t nSize = ByteReader(aHeader).U32Le();
    const std::uint32_t nCompression = ByteReader(aHeader.subspan(16)).U32Le();
    if (nCompression != 0 || nSize < kHeader)
        return aResult;
    aResult.resize(std::max(nSize, kHeaderWithAlphaMask));
    PutU32(aResult, 0, std::max(nSize, kHeaderWithAlphaMask));
    PutU32(aResult, 16, kBitfields);
    PutU32(aResult, 32, 0);
    PutU32(aResult, 40, 0xFF0000);
    PutU32(aResult, 44, 0xFF00);
    PutU32(aResult, 48, 0xFF);
    PutU32(aResult, 52, 0xFF000000);
    return aResult;
}

std::vector<std::uint8_t> aWithHeight(Bytes aHeader, const DibShape& objShape, std::int64_t lHeight)
{
    std::vector<std::uint8_t> aResult(aHeader.begin(), aHeader.end());
    const auto nStored = static_cast<std::uint32_t>(objShape.bTopDown ? -lHeight : lHeight);
    const bool bOld = aResult[0] == 12;
    for (std::size_t n = 0; n < (bOld ? 2u : 4u); ++n)
        aResult[(bOld ? 6 : 8) + n] = static_cast<std::uint8_t>(nStored >> 8 * n);
    return aResult;
}

bool bDecoded(const DibSource& objDib, const DeviceContext& dc, DibColors eColors, ImageBuffer& aImage)
{
    const auto objShape = objDibShape(objDib.aHeader);
    const auto fnDecode = dc.Request().DecodeDib;
    if (!objShape || !fnDecode)
        return false;
    const auto nPixels =
        static_cast<std::uint64_t>(objShape->lWidth) * static_cast<std::uint64_t>(objShape->lHeight);
    if (!dc.Work().Spend(nPixels))
        return false;
    std::vector<std::uint8_t> aHeader;
    if (objShape->nBits == 1 && eColors == DibColors::TextAndBack)
        aHeader = aWithPalette(objDib.aHeader,
                               {dc.Resolved(dc.State.nTextColor), dc.Resolved(dc.State.nBackColor)});
    else if (objDib.bIndexesPalette && objShape->nBits <= 8 && objShape->nBits > 0)
        aHeader = aWithPalette(objDib.aHeader, aIndexedColors(objDib.aHeader, dc));
    else if (eColors == DibColors::WithAlpha && objShape->nBits == 32 && objDib.aHeader.size() >= kHeader)
        aHeader = aWithAlphaMask(objDib.aHeader);
    if (!fnDecode(aHeader.empty() ? objDib.aHeader : Bytes(aHeader), objDib.aBits, aImage))
        return false;
    // A picture of another format inside may be larger than the header says.
    return dc.Work().Spend(static_cast<std::uint64_t>(aImage.width) *
                           static_cast<std::uint64_t>(aImage.height));
}

bool bDecoded(const Bitmap16Source& objBitmap, const DeviceContext& dc, ImageBuffer& aImage)
{
    const std::uint32_t nBits = objBitmap.nBitsPerPixel;
    if (objBitmap.lWidth <= 0 || objBitmap.lHeight <= 0 || (nBits != 1 && nBits != 24 && nBits != 32))
        return false;
    const auto nWidth = static_cast<std::uint64_t>(objBitmap.lWidth);
    const auto nHeight = static_cast<std::uint64_t>(objBitmap.lHeight);
    if (objBitmap.nBytesPerRow < (nWidth * nBits + 7) / 8 ||
        objBitmap.aBits.size() < objBitmap.nBytesPerRow * nHeight || !dc.Work().Spend(nWidth * nHeight))
        return false;
    ImageBuffer aResult;
    aResult.width = objBitmap.lWidth;
    aResult.height = objBitmap.lHeight;
    aResult.channels = 3;
    aResult.bytes.resize(nWidth * nHeight * 3);
    const std::uint32_t aColors[2] = {dc.Resolved(dc.State.nTextColor), dc.Resolved(dc.State.nBackColor)};
    std::uint8_t* pOut = aResult.bytes.data();
    for (std::uint64_t y = 0; y < nHeight; ++y) {
        const Bytes aRow = objBitmap.aBits.subspan(y * objBitmap.nBytesPerRow, objBitmap.nBytesPerRow);
        for (std::uint64_t x = 0; x < nWidth; ++x) {
            for (std::uint64_t c = 0; c < 3; ++c)
                *pOut++ = nBits == 1
                              ? static_cast<std::uint8_t>(aColors[aRow[x / 8] >> (7 - x % 8) & 1] >> 8 * c)
                              : aRow[x * (nBits / 8) + c];
        }
    }
    aImage = std::move(aResult);
    return true;
}

static std::uint32_t nPixelAt(const std::uint8_t* pPixel, std::int32_t lChannels, bool bAlpha)
{
    const std::uint32_t nBlue = pPixel[0];
    if (lChannels == 1)
        return 0xFF000000 | nBlue * 0x10101;
    const std::uint32_t nAlpha = !bAlpha ? 255 : lChannels == 4 ? pPixel[3] : 0;
    return nAlpha << 24 | std::uint32_t{pPixel[2]} << 16 | std::uint32_t{pPixel[1]} << 8 | nBlue;
}

Pixels objPixelsOf(const ImageBuffer& aImage, const Box& box, std::int32_t nStepX, std::int32_t nStepY,
                   bool bAlpha)
{
    Pixels objPixels;
    objPixels.lWidth = (box.Width() + nStepX - 1) / nStepX;
    objPixels.lHeight = (box.Height() + nStepY - 1) / nStepY;
    objPixels.aPixels.resize(static_cast<std::size_t>(objPixels.lWidth) *
                             static_cast<std::size_t>(objPixels.lHeight));
    const auto pAt = [&](std::int32_t x, std::int32_t y) {
        return aImage.bytes.data() + (static_cast<std::size_t>(y) * static_cast<std::size_t>(aImage.width) +
                                      static_cast<std::size_t>(x)) *
                                         static_cast<std::size_t>(aImage.channels);
    };
    std::uint32_t* pOut = objPixels.aPixels.data();
    for (std::int32_t y = box.lTop; y < box.lBottom; y += nStepY) {
        for (std::int32_t x = box.lLeft; x < box.lRight; x += nStepX) {
            if (nStepX == 1 && nStepY == 1) {
                *pOut++ = nPixelAt(pAt(x, y), aImage.channels, bAlpha);
                continue;
            }
            std::uint64_t aSum[4] = {};
            std::uint64_t nCount = 0;
            for (std::int32_t v = y; v < std::min(y + nStepY, box.lBottom); ++v)
                for (std::int32_t u = x; u < std::min(x + nStepX, box.lRight); ++u, ++nCount) {
                    const std::uint32_t nPixel = nPixelAt(pAt(u, v), aImage.channels, bAlpha);
                    for (unsigned c = 0; c < 4; ++c)
                        aSum[c] += nPixel >> 8 * c & 255;
                }
            std::uint32_t nMean = 0;
            for (unsigned c = 0; c < 4; ++c)
                nMean |= static_cast<std::uint32_t>((aSum[c] + nCount / 2) / nCount) << 8 * c;
            *pOut++ = nMean;
        }
    }
    return objPixels;
}

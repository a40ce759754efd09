// Reads Targa files.
#include "src/platform/image/codecs/tga/tga.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "src/platform/image/base/limits.h"
#include "src/platform/image/codecs/single_page.h"
#include "src/platform/image/codecs/tga/tga_encode.h"
#include "src/platform/image/codecs/tga/tga_header.h"
#include "src/platform/image/codecs/tga/tga_runs.h"
#include "src/platform/image/pixels/pixel_rows.h"
#include "src/platform/image/pixels/stored_rows.h"

static bool Sniff(Bytes aHead, std::string_view sExtension)
{
    static constexpr std::array<std::string_view, 5> kExtensions = {"tga", "targa", "vda", "icb", "vst"};
    TgaHeader objHeader;
    return std::find(kExtensions.begin(), kExtensions.end(), sExtension) != kExtensions.end() &&
           bReadTgaHeader(aHead, objHeader);
}

/// Turns stored rows into rows of the picture.
class TgaPixels
{
public:
    TgaPixels(const TgaHeader& objHeader, TgaAlpha eAlpha, std::vector<std::array<std::uint8_t, 4>> aMap)
        : m_objHeader(objHeader), m_eAlpha(eAlpha), m_aMap(std::move(aMap))
    {
        const bool bGrey =
            objHeader.eKind == TgaKind::kGrey || (objHeader.eKind == TgaKind::kMapped && bGreyMap());
        m_lChannels = bHasAlpha() ? 4 : bGrey ? 1 : 3;
    }

    std::int32_t lChannels() const { return m_lChannels; }

    void Convert(const std::uint8_t* pIn, std::uint8_t* pOut) const
    {
        const std::uint64_t nWidth = m_objHeader.nWidth;
        const bool bPlain = m_objHeader.eKind != TgaKind::kMapped &&
                            m_objHeader.nBits == static_cast<std::uint32_t>(m_lChannels) * 8;
        if (bPlain)
            std::memcpy(pOut, pIn, nWidth * m_objHeader.nPixelSize());
        else if (m_objHeader.eKind == TgaKind::kTrueColour && m_objHeader.nBits == 32)
            PackRowFromFourBytes(pIn, pOut, nWidth);
        else
            ConvertEach(pIn, pOut);
        if (m_objHeader.bFromRight)
            Mirror(pOut);
    }

private:
    bool bGreyMap() const
    {
        return std::all_of(m_aMap.begin(), m_aMap.end(), [](const auto& aEntry) {
            return aEntry[0] == aEntry[1] && aEntry[1] == aEntry[2];
        });
    }

    bool bHasAlpha() const
    {
        if (m_eAlpha == TgaAlpha::kNone)
            return false;
        if (m_objHeader.eKind == TgaKind::kGrey)
            return m_objHeader.nBits == 16;
        const std::uint32_t nBits =
            m_objHeader.eKind == TgaKind::kMapped ? m_objHeader.nMapBits : m_objHeader.nBits;
        return nBits == 16 || nBits == 32;
    }

    std::array<std::uint8_t, 4> aColourOf(const std::uint8_t* pStored) const
    {
        const std::uint32_t nBits = m_objHeader.nBits;
        if (m_objHeader.eKind == TgaKind::kTrueColour)
            return aTgaColour(pStored, nBits);
        if (m_objHeader.eKind == TgaKind::kGrey)
            return {pStored[0], pStored[0], pStored[0], nBits == 16 ? pStored[1] : std::uint8_t{255}};
        const std::size_t nIndex = pStored[0] | (nBits == 16 ? static_cast<std::size_t>(pStored[1]) << 8 : 0);
        return nIndex < m_aMap.size() ? m_aMap[nIndex] : std::array<std::uint8_t, 4>{0, 0, 0, 255};
    }

    void ConvertEach(const std::uint8_t* pIn, std::uint8_t* pOut) const
    {
        const std::uint32_t nSize = m_objHeader.nPixelSize();
        for (std::uint64_t x = 0; x < m_objHeader.nWidth; ++x, pIn += nSize, pOut += m_lChannels) {
            const std::array<std::uint8_t, 4> aColour = aColourOf(pIn);
            std::memcpy(pOut, aColour.data(), static_cast<std::size_t>(m_lChannels));
        }
    }

    void Mirror(std::uint8_t* pRow) const
    {
        const auto nSize = static_cast<std::size_t>(m_lChannels);
        std::uint8_t* pLast = pRow + (m_objHeader.nWidth - 1) * nSize;
        for (; pRow < pLast; pRow += nSize, pLast -= nSize)
            std::swap_ranges(pRow, pRow + nSize, pLast);
    }

    const TgaHeader& m_objHeader;
    TgaAlpha m_eAlpha;
    std::vector<std::array<std::uint8_t, 4>> m_aMap;
    std::int32_t m_lChannels = 3;
};

static std::uint8_t* pRowOf(const TgaHeader& objHeader, ImageBuffer& aImage, std::uint64_t nStored)
{
    const std::uint64_t y = objHeader.bFromTop ? nStored : objHeader.nHeight - 1 - nStored;
    return aImage.bytes.data() + y * objHeader.nWidth * static_cast<std::uint64_t>(aImage.channels);
}

static bool bDecodePlain(InputFile& objFile, const TgaHeader& objHeader, const TgaPixels& objPixels,
                         ImageBuffer& aImage)
{
    const std::uint64_t nRowSize = objHeader.nWidth * objHeader.nPixelSize();
    const StoredRows objStored{objHeader.nBitsOffset, nRowSize, nRowSize, objHeader.nHeight};
    return HoldsRows(objFile, objStored) &&
           Allocate(aImage, objHeader.nWidth, objHeader.nHeight, objPixels.lChannels()) &&
           ReadRows(objFile, objStored, [&](std::uint64_t y, const std::uint8_t* pRow) {
               objPixels.Convert(pRow, pRowOf(objHeader, aImage, y));
           });
}

static bool bDecodePacked(InputFile& objFile, const TgaHeader& objHeader, const TgaPixels& objPixels,
                          ImageBuffer& aImage)
{
    const Bytes aFile = objFile.All();
    if (aFile.size() < objHeader.nBitsOffset)
        return false;
    const Bytes aData = aFile.subspan(objHeader.nBitsOffset);
    const std::uint32_t nPixelSize = objHeader.nPixelSize();
    if (objHeader.nWidth * objHeader.nHeight > (aData.size() / (1 + nPixelSize) + 1) * kTgaPacket ||
        !Allocate(aImage, objHeader.nWidth, objHeader.nHeight, objPixels.lChannels()))
        return false;
    TgaRuns objRuns(aData, nPixelSize);
    std::vector<std::uint8_t> aRow(objHeader.nWidth * nPixelSize);
    for (std::uint64_t y = 0; y < objHeader.nHeight; ++y) {
        if (!objRuns.bNextRow(aRow))
            return false;
        objPixels.Convert(aRow.data(), pRowOf(objHeader, aImage, y));
    }
    return true;
}

// Colours that were multiplied by their alpha, divided again.
static void Unmultiply(ImageBuffer& aImage)
{
    for (std::size_t i = 0; i + 3 < aImage.bytes.size(); i += 4) {
        const std::uint32_t nAlpha = aImage.bytes[i + 3];
        for (std::size_t c = 0; c < 3 && nAlpha > 0; ++c)
            aImage.bytes[i + c] = static_cast<std::uint8_t>(
                std::min<std::uint32_t>((aImage.bytes[i + c] * 255u + nAlpha / 2) / nAlpha, 255));
    }
}

static bool bDecode(InputFile& objFile, const TgaHeader& objHeader, ImageBuffer& aImage)
{
    std::vector<std::array<std::uint8_t, 4>> aMap;
    if (!IsSizeAllowed(objHeader.nWidth, objHeader.nHeight) ||
        (objHeader.eKind == TgaKind::kMapped && !bReadTgaMap(objFile, objHeader, aMap)))
        return false;
    const TgaAlpha eAlpha = eTgaAlpha(objFile, objHeader);
    const TgaPixels objPixels(objHeader, eAlpha, std::move(aMap));
    ImageBuffer aResult;
    if (!(objHeader.bPacked ? bDecodePacked(objFile, objHeader, objPixels, aResult)
                            : bDecodePlain(objFile, objHeader, objPixels, aResult)))
        return false;
    DropUnsetAlpha(aResult);
    if (aResult.channels == 4 && eAlpha == TgaAlpha::kPremultiplied)
        Unmultiply(aResult);
    aImage = std::move(aResult);
    return true;
}

static std::unique_ptr<ImageDecoder> Open(InputFile& objFile)
{
    TgaHeader objHeader;
    if (!bReadTgaHeader(objFile.Head(), objHeader))
        return nullptr;
    return pSinglePage(
        [&objFile, objHeader](ImageBuffer& aImage) { return bDecode(objFile, objHeader, aImage); });
}

const Codec codecTga{10, true, false, Sniff, Open, bEncodeTga};

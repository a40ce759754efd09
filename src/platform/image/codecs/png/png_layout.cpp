// Finds the colour types that hold a picture, and brings its rows into them.
#include "src/platform/image/codecs/png/png_layout.h"

#include <algorithm>
#include <cstring>

#include "src/platform/image/codecs/png/filters/png_shuffle.h"

static constexpr std::uint32_t kOpaque = 0xFF000000;

std::size_t PngColourTable::nSlotOf(std::uint32_t nColour) const
{
    std::size_t nSlot = nColour * 0x9E3779B1U >> 22;
    while (m_aNumbers[nSlot] && m_aColours[nSlot] != nColour)
        nSlot = (nSlot + 1) % kSlots;
    return nSlot;
}

std::size_t PngColourTable::nIndexOf(std::uint32_t nColour)
{
    const std::size_t nSlot = nSlotOf(nColour);
    if (m_aNumbers[nSlot] == 0) {
        if (m_nColours == kMost)
            return kMost;
        m_aColours[nSlot] = nColour;
        m_aNumbers[nSlot] = static_cast<std::uint16_t>(++m_nColours);
    }
    return m_aNumbers[nSlot] - 1U;
}

std::vector<std::uint32_t> PngColourTable::aColours() const
{
    std::vector<std::uint32_t> aResult(m_nColours);
    for (std::size_t i = 0; i < kSlots; ++i)
        if (m_aNumbers[i])
            aResult[m_aNumbers[i] - 1U] = m_aColours[i];
    return aResult;
}

void PngColourTable::Renumber(const std::vector<std::uint32_t>& aOrder)
{
    for (std::size_t i = 0; i < aOrder.size(); ++i)
        m_aNumbers[nSlotOf(aOrder[i])] = static_cast<std::uint16_t>(i + 1);
}

// A pixel as one number: blue lowest, then green, red, alpha.
template <std::size_t nChannels>
static inline std::uint32_t nColourAt(const std::uint8_t* p)
{
    if constexpr (nChannels == 1)
        return kOpaque | p[0] * 0x010101U;
    const std::uint32_t nBgr = p[0] | std::uint32_t{p[1]} << 8 | std::uint32_t{p[2]} << 16;
    return nBgr | (nChannels == 4 ? std::uint32_t{p[3]} << 24 : kOpaque);
}

// Fills the table; False as soon as there are too many colours.
template <std::size_t nChannels>
static bool bCountColours(const ImageBuffer& aImage, PngColourTable& objTable)
{
    const std::uint8_t* const p = aImage.bytes.data();
    std::uint32_t nLast = ~nColourAt<nChannels>(p);
    for (std::size_t i = 0; i < aImage.bytes.size(); i += nChannels) {
        const std::uint32_t nColour = nColourAt<nChannels>(p + i);
        if (nColour != nLast && objTable.nIndexOf(nColour) == PngColourTable::kMost)
            return false;
        nLast = nColour;
    }
    return true;
}

// Of a grey picture, whose colours are few anyway: False as soon as there are more than four bits number.
static bool bFewGreys(const ImageBuffer& aImage, PngColourTable& objTable)
{
    constexpr std::size_t kPiece = 4096;
    const auto nChannels = static_cast<std::size_t>(aImage.channels);
    std::array<bool, 256> aSeen{};
    for (std::size_t nDone = 0; nDone < aImage.bytes.size(); nDone += kPiece * nChannels) {
        const std::size_t nEnd = std::min(nDone + kPiece * nChannels, aImage.bytes.size());
        for (std::size_t i = nDone; i < nEnd; i += nChannels)
            aSeen[aImage.bytes[i]] = true;
        if (std::count(aSeen.begin(), aSeen.end(), true) > 16)
            return false;
    }
    for (std::uint32_t i = 0; i < 256; ++i)
        if (aSeen[i])
            objTable.nIndexOf(kOpaque | i * 0x010101U);
    return true;
}

static bool bFewColours(const ImageBuffer& aImage, PngColourTable& objTable)
{
    return aImage.channels == 1   ? bCountColours<1>(aImage, objTable)
           : aImage.channels == 3 ? bCountColours<3>(aImage, objTable)
                                  : bCountColours<4>(aImage, objTable);
}

static bool bGreyPixels(const ImageBuffer& aImage)
{
    const auto nChannels = static_cast<std::size_t>(aImage.channels);
    const std::uint8_t* const p = aImage.bytes.data();
    for (std::size_t i = 0; i < aImage.bytes.size(); i += nChannels)
        if (p[i] != p[i + 1] || p[i] != p[i + 2])
            return false;
    return true;
}

static bool bOpaquePixels(const ImageBuffer& aImage)
{
    const std::uint8_t* const p = aImage.bytes.data();
    for (std::size_t i = 3; i < aImage.bytes.size(); i += 4)
        if (p[i] != 255)
            return false;
    return true;
}

// The fewest bits in which greys can be written as they are: all of them are multiples of 255 / (2^bits - 1).
static std::uint32_t nGreyDepth(const std::vector<std::uint32_t>& aColours)
{
    const auto bHolds = [&](std::uint32_t nStep) {
        return std::all_of(aColours.begin(), aColours.end(),
                           [nStep](std::uint32_t nColour) { return (nColour & 0xFF) % nStep == 0; });
    };
    return bHolds(255) ? 1 : bHolds(85) ? 2 : bHolds(17) ? 4 : 8;
}

static PngLayout objPaletteLayout(const PngColourTable& objTable)
{
    PngLayout objLayout;
    objLayout.objColour = PngColour::Palette;
    objLayout.objTable = objTable;
    std::vector<std::uint32_t> aColours = objTable.aColours();
    objLayout.nDepth = aColours.size() <= 2 ? 1 : aColours.size() <= 4 ? 2 : aColours.size() <= 16 ? 4 : 8;
    // Those with alpha first, so that tRNS is short; then by brightness, so that like indices are like
    // colours.
    std::sort(aColours.begin(), aColours.end(), [](std::uint32_t nA, std::uint32_t nB) {
        const bool bOpaqueA = nA >= kOpaque;
        const bool bOpaqueB = nB >= kOpaque;
        const auto nBright = [](std::uint32_t n) {
            return (n & 0xFF) + 6 * (n >> 8 & 0xFF) + 3 * (n >> 16 & 0xFF);
        };
        return bOpaqueA != bOpaqueB         ? bOpaqueB
               : nBright(nA) != nBright(nB) ? nBright(nA) < nBright(nB)
                                            : nA < nB;
    });
    objLayout.objTable.Renumber(aColours);
    for (const std::uint32_t nColour : aColours) {
        for (const int nShift : {16, 8, 0})
            objLayout.aPalette.push_back(static_cast<std::uint8_t>(nColour >> nShift));
        if (nColour < kOpaque)
            objLayout.aTransparency.push_back(static_cast<std::uint8_t>(nColour >> 24));
    }
    return objLayout;
}

std::vector<PngLayout> aPngLayouts(const ImageBuffer& aImage)
{
    const bool bProfile = !aImage.icc_profile.empty();
    PngLayout objPlain;
    objPlain.objColour = PngColour::Grey;
    if (aImage.channels == 1 && bOnlyExtremes(aImage.bytes.data(), aImage.bytes.size())) {
        objPlain.nDepth = 1;
        return {objPlain};
    }
    const bool bAlpha = aImage.channels == 4 && !bOpaquePixels(aImage);
    const bool bGrey = aImage.channels == 1 || (!bProfile && bGreyPixels(aImage));
    objPlain.objColour = bGrey    ? bAlpha ? PngColour::GreyAlpha : PngColour::Grey
                         : bAlpha ? PngColour::Rgba
                                  : PngColour::Rgb;
    PngColourTable objTable;
    const bool bGreys = objPlain.objColour == PngColour::Grey;
    if (bGreys ? !bFewGreys(aImage, objTable) : !bFewColours(aImage, objTable))
        return {objPlain};
    if (bGreys)
        objPlain.nDepth = nGreyDepth(objTable.aColours());
    PngLayout objPalette = objPaletteLayout(objTable);
    // A palette is for RGB, so a grey picture's profile doesn't fit it.
    const bool bForbidden = aImage.channels == 1 && bProfile;
    if (bForbidden || (bGreys && objPalette.nDepth >= objPlain.nDepth))
        return {objPlain};
    // Both are taken to shrink by half; in a small picture the palette itself is what counts.
    const std::uint64_t nPlainBits = objPlain.objHeader(aImage).nSamples() * objPlain.nDepth;
    const std::uint64_t nSaved = static_cast<std::uint64_t>(aImage.width) *
                                 static_cast<std::uint64_t>(aImage.height) *
                                 (nPlainBits - objPalette.nDepth) / 16;
    if (objPalette.aPalette.size() + objPalette.aTransparency.size() + 24 > nSaved)
        return {objPlain};
    return {objPalette, objPlain};
}

PngHeader PngLayout::objHeader(const ImageBuffer& aImage) const
{
    PngHeader objResult;
    objResult.nWidth = static_cast<std::uint32_t>(aImage.width);
    objResult.nHeight = static_cast<std::uint32_t>(aImage.height);
    objResult.nDepth = nDepth;
    objResult.objColour = objColour;
    return objResult;
}

std::uint32_t PngLayout::nPixelBytes() const
{
    PngHeader objSamples;
    objSamples.objColour = objColour;
    return objSamples.nSamples();
}

// Puts values of nDepth bits together, the first highest.
class ValuePacker
{
public:
    ValuePacker(std::uint8_t* pOut, std::uint32_t nDepth) : m_pOut(pOut), m_nDepth(nDepth) {}
    void Put(std::uint32_t nValue)
    {
        m_nBits = m_nBits << m_nDepth | nValue;
        m_nCount += m_nDepth;
        if (m_nCount == 8) {
            *m_pOut++ = static_cast<std::uint8_t>(m_nBits);
            m_nCount = 0;
        }
    }
    void Finish()
    {
        if (m_nCount)
            *m_pOut = static_cast<std::uint8_t>(m_nBits << (8 - m_nCount));
    }

private:
    std::uint8_t* m_pOut;
    std::uint32_t m_nDepth;
    std::uint32_t m_nBits = 0;
    std::uint32_t m_nCount = 0;
};

template <std::size_t nChannels>
static void PutIndices(PngLayout& objLayout, const std::uint8_t* pRow, std::size_t nPixels,
                       std::uint8_t* pOut)
{
    ValuePacker objPacker(pOut, objLayout.nDepth);
    std::uint32_t nLast = 0;
    std::size_t nIndex = PngColourTable::kMost;
    for (std::size_t x = 0; x < nPixels; ++x) {
        const std::uint32_t nColour = nColourAt<nChannels>(pRow + x * nChannels);
        if (nColour != nLast || x == 0)
            nIndex = objLayout.objTable.nIndexOf(nColour);
        nLast = nColour;
        objPacker.Put(static_cast<std::uint32_t>(nIndex));
    }
    objPacker.Finish();
}

static void PutGreys(std::uint32_t nDepth, const std::uint8_t* pRow, std::size_t nChannels,
                     std::size_t nPixels, std::uint8_t* pOut)
{
    if (nChannels == 1 && nDepth == 8) {
        std::memcpy(pOut, pRow, nPixels);
    } else if (nChannels == 1 && nDepth == 1) {
        PackBits(pRow, pOut, nPixels);
    } else {
        ValuePacker objPacker(pOut, nDepth);
        for (std::size_t x = 0; x < nPixels; ++x)
            objPacker.Put(pRow[x * nChannels] >> (8 - nDepth));
        objPacker.Finish();
    }
}

void MakePngRow(PngLayout& objLayout, const ImageBuffer& aImage, std::size_t y, std::uint8_t* pOut)
{
    const auto nPixels = static_cast<std::size_t>(aImage.width);
    const auto nChannels = static_cast<std::size_t>(aImage.channels);
    const std::uint8_t* const pRow = aImage.bytes.data() + y * nPixels * nChannels;
    switch (objLayout.objColour) {
        case PngColour::Grey:
            PutGreys(objLayout.nDepth, pRow, nChannels, nPixels, pOut);
            break;
        case PngColour::Palette:
            if (nChannels == 1)
                PutIndices<1>(objLayout, pRow, nPixels, pOut);
            else if (nChannels == 3)
                PutIndices<3>(objLayout, pRow, nPixels, pOut);
            else
                PutIndices<4>(objLayout, pRow, nPixels, pOut);
            break;
        case PngColour::GreyAlpha:
            for (std::size_t x = 0; x < nPixels; ++x) {
                pOut[2 * x] = pRow[4 * x];
                pOut[2 * x + 1] = pRow[4 * x + 3];
            }
            break;
        case PngColour::Rgb:
            if (nChannels == 3) {
                SwapRedAndBlue3(pRow, pOut, nPixels);
                break;
            }
            for (std::size_t x = 0; x < nPixels; ++x)
                for (std::size_t i = 0; i < 3; ++i)
                    pOut[3 * x + i] = pRow[4 * x + 2 - i];
            break;
        case PngColour::Rgba:
            SwapRedAndBlue4(pRow, pOut, nPixels);
            break;
    }
}

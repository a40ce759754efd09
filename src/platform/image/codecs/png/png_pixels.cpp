// Turns a PNG's samples into pixels.
#include "src/platform/image/codecs/png/png_pixels.h"

#include <algorithm>
#include <cmath>
#include <cstring>

static bool bAllGrey(const std::vector<std::uint8_t>& aRgb)
{
    for (std::size_t i = 0; i + 2 < aRgb.size(); i += 3)
        if (aRgb[i] != aRgb[i + 1] || aRgb[i] != aRgb[i + 2])
            return false;
    return true;
}

PngPalette objPaletteOf(const PngInfo& objInfo)
{
    PngPalette objPalette;
    if (objInfo.objHeader.objColour == PngColour::Grey) {
        const std::uint32_t nWhite = (1U << objInfo.objHeader.nDepth) - 1;
        for (std::uint32_t i = 0; i <= nWhite; ++i)
            objPalette.aEntries[i] = static_cast<std::uint8_t>(i * 255 / nWhite);
        return objPalette;
    }
    const std::vector<std::uint8_t>& aRgb = objInfo.aPalette;
    const bool bAlpha = !objInfo.aTransparency.empty();
    const bool bGrey = bAllGrey(aRgb) && !bAlpha && objInfo.aIccProfile.empty();
    objPalette.lChannels = bAlpha ? 4 : bGrey ? 1 : 3;
    const auto nChannels = static_cast<std::size_t>(objPalette.lChannels);
    for (std::size_t i = 0; i < 256; ++i) {
        std::uint8_t* pEntry = objPalette.aEntries.data() + i * nChannels;
        for (std::size_t nSample = 0; nSample < std::min<std::size_t>(nChannels, 3) && 3 * i < aRgb.size();
             ++nSample)
            pEntry[nSample] = aRgb[3 * i + 2 - nSample];
        if (bAlpha)
            pEntry[3] = i < objInfo.aTransparency.size() ? objInfo.aTransparency[i] : 255;
    }
    return objPalette;
}

template <std::size_t nChannels>
static void LookUp(const PngPalette& objPalette, std::uint32_t nDepth, const std::uint8_t* __restrict pIn,
                   std::uint8_t* __restrict pOut, std::size_t nPixels)
{
    const std::uint8_t* pEntries = objPalette.aEntries.data();
    if (nDepth == 8) {
        for (std::size_t x = 0; x < nPixels; ++x)
            std::memcpy(pOut + x * nChannels, pEntries + pIn[x] * nChannels, nChannels);
        return;
    }
    const std::uint32_t nMask = (1U << nDepth) - 1;
    const std::uint32_t nInByte = 8 / nDepth;
    for (std::size_t x = 0; x < nPixels; x += nInByte) {
        std::uint32_t nByte = *pIn++;
        const std::size_t nHere = std::min<std::size_t>(nInByte, nPixels - x);
        for (std::size_t i = 0; i < nHere; ++i) {
            nByte <<= nDepth;
            std::memcpy(pOut + (x + i) * nChannels, pEntries + (nByte >> 8 & nMask) * nChannels, nChannels);
        }
    }
}

// Eight pixels of one channel at once: the byte is copied to eight lanes, each of which keeps its own bit.
static void LookUpBits(const PngPalette& objPalette, const std::uint8_t* __restrict pIn,
                       std::uint8_t* __restrict pOut, std::size_t nPixels)
{
    constexpr std::uint64_t kEach = 0x0101010101010101;
    // The leftmost pixel is the lowest byte of the lanes and the highest bit of the byte.
    constexpr std::uint64_t kBits = 0x0102040810204080;
    const std::uint64_t nZero = objPalette.aEntries[0] * kEach;
    const std::uint64_t nDiffer = (objPalette.aEntries[0] ^ objPalette.aEntries[1]) * kEach;
    std::size_t x = 0;
    for (; x + 8 <= nPixels; x += 8) {
        const std::uint64_t nKept = *pIn++ * kEach & kBits;
        // 0x7F more sets the highest bit of every lane that isn't 0, and none overflows.
        const std::uint64_t nSet = ((nKept + 0x7F * kEach) | nKept) & 0x80 * kEach;
        const std::uint64_t nLanes = (nSet >> 7) * 255;
        const std::uint64_t nEight = nZero ^ (nDiffer & nLanes);
        if constexpr (__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__) {
            std::memcpy(pOut + x, &nEight, 8);
        } else {
            for (std::size_t i = 0; i < 8; ++i)
                pOut[x + i] = static_cast<std::uint8_t>(nEight >> 8 * i);
        }
    }
    if (x < nPixels)
        LookUp<1>(objPalette, 1, pIn, pOut + x, nPixels - x);
}

void LookUpRow(const PngPalette& objPalette, std::uint32_t nDepth, const std::uint8_t* pIn,
               std::uint8_t* pOut, std::size_t nPixels)
{
    if (objPalette.lChannels == 1 && nDepth == 1)
        LookUpBits(objPalette, pIn, pOut, nPixels);
    else if (objPalette.lChannels == 1)
        LookUp<1>(objPalette, nDepth, pIn, pOut, nPixels);
    else if (objPalette.lChannels == 3)
        LookUp<3>(objPalette, nDepth, pIn, pOut, nPixels);
    else
        LookUp<4>(objPalette, nDepth, pIn, pOut, nPixels);
}

double dPngGammaExponent(const PngInfo& objInfo)
{
    if (objInfo.bColourSpace || objInfo.dGamma < 0.05 || objInfo.dGamma > 5)
        return 1;
    const double dExponent = 1 / (objInfo.dGamma * kPngScreenGamma);
    return std::abs(dExponent - 1) < 0.05 ? 1 : dExponent;
}

void ApplyGamma(double dExponent, std::int32_t lChannels, std::uint8_t* pPixels, std::size_t nPixels)
{
    std::array<std::uint8_t, 256> aTable{};
    for (std::size_t i = 0; i < aTable.size(); ++i)
        aTable[i] =
            static_cast<std::uint8_t>(std::lround(255 * std::pow(static_cast<double>(i) / 255, dExponent)));
    ApplyTable(aTable, lChannels, pPixels, nPixels);
}

void ApplyTable(const std::array<std::uint8_t, 256>& aTable, std::int32_t lChannels, std::uint8_t* pPixels,
                std::size_t nPixels)
{
    const auto nChannels = static_cast<std::size_t>(lChannels);
    const std::size_t nColours = std::min<std::size_t>(nChannels, 3);
    for (std::size_t i = 0; i < nPixels * nChannels; i += nChannels)
        for (std::size_t nSample = 0; nSample < nColours; ++nSample)
            pPixels[i + nSample] = aTable[pPixels[i + nSample]];
}

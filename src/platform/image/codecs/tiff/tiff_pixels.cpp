// Row kernels.
#include "src/platform/image/codecs/tiff/tiff_pixels.h"

#include <algorithm>
#include <cstring>

void ExpandBits(const std::uint8_t* pIn, std::size_t nPixels, std::uint8_t nZero, std::uint8_t nOne,
                std::uint8_t* pOut)
{
    // Eight pixels at a time. The byte, multiplied into all eight places, keeps one bit in each; a carry out
    // of the lower seven bits then tells whether that bit is there.
    constexpr std::uint64_t kEach = 0x0101010101010101u;
    constexpr std::uint64_t kOneBit = 0x0102040810204080u;  // the highest bit is the first byte in memory
    constexpr std::uint64_t kLowSeven = 0x7F7F7F7F7F7F7F7Fu;
    const std::uint64_t nZeros = nZero * kEach;
    const std::uint64_t nFlips = (nZero ^ nOne) * kEach;
    const std::size_t nWhole = nPixels / 8;
    for (std::size_t i = 0; i < nWhole; ++i) {
        const std::uint64_t nBits = (pIn[i] * kEach) & kOneBit;
        const std::uint64_t nSet = (((nBits & kLowSeven) + kLowSeven) | nBits) & ~kLowSeven;
        const std::uint64_t nMask = (nSet >> 7) * 0xFF;
        const std::uint64_t nLevels = nZeros ^ (nMask & nFlips);
        std::memcpy(pOut + i * 8, &nLevels, 8);
    }
    for (std::size_t i = nWhole * 8; i < nPixels; ++i)
        pOut[i] = pIn[i / 8] >> (7 - i % 8) & 1 ? nOne : nZero;
}

void PackDarkBits(const std::uint8_t* pIn, std::size_t nPixels, std::uint8_t* pOut)
{
    constexpr std::uint64_t kHighest = 0x8080808080808080u;
    constexpr std::uint64_t kGather =
        0x8040201008040201u;  // brings a bit of each byte together, the first highest
    const std::size_t nWhole = nPixels / 8;
    for (std::size_t i = 0; i < nWhole; ++i) {
        std::uint64_t nLevels = 0;
        std::memcpy(&nLevels, pIn + i * 8, 8);
        pOut[i] = static_cast<std::uint8_t>(((~nLevels & kHighest) >> 7) * kGather >> 56);
    }
    if (nPixels % 8 == 0)
        return;
    pOut[nWhole] = 0;
    for (std::size_t i = nWhole * 8; i < nPixels; ++i)
        if (pIn[i] < 128)
            pOut[nWhole] = static_cast<std::uint8_t>(pOut[nWhole] | 0x80 >> i % 8);
}

void LevelsAtHalf(const std::uint8_t* pIn, std::size_t nPixels, std::uint32_t nChannels, std::uint8_t* pOut)
{
    if (nChannels == 1) {
        for (std::size_t i = 0; i < nPixels; ++i)
            pOut[i] = pIn[i] >= 128 ? 255 : 0;
        return;
    }
    for (std::size_t i = 0; i < nPixels; ++i) {
        const unsigned nIntensity = 114u * pIn[i * 3] + 587u * pIn[i * 3 + 1] + 299u * pIn[i * 3 + 2];
        pOut[i] = nIntensity >= 128000 ? 255 : 0;
    }
}

void SubtractLeft(const std::uint8_t* __restrict pIn, std::size_t nBytes, std::uint32_t nChannels,
                  std::uint8_t* __restrict pOut)
{
    const std::size_t nFirst = std::min<std::size_t>(nBytes, nChannels);
    std::memcpy(pOut, pIn, nFirst);
    for (std::size_t i = nFirst; i < nBytes; ++i)
        pOut[i] = static_cast<std::uint8_t>(pIn[i] - pIn[i - nChannels]);
}

void Unpremultiply(std::uint8_t* pPixels, std::size_t nPixels)
{
    for (std::uint8_t* p = pPixels; p != pPixels + nPixels * 4; p += 4) {
        const unsigned nAlpha = p[3];
        if (nAlpha == 0 || nAlpha == 255)
            continue;
        for (int c = 0; c < 3; ++c)
            p[c] = static_cast<std::uint8_t>(std::min(255u, (p[c] * 255u + nAlpha / 2) / nAlpha));
    }
}

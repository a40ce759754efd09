// Moves samples about, with vector instructions where there are some.
#include "src/platform/image/codecs/png/filters/png_shuffle.h"

#include <algorithm>
#include <cstring>

#include "src/platform/image/codecs/png/filters/png_kernels.h"

#ifdef VARNEL_PNG_AVX2
#include <immintrin.h>

// These return how many pixels they did; the rest, less than a vector, is left to the plain loops.
VARNEL_TARGET_AVX2 static std::size_t nSwap3(const std::uint8_t* pIn, std::uint8_t* pOut, std::size_t nPixels)
{
    const __m128i vOrder = _mm_setr_epi8(2, 1, 0, 5, 4, 3, 8, 7, 6, 11, 10, 9, 14, 13, 12, 15);
    std::size_t i = 0;
    for (; i + 16 <= 3 * nPixels; i += 15) {
        const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(pIn + i));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(pOut + i), _mm_shuffle_epi8(v, vOrder));
    }
    return i / 3;
}

VARNEL_TARGET_AVX2 static std::size_t nPack(const std::uint8_t* pIn, std::uint8_t* pOut, std::size_t nPixels)
{
    // Each eight bytes are turned round, so that the first comes to the highest bit of the mask's byte.
    const __m256i vOrder = _mm256_setr_epi8(7, 6, 5, 4, 3, 2, 1, 0, 15, 14, 13, 12, 11, 10, 9, 8, 7, 6, 5, 4,
                                            3, 2, 1, 0, 15, 14, 13, 12, 11, 10, 9, 8);
    std::size_t i = 0;
    for (; i + 32 <= nPixels; i += 32) {
        const __m256i v = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(pIn + i));
        const __m256i vTop = _mm256_slli_epi16(_mm256_shuffle_epi8(v, vOrder), 7);
        const int nBits = _mm256_movemask_epi8(vTop);
        std::memcpy(pOut + i / 8, &nBits, 4);
    }
    return i;
}
#endif

void SwapRedAndBlue3(const std::uint8_t* pIn, std::uint8_t* pOut, std::size_t nPixels)
{
    std::size_t i = 0;
#ifdef VARNEL_PNG_AVX2
    if (bPngHasAvx2())
        i = nSwap3(pIn, pOut, nPixels);
#endif
    for (; i < nPixels; ++i) {
        pOut[3 * i] = pIn[3 * i + 2];
        pOut[3 * i + 1] = pIn[3 * i + 1];
        pOut[3 * i + 2] = pIn[3 * i];
    }
}

void SwapRedAndBlue4(const std::uint8_t* pIn, std::uint8_t* pOut, std::size_t nPixels)
{
    for (std::size_t i = 0; i < nPixels; ++i) {
        std::uint32_t nPixel = 0;
        std::memcpy(&nPixel, pIn + 4 * i, 4);
        if constexpr (__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__)
            nPixel = (nPixel & 0xFF00FF00) | (nPixel >> 16 & 0xFF) | (nPixel & 0xFF) << 16;
        else
            nPixel = (nPixel & 0x00FF00FF) | (nPixel >> 16 & 0xFF00) | (nPixel & 0xFF00) << 16;
        std::memcpy(pOut + 4 * i, &nPixel, 4);
    }
}

void PackBits(const std::uint8_t* pIn, std::uint8_t* pOut, std::size_t nPixels)
{
    std::size_t i = 0;
#ifdef VARNEL_PNG_AVX2
    if (bPngHasAvx2())
        i = nPack(pIn, pOut, nPixels);
#endif
    for (; i < nPixels; i += 8) {
        std::uint32_t nByte = 0;
        for (std::size_t nBit = 0; nBit < 8; ++nBit)
            nByte = nByte << 1 | (i + nBit < nPixels ? pIn[i + nBit] & 1U : 0U);
        pOut[i / 8] = static_cast<std::uint8_t>(nByte);
    }
}

bool bOnlyExtremes(const std::uint8_t* pBytes, std::size_t nBytes)
{
    constexpr std::size_t kPiece = 4096;
    for (std::size_t nDone = 0; nDone < nBytes; nDone += kPiece) {
        const std::uint8_t* const p = pBytes + nDone;
        const std::size_t nHere = std::min(kPiece, nBytes - nDone);
        std::uint8_t nOther = 0;  // one more makes 255 a 0 and 0 a 1
        for (std::size_t i = 0; i < nHere; ++i)
            nOther |= static_cast<std::uint8_t>((p[i] + 1) & 0xFE);
        if (nOther)
            return false;
    }
    return true;
}

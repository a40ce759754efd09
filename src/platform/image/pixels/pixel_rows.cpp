// Small steps on rows of pixels that several formats need.
#include "src/platform/image/pixels/pixel_rows.h"

#include <cstddef>
#include <cstring>
#include <utility>

#include "src/platform/image/base/limits.h"

#if defined(__x86_64__)
#include <immintrin.h>
#endif

static std::uint32_t nLoad(const std::uint8_t* pBytes)
{
    std::uint32_t nWord = 0;
    std::memcpy(&nWord, pBytes, 4);
    return nWord;
}

static void Store(std::uint8_t* pBytes, std::uint32_t nWord)
{
    std::memcpy(pBytes, &nWord, 4);
}

void PackRowFromFourBytes(const std::uint8_t* pIn, std::uint8_t* pOut, std::uint64_t nPixels)
{
    std::uint64_t x = 0;
#if __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__
    // Four pixels are three words.
    for (; x + 4 <= nPixels; x += 4, pIn += 16, pOut += 12) {
        const std::uint32_t n0 = nLoad(pIn), n1 = nLoad(pIn + 4), n2 = nLoad(pIn + 8), n3 = nLoad(pIn + 12);
        Store(pOut, (n0 & 0xFFFFFF) | n1 << 24);
        Store(pOut + 4, (n1 >> 8 & 0xFFFF) | n2 << 16);
        Store(pOut + 8, (n2 >> 16 & 0xFF) | n3 << 8);
    }
#endif
    for (; x < nPixels; ++x, pIn += 4, pOut += 3)
        std::memmove(pOut, pIn, 3);
}

#if defined(__x86_64__)
static bool bShuffles()
{
    static const bool bFound = __builtin_cpu_supports("ssse3") != 0;
    return bFound;
}

// Five pixels a step. The sixteenth byte is stored as it was read, so that the next step, also in place,
// finds it.
__attribute__((target("ssse3"))) static std::uint64_t nSwapped(const std::uint8_t* pIn, std::uint8_t* pOut,
                                                               std::uint64_t nPixels)
{
    const __m128i aOrder = _mm_setr_epi8(2, 1, 0, 5, 4, 3, 8, 7, 6, 11, 10, 9, 14, 13, 12, 15);
    std::uint64_t x = 0;
    for (; x + 6 <= nPixels; x += 5) {
        const __m128i aPixels = _mm_loadu_si128(reinterpret_cast<const __m128i*>(pIn + x * 3));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(pOut + x * 3), _mm_shuffle_epi8(aPixels, aOrder));
    }
    return x;
}

__attribute__((target("ssse3"))) static std::uint64_t nSwappedOfFour(const std::uint8_t* pIn,
                                                                     std::uint8_t* pOut,
                                                                     std::uint64_t nPixels)
{
    const __m128i aOrder = _mm_setr_epi8(2, 1, 0, 3, 6, 5, 4, 7, 10, 9, 8, 11, 14, 13, 12, 15);
    std::uint64_t x = 0;
    for (; x + 4 <= nPixels; x += 4) {
        const __m128i aPixels = _mm_loadu_si128(reinterpret_cast<const __m128i*>(pIn + x * 4));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(pOut + x * 4), _mm_shuffle_epi8(aPixels, aOrder));
    }
    return x;
}
#else
static bool bShuffles()
{
    return false;
}
static std::uint64_t nSwapped(const std::uint8_t*, std::uint8_t*, std::uint64_t)
{
    return 0;
}
static std::uint64_t nSwappedOfFour(const std::uint8_t*, std::uint8_t*, std::uint64_t)
{
    return 0;
}
#endif

void SwapRedAndBlue(const std::uint8_t* pIn, std::uint8_t* pOut, std::uint64_t nPixels)
{
    for (std::uint64_t x = bShuffles() ? nSwapped(pIn, pOut, nPixels) : 0; x < nPixels; ++x) {
        const std::uint8_t nFirst = pIn[x * 3];
        const std::uint8_t nSecond = pIn[x * 3 + 1];
        pOut[x * 3] = pIn[x * 3 + 2];
        pOut[x * 3 + 1] = nSecond;
        pOut[x * 3 + 2] = nFirst;
    }
}

void SwapRedAndBlueOfFour(const std::uint8_t* pIn, std::uint8_t* pOut, std::uint64_t nPixels)
{
    for (std::uint64_t x = bShuffles() ? nSwappedOfFour(pIn, pOut, nPixels) : 0; x < nPixels; ++x) {
        const std::uint32_t nPixel = nLoad(pIn + x * 4);
        const std::uint8_t nFirst = pIn[x * 4];
        const std::uint8_t nThird = pIn[x * 4 + 2];
        Store(pOut + x * 4, nPixel);
        pOut[x * 4] = nThird;
        pOut[x * 4 + 2] = nFirst;
    }
}

static std::uint64_t nPixelsOf(const ImageBuffer& aImage)
{
    return static_cast<std::uint64_t>(aImage.width) * static_cast<std::uint64_t>(aImage.height);
}

void DropUnsetAlpha(ImageBuffer& aImage)
{
    if (aImage.channels != 4)
        return;
    const std::uint64_t nPixels = nPixelsOf(aImage);
    std::uint8_t* pBytes = aImage.bytes.data();
    for (std::uint64_t i = 0; i < nPixels; ++i) {
        if (pBytes[i * 4 + 3] != 0)
            return;
    }
    // In place: what is written never overtakes what is still to be read.
    PackRowFromFourBytes(pBytes, pBytes, nPixels);
    aImage.channels = 3;
    aImage.bytes.resize(nPixels * 3);
}

bool bAddAlpha(ImageBuffer& aImage)
{
    if (aImage.channels == 4)
        return true;
    ImageBuffer aResult;
    if (!Allocate(aResult, static_cast<std::uint64_t>(aImage.width),
                  static_cast<std::uint64_t>(aImage.height), 4))
        return false;
    const std::size_t nStep = aImage.channels == 1 ? 1 : 3;
    const std::size_t nGreen = aImage.channels == 1 ? 0 : 1;
    const std::size_t nRed = aImage.channels == 1 ? 0 : 2;
    const std::uint8_t* pIn = aImage.bytes.data();
    std::uint8_t* pOut = aResult.bytes.data();
    for (std::uint64_t i = nPixelsOf(aImage); i > 0; --i, pIn += nStep, pOut += 4) {
        pOut[0] = pIn[0];
        pOut[1] = pIn[nGreen];
        pOut[2] = pIn[nRed];
        pOut[3] = 255;
    }
    aResult.dots_per_inch_x = aImage.dots_per_inch_x;
    aResult.dots_per_inch_y = aImage.dots_per_inch_y;
    aResult.metadata = std::move(aImage.metadata);
    if (aImage.channels == 3)  // a profile of greys doesn't fit colours
        aResult.icc_profile = std::move(aImage.icc_profile);
    aImage = std::move(aResult);
    return true;
}

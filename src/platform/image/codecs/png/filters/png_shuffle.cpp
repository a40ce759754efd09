// Reorders and packs samples, with AVX2 where available.
#include "src/platform/image/codecs/png/filters/png_shuffle.h"

#include <algorithm>
#include <cstring>

#include "src/platform/image/codecs/png/filters/png_kernels.h"

#ifdef VARNEL_PNG_AVX2
#include <immintrin.h>

// The AVX2 versions return how many pixels they converted; plain loops do the rest.
VARNEL_TARGET_AVX2 static std::size_t Swap3(const std::uint8_t* in, std::uint8_t* out, std::size_t pixels)
{
    const __m128i order = _mm_setr_epi8(2, 1, 0, 5, 4, 3, 8, 7, 6, 11, 10, 9, 14, 13, 12, 15);
    std::size_t i = 0;
    for (; i + 16 <= 3 * pixels; i += 15) {
        const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(in + i));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(out + i), _mm_shuffle_epi8(v, order));
    }
    return i / 3;
}

VARNEL_TARGET_AVX2 static std::size_t Pack(const std::uint8_t* in, std::uint8_t* out, std::size_t pixels)
{
    // Reverse each group of eight bytes, so that its first byte ends up in the highest bit of the mask byte.
    const __m256i order = _mm256_setr_epi8(7, 6, 5, 4, 3, 2, 1, 0, 15, 14, 13, 12, 11, 10, 9, 8, 7, 6, 5, 4,
                                           3, 2, 1, 0, 15, 14, 13, 12, 11, 10, 9, 8);
    std::size_t i = 0;
    for (; i + 32 <= pixels; i += 32) {
        const __m256i v = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(in + i));
        const __m256i top = _mm256_slli_epi16(_mm256_shuffle_epi8(v, order), 7);
        const int bits = _mm256_movemask_epi8(top);
        std::memcpy(out + i / 8, &bits, 4);
    }
    return i;
}
#endif

void SwapRedAndBlue3(const std::uint8_t* in, std::uint8_t* out, std::size_t pixels)
{
    std::size_t i = 0;
#ifdef VARNEL_PNG_AVX2
    if (HasAvx2ForPng())
        i = Swap3(in, out, pixels);
#endif
    for (; i < pixels; ++i) {
        out[3 * i] = in[3 * i + 2];
        out[3 * i + 1] = in[3 * i + 1];
        out[3 * i + 2] = in[3 * i];
    }
}

void SwapRedAndBlue4(const std::uint8_t* in, std::uint8_t* out, std::size_t pixels)
{
    for (std::size_t i = 0; i < pixels; ++i) {
        std::uint32_t pixel = 0;
        std::memcpy(&pixel, in + 4 * i, 4);
        if constexpr (__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__)
            pixel = (pixel & 0xFF00FF00) | (pixel >> 16 & 0xFF) | (pixel & 0xFF) << 16;
        else
            pixel = (pixel & 0x00FF00FF) | (pixel >> 16 & 0xFF00) | (pixel & 0xFF00) << 16;
        std::memcpy(out + 4 * i, &pixel, 4);
    }
}

void PackBits(const std::uint8_t* in, std::uint8_t* out, std::size_t pixels)
{
    std::size_t i = 0;
#ifdef VARNEL_PNG_AVX2
    if (HasAvx2ForPng())
        i = Pack(in, out, pixels);
#endif
    for (; i < pixels; i += 8) {
        std::uint32_t byte = 0;
        for (std::size_t bit = 0; bit < 8; ++bit)
            byte = byte << 1 | (i + bit < pixels ? in[i + bit] & 1U : 0U);
        out[i / 8] = static_cast<std::uint8_t>(byte);
    }
}

bool HasOnlyExtremes(const std::uint8_t* bytes, std::size_t byte_count)
{
    constexpr std::size_t kPiece = 4096;
    for (std::size_t done = 0; done < byte_count; done += kPiece) {
        const std::uint8_t* const p = bytes + done;
        const std::size_t here = std::min(kPiece, byte_count - done);
        std::uint8_t other = 0;  // adding 1 maps 255 to 0 and 0 to 1
        for (std::size_t i = 0; i < here; ++i)
            other |= static_cast<std::uint8_t>((p[i] + 1) & 0xFE);
        if (other)
            return false;
    }
    return true;
}

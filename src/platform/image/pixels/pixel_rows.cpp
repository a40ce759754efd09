// Conversions of pixel rows that several codecs share.
#include "src/platform/image/pixels/pixel_rows.h"

#include <cstddef>
#include <cstring>
#include <utility>

#include "src/platform/image/base/limits.h"

#if defined(__x86_64__)
#include <immintrin.h>
#endif

static std::uint32_t Load(const std::uint8_t* bytes)
{
    std::uint32_t word = 0;
    std::memcpy(&word, bytes, 4);
    return word;
}

static void Store(std::uint8_t* bytes, std::uint32_t word)
{
    std::memcpy(bytes, &word, 4);
}

void PackRowFromFourBytes(const std::uint8_t* in, std::uint8_t* out, std::uint64_t pixels)
{
    std::uint64_t x = 0;
#if __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__
    // Packs four pixels into three words.
    for (; x + 4 <= pixels; x += 4, in += 16, out += 12) {
        const std::uint32_t n0 = Load(in), n1 = Load(in + 4), n2 = Load(in + 8), n3 = Load(in + 12);
        Store(out, (n0 & 0xFFFFFF) | n1 << 24);
        Store(out + 4, (n1 >> 8 & 0xFFFF) | n2 << 16);
        Store(out + 8, (n2 >> 16 & 0xFF) | n3 << 8);
    }
#endif
    for (; x < pixels; ++x, in += 4, out += 3)
        std::memmove(out, in, 3);
}

#if defined(__x86_64__)
static bool HasShuffles()
{
    static const bool kFound = __builtin_cpu_supports("ssse3") != 0;
    return kFound;
}

// Five pixels per step. The sixteenth byte is written back unchanged, so that the next step finds it when
// working in place.
__attribute__((target("ssse3"))) static std::uint64_t SwapQuickly(const std::uint8_t* in, std::uint8_t* out,
                                                                  std::uint64_t pixel_count)
{
    const __m128i order = _mm_setr_epi8(2, 1, 0, 5, 4, 3, 8, 7, 6, 11, 10, 9, 14, 13, 12, 15);
    std::uint64_t x = 0;
    for (; x + 6 <= pixel_count; x += 5) {
        const __m128i pixels = _mm_loadu_si128(reinterpret_cast<const __m128i*>(in + x * 3));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(out + x * 3), _mm_shuffle_epi8(pixels, order));
    }
    return x;
}

__attribute__((target("ssse3"))) static std::uint64_t SwapFourQuickly(const std::uint8_t* in,
                                                                      std::uint8_t* out,
                                                                      std::uint64_t pixel_count)
{
    const __m128i order = _mm_setr_epi8(2, 1, 0, 3, 6, 5, 4, 7, 10, 9, 8, 11, 14, 13, 12, 15);
    std::uint64_t x = 0;
    for (; x + 4 <= pixel_count; x += 4) {
        const __m128i pixels = _mm_loadu_si128(reinterpret_cast<const __m128i*>(in + x * 4));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(out + x * 4), _mm_shuffle_epi8(pixels, order));
    }
    return x;
}
#else
static bool HasShuffles()
{
    return false;
}
static std::uint64_t SwapQuickly(const std::uint8_t*, std::uint8_t*, std::uint64_t)
{
    return 0;
}
static std::uint64_t SwapFourQuickly(const std::uint8_t*, std::uint8_t*, std::uint64_t)
{
    return 0;
}
#endif

void SwapRedAndBlue(const std::uint8_t* in, std::uint8_t* out, std::uint64_t pixels)
{
    for (std::uint64_t x = HasShuffles() ? SwapQuickly(in, out, pixels) : 0; x < pixels; ++x) {
        const std::uint8_t first = in[x * 3];
        const std::uint8_t second = in[x * 3 + 1];
        out[x * 3] = in[x * 3 + 2];
        out[x * 3 + 1] = second;
        out[x * 3 + 2] = first;
    }
}

void SwapRedAndBlueOfFour(const std::uint8_t* in, std::uint8_t* out, std::uint64_t pixels)
{
    for (std::uint64_t x = HasShuffles() ? SwapFourQuickly(in, out, pixels) : 0; x < pixels; ++x) {
        const std::uint32_t pixel = Load(in + x * 4);
        const std::uint8_t first = in[x * 4];
        const std::uint8_t third = in[x * 4 + 2];
        Store(out + x * 4, pixel);
        out[x * 4] = third;
        out[x * 4 + 2] = first;
    }
}

static std::uint64_t PixelsOf(const ImageBuffer& image)
{
    return static_cast<std::uint64_t>(image.width) * static_cast<std::uint64_t>(image.height);
}

// Drops the alpha channel if it has the same level in all pixels.
static void DropAlphaOf(ImageBuffer& image, std::uint8_t level)
{
    if (image.channels != 4)
        return;
    const std::uint64_t pixels = PixelsOf(image);
    std::uint8_t* bytes = image.bytes.data();
    for (std::uint64_t i = 0; i < pixels; ++i) {
        if (bytes[i * 4 + 3] != level)
            return;
    }
    // In place is safe: the write position never overtakes the read position.
    PackRowFromFourBytes(bytes, bytes, pixels);
    image.channels = 3;
    image.bytes.resize(pixels * 3);
}

void DropUnsetAlpha(ImageBuffer& image)
{
    DropAlphaOf(image, 0);
}

void DropUniformAlpha(ImageBuffer& image)
{
    DropAlphaOf(image, 0);
    DropAlphaOf(image, 255);
}

bool AddAlpha(ImageBuffer& image)
{
    if (image.channels == 4)
        return true;
    ImageBuffer result;
    if (!Allocate(result, static_cast<std::uint64_t>(image.width), static_cast<std::uint64_t>(image.height),
                  4))
        return false;
    const std::size_t step = image.channels == 1 ? 1 : 3;
    const std::size_t green = image.channels == 1 ? 0 : 1;
    const std::size_t red = image.channels == 1 ? 0 : 2;
    const std::uint8_t* in = image.bytes.data();
    std::uint8_t* out = result.bytes.data();
    for (std::uint64_t i = PixelsOf(image); i > 0; --i, in += step, out += 4) {
        out[0] = in[0];
        out[1] = in[green];
        out[2] = in[red];
        out[3] = 255;
    }
    result.dots_per_inch_x = image.dots_per_inch_x;
    result.dots_per_inch_y = image.dots_per_inch_y;
    result.metadata = std::move(image.metadata);
    if (image.channels == 3)  // a grey profile doesn't fit RGB pixels
        result.icc_profile = std::move(image.icc_profile);
    image = std::move(result);
    return true;
}

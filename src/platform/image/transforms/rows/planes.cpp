// Deinterleaves 3-byte pixels with byte shuffles, sixteen pixels at a time.
#include "src/platform/image/transforms/rows/planes.h"

#include <array>

#include "src/platform/image/transforms/rows/intensity.h"
#include "src/platform/image/transforms/rows/processor.h"
#include "src/platform/image/transforms/rows/row_loop.h"

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace transforms
{

namespace
{

template <std::size_t kChannels>
ROW_LOOP_PART void Split(const std::uint8_t* __restrict pixels, std::size_t first, std::size_t end,
                         Planes& planes)
{
    std::uint8_t* __restrict blue = planes.blue;
    std::uint8_t* __restrict green = planes.green;
    std::uint8_t* __restrict red = planes.red;
    for (std::size_t i = first; i < end; ++i) {
        blue[i] = pixels[kChannels * i];
        green[i] = pixels[kChannels * i + 1];
        red[i] = pixels[kChannels * i + 2];
    }
}

template <std::size_t kChannels>
ROW_LOOP_PART void Join(const Planes& planes, std::size_t first, std::size_t end,
                        std::uint8_t* __restrict pixels)
{
    const std::uint8_t* __restrict blue = planes.blue;
    const std::uint8_t* __restrict green = planes.green;
    const std::uint8_t* __restrict red = planes.red;
    for (std::size_t i = first; i < end; ++i) {
        if constexpr (kChannels == 4) {
            const std::uint8_t alpha = pixels[4 * i + 3];
            pixels[4 * i + 3] = alpha;  // write all four bytes, so that the loop vectorises
        }
        pixels[kChannels * i] = blue[i];
        pixels[kChannels * i + 1] = green[i];
        pixels[kChannels * i + 2] = red[i];
    }
}

ROW_LOOP void Split4(const std::uint8_t* pixels, std::size_t pixel_count, Planes& planes)
{
    Split<4>(pixels, 0, pixel_count, planes);
}
ROW_LOOP void Join4(const Planes& planes, std::size_t pixel_count, std::uint8_t* pixels)
{
    Join<4>(planes, 0, pixel_count, pixels);
}

#if defined(__x86_64__)

#define WITH_SHUFFLES __attribute__((target("ssse3")))
#define WITH_AVX2 __attribute__((target("avx2")))
using Order = std::array<std::uint8_t, 16>;
using Orders = std::array<std::array<Order, 3>, 3>;
constexpr std::uint8_t kNone = 0x80;

// Where plane p's bytes are in the three registers that hold 16 pixels.
constexpr Orders SplitOrders()
{
    Orders result{};
    for (std::size_t p = 0; p < 3; ++p)
        for (std::size_t k = 0; k < 3; ++k)
            for (std::size_t i = 0; i < 16; ++i)
                result[p][k][i] = static_cast<std::uint8_t>((3 * i + p) / 16 == k ? (3 * i + p) % 16 : kNone);
    return result;
}
// Where register k's bytes are in the three planes.
constexpr Orders JoinOrders()
{
    Orders result{};
    for (std::size_t k = 0; k < 3; ++k)
        for (std::size_t p = 0; p < 3; ++p)
            for (std::size_t j = 0; j < 16; ++j)
                result[k][p][j] = static_cast<std::uint8_t>((16 * k + j) % 3 == p ? (16 * k + j) / 3 : kNone);
    return result;
}
alignas(16) constexpr Orders kSplit = SplitOrders();
alignas(16) constexpr Orders kJoin = JoinOrders();

WITH_SHUFFLES inline __m128i Load(const std::uint8_t* p)
{
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
}
WITH_SHUFFLES inline __m128i Gather(const __m128i (&from)[3], const std::array<Order, 3>& orders)
{
    return _mm_or_si128(_mm_or_si128(_mm_shuffle_epi8(from[0], Load(orders[0].data())),
                                     _mm_shuffle_epi8(from[1], Load(orders[1].data()))),
                        _mm_shuffle_epi8(from[2], Load(orders[2].data())));
}

// These return how many 3-byte pixels they split or joined, a multiple of 16.
WITH_SHUFFLES std::size_t SplitSixteens(const std::uint8_t* pixels, std::size_t pixel_count, Planes& planes)
{
    std::size_t i = 0;
    for (; i + 16 <= pixel_count; i += 16, pixels += 48) {
        const __m128i from[3] = {Load(pixels), Load(pixels + 16), Load(pixels + 32)};
        _mm_store_si128(reinterpret_cast<__m128i*>(planes.blue + i), Gather(from, kSplit[0]));
        _mm_store_si128(reinterpret_cast<__m128i*>(planes.green + i), Gather(from, kSplit[1]));
        _mm_store_si128(reinterpret_cast<__m128i*>(planes.red + i), Gather(from, kSplit[2]));
    }
    return i;
}
WITH_SHUFFLES std::size_t JoinSixteens(const Planes& planes, std::size_t pixel_count, std::uint8_t* pixels)
{
    std::size_t i = 0;
    for (; i + 16 <= pixel_count; i += 16, pixels += 48) {
        const __m128i from[3] = {Load(planes.blue + i), Load(planes.green + i), Load(planes.red + i)};
        for (std::size_t k = 0; k < 3; ++k)
            _mm_storeu_si128(reinterpret_cast<__m128i*>(pixels + 16 * k), Gather(from, kJoin[k]));
    }
    return i;
}

// Returns how many values it rounded, a multiple of 32. Packing into bytes saturates.
WITH_AVX2 std::size_t RoundThirtyTwos(const float* values, std::size_t count, std::uint8_t* levels)
{
    const __m256 half = _mm256_set1_ps(0.5F);
    const __m256i order = _mm256_setr_epi32(0, 4, 1, 5, 2, 6, 3, 7);
    std::size_t i = 0;
    for (; i + 32 <= count; i += 32) {
        __m256i whole[4];
        for (std::size_t k = 0; k < 4; ++k)
            whole[k] = _mm256_cvttps_epi32(_mm256_add_ps(_mm256_loadu_ps(values + i + 8 * k), half));
        const __m256i packed = _mm256_packus_epi16(_mm256_packs_epi32(whole[0], whole[1]),
                                                   _mm256_packs_epi32(whole[2], whole[3]));
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(levels + i),
                            _mm256_permutevar8x32_epi32(packed, order));
    }
    return i;
}

// Returns how many intensities it computed, a multiple of 16. The weight of green doesn't fit 16 bits, so it
// is split over two multiply-adds.
WITH_AVX2 std::size_t WeighSixteens(const Planes& planes, std::size_t pixels, std::uint8_t* intensity)
{
    const __m256i blue_green = _mm256_set1_epi32(19235 << 16 | 7471);
    const __m256i red_green = _mm256_set1_epi32(19235 << 16 | 19595);
    const __m256i half = _mm256_set1_epi32(1 << 15);
    std::size_t i = 0;
    for (; i + 16 <= pixels; i += 16) {
        const __m256i blue = _mm256_cvtepu8_epi16(Load(planes.blue + i));
        const __m256i green = _mm256_cvtepu8_epi16(Load(planes.green + i));
        const __m256i red = _mm256_cvtepu8_epi16(Load(planes.red + i));
        const __m256i first =
            _mm256_add_epi32(_mm256_madd_epi16(_mm256_unpacklo_epi16(blue, green), blue_green),
                             _mm256_madd_epi16(_mm256_unpacklo_epi16(red, green), red_green));
        const __m256i second =
            _mm256_add_epi32(_mm256_madd_epi16(_mm256_unpackhi_epi16(blue, green), blue_green),
                             _mm256_madd_epi16(_mm256_unpackhi_epi16(red, green), red_green));
        const __m256i levels = _mm256_packus_epi32(_mm256_srli_epi32(_mm256_add_epi32(first, half), 16),
                                                   _mm256_srli_epi32(_mm256_add_epi32(second, half), 16));
        _mm_storeu_si128(
            reinterpret_cast<__m128i*>(intensity + i),
            _mm_packus_epi16(_mm256_castsi256_si128(levels), _mm256_extracti128_si256(levels, 1)));
    }
    return i;
}

#else

std::size_t SplitSixteens(const std::uint8_t*, std::size_t, Planes&)
{
    return 0;
}
std::size_t JoinSixteens(const Planes&, std::size_t, std::uint8_t*)
{
    return 0;
}
std::size_t RoundThirtyTwos(const float*, std::size_t, std::uint8_t*)
{
    return 0;
}
std::size_t WeighSixteens(const Planes&, std::size_t, std::uint8_t*)
{
    return 0;
}

#endif

}  // namespace

ROW_LOOP void Widen(const std::uint8_t* __restrict levels, std::size_t count, float* __restrict values)
{
    for (std::size_t i = 0; i < count; ++i)
        values[i] = static_cast<float>(levels[i]);
}

void Widen(const Planes& planes, std::size_t pixels, FloatPlanes& values)
{
    Widen(planes.blue, pixels, values.blue);
    Widen(planes.green, pixels, values.green);
    Widen(planes.red, pixels, values.red);
}

void Round(const float* values, std::size_t count, std::uint8_t* levels)
{
    for (std::size_t i = HasAvx2() ? RoundThirtyTwos(values, count, levels) : 0; i < count; ++i) {
        const float low = values[i] < 0.0F ? 0.0F : values[i];
        const float between = low < 255.0F ? low : 255.0F;
        levels[i] = static_cast<std::uint8_t>(static_cast<std::int32_t>(between + 0.5F));
    }
}

void Round(const FloatPlanes& values, std::size_t pixels, Planes& planes)
{
    Round(values.blue, pixels, planes.blue);
    Round(values.green, pixels, planes.green);
    Round(values.red, pixels, planes.red);
}

void SplitPixels(const std::uint8_t* pixels, std::size_t pixel_count, std::size_t channels, Planes& planes)
{
    if (channels == 4)
        Split4(pixels, pixel_count, planes);
    else
        Split<3>(pixels, HasAvx2() ? SplitSixteens(pixels, pixel_count, planes) : 0, pixel_count, planes);
}

void IntensityOf(const Planes& planes, std::size_t pixels, std::uint8_t* intensity)
{
    for (std::size_t i = HasAvx2() ? WeighSixteens(planes, pixels, intensity) : 0; i < pixels; ++i)
        intensity[i] = IntensityOfPixel(planes.blue[i], planes.green[i], planes.red[i]);
}

void JoinPixels(const Planes& planes, std::size_t pixel_count, std::size_t channels, std::uint8_t* pixels)
{
    if (channels == 4)
        Join4(planes, pixel_count, pixels);
    else
        Join<3>(planes, HasAvx2() ? JoinSixteens(planes, pixel_count, pixels) : 0, pixel_count, pixels);
}

}  // namespace transforms

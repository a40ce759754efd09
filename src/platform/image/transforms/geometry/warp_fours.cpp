// Bilinear interpolation of four pixels at once, 16 bits per channel in a 256-bit register.
#include "src/platform/image/transforms/geometry/warp_fours.h"

#include "src/platform/image/transforms/rows/picture_rows.h"
#include "src/platform/image/transforms/rows/processor.h"

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace transforms
{

#if defined(__x86_64__)

#define WITH_AVX2 __attribute__((target("avx2")))
#define WITH_AVX2_INLINE __attribute__((target("avx2"), always_inline)) inline

WITH_AVX2_INLINE static __m128i LoadEight(const std::uint8_t* p)
{
    return _mm_loadl_epi64(reinterpret_cast<const __m128i*>(p));
}

// Loads two neighbouring pixels at each of four places.
WITH_AVX2_INLINE static __m256i LoadPairs(const std::uint8_t* const (&places)[4], std::int64_t offset)
{
    return _mm256_set_m128i(_mm_unpacklo_epi64(LoadEight(places[2] + offset), LoadEight(places[3] + offset)),
                            _mm_unpacklo_epi64(LoadEight(places[0] + offset), LoadEight(places[1] + offset)));
}

// Widens the four bytes from n on and from second on of each 128-bit lane to 16 bits, times 128.
WITH_AVX2_INLINE static __m256i SpreadLanes(__m256i bytes, int n, int second)
{
    const auto high = [](int byte) { return static_cast<short>((byte << 8) | 0x80); };
    const __m256i order =
        _mm256_setr_epi16(high(n), high(n + 1), high(n + 2), high(n + 3), high(second), high(second + 1),
                          high(second + 2), high(second + 3), high(n), high(n + 1), high(n + 2), high(n + 3),
                          high(second), high(second + 1), high(second + 2), high(second + 3));
    return _mm256_srli_epi16(_mm256_shuffle_epi8(bytes, order), 1);
}

// The fractions of four coordinates as 15-bit weights, repeated for each channel.
WITH_AVX2_INLINE static __m256i FractionWeights(__m128i places)
{
    const __m128i shares = _mm_slli_epi32(_mm_and_si128(places, _mm_set1_epi32(255)), 7);
    const __m256i order = _mm256_setr_epi8(0, 1, 0, 1, 0, 1, 0, 1, 4, 5, 4, 5, 4, 5, 4, 5, 8, 9, 8, 9, 8, 9,
                                           8, 9, 12, 13, 12, 13, 12, 13, 12, 13);
    return _mm256_shuffle_epi8(_mm256_broadcastsi128_si256(shares), order);
}

WITH_AVX2_INLINE static __m256i Mix(__m256i one, __m256i other, __m256i weight)
{
    return _mm256_add_epi16(one, _mm256_mulhrs_epi16(_mm256_sub_epi16(other, one), weight));
}

template <int kChannels>
WITH_AVX2_INLINE static std::int32_t DrawFoursOf(const ImageBuffer& source, const std::int32_t* xs,
                                                 const std::int32_t* ys, const std::uint8_t* unmoved,
                                                 std::int32_t count, std::uint8_t* target)
{
    // Eight bytes are read per place: with three channels, almost three pixels.
    const __m128i last_x = _mm_set1_epi32(source.width - (kChannels == 3 ? 3 : 2));
    const __m128i last_y = _mm_set1_epi32(source.height - 2);
    const auto row_bytes = static_cast<std::int64_t>(Stride(source));
    const std::uint8_t* bytes = source.bytes.data();
    const __m256i alpha = _mm256_set1_epi32(static_cast<int>(0xFF000000U));

    std::int32_t i = 0;
    for (; i + 5 <= count; i += 4, target += 4 * kChannels) {
        const __m128i fixed_x = _mm_loadu_si128(reinterpret_cast<const __m128i*>(xs + i));
        const __m128i fixed_y = _mm_loadu_si128(reinterpret_cast<const __m128i*>(ys + i));
        const __m128i columns = _mm_srai_epi32(fixed_x, 8), rows = _mm_srai_epi32(fixed_y, 8);
        const __m128i beyond =
            _mm_or_si128(_mm_or_si128(_mm_cmpgt_epi32(columns, last_x), _mm_cmpgt_epi32(rows, last_y)),
                         _mm_or_si128(columns, rows));
        if (_mm_movemask_ps(_mm_castsi128_ps(beyond)) != 0)  // the sign bit catches negative coordinates, too
            break;
        const std::uint8_t* places[4];
        for (int k = 0; k < 4; ++k)
            places[k] = bytes + (ys[i + k] >> 8) * row_bytes + std::int64_t{xs[i + k] >> 8} * kChannels;
        const __m256i upper = LoadPairs(places, 0), lower = LoadPairs(places, row_bytes);
        if (kChannels == 4 && !unmoved && !_mm256_testc_si256(_mm256_and_si256(upper, lower), alpha))
            break;

        const __m256i across = FractionWeights(fixed_x);
        const __m256i above =
            Mix(SpreadLanes(upper, 0, 8), SpreadLanes(upper, kChannels, 8 + kChannels), across);
        const __m256i below =
            Mix(SpreadLanes(lower, 0, 8), SpreadLanes(lower, kChannels, 8 + kChannels), across);
        __m256i pixels = Mix(above, below, FractionWeights(fixed_y));
        if (unmoved) {
            const std::uint8_t* p = unmoved + static_cast<std::ptrdiff_t>(i) * kChannels;
            const __m256i unmoved_bytes = _mm256_set_m128i(LoadEight(p + 2 * kChannels), LoadEight(p));
            pixels = _mm256_avg_epu16(pixels, SpreadLanes(unmoved_bytes, 0, kChannels));
        }
        const __m256i levels = _mm256_srli_epi16(_mm256_add_epi16(pixels, _mm256_set1_epi16(64)), 7);
        const __m256i packed = _mm256_packus_epi16(levels, levels);
        __m128i first = _mm256_castsi256_si128(packed), second = _mm256_extracti128_si256(packed, 1);
        if constexpr (kChannels == 3) {
            const __m128i order = _mm_setr_epi8(0, 1, 2, 4, 5, 6, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1);
            first = _mm_shuffle_epi8(first, order);
            second = _mm_shuffle_epi8(second, order);
        }
        _mm_storel_epi64(reinterpret_cast<__m128i*>(target), first);
        _mm_storel_epi64(reinterpret_cast<__m128i*>(target + 2 * kChannels), second);
    }
    return i;
}

WITH_AVX2 static std::int32_t DrawFoursAvx2(const ImageBuffer& source, const std::int32_t* xs,
                                            const std::int32_t* ys, const std::uint8_t* unmoved,
                                            std::int32_t count, std::uint8_t* target)
{
    return source.channels == 3 ? DrawFoursOf<3>(source, xs, ys, unmoved, count, target)
                                : DrawFoursOf<4>(source, xs, ys, unmoved, count, target);
}

std::int32_t DrawFours(const ImageBuffer& source, const std::int32_t* xs, const std::int32_t* ys,
                       const std::uint8_t* unmoved, std::int32_t count, std::uint8_t* target)
{
    return HasAvx2() ? DrawFoursAvx2(source, xs, ys, unmoved, count, target) : 0;
}

#else

std::int32_t DrawFours(const ImageBuffer&, const std::int32_t*, const std::int32_t*, const std::uint8_t*,
                       std::int32_t, std::uint8_t*)
{
    return 0;
}

#endif

}  // namespace transforms

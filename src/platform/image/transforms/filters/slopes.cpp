// Slopes in fixed point: 32 bits, or 16 where they fit.
#include "src/platform/image/transforms/filters/slopes.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "src/platform/image/transforms/rows/processor.h"
#include "src/platform/image/transforms/rows/row_loop.h"

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace transforms
{

static constexpr std::int32_t kOne = 4096;

Light LightFrom(double angle, double factor)
{
    const double turn = std::fmod(angle, 360) * 3.14159265358979323846 / 180;
    return {static_cast<std::int32_t>(std::lround(std::cos(turn) * factor * kOne)),
            static_cast<std::int32_t>(std::lround(std::sin(turn) * factor * kOne))};
}

ROW_LOOP static void AllSlopes(const std::uint8_t* __restrict left, const std::uint8_t* __restrict right,
                               const std::uint8_t* __restrict upper, const std::uint8_t* __restrict lower,
                               Light from, std::size_t count, std::int32_t* __restrict slopes)
{
    for (std::size_t i = 0; i < count; ++i)
        slopes[i] = (from.right * (left[i] - right[i]) + from.up * (lower[i] - upper[i]) + kOne / 2) >> 12;
}

void Slopes(const RowsAround& rows, Light from, std::size_t count, std::int32_t* slopes)
{
    AllSlopes(rows.left, rows.right, rows.upper, rows.lower, from, count, slopes);
}

ROW_LOOP static void AroundGrey(const std::int32_t* __restrict slopes, std::size_t count,
                                std::uint8_t* __restrict target)
{
    for (std::size_t i = 0; i < count; ++i) {
        const std::int32_t value = 128 + slopes[i];
        target[i] = static_cast<std::uint8_t>(value < 0 ? 0 : value > 255 ? 255 : value);
    }
}

#if defined(__x86_64__)

#define WITH_AVX2 __attribute__((target("avx2")))

WITH_AVX2 static inline __m256i Load(const std::uint8_t* p)
{
    return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p));
}
WITH_AVX2 static inline __m256i ShadeLanes(__m256i across, __m256i down, __m256i right, __m256i up)
{
    // Plus half a level for rounding.
    const __m256i grey = _mm256_set1_epi16(128 * 64 + 32);
    const __m256i slope = _mm256_add_epi16(_mm256_mulhrs_epi16(across, right), _mm256_mulhrs_epi16(down, up));
    return _mm256_srai_epi16(_mm256_add_epi16(slope, grey), 6);
}

// For weights of 1 at most; differences are in 1/64 level. Returns how many values it made, a multiple of 32.
WITH_AVX2 static std::size_t ThirtyTwos(const RowsAround& rows, Light from, std::size_t count,
                                        std::uint8_t* target)
{
    const auto weight = [](std::int32_t l) { return static_cast<short>(std::min(8 * l, 32767)); };
    const __m256i right = _mm256_set1_epi16(weight(from.right));
    const __m256i up = _mm256_set1_epi16(weight(from.up));
    const __m256i difference = _mm256_set1_epi16(static_cast<short>(-64 * 256 + 64));  // bytes 64 and -64
    std::size_t i = 0;
    for (; i + 32 <= count; i += 32) {
        const __m256i one = Load(rows.left + i), other = Load(rows.right + i);
        const __m256i lower = Load(rows.lower + i), upper = Load(rows.upper + i);
        const __m256i first =
            ShadeLanes(_mm256_maddubs_epi16(_mm256_unpacklo_epi8(one, other), difference),
                       _mm256_maddubs_epi16(_mm256_unpacklo_epi8(lower, upper), difference), right, up);
        const __m256i second =
            ShadeLanes(_mm256_maddubs_epi16(_mm256_unpackhi_epi8(one, other), difference),
                       _mm256_maddubs_epi16(_mm256_unpackhi_epi8(lower, upper), difference), right, up);
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(target + i), _mm256_packus_epi16(first, second));
    }
    return i;
}

static std::size_t DrawQuickly(const RowsAround& rows, Light from, std::size_t count, std::uint8_t* target)
{
    const bool fit = std::max(std::abs(from.right), std::abs(from.up)) <= kOne &&
                     std::hypot(from.right, from.up) <= 1.001 * kOne;
    return HasAvx2() && fit ? ThirtyTwos(rows, from, count, target) : 0;
}

#else

static std::size_t DrawQuickly(const RowsAround&, Light, std::size_t, std::uint8_t*)
{
    return 0;
}

#endif

void SlopesAroundGrey(const RowsAround& rows, Light from, std::size_t count, std::int32_t* slopes,
                      std::uint8_t* target)
{
    const std::size_t done = DrawQuickly(rows, from, count, target);
    AllSlopes(rows.left + done, rows.right + done, rows.upper + done, rows.lower + done, from, count - done,
              slopes);
    AroundGrey(slopes, count - done, target + done);
}

}  // namespace transforms

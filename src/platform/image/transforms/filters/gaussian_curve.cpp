// Sums of symmetric pairs of values times the kernel.
#include "src/platform/image/transforms/filters/gaussian_curve.h"

#include <algorithm>
#include <cmath>

#include "src/platform/image/transforms/rows/processor.h"
#include "src/platform/image/transforms/rows/row_loop.h"

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace transforms
{

namespace
{

// value * weight / 32768, rounded: what pmulhrsw computes.
ROW_LOOP_PART std::int16_t Multiply(std::int16_t value, std::int16_t weight)
{
    return static_cast<std::int16_t>((((static_cast<std::int32_t>(value) * weight) >> 14) + 1) >> 1);
}

// The sums first to count - 1, pair by pair. at(n) gives the values n away from the middle.
template <typename At>
void AddPlainly(const std::vector<std::int16_t>& weights, const At& at, int scale, std::size_t first,
                std::size_t count, std::int16_t* means)
{
    for (std::size_t i = first; i < count; ++i) {
        int sum = 0;
        for (std::size_t k = 0; k < weights.size(); ++k) {
            const auto far = static_cast<std::ptrdiff_t>(k);
            sum += Multiply(static_cast<std::int16_t>((at(-far)[i] + at(far)[i]) * scale), weights[k]);
        }
        means[i] = static_cast<std::int16_t>(sum);
    }
}

#if defined(__x86_64__)

#define WITH_AVX2 __attribute__((target("avx2")))

WITH_AVX2 inline __m256i Load(const void* p)
{
    return _mm256_loadu_si256(static_cast<const __m256i*>(p));
}
WITH_AVX2 inline void Store(std::int16_t* p, __m256i n)
{
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(p), n);
}

// Adds the products of 32 sums of two bytes. They are in unpacked order until they are stored.
WITH_AVX2 inline void AddBytePairs(const std::uint8_t* one, const std::uint8_t* other, __m256i weight,
                                   __m256i& low, __m256i& high)
{
    const __m256i steps = _mm256_set1_epi8(kSteps);
    const __m256i a = Load(one), b = Load(other);
    const __m256i low_pairs = _mm256_maddubs_epi16(_mm256_unpacklo_epi8(a, b), steps);
    const __m256i high_pairs = _mm256_maddubs_epi16(_mm256_unpackhi_epi8(a, b), steps);
    low = _mm256_add_epi16(low, _mm256_mulhrs_epi16(low_pairs, weight));
    high = _mm256_add_epi16(high, _mm256_mulhrs_epi16(high_pairs, weight));
}
WITH_AVX2 inline void AddShortPair(const std::int16_t* one, const std::int16_t* other, __m256i weight,
                                   __m256i& sum)
{
    const __m256i pair = _mm256_add_epi16(Load(one), Load(other));
    sum = _mm256_add_epi16(sum, _mm256_mulhrs_epi16(pair, weight));
}

// Returns how many sums of bytes it made, a multiple of 64.
template <typename At>
WITH_AVX2 std::size_t AddBytesQuickly(const std::vector<std::int16_t>& weights, const At& at,
                                      std::size_t count, std::int16_t* means)
{
    std::size_t i = 0;
    for (; i + 64 <= count; i += 64) {
        __m256i low = _mm256_setzero_si256(), high = low, next_low = low, next_high = low;
        for (std::size_t k = 0; k < weights.size(); ++k) {
            const std::uint8_t* one = at(-static_cast<std::ptrdiff_t>(k)) + i;
            const std::uint8_t* other = at(static_cast<std::ptrdiff_t>(k)) + i;
            const __m256i weight = _mm256_set1_epi16(weights[k]);
            AddBytePairs(one, other, weight, low, high);
            AddBytePairs(one + 32, other + 32, weight, next_low, next_high);
        }
        Store(means + i, _mm256_permute2x128_si256(low, high, 0x20));
        Store(means + i + 16, _mm256_permute2x128_si256(low, high, 0x31));
        Store(means + i + 32, _mm256_permute2x128_si256(next_low, next_high, 0x20));
        Store(means + i + 48, _mm256_permute2x128_si256(next_low, next_high, 0x31));
    }
    return i;
}

// The same for 16-bit values.
template <typename At>
WITH_AVX2 std::size_t AddShortsQuickly(const std::vector<std::int16_t>& weights, const At& at,
                                       std::size_t count, std::int16_t* means)
{
    std::size_t i = 0;
    for (; i + 64 <= count; i += 64) {
        __m256i n0 = _mm256_setzero_si256(), n1 = n0, n2 = n0, n3 = n0;
        for (std::size_t k = 0; k < weights.size(); ++k) {
            const std::int16_t* one = at(-static_cast<std::ptrdiff_t>(k)) + i;
            const std::int16_t* other = at(static_cast<std::ptrdiff_t>(k)) + i;
            const __m256i weight = _mm256_set1_epi16(weights[k]);
            AddShortPair(one, other, weight, n0);
            AddShortPair(one + 16, other + 16, weight, n1);
            AddShortPair(one + 32, other + 32, weight, n2);
            AddShortPair(one + 48, other + 48, weight, n3);
        }
        Store(means + i, n0);
        Store(means + i + 16, n1);
        Store(means + i + 32, n2);
        Store(means + i + 48, n3);
    }
    return i;
}

#else

template <typename At>
std::size_t AddBytesQuickly(const std::vector<std::int16_t>&, const At&, std::size_t, std::int16_t*)
{
    return 0;
}
template <typename At>
std::size_t AddShortsQuickly(const std::vector<std::int16_t>&, const At&, std::size_t, std::int16_t*)
{
    return 0;
}
#endif

template <typename At>
void AddShorts(const std::vector<std::int16_t>& weights, const At& at, std::size_t count, std::int16_t* means)
{
    const std::size_t done = HasAvx2() ? AddShortsQuickly(weights, at, count, means) : 0;
    AddPlainly(weights, at, 1, done, count, means);
}

}  // namespace

GaussianCurve::GaussianCurve(double deviation)
    : reach_(static_cast<std::size_t>(std::ceil(3 * deviation))), weights_(reach_ + 1)
{
    const auto curve = [deviation](std::size_t n) {
        const auto d = static_cast<double>(n);
        return std::exp(-d * d / (2 * deviation * deviation));
    };
    double sum = 1;
    for (std::size_t n = 1; n <= reach_; ++n)
        sum += 2 * curve(n);
    // The middle value is paired with itself. Its weight absorbs the rounding errors of the others.
    std::int32_t middle = 16384;
    for (std::size_t n = 1; n <= reach_; ++n) {
        weights_[n] = static_cast<std::int16_t>(std::lround(32768 * curve(n) / sum));
        middle -= weights_[n];
    }
    weights_[0] = static_cast<std::int16_t>(middle);
}

void GaussianCurve::Down(const std::uint8_t* const* rows, std::size_t count, std::int16_t* means) const
{
    const std::uint8_t* const* middle = rows + reach_;
    const auto at = [middle](std::ptrdiff_t n) { return middle[n]; };
    const std::size_t done = HasAvx2() ? AddBytesQuickly(weights_, at, count, means) : 0;
    AddPlainly(weights_, at, kSteps, done, count, means);
}

void GaussianCurve::Down(const std::int16_t* const* rows, std::size_t count, std::int16_t* means) const
{
    const std::int16_t* const* middle = rows + reach_;
    AddShorts(
        weights_, [middle](std::ptrdiff_t n) { return middle[n]; }, count, means);
}

void GaussianCurve::Along(const std::int16_t* row, std::size_t count, std::size_t step,
                          std::int16_t* means) const
{
    const auto pixel = static_cast<std::ptrdiff_t>(step);
    AddShorts(
        weights_, [row, pixel](std::ptrdiff_t n) { return row + n * pixel; }, count, means);
}

void RepeatEnds(std::int16_t* row, std::size_t count, std::size_t step, std::size_t reach)
{
    for (std::size_t i = 0; i < reach * step; ++i) {
        row[count + i] = row[count - step + i % step];
        *(row - 1 - static_cast<std::ptrdiff_t>(i)) = row[step - 1 - i % step];
    }
}

}  // namespace transforms

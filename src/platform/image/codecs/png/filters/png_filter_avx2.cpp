// PNG filter selection and filtering with AVX2.
#include "src/platform/image/codecs/png/filters/png_filter.h"
#include "src/platform/image/codecs/png/filters/png_kernels.h"

#ifdef VARNEL_PNG_AVX2

#include <immintrin.h>

#include <cstring>

namespace
{
// 32 bytes of a row and their neighbours.
struct Samples {
    __m256i here;
    __m256i left;
    __m256i above;
    __m256i above_left;
};

// One filter's score so far.
struct Score {
    __m256i cost;  ///< four sums
    __m256i last;  ///< the previous group's differences
    std::uint64_t runs;
};
}  // namespace

VARNEL_TARGET_AVX2 static inline __m256i Load(const std::uint8_t* p)
{
    return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p));
}

VARNEL_TARGET_AVX2 static inline Samples SamplesAt(const PngFilterRow& row, std::size_t i)
{
    const std::uint8_t* const at = row.row + i;
    const std::uint8_t* const above = row.above + i;
    return {Load(at), Load(at - row.pixel_bytes), Load(above), Load(above - row.pixel_bytes)};
}

VARNEL_TARGET_AVX2 static inline __m256i Average(const Samples& samples)
{
    // _mm256_avg_epu8 rounds up; PNG wants the floor.
    const __m256i odd = _mm256_and_si256(_mm256_xor_si256(samples.left, samples.above), _mm256_set1_epi8(1));
    return _mm256_sub_epi8(_mm256_avg_epu8(samples.left, samples.above), odd);
}

// Paeth in 8-bit lanes, although left + above - 2 * above_left needs ten bits. If above_left is between left
// and above, its distance is the difference of the two other distances. Otherwise it is their sum, which is
// never the smallest, so any large number will do.
VARNEL_TARGET_AVX2 static inline __m256i Paeth(const Samples& samples)
{
    const __m256i a = samples.left;
    const __m256i b = samples.above;
    const __m256i c = samples.above_left;
    const __m256i max_bc = _mm256_max_epu8(b, c);
    const __m256i max_ac = _mm256_max_epu8(a, c);
    const __m256i to_a = _mm256_sub_epi8(max_bc, _mm256_min_epu8(b, c));
    const __m256i to_b = _mm256_sub_epi8(max_ac, _mm256_min_epu8(a, c));
    const __m256i smaller = _mm256_min_epu8(to_a, to_b);
    const __m256i same_side = _mm256_xor_si256(_mm256_cmpeq_epi8(max_ac, a), _mm256_cmpeq_epi8(max_bc, c));
    const __m256i to_c = _mm256_or_si256(_mm256_sub_epi8(_mm256_max_epu8(to_a, to_b), smaller), same_side);
    const __m256i smallest = _mm256_min_epu8(smaller, to_c);
    const __m256i b_or_c = _mm256_blendv_epi8(c, b, _mm256_cmpeq_epi8(smallest, to_b));
    return _mm256_blendv_epi8(b_or_c, a, _mm256_cmpeq_epi8(smallest, to_a));
}

template <PngFilter kFilter>
VARNEL_TARGET_AVX2 static inline __m256i Differences(const Samples& samples)
{
    if constexpr (kFilter == PngFilter::kSub)
        return _mm256_sub_epi8(samples.here, samples.left);
    if constexpr (kFilter == PngFilter::kUp)
        return _mm256_sub_epi8(samples.here, samples.above);
    if constexpr (kFilter == PngFilter::kAverage)
        return _mm256_sub_epi8(samples.here, Average(samples));
    if constexpr (kFilter == PngFilter::kPaeth)
        return _mm256_sub_epi8(samples.here, Paeth(samples));
    return samples.here;
}

// Adds a group's differences to the score. mask is zero past the end of the row.
VARNEL_TARGET_AVX2 static inline void Add(Score& score, __m256i difference, __m256i mask, std::uint32_t count)
{
    const __m256i small_costs =
        _mm256_broadcastsi128_si256(_mm_loadu_si128(reinterpret_cast<const __m128i*>(kPngSmallCosts)));
    const __m256i large_costs =
        _mm256_broadcastsi128_si256(_mm_loadu_si128(reinterpret_cast<const __m128i*>(kPngLargeCosts)));
    const __m256i v15 = _mm256_set1_epi8(15);
    difference = _mm256_and_si256(difference, mask);
    const __m256i magnitude = _mm256_abs_epi8(difference);
    const __m256i small = _mm256_shuffle_epi8(small_costs, _mm256_min_epu8(magnitude, v15));
    const __m256i large =
        _mm256_shuffle_epi8(large_costs, _mm256_and_si256(_mm256_srli_epi16(magnitude, 4), v15));
    score.cost =
        _mm256_add_epi64(score.cost, _mm256_sad_epu8(_mm256_max_epu8(small, large), _mm256_setzero_si256()));
    const __m256i carried = _mm256_permute2x128_si256(score.last, difference, 0x21);
    const __m256i before = _mm256_alignr_epi8(difference, carried, 15);
    score.last = difference;
    const auto same =
        static_cast<std::uint32_t>(_mm256_movemask_epi8(_mm256_cmpeq_epi8(difference, before))) & count;
    score.runs += static_cast<std::uint32_t>(_mm_popcnt_u32(same & same >> 1 & same >> 2));
}

VARNEL_TARGET_AVX2 static inline std::int64_t Total(const Score& score)
{
    const __m128i half =
        _mm_add_epi64(_mm256_castsi256_si128(score.cost), _mm256_extracti128_si256(score.cost, 1));
    const std::int64_t cost = _mm_extract_epi64(half, 0) + _mm_extract_epi64(half, 1);
    return cost - static_cast<std::int64_t>(score.runs * kPngRunBonus);
}

VARNEL_TARGET_AVX2 static PngFilter ChooseWide(const PngFilterRow& row)
{
    const __m256i v0 = _mm256_setzero_si256();
    Score none = {v0, v0, 0};
    Score sub = none;
    Score up = none;
    Score average = none;
    Score paeth = none;
    const auto add_all = [&](std::size_t i, __m256i mask, std::uint32_t count) VARNEL_TARGET_AVX2 {
        const Samples samples = SamplesAt(row, i);
        Add(none, Differences<PngFilter::kNone>(samples), mask, count);
        Add(sub, Differences<PngFilter::kSub>(samples), mask, count);
        Add(up, Differences<PngFilter::kUp>(samples), mask, count);
        Add(average, Differences<PngFilter::kAverage>(samples), mask, count);
        Add(paeth, Differences<PngFilter::kPaeth>(samples), mask, count);
    };
    std::size_t i = 0;
    for (; i + kPngFilterGroup <= row.bytes; i += kPngFilterGroup)
        add_all(i, _mm256_set1_epi8(-1), 0xFFFFFFFF);
    if (i < row.bytes) {
        const std::size_t left = row.bytes - i;
        std::uint8_t valid[kPngFilterGroup] = {};
        std::memset(valid, 0xFF, left);
        add_all(i, Load(valid), (1U << left) - 1);
    }
    PngFilter best = PngFilter::kNone;
    std::int64_t best_cost = Total(none);
    const auto compare = [&](PngFilter filter, const Score& score) VARNEL_TARGET_AVX2 {
        const std::int64_t cost = Total(score);
        if (cost < best_cost) {
            best_cost = cost;
            best = filter;
        }
    };
    compare(PngFilter::kSub, sub);
    compare(PngFilter::kUp, up);
    compare(PngFilter::kAverage, average);
    compare(PngFilter::kPaeth, paeth);
    return best;
}

template <PngFilter kFilter>
VARNEL_TARGET_AVX2 static void Apply(const PngFilterRow& row, std::uint8_t* out)
{
    for (std::size_t i = 0; i < row.bytes; i += kPngFilterGroup)
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(out + i), Differences<kFilter>(SamplesAt(row, i)));
}

static void ApplyWide(PngFilter filter, const PngFilterRow& row, std::uint8_t* out)
{
    *out++ = static_cast<std::uint8_t>(filter);
    switch (filter) {
        case PngFilter::kNone:
            Apply<PngFilter::kNone>(row, out);
            break;
        case PngFilter::kSub:
            Apply<PngFilter::kSub>(row, out);
            break;
        case PngFilter::kUp:
            Apply<PngFilter::kUp>(row, out);
            break;
        case PngFilter::kAverage:
            Apply<PngFilter::kAverage>(row, out);
            break;
        case PngFilter::kPaeth:
            Apply<PngFilter::kPaeth>(row, out);
            break;
    }
}

const PngFilters kPngFiltersAvx2 = {ChooseWide, ApplyWide};

#endif

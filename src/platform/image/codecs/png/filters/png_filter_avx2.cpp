// Chooses and applies PNG's row filters with the vector instructions of x86-64.
#include "src/platform/image/codecs/png/filters/png_filter.h"
#include "src/platform/image/codecs/png/filters/png_kernels.h"

#ifdef VARNEL_PNG_AVX2

#include <immintrin.h>

#include <cstring>

namespace
{
// Samples of 32 bytes of a row, and their neighbours.
struct Samples {
    __m256i vHere;
    __m256i vLeft;
    __m256i vAbove;
    __m256i vAboveLeft;
};

// What is known of one filter so far.
struct Score {
    __m256i vCost;  ///< four sums
    __m256i vLast;  ///< the differences of the group before
    std::uint64_t nRuns;
};
}  // namespace

VARNEL_TARGET_AVX2 static inline __m256i vLoad(const std::uint8_t* p)
{
    return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p));
}

VARNEL_TARGET_AVX2 static inline Samples objSamplesAt(const PngFilterRow& objRow, std::size_t i)
{
    const std::uint8_t* const pRow = objRow.pRow + i;
    const std::uint8_t* const pAbove = objRow.pAbove + i;
    return {vLoad(pRow), vLoad(pRow - objRow.nPixelBytes), vLoad(pAbove), vLoad(pAbove - objRow.nPixelBytes)};
}

VARNEL_TARGET_AVX2 static inline __m256i vAverage(const Samples& obj)
{
    // The instruction rounds up, the format wants the floor.
    const __m256i vOdd = _mm256_and_si256(_mm256_xor_si256(obj.vLeft, obj.vAbove), _mm256_set1_epi8(1));
    return _mm256_sub_epi8(_mm256_avg_epu8(obj.vLeft, obj.vAbove), vOdd);
}

// In bytes, though left + above - 2 * above left needs ten bits: where left and above lie on different sides
// of above left, the distance to it is the difference of the two other distances; where they lie on the same
// side it is their sum, which is never the smallest, so that any large number does.
VARNEL_TARGET_AVX2 static inline __m256i vPaeth(const Samples& obj)
{
    const __m256i vA = obj.vLeft;
    const __m256i vB = obj.vAbove;
    const __m256i vC = obj.vAboveLeft;
    const __m256i vMaxBC = _mm256_max_epu8(vB, vC);
    const __m256i vMaxAC = _mm256_max_epu8(vA, vC);
    const __m256i vToA = _mm256_sub_epi8(vMaxBC, _mm256_min_epu8(vB, vC));
    const __m256i vToB = _mm256_sub_epi8(vMaxAC, _mm256_min_epu8(vA, vC));
    const __m256i vMin = _mm256_min_epu8(vToA, vToB);
    const __m256i vSameSide = _mm256_xor_si256(_mm256_cmpeq_epi8(vMaxAC, vA), _mm256_cmpeq_epi8(vMaxBC, vC));
    const __m256i vToC = _mm256_or_si256(_mm256_sub_epi8(_mm256_max_epu8(vToA, vToB), vMin), vSameSide);
    const __m256i vLeast = _mm256_min_epu8(vMin, vToC);
    const __m256i vBOrC = _mm256_blendv_epi8(vC, vB, _mm256_cmpeq_epi8(vLeast, vToB));
    return _mm256_blendv_epi8(vBOrC, vA, _mm256_cmpeq_epi8(vLeast, vToA));
}

template <PngFilter objFilter>
VARNEL_TARGET_AVX2 static inline __m256i vDifferences(const Samples& obj)
{
    if constexpr (objFilter == PngFilter::Sub)
        return _mm256_sub_epi8(obj.vHere, obj.vLeft);
    if constexpr (objFilter == PngFilter::Up)
        return _mm256_sub_epi8(obj.vHere, obj.vAbove);
    if constexpr (objFilter == PngFilter::Average)
        return _mm256_sub_epi8(obj.vHere, vAverage(obj));
    if constexpr (objFilter == PngFilter::Paeth)
        return _mm256_sub_epi8(obj.vHere, vPaeth(obj));
    return obj.vHere;
}

// Adds a group's differences to the score. vValid has zeros behind the row's end.
VARNEL_TARGET_AVX2 static inline void Add(Score& objScore, __m256i vDifference, __m256i vValid,
                                          std::uint32_t nValid)
{
    const __m256i vSmallCosts =
        _mm256_broadcastsi128_si256(_mm_loadu_si128(reinterpret_cast<const __m128i*>(kPngSmallCosts)));
    const __m256i vLargeCosts =
        _mm256_broadcastsi128_si256(_mm_loadu_si128(reinterpret_cast<const __m128i*>(kPngLargeCosts)));
    const __m256i v15 = _mm256_set1_epi8(15);
    vDifference = _mm256_and_si256(vDifference, vValid);
    const __m256i vMagnitude = _mm256_abs_epi8(vDifference);
    const __m256i vSmall = _mm256_shuffle_epi8(vSmallCosts, _mm256_min_epu8(vMagnitude, v15));
    const __m256i vLarge =
        _mm256_shuffle_epi8(vLargeCosts, _mm256_and_si256(_mm256_srli_epi16(vMagnitude, 4), v15));
    objScore.vCost = _mm256_add_epi64(
        objScore.vCost, _mm256_sad_epu8(_mm256_max_epu8(vSmall, vLarge), _mm256_setzero_si256()));
    const __m256i vCarried = _mm256_permute2x128_si256(objScore.vLast, vDifference, 0x21);
    const __m256i vBefore = _mm256_alignr_epi8(vDifference, vCarried, 15);
    objScore.vLast = vDifference;
    const auto nSame =
        static_cast<std::uint32_t>(_mm256_movemask_epi8(_mm256_cmpeq_epi8(vDifference, vBefore))) & nValid;
    objScore.nRuns += static_cast<std::uint32_t>(_mm_popcnt_u32(nSame & nSame >> 1 & nSame >> 2));
}

VARNEL_TARGET_AVX2 static inline std::int64_t nTotal(const Score& objScore)
{
    const __m128i vHalf =
        _mm_add_epi64(_mm256_castsi256_si128(objScore.vCost), _mm256_extracti128_si256(objScore.vCost, 1));
    const std::int64_t nCost = _mm_extract_epi64(vHalf, 0) + _mm_extract_epi64(vHalf, 1);
    return nCost - static_cast<std::int64_t>(objScore.nRuns * kPngRunBonus);
}

VARNEL_TARGET_AVX2 static PngFilter ChooseWide(const PngFilterRow& objRow)
{
    const __m256i v0 = _mm256_setzero_si256();
    Score objNone = {v0, v0, 0};
    Score objSub = objNone;
    Score objUp = objNone;
    Score objAverage = objNone;
    Score objPaeth = objNone;
    const auto AddAll = [&](std::size_t i, __m256i vValid, std::uint32_t nValid) VARNEL_TARGET_AVX2 {
        const Samples objSamples = objSamplesAt(objRow, i);
        Add(objNone, vDifferences<PngFilter::None>(objSamples), vValid, nValid);
        Add(objSub, vDifferences<PngFilter::Sub>(objSamples), vValid, nValid);
        Add(objUp, vDifferences<PngFilter::Up>(objSamples), vValid, nValid);
        Add(objAverage, vDifferences<PngFilter::Average>(objSamples), vValid, nValid);
        Add(objPaeth, vDifferences<PngFilter::Paeth>(objSamples), vValid, nValid);
    };
    std::size_t i = 0;
    for (; i + kPngFilterGroup <= objRow.nBytes; i += kPngFilterGroup)
        AddAll(i, _mm256_set1_epi8(-1), 0xFFFFFFFF);
    if (i < objRow.nBytes) {
        const std::size_t nLeft = objRow.nBytes - i;
        std::uint8_t aValid[kPngFilterGroup] = {};
        std::memset(aValid, 0xFF, nLeft);
        AddAll(i, vLoad(aValid), (1U << nLeft) - 1);
    }
    PngFilter objBest = PngFilter::None;
    std::int64_t nBest = nTotal(objNone);
    const auto Compare = [&](PngFilter objFilter, const Score& objScore) VARNEL_TARGET_AVX2 {
        const std::int64_t nCost = nTotal(objScore);
        if (nCost < nBest) {
            nBest = nCost;
            objBest = objFilter;
        }
    };
    Compare(PngFilter::Sub, objSub);
    Compare(PngFilter::Up, objUp);
    Compare(PngFilter::Average, objAverage);
    Compare(PngFilter::Paeth, objPaeth);
    return objBest;
}

template <PngFilter objFilter>
VARNEL_TARGET_AVX2 static void Apply(const PngFilterRow& objRow, std::uint8_t* pOut)
{
    for (std::size_t i = 0; i < objRow.nBytes; i += kPngFilterGroup)
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(pOut + i),
                            vDifferences<objFilter>(objSamplesAt(objRow, i)));
}

static void ApplyWide(PngFilter objFilter, const PngFilterRow& objRow, std::uint8_t* pOut)
{
    *pOut++ = static_cast<std::uint8_t>(objFilter);
    switch (objFilter) {
        case PngFilter::None:
            Apply<PngFilter::None>(objRow, pOut);
            break;
        case PngFilter::Sub:
            Apply<PngFilter::Sub>(objRow, pOut);
            break;
        case PngFilter::Up:
            Apply<PngFilter::Up>(objRow, pOut);
            break;
        case PngFilter::Average:
            Apply<PngFilter::Average>(objRow, pOut);
            break;
        case PngFilter::Paeth:
            Apply<PngFilter::Paeth>(objRow, pOut);
            break;
    }
}

const PngFilters objPngFiltersAvx2 = {ChooseWide, ApplyWide};

#endif

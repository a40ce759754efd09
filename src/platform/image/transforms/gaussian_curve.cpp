// Sums of pairs of values that lie as far to both sides, times the curve there.
#include "src/platform/image/transforms/gaussian_curve.h"

#include <algorithm>
#include <cmath>

#include "src/platform/image/transforms/row_loop.h"

namespace transforms
{

namespace
{

constexpr std::size_t kPairs =
    4;  // that are added in one go: sums are fetched and put back as much less often

// Pointers to both values of each pair, and their weights.
template <typename Value>
struct Pairs {
    const Value* aOne[kPairs];
    const Value* aOther[kPairs];
    std::int16_t aWeights[kPairs];
};

// Half the product of both to the nearest 1/65536, which is one instruction for many of them.
ROW_LOOP_PART std::int16_t nTimes(std::int16_t nValue, std::int16_t nWeight)
{
    return static_cast<std::int16_t>((((static_cast<std::int32_t>(nValue) * nWeight) >> 14) + 1) >> 1);
}

template <bool bFirst>
ROW_LOOP_PART void AddPairs(const Pairs<std::int16_t>& objPairs, std::size_t nCount,
                            std::int16_t* __restrict pSums)
{
    const std::int16_t* __restrict a0 = objPairs.aOne[0];
    const std::int16_t* __restrict a1 = objPairs.aOne[1];
    const std::int16_t* __restrict a2 = objPairs.aOne[2];
    const std::int16_t* __restrict a3 = objPairs.aOne[3];
    const std::int16_t* __restrict b0 = objPairs.aOther[0];
    const std::int16_t* __restrict b1 = objPairs.aOther[1];
    const std::int16_t* __restrict b2 = objPairs.aOther[2];
    const std::int16_t* __restrict b3 = objPairs.aOther[3];
    const std::int16_t w0 = objPairs.aWeights[0], w1 = objPairs.aWeights[1], w2 = objPairs.aWeights[2],
                       w3 = objPairs.aWeights[3];
    for (std::size_t i = 0; i < nCount; ++i) {
        const auto nSum = static_cast<std::int16_t>(nTimes(static_cast<std::int16_t>(a0[i] + b0[i]), w0) +
                                                    nTimes(static_cast<std::int16_t>(a1[i] + b1[i]), w1) +
                                                    nTimes(static_cast<std::int16_t>(a2[i] + b2[i]), w2) +
                                                    nTimes(static_cast<std::int16_t>(a3[i] + b3[i]), w3));
        pSums[i] = bFirst ? nSum : static_cast<std::int16_t>(pSums[i] + nSum);
    }
}

ROW_LOOP void SetShorts(const Pairs<std::int16_t>& objPairs, std::size_t nCount, std::int16_t* pSums)
{
    AddPairs<true>(objPairs, nCount, pSums);
}
ROW_LOOP void AddShorts(const Pairs<std::int16_t>& objPairs, std::size_t nCount, std::int16_t* pSums)
{
    AddPairs<false>(objPairs, nCount, pSums);
}

constexpr std::size_t kBlock = 512;  // values: their sums of pairs stay in the nearest cache

// In two steps, since the compiler finds no instruction for the product of what it knows to be sums of bytes.
ROW_LOOP void SumBytes(const Pairs<std::uint8_t>& objPairs, std::size_t nFirst, std::size_t nCount,
                       std::int16_t (*__restrict aSums)[kBlock])
{
    for (std::size_t k = 0; k < kPairs; ++k) {
        const std::uint8_t* __restrict pOne = objPairs.aOne[k] + nFirst;
        const std::uint8_t* __restrict pOther = objPairs.aOther[k] + nFirst;
        std::int16_t* __restrict pSums = aSums[k];
        for (std::size_t i = 0; i < nCount; ++i)
            pSums[i] = static_cast<std::int16_t>((pOne[i] + pOther[i]) * kSteps);
    }
}

template <bool bFirst>
ROW_LOOP_PART void AddBlock(const std::int16_t (*__restrict aPairs)[kBlock], const std::int16_t* pWeights,
                            std::size_t nCount, std::int16_t* __restrict pSums)
{
    const std::int16_t w0 = pWeights[0], w1 = pWeights[1], w2 = pWeights[2], w3 = pWeights[3];
    for (std::size_t i = 0; i < nCount; ++i) {
        const auto nSum = static_cast<std::int16_t>(nTimes(aPairs[0][i], w0) + nTimes(aPairs[1][i], w1) +
                                                    nTimes(aPairs[2][i], w2) + nTimes(aPairs[3][i], w3));
        pSums[i] = bFirst ? nSum : static_cast<std::int16_t>(pSums[i] + nSum);
    }
}

ROW_LOOP void SetBlock(const std::int16_t (*aPairs)[kBlock], const std::int16_t* pWeights, std::size_t nCount,
                       std::int16_t* pSums)
{
    AddBlock<true>(aPairs, pWeights, nCount, pSums);
}
ROW_LOOP void AddToBlock(const std::int16_t (*aPairs)[kBlock], const std::int16_t* pWeights,
                         std::size_t nCount, std::int16_t* pSums)
{
    AddBlock<false>(aPairs, pWeights, nCount, pSums);
}

void SetBytes(const Pairs<std::uint8_t>& objPairs, std::size_t nCount, std::int16_t* pSums)
{
    alignas(64) std::int16_t aPairs[kPairs][kBlock];
    for (std::size_t i = 0; i < nCount; i += kBlock) {
        SumBytes(objPairs, i, std::min(kBlock, nCount - i), aPairs);
        SetBlock(aPairs, objPairs.aWeights, std::min(kBlock, nCount - i), pSums + i);
    }
}
void AddBytes(const Pairs<std::uint8_t>& objPairs, std::size_t nCount, std::int16_t* pSums)
{
    alignas(64) std::int16_t aPairs[kPairs][kBlock];
    for (std::size_t i = 0; i < nCount; i += kBlock) {
        SumBytes(objPairs, i, std::min(kBlock, nCount - i), aPairs);
        AddToBlock(aPairs, objPairs.aWeights, std::min(kBlock, nCount - i), pSums + i);
    }
}

// fnAt gives the values that lie so far from the middle.
template <typename Value, typename At, typename Function>
void AddAll(const std::vector<std::int16_t>& aWeights, const At& fnAt, std::size_t nCount,
            std::int16_t* pMeans, Function fnSet, Function fnAdd)
{
    for (std::size_t k = 0; k < aWeights.size(); k += kPairs) {
        Pairs<Value> objPairs;
        for (std::size_t i = 0; i < kPairs; ++i) {
            // The last pairs may be less: the middle takes their place and weighs nothing.
            const bool bThere = k + i < aWeights.size();
            const auto nFar = static_cast<std::ptrdiff_t>(bThere ? k + i : 0);
            objPairs.aOne[i] = fnAt(-nFar);
            objPairs.aOther[i] = fnAt(nFar);
            objPairs.aWeights[i] = bThere ? aWeights[k + i] : std::int16_t{0};
        }
        (k == 0 ? fnSet : fnAdd)(objPairs, nCount, pMeans);
    }
}

}  // namespace

GaussianCurve::GaussianCurve(double dDeviation)
    : m_nReach(static_cast<std::size_t>(std::ceil(3 * dDeviation))), m_aWeights(m_nReach + 1)
{
    const auto fnCurve = [dDeviation](std::size_t n) {
        const auto d = static_cast<double>(n);
        return std::exp(-d * d / (2 * dDeviation * dDeviation));
    };
    double dSum = 1;
    for (std::size_t n = 1; n <= m_nReach; ++n)
        dSum += 2 * fnCurve(n);
    // The value in the middle makes a pair with itself. It takes what rounding the others left.
    std::int32_t lMiddle = 16384;
    for (std::size_t n = 1; n <= m_nReach; ++n) {
        m_aWeights[n] = static_cast<std::int16_t>(std::lround(32768 * fnCurve(n) / dSum));
        lMiddle -= m_aWeights[n];
    }
    m_aWeights[0] = static_cast<std::int16_t>(lMiddle);
}

void GaussianCurve::Down(const std::uint8_t* const* pRows, std::size_t nCount, std::int16_t* pMeans) const
{
    const auto fnAt = [&](std::ptrdiff_t n) { return pRows[static_cast<std::ptrdiff_t>(m_nReach) + n]; };
    AddAll<std::uint8_t>(m_aWeights, fnAt, nCount, pMeans, SetBytes, AddBytes);
}

void GaussianCurve::Down(const std::int16_t* const* pRows, std::size_t nCount, std::int16_t* pMeans) const
{
    const auto fnAt = [&](std::ptrdiff_t n) { return pRows[static_cast<std::ptrdiff_t>(m_nReach) + n]; };
    AddAll<std::int16_t>(m_aWeights, fnAt, nCount, pMeans, SetShorts, AddShorts);
}

void GaussianCurve::Along(const std::int16_t* pRow, std::size_t nCount, std::size_t nStep,
                          std::int16_t* pMeans) const
{
    const auto fnAt = [&](std::ptrdiff_t n) { return pRow + n * static_cast<std::ptrdiff_t>(nStep); };
    AddAll<std::int16_t>(m_aWeights, fnAt, nCount, pMeans, SetShorts, AddShorts);
}

void RepeatEnds(std::int16_t* pRow, std::size_t nCount, std::size_t nStep, std::size_t nReach)
{
    for (std::size_t i = 0; i < nReach * nStep; ++i) {
        pRow[nCount + i] = pRow[nCount - nStep + i % nStep];
        *(pRow - 1 - static_cast<std::ptrdiff_t>(i)) = pRow[nStep - 1 - i % nStep];
    }
}

}  // namespace transforms

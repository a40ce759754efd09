// Makes Huffman codes.
#include "src/platform/image/deflate/huffman.h"

#include <algorithm>
#include <array>

static constexpr std::size_t kMostSymbols = 288;
static constexpr std::uint32_t kSymbolBits = 9;
static constexpr std::uint32_t kMaxDepth = 32;

// The depth of each leaf in the tree of least total weight, in place: aWeights in ascending order becomes
// depths in descending order. Moffat and Katajainen, "In-place calculation of minimum-redundancy codes",
// 1995: inner nodes come in ascending order of weight too, so that two queues in one array do for a heap.
static void WeightsToDepths(std::span<std::uint32_t> aWeights)
{
    const std::size_t nLeaves = aWeights.size();
    // Inner node k is kept in place k once leaf k has been used; a used inner node keeps its parent.
    std::size_t nLeaf = 0;
    std::size_t nInner = 0;
    const auto nTake = [&](std::size_t nNew) {
        if (nLeaf >= nLeaves || (nInner < nNew && aWeights[nInner] < aWeights[nLeaf])) {
            const std::uint32_t nWeight = aWeights[nInner];
            aWeights[nInner++] = static_cast<std::uint32_t>(nNew);
            return nWeight;
        }
        return aWeights[nLeaf++];
    };
    for (std::size_t nNew = 0; nNew + 1 < nLeaves; ++nNew) {
        const std::uint32_t nFirst = nTake(nNew);
        aWeights[nNew] = nFirst + nTake(nNew);
    }
    // From the root down, a parent's place becomes a depth.
    aWeights[nLeaves - 2] = 0;
    for (std::size_t k = nLeaves - 2; k-- > 0;)
        aWeights[k] = aWeights[aWeights[k]] + 1;
    // On each level what isn't an inner node is a leaf; the lightest leaves are the deepest.
    std::size_t nNextLeaf = nLeaves;
    std::size_t nNextInner = nLeaves - 1;
    std::size_t nPlaces = 1;
    for (std::uint32_t nDepth = 0; nPlaces > 0; ++nDepth) {
        std::size_t nInners = 0;
        for (; nNextInner > 0 && aWeights[nNextInner - 1] == nDepth; --nNextInner)
            ++nInners;
        for (; nPlaces > nInners; --nPlaces)
            aWeights[--nNextLeaf] = nDepth;
        nPlaces = 2 * nInners;
    }
}

// How many codes there are of each length, none over nLongest: those that are deeper move up, and to make
// room for them others go one further down.
static std::array<std::uint32_t, kMaxDepth> aLimited(std::span<const std::uint32_t> aDepths,
                                                     std::uint32_t nLongest)
{
    std::array<std::uint32_t, kMaxDepth> aOfLength{};
    std::uint64_t nUsed = 0;  // of the code space, in codes of nLongest bits
    for (const std::uint32_t nDepth : aDepths) {
        const std::uint32_t nLength = std::min(nDepth, nLongest);
        ++aOfLength[nLength];
        nUsed += std::uint64_t{1} << (nLongest - nLength);
    }
    for (; nUsed > std::uint64_t{1} << nLongest; --nUsed) {
        std::uint32_t nShorter = nLongest - 1;
        while (aOfLength[nShorter] == 0)
            --nShorter;
        --aOfLength[nLongest];
        --aOfLength[nShorter];
        aOfLength[nShorter + 1] += 2;
    }
    return aOfLength;
}

void FillPngCodes(std::span<PngCode> aCodes)
{
    std::array<std::uint32_t, 17> aNext{};
    for (const PngCode& objCode : aCodes)
        if (objCode.nLength)
            ++aNext[objCode.nLength + 1U];
    std::uint32_t nCode = 0;
    for (std::uint32_t& nFirst : aNext) {
        nCode = (nCode + nFirst) << 1;  // nFirst is still the count of the codes one bit shorter
        nFirst = nCode;
    }
    for (PngCode& objCode : aCodes) {
        std::uint32_t nForward = aNext[objCode.nLength]++;
        std::uint32_t nReversed = 0;
        for (std::uint32_t i = 0; i < objCode.nLength; ++i, nForward >>= 1)
            nReversed = nReversed << 1 | (nForward & 1);
        objCode.nBits = static_cast<std::uint16_t>(nReversed);
    }
}

void MakePngCodes(std::span<const std::uint32_t> aCounts, std::uint32_t nLongest, std::span<PngCode> aCodes)
{
    std::array<std::uint32_t, kMostSymbols> aSorted;  // count, symbol
    std::size_t nUsed = 0;
    for (std::size_t i = 0; i < aCounts.size(); ++i)
        if (aCounts[i])
            aSorted[nUsed++] = aCounts[i] << kSymbolBits | static_cast<std::uint32_t>(i);
    for (std::uint32_t nSymbol = 0; nUsed < 2; ++nSymbol)
        if (aCounts[nSymbol] == 0)
            aSorted[nUsed++] = 1U << kSymbolBits | nSymbol;
    std::sort(aSorted.begin(), aSorted.begin() + static_cast<std::ptrdiff_t>(nUsed));

    std::array<std::uint32_t, kMostSymbols> aDepths;
    for (std::size_t i = 0; i < nUsed; ++i)
        aDepths[i] = aSorted[i] >> kSymbolBits;
    WeightsToDepths(std::span(aDepths).first(nUsed));
    const auto aOfLength = aLimited(std::span(aDepths).first(nUsed), nLongest);

    std::fill(aCodes.begin(), aCodes.end(), PngCode{});
    std::size_t nNext = 0;
    for (std::uint32_t nLength = nLongest; nLength > 0; --nLength)
        for (std::uint32_t i = 0; i < aOfLength[nLength]; ++i)
            aCodes[aSorted[nNext++] & ((1U << kSymbolBits) - 1)].nLength =
                static_cast<std::uint16_t>(nLength);
    FillPngCodes(aCodes);
}

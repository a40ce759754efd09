// Finds repetitions in a PNG's filtered rows.
#include "src/platform/image/codecs/png_lz77.h"

#include <algorithm>
#include <cstring>

static constexpr std::uint32_t kHashed = 4;  // bytes; shorter copies than these are not found

static constexpr std::uint32_t kLong = 10000;

static inline std::uint32_t nLoad4(const std::uint8_t* p)
{
    std::uint32_t n = 0;
    std::memcpy(&n, p, 4);
    return n;
}

static inline std::uint64_t nLoad8(const std::uint8_t* p)
{
    std::uint64_t n = 0;
    std::memcpy(&n, p, 8);
    return n;
}

static inline std::uint32_t nHashOf(std::uint32_t nBytes)
{
    return nBytes * 0x9E3779B1U >> (32 - PngMatcher::kHashBits);
}

// How many of nMost bytes are alike.
static inline std::uint32_t nAlike(const std::uint8_t* pA, const std::uint8_t* pB, std::uint32_t nMost)
{
    std::uint32_t nLength = 0;
    while (nLength < nMost) {
        const std::uint64_t nDiffer = nLoad8(pA + nLength) ^ nLoad8(pB + nLength);
        if (nDiffer) {
            const int nZeros = __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__ ? std::countr_zero(nDiffer)
                                                                         : std::countl_zero(nDiffer);
            return std::min(nLength + static_cast<std::uint32_t>(nZeros) / 8, nMost);
        }
        nLength += 8;
    }
    return nMost;
}

PngMatcher::PngMatcher()
    : m_aNewest(std::make_unique<std::uint16_t[]>(std::size_t{1} << kHashBits)),
      m_aOlder(std::make_unique<std::uint16_t[]>(kPngWindow))
{
}

// Every place then seems to be as far away as can be, and what is there doesn't match.
void PngMatcher::Forget()
{
    std::fill_n(m_aNewest.get(), std::size_t{1} << kHashBits, std::uint16_t{0});
}

void PngMatcher::Remember(const std::uint8_t* pBuffer, std::size_t nBegin, std::size_t nEnd)
{
    std::uint16_t* const pNewest = m_aNewest.get();
    std::uint16_t* const pOlder = m_aOlder.get();
    for (std::size_t i = nBegin; i + kHashed <= nEnd; ++i) {
        const std::uint32_t nHash = nHashOf(nLoad4(pBuffer + i));
        const auto nPlace = static_cast<std::uint16_t>(i + m_nMoved);
        pOlder[nPlace % kPngWindow] = pNewest[nHash];
        pNewest[nHash] = nPlace;
    }
}

// The longest copy that the bytes at nAt can be, and puts nAt into the tables.
inline PngMatcher::Copy PngMatcher::Longest(const std::uint8_t* pBuffer, std::size_t nAt, std::size_t nEnd,
                                            std::uint32_t nShortest, std::uint32_t nCandidates,
                                            std::uint32_t nNice)
{
    const std::uint8_t* const p = pBuffer + nAt;
    const std::uint32_t nFirst = nLoad4(p);
    const std::uint32_t nHash = nHashOf(nFirst);
    const auto nPlace = static_cast<std::uint16_t>(nAt + m_nMoved);
    const std::uint16_t* const pOlder = m_aOlder.get();
    std::uint16_t nOther = m_aNewest[nHash];
    m_aOlder[nPlace % kPngWindow] = nOther;
    m_aNewest[nHash] = nPlace;

    const auto nFurthest = static_cast<std::uint32_t>(std::min<std::size_t>(nAt, kPngWindow));
    std::uint32_t nDistance = static_cast<std::uint16_t>(nPlace - nOther);
    // Most often there is none: then nothing more is worked out.
    while (nDistance - 1 < nFurthest && nLoad4(p - nDistance) != nFirst) {
        nOther = pOlder[nOther % kPngWindow];
        // Places further back have greater distances; one that hasn't was overwritten.
        const std::uint32_t nNext = static_cast<std::uint16_t>(nPlace - nOther);
        if (nNext <= nDistance || --nCandidates == 0)
            return {};
        nDistance = nNext;
    }
    if (nDistance - 1 >= nFurthest)
        return {};

    const auto nMost = static_cast<std::uint32_t>(std::min<std::size_t>(nEnd - nAt, kPngLongestCopy));
    Copy objBest;
    objBest.nLength = nShortest - 1;
    if (nMost < nShortest)
        return {};
    do {
        const std::uint8_t* const pOther = p - nDistance;
        // The last four bytes that a longer copy would have tell soonest that it is none.
        if (nLoad4(pOther + objBest.nLength - 3) == nLoad4(p + objBest.nLength - 3) &&
            nLoad4(pOther) == nFirst) {
            const std::uint32_t nLength = nAlike(pOther, p, nMost);
            if (nLength > objBest.nLength) {
                objBest = {nLength, nDistance};
                if (nLength >= nNice || nLength == nMost)
                    break;
            }
        }
        nOther = pOlder[nOther % kPngWindow];
        const std::uint32_t nNext = static_cast<std::uint16_t>(nPlace - nOther);
        if (nNext <= nDistance)
            break;
        nDistance = nNext;
    } while (--nCandidates > 0 && nDistance <= nFurthest);
    return objBest.nDistance ? objBest : Copy{};
}

// Where few different bytes occur, literals are cheap, and a short copy costs more than it saves.
static std::uint32_t nShortestWorth(const std::uint8_t* pBytes, std::size_t nBytes)
{
    std::array<std::uint32_t, 256> aCounts{};
    const std::size_t nSample = std::min<std::size_t>(nBytes, 8192);
    for (std::size_t i = 0; i < nSample; ++i)
        ++aCounts[pBytes[i]];
    std::uint32_t nFrequent = 0;
    for (const std::uint32_t nCount : aCounts)
        nFrequent += nCount > nSample / 1024 ? 1 : 0;
    return nFrequent < 8 ? 8 : nFrequent < 12 ? 7 : nFrequent < 20 ? 6 : nFrequent < 48 ? 5 : kHashed;
}

void PngMatcher::Find(const std::uint8_t* pBuffer, std::size_t nBegin, std::size_t nEnd,
                      const PngSearch& objSearch, PngTokens& aTokens)
{
    aTokens.clear();
    const std::uint32_t nShortest = nShortestWorth(pBuffer + nBegin, nEnd - nBegin);
    std::size_t nLiteral = nBegin;  // the first that no token stands for yet
    std::size_t i = nBegin;
    while (i + kHashed <= nEnd) {
        Copy objCopy = Longest(pBuffer, i, nEnd, nShortest, objSearch.nCandidates, objSearch.nNice);
        if (objCopy.nLength == 0) {
            ++i;
            continue;
        }
        std::size_t nInserted = i + 1;
        while (objSearch.bLazy && objCopy.nLength < objSearch.nNice && i + 1 + kHashed <= nEnd) {
            const Copy objLater =
                Longest(pBuffer, i + 1, nEnd, objCopy.nLength, objSearch.nCandidates / 2, objSearch.nNice);
            nInserted = i + 2;
            // A byte more is worth about two bits of distance, the literal in front of it about three.
            const int nBetter = 4 * (static_cast<int>(objLater.nLength) - static_cast<int>(objCopy.nLength)) +
                                static_cast<int>(std::bit_width(objCopy.nDistance)) -
                                static_cast<int>(std::bit_width(objLater.nDistance));
            if (objLater.nLength < objCopy.nLength || nBetter <= 2)
                break;
            objCopy = objLater;
            ++i;
        }
        aTokens.push_back({static_cast<std::uint32_t>(i - nLiteral),
                           static_cast<std::uint16_t>(objCopy.nLength),
                           static_cast<std::uint16_t>(objCopy.nDistance)});
        const std::size_t nAfter = i + objCopy.nLength;
        // The inside of a long copy is as good as known: it is what it was copied from.
        const std::size_t nFirst = objCopy.nLength > kLong ? nAfter - kLong / 2 : nInserted;
        Remember(pBuffer, nFirst, std::min(nAfter + kHashed - 1, nEnd));
        i = nAfter;
        nLiteral = i;
    }
    Remember(pBuffer, i, nEnd);
    aTokens.push_back({static_cast<std::uint32_t>(nEnd - nLiteral), 0, 0});
}

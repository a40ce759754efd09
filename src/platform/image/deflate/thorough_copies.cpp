// Finds copies thoroughly.
#include "src/platform/image/deflate/thorough_copies.h"

#include <algorithm>

#include "src/platform/image/deflate/match.h"

static constexpr std::uint32_t kHashed = 4;  // bytes; shorter copies than these are not found
static constexpr std::uint32_t kHashBits = 15;
static constexpr std::uint32_t kCandidates = 32;  // places looked at for each position
static constexpr std::uint32_t kNice = 128;       // a copy this long is taken without looking further

static inline std::uint32_t nHashOf(std::uint32_t nBytes)
{
    return nBytes * 0x9E3779B1U >> (32 - kHashBits);
}

void PngThoroughCopies::Moved(std::size_t nBytes)
{
    m_nMoved += static_cast<std::uint32_t>(nBytes);
    m_nKnown -= std::min(m_nKnown, nBytes);
}

// All positions from nBegin on whose four bytes end before nEnd.
void PngThoroughCopies::Enter(const std::uint8_t* pBuffer, std::size_t nBegin, std::size_t nEnd)
{
    std::uint16_t* const pNewest = m_aNewest.get();
    std::uint16_t* const pOlder = m_aOlder.get();
    const std::uint32_t nMoved = m_nMoved;
    for (std::size_t i = nBegin; i + kHashed <= nEnd; ++i) {
        const std::uint32_t nHash = nHashOf(nLoad4(pBuffer + i));
        const auto nPlace = static_cast<std::uint16_t>(i + nMoved);
        pOlder[nPlace % kPngWindow] = pNewest[nHash];
        pNewest[nHash] = nPlace;
    }
}

// The longest copy that the bytes at nAt can be; enters nAt.
PngThoroughCopies::Copy PngThoroughCopies::Longest(const std::uint8_t* pBuffer, std::size_t nAt,
                                                   std::size_t nEnd, std::uint32_t nShortest,
                                                   std::uint32_t nCandidates)
{
    const std::uint8_t* const p = pBuffer + nAt;
    const std::uint32_t nFirst = nLoad4(p);
    const auto nPlace = static_cast<std::uint16_t>(nAt + m_nMoved);
    std::uint16_t nOther = m_aNewest[nHashOf(nFirst)];
    Enter(pBuffer, nAt, nAt + kHashed);

    const std::size_t nFurthest = std::min<std::size_t>(nAt, kPngWindow);
    const auto nMost = static_cast<std::uint32_t>(std::min<std::size_t>(nEnd - nAt, kPngLongestCopy));
    if (nMost < nShortest)
        return {};
    Copy objBest;
    objBest.nLength = nShortest - 1;
    std::uint32_t nDistance = static_cast<std::uint16_t>(nPlace - nOther);
    for (; nCandidates > 0 && nDistance > 0 && nDistance <= nFurthest; --nCandidates) {
        const std::uint8_t* const pOther = p - nDistance;
        // The last four bytes that a longer copy would have tell soonest that it is none.
        if (nLoad4(pOther + objBest.nLength - 3) == nLoad4(p + objBest.nLength - 3) &&
            nLoad4(pOther) == nFirst) {
            const std::uint32_t nLength = nAlike(pOther, p, nMost);
            if (nLength > objBest.nLength) {
                objBest = {nLength, nDistance};
                if (nLength >= kNice || nLength == nMost)
                    break;
            }
        }
        nOther = m_aOlder[nOther % kPngWindow];
        // Places further back have greater distances; one that hasn't was overwritten.
        const std::uint32_t nNext = static_cast<std::uint16_t>(nPlace - nOther);
        if (nNext <= nDistance)
            break;
        nDistance = nNext;
    }
    return objBest.nDistance ? objBest : Copy{};
}

void PngThoroughCopies::Find(const std::uint8_t* pBuffer, std::size_t nBegin, std::size_t nEnd,
                             PngTokens& aTokens)
{
    if (!m_aNewest) {
        m_aNewest = std::make_unique<std::uint16_t[]>(std::size_t{1} << kHashBits);
        m_aOlder = std::make_unique<std::uint16_t[]>(kPngWindow);
    }
    const std::size_t nReach = nBegin - std::min<std::size_t>(nBegin, kPngWindow);
    Enter(pBuffer, std::max(m_nKnown, nReach), std::min(nBegin + kHashed - 1, nEnd));
    aTokens.clear();
    const std::uint32_t nShortest = nShortestCopyWorth(pBuffer + nBegin, nEnd - nBegin);
    std::size_t nLiteral = nBegin;  // the first that no token stands for yet
    std::size_t i = nBegin;
    while (i + kHashed <= nEnd) {
        Copy objCopy = Longest(pBuffer, i, nEnd, nShortest, kCandidates);
        if (objCopy.nLength == 0) {
            ++i;
            continue;
        }
        std::size_t nEntered = i + 1;
        while (objCopy.nLength < kNice && i + 1 + kHashed <= nEnd) {
            const Copy objLater = Longest(pBuffer, i + 1, nEnd, objCopy.nLength, kCandidates / 2);
            nEntered = i + 2;
            // In quarters of a byte: twice as far is a quarter worse, and the literal in front costs two of
            // them.
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
        i += objCopy.nLength;
        nLiteral = i;
        Enter(pBuffer, nEntered, std::min(i + kHashed - 1, nEnd));
    }
    aTokens.push_back({static_cast<std::uint32_t>(nEnd - nLiteral), 0, 0});
    // The last three bytes could not be hashed yet.
    m_nKnown = nEnd - std::min<std::size_t>(nEnd, kHashed - 1);
}

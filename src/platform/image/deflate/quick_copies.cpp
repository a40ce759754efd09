// Finds copies quickly.
#include "src/platform/image/deflate/quick_copies.h"

#include <algorithm>
#include <type_traits>

#include "src/platform/image/deflate/match.h"

// The inside of a longer copy isn't entered, but for its end: it is what it was copied from.
static constexpr std::uint32_t kLong = 24;
static constexpr std::size_t kEntered = 12;
static constexpr std::size_t kHashReads = 8;

PngQuickCopies::PngQuickCopies() : m_aPlaces(std::make_unique<std::uint16_t[]>(kPlaces)) {}

void PngQuickCopies::Forget()
{
    std::fill_n(m_aPlaces.get(), kPlaces, std::uint16_t{0});
    m_nKnown = 0;
}

void PngQuickCopies::Moved(std::size_t nBytes)
{
    m_nMoved += static_cast<std::uint32_t>(nBytes);
    m_nKnown -= std::min(m_nKnown, nBytes);
}

// nWays places a hash, of the first nHashed bytes.
template <std::size_t nWays, std::uint32_t nHashed>
void PngQuickCopies::FindWith(const std::uint8_t* pBuffer, std::size_t nBegin, std::size_t nEnd,
                              std::uint32_t nShortest, PngTokens& aTokens)
{
    // All the places of a hash, the newest lowest.
    using Places = std::conditional_t<nWays == 2, std::uint32_t, std::uint64_t>;
    constexpr std::uint32_t kHashBits = nWays == 2 ? 14 : 13;
    static_assert(nWays << kHashBits == kPlaces);
    std::uint16_t* const pPlaces = m_aPlaces.get();
    const std::uint32_t nMoved = m_nMoved;
    const auto objEnter = [=](std::size_t nAt) {
        const std::uint64_t nBytes = nLoad8(pBuffer + nAt) << (64 - 8 * nHashed);
        const std::uint64_t nHash = nBytes * 0x9E3779B97F4A7C15U >> (64 - kHashBits);
        Places objOld = 0;
        std::memcpy(&objOld, pPlaces + nHash * nWays, sizeof(objOld));
        const Places objNew = objOld << 16 | static_cast<std::uint16_t>(nAt + nMoved);
        std::memcpy(pPlaces + nHash * nWays, &objNew, sizeof(objNew));
        return objOld;
    };

    for (std::size_t nAt = m_nKnown; nAt < nBegin && nAt + kHashReads <= nEnd; ++nAt)
        objEnter(nAt);
    std::size_t nLiteral = nBegin;  // the first that no token stands for yet
    std::size_t i = nBegin;
    while (i + kHashReads <= nEnd) {
        const std::uint8_t* const p = pBuffer + i;
        const std::uint32_t nFirst = nLoad4(p);
        const Places objPlaces = objEnter(i);
        // Whether one of the places begins alike is unforeseeable, so that it is asked once, not for each of
        // them: the product of the differences is zero. Distances that lead out of the window are sorted out
        // afterwards.
        std::array<std::uint32_t, nWays> aDistances;
        std::array<std::uint64_t, nWays> aDiffer;
        for (std::size_t w = 0; w < nWays; ++w) {
            const auto nPlace = static_cast<std::uint16_t>(objPlaces >> 16 * w);
            aDistances[w] = static_cast<std::uint16_t>(i + nMoved - nPlace);
            aDiffer[w] = nLoad4(p - aDistances[w]) ^ nFirst;
        }
        bool bNone = aDiffer[0] * aDiffer[1] != 0;
        if constexpr (nWays == 4)
            bNone = bNone & (aDiffer[2] * aDiffer[3] != 0);
        if (bNone) {
            ++i;
            continue;
        }
        const std::size_t nFurthest = std::min<std::size_t>(i, kPngWindow);
        const auto nMost = static_cast<std::uint32_t>(std::min<std::size_t>(nEnd - i, kPngLongestCopy));
        std::uint32_t nLength = nShortest - 1;
        std::uint32_t nDistance = 0;
        for (const std::uint32_t nOther : aDistances) {
            if (nOther == 0 || nOther > nFurthest)
                continue;
            const std::uint32_t nOtherLength = nAlike(p - nOther, p, nMost);
            if (nOtherLength > nLength) {
                nLength = nOtherLength;
                nDistance = nOther;
            }
        }
        if (nDistance == 0) {
            ++i;
            continue;
        }
        aTokens.push_back({static_cast<std::uint32_t>(i - nLiteral), static_cast<std::uint16_t>(nLength),
                           static_cast<std::uint16_t>(nDistance)});
        std::size_t nAt = nLength > kLong ? i + nLength - kEntered : i + 1;
        i += nLength;
        nLiteral = i;
        for (; nAt < i && nAt + kHashReads <= nEnd; ++nAt)
            objEnter(nAt);
    }
    aTokens.push_back({static_cast<std::uint32_t>(nEnd - nLiteral), 0, 0});
    m_nKnown = i;  // what follows could not be hashed yet
}

void PngQuickCopies::Find(const std::uint8_t* pBuffer, std::size_t nBegin, std::size_t nEnd, bool bNoise,
                          PngTokens& aTokens, std::size_t nReach)
{
    aTokens.clear();
    const std::uint32_t nShortest = nShortestCopyWorth(pBuffer + nBegin, nEnd - nBegin);
    const std::uint32_t nHashed = std::min(nShortest, 6U);
    const std::uint32_t nKind = nHashed + (bNoise ? 10 : 0);
    if (nKind != m_nKind)
        Forget();
    m_nKind = nKind;
    m_nKnown = std::max(m_nKnown, nBegin - std::min(nBegin, nReach));
    switch (nKind) {
        case 4:
            FindWith<4, 4>(pBuffer, nBegin, nEnd, nShortest, aTokens);
            break;
        case 5:
            FindWith<4, 5>(pBuffer, nBegin, nEnd, nShortest, aTokens);
            break;
        case 6:
            FindWith<4, 6>(pBuffer, nBegin, nEnd, nShortest, aTokens);
            break;
        case 14:
            FindWith<2, 4>(pBuffer, nBegin, nEnd, nShortest, aTokens);
            break;
        case 15:
            FindWith<2, 5>(pBuffer, nBegin, nEnd, nShortest, aTokens);
            break;
        default:
            FindWith<2, 6>(pBuffer, nBegin, nEnd, nShortest, aTokens);
            break;
    }
}

// What the two finders of copies share.
// Room: platform/image/deflate.
#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstring>

inline std::uint32_t nLoad4(const std::uint8_t* p)
{
    std::uint32_t n = 0;
    std::memcpy(&n, p, 4);
    return n;
}

inline std::uint64_t nLoad8(const std::uint8_t* p)
{
    std::uint64_t n = 0;
    std::memcpy(&n, p, 8);
    return n;
}

/// How many of nMost bytes at pA and pB are alike. Up to 7 more may be read.
inline std::uint32_t nAlike(const std::uint8_t* pA, const std::uint8_t* pB, std::uint32_t nMost)
{
    for (std::uint32_t nLength = 0; nLength < nMost; nLength += 8) {
        const std::uint64_t nDiffer = nLoad8(pA + nLength) ^ nLoad8(pB + nLength);
        if (nDiffer) {
            const int nZeros = std::endian::native == std::endian::little ? std::countr_zero(nDiffer)
                                                                          : std::countl_zero(nDiffer);
            return std::min(nLength + static_cast<std::uint32_t>(nZeros) / 8, nMost);
        }
    }
    return nMost;
}

/// The shortest copy, 4 to 8 bytes, that is worth its bits in data like pBytes: where few different bytes
/// occur, literals are cheap.
inline std::uint32_t nShortestCopyWorth(const std::uint8_t* pBytes, std::size_t nBytes)
{
    std::array<std::uint32_t, 256> aCounts{};
    const std::size_t nSample = std::min<std::size_t>(nBytes, 8192);
    for (std::size_t i = 0; i < nSample; ++i)
        ++aCounts[pBytes[i]];
    const auto nFrequent = std::count_if(aCounts.begin(), aCounts.end(),
                                         [nSample](std::uint32_t nCount) { return nCount > nSample / 1024; });
    return nFrequent < 8 ? 8 : nFrequent < 12 ? 7 : nFrequent < 20 ? 6 : nFrequent < 48 ? 5 : 4;
}

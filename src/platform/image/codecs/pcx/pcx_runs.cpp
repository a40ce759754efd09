// The run-length coding of PCX files.
#include "src/platform/image/codecs/pcx/pcx_runs.h"

#include <algorithm>
#include <bit>
#include <cstring>

static constexpr std::uint8_t kCountMark = 0xC0;
static constexpr std::size_t kLongestRun = 63;
static constexpr std::uint64_t kHighBits = 0x8080808080808080;
static constexpr std::ptrdiff_t kRoom = 8 + 64;

static std::uint64_t nEight(const std::uint8_t* pBytes)
{
    std::uint64_t nBytes = 0;
    std::memcpy(&nBytes, pBytes, 8);
    return nBytes;
}

// The high bit of each of the eight bytes that has both high bits set, and so can't stand for itself.
static std::uint64_t nMarks(std::uint64_t nBytes)
{
    return nBytes & nBytes << 1 & kHighBits;
}

// The first of the eight bytes, as they lie in memory, that isn't 0. nBits is not 0.
static std::size_t nFirstOf(std::uint64_t nBits)
{
    const int nZeros =
        std::endian::native == std::endian::little ? std::countr_zero(nBits) : std::countl_zero(nBits);
    return static_cast<std::size_t>(nZeros) / 8;
}

// The high bit of each of the eight bytes that is 0. Every bit is exact: no borrow passes from byte to byte.
static std::uint64_t nZeroBytes(std::uint64_t nBytes)
{
    return ~(((nBytes & ~kHighBits) + ~kHighBits) | nBytes) & kHighBits;
}

bool PcxRuns::bNextRow(std::span<std::uint8_t> aRow)
{
    std::uint8_t* pOut = aRow.data();
    std::uint8_t* const pEnd = pOut + aRow.size();
    if (!m_bPacked) {
        const std::size_t nTaken = std::min(aRow.size(), m_aLeft.size());
        std::copy_n(m_aLeft.begin(), nTaken, pOut);
        m_aLeft = m_aLeft.subspan(nTaken);
        return nTaken == aRow.size();
    }
    const std::uint8_t* pIn = m_aLeft.data();
    const std::uint8_t* const pInEnd = pIn + m_aLeft.size();
    while (pOut < pEnd) {
        if (m_nRun > 0) {
            const std::size_t nCount = std::min(m_nRun, static_cast<std::size_t>(pEnd - pOut));
            std::memset(pOut, m_nRunValue, nCount);
            pOut += nCount;
            m_nRun -= nCount;
            continue;
        }
        // Where there is room for the longest run: eight bytes at once, of which those before the first mark
        // count, and then the run.
        while (pEnd - pOut >= kRoom && pInEnd - pIn >= 10) {
            const std::uint64_t nBytes = nEight(pIn);
            std::memcpy(pOut, &nBytes, 8);
            const std::uint64_t nFound = nMarks(nBytes);
            const std::size_t nPlain = nFound == 0 ? 8 : nFirstOf(nFound);
            pOut += nPlain;
            pIn += nPlain;
            if (nFound == 0)
                continue;
            const std::size_t nCount = *pIn & kLongestRun;
            std::memset(pOut, pIn[1], 8);
            if (nCount > 8)
                std::memset(pOut + 8, pIn[1], kLongestRun - 8);
            pOut += nCount;
            pIn += 2;
        }
        if (pIn == pInEnd || (*pIn >= kCountMark && pIn + 1 == pInEnd)) {
            m_aLeft = {};
            return false;
        }
        if (*pIn < kCountMark) {
            *pOut++ = *pIn++;
        } else {
            m_nRun = *pIn++ & kLongestRun;
            m_nRunValue = *pIn++;
        }
    }
    m_aLeft = m_aLeft.last(static_cast<std::size_t>(pInEnd - pIn));
    return true;
}

// How often the first byte comes in a row, up to nMost times.
static std::size_t nRunAt(const std::uint8_t* pBytes, std::size_t nMost)
{
    std::uint64_t nAllFirst = 0;
    std::memset(&nAllFirst, *pBytes, 8);
    std::size_t nCount = 1;
    for (; nCount + 8 <= nMost; nCount += 8) {
        const std::uint64_t nChange = nEight(pBytes + nCount) ^ nAllFirst;
        if (nChange != 0)
            return nCount + nFirstOf(nChange);
    }
    while (nCount < nMost && pBytes[nCount] == *pBytes)
        ++nCount;
    return nCount;
}

std::size_t nPackPcxRow(Bytes aRow, std::uint8_t* pOut)
{
    const std::uint8_t* pIn = aRow.data();
    const std::uint8_t* const pEnd = pIn + aRow.size();
    std::uint8_t* const pStart = pOut;
    while (pIn < pEnd) {
        // Eight bytes at once, of which those before the first one that needs a mark or is repeated count.
        if (pEnd - pIn > 8) {
            const std::uint64_t nBytes = nEight(pIn);
            const std::uint64_t nChange = nBytes ^ nEight(pIn + 1);
            const std::uint64_t nFound = nMarks(nBytes) | nZeroBytes(nChange);
            const std::size_t nPlain = nFound == 0 ? 8 : nFirstOf(nFound);
            std::memcpy(pOut, &nBytes, 8);
            pOut += nPlain;
            pIn += nPlain;
            if (nFound == 0)
                continue;
        }
        const std::uint8_t nValue = *pIn;
        const std::size_t nCount =
            nRunAt(pIn, std::min<std::size_t>(static_cast<std::size_t>(pEnd - pIn), kLongestRun));
        pIn += nCount;
        if (nCount > 1 || nValue >= kCountMark)
            *pOut++ = static_cast<std::uint8_t>(kCountMark | nCount);
        *pOut++ = nValue;
    }
    return static_cast<std::size_t>(pOut - pStart);
}

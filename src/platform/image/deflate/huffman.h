// Huffman codes as deflate has them, and the bits that they become.
// Room: platform/image/deflate.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>

/// A code is at most this long, so that four literals and the seven bits that may be left from before fit
/// into 64.
constexpr std::uint32_t kPngLongestCode = 14;

/// One symbol's code: the bits in the order in which they are written, the first the lowest.
struct PngCode {
    std::uint16_t nBits = 0;
    std::uint16_t nLength = 0;  ///< 0 = the symbol has no code
};

/// Gives each symbol that occurs a code, so that the sum of aCounts[i] * nLength is least, or nearly, among
/// codes of at most nLongest bits (7 to 15). At least two symbols get one, since not every reader takes a
/// code of one. The counts, at most 288 of them, are below 2^22.
void MakePngCodes(std::span<const std::uint32_t> aCounts, std::uint32_t nLongest, std::span<PngCode> aCodes);

/// Gives codes to lengths that are set already.
void FillPngCodes(std::span<PngCode> aCodes);

/// Writes bits, the lowest first. Who calls sees to it that there is room.
class PngBitWriter
{
public:
    PngBitWriter(std::uint8_t* pOut, std::uint64_t nBits, std::uint32_t nCount)
        : m_pOut(pOut), m_nBits(nBits), m_nCount(nCount)
    {
    }

    /// nCount bits, at most 57 together with those since the last Flush.
    void Put(std::uint64_t nBits, std::uint32_t nCount)
    {
        m_nBits |= nBits << m_nCount;
        m_nCount += nCount;
    }
    void Put(PngCode objCode) { Put(objCode.nBits, objCode.nLength); }

    /// Moves whole bytes out; at most 7 bits stay. Writes 8 bytes and may leave part of them to be written
    /// again.
    void Flush()
    {
        if constexpr (kLittleEndian) {
            std::memcpy(m_pOut, &m_nBits, 8);
        } else {
            for (int i = 0; i < 8; ++i)
                m_pOut[i] = static_cast<std::uint8_t>(m_nBits >> 8 * i);
        }
        m_pOut += m_nCount >> 3;
        m_nBits >>= m_nCount & ~7U;
        m_nCount &= 7;
    }

    /// Fills up to a whole byte with zeros.
    void Align()
    {
        m_nCount = (m_nCount + 7) & ~7U;
        Flush();
    }

    std::uint8_t* pOut() const { return m_pOut; }
    std::uint64_t nBits() const { return m_nBits; }
    std::uint32_t nCount() const { return m_nCount; }
    void SetOut(std::uint8_t* pOut) { m_pOut = pOut; }

private:
    static constexpr bool kLittleEndian = __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__;

    std::uint8_t* m_pOut;
    std::uint64_t m_nBits;
    std::uint32_t m_nCount;
};

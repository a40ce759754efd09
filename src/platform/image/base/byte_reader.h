// Bounds-checked reading of numbers and blocks from the bytes of a file.
// Room: platform/image/base.
#pragma once

#include <cstdint>
#include <span>

using Bytes = std::span<const std::uint8_t>;

/// The first read past the end sets Failed() for good, and every read from then on gives nothing or 0: a
/// codec may read a whole header in a row and test once.
class ByteReader
{
public:
    explicit ByteReader(Bytes aFile) : m_aLeft(aFile) {}

    bool Failed() const { return m_bFailed; }
    std::uint64_t Left() const { return m_aLeft.size(); }

    Bytes Take(std::uint64_t nCount)
    {
        m_bFailed = m_bFailed || nCount > m_aLeft.size();
        const Bytes aTaken = m_bFailed ? Bytes{} : m_aLeft.first(nCount);
        m_aLeft = m_bFailed ? Bytes{} : m_aLeft.subspan(aTaken.size());
        return aTaken;
    }

    std::uint8_t U8() { return static_cast<std::uint8_t>(Little(1)); }
    std::uint16_t U16Le() { return static_cast<std::uint16_t>(Little(2)); }
    std::uint32_t U32Le() { return static_cast<std::uint32_t>(Little(4)); }
    std::int16_t I16Le() { return static_cast<std::int16_t>(Little(2)); }
    std::int32_t I32Le() { return static_cast<std::int32_t>(Little(4)); }
    std::uint16_t U16Be() { return static_cast<std::uint16_t>(Big(2)); }
    std::uint32_t U32Be() { return static_cast<std::uint32_t>(Big(4)); }

private:
    std::uint64_t Little(std::uint32_t nCount)
    {
        std::uint64_t nValue = 0;
        std::uint32_t nShift = 0;
        for (const std::uint8_t nByte : Take(nCount)) {
            nValue |= static_cast<std::uint64_t>(nByte) << nShift;
            nShift += 8;
        }
        return nValue;
    }
    std::uint64_t Big(std::uint32_t nCount)
    {
        std::uint64_t nValue = 0;
        for (const std::uint8_t nByte : Take(nCount))
            nValue = nValue << 8 | nByte;
        return nValue;
    }

    Bytes m_aLeft;
    bool m_bFailed = false;
};

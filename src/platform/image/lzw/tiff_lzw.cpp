// The LZW encoder of TIFF strips.
#include "src/platform/image/lzw/tiff_lzw.h"

#include <bit>
#include <cstring>

static constexpr std::uint32_t kClear = 256;
static constexpr std::uint32_t kEnd = 257;
static constexpr std::uint32_t kFirstString = 258;
static constexpr std::uint32_t kFull = 4094;
static constexpr std::uint32_t kEmptySlot = 0xFFFFFFFF;
static constexpr std::uint32_t kCodeBits = 12;

namespace
{
/// Codes as a stream of bits. The room behind pOut is seen to by the caller.
struct CodeStream {
    std::uint8_t* pOut;
    std::uint64_t nBits = 0;   ///< the last of them not yet written
    std::uint32_t nCount = 0;  ///< how many are not yet written: 0 to 7 between two codes
    std::uint32_t nWidth = 9;

    void Put(std::uint32_t nCode)
    {
        nBits = nBits << nWidth | nCode;
        nCount += nWidth;
        std::uint64_t nBytes = nBits << (64 - nCount);
        if constexpr (std::endian::native == std::endian::little)
            nBytes = __builtin_bswap64(nBytes);
        std::memcpy(pOut, &nBytes, 8);
        pOut += nCount / 8;
        nCount %= 8;
    }
};
}  // namespace

TiffLzwEncoder::TiffLzwEncoder()
{
    // Any numbers without a pattern do; these are a linear congruential generator's.
    std::uint32_t nState = 12345;
    for (std::uint32_t& nSpread : m_aSpread) {
        nState = nState * 1664525u + 1013904223u;
        nSpread = nState >> 8;
    }
}

void TiffLzwEncoder::Encode(Bytes aStrip, std::vector<std::uint8_t>& aCodes)
{
    // At worst a code of 12 bits for each byte and a clear code for each table, and what the last store
    // touches.
    aCodes.resize(aStrip.size() * 3 / 2 + aStrip.size() / 1000 + 64);
    CodeStream objOut{aCodes.data()};
    m_aTable.fill(kEmptySlot);
    objOut.Put(kClear);
    std::uint32_t nNextCode = kFirstString;
    // After a new string: true when the table is full, and was cleared.
    const auto bCount = [&] {
        ++nNextCode;
        if (nNextCode == kFull) {
            objOut.Put(kClear);
            objOut.nWidth = 9;
            nNextCode = kFirstString;
            return true;
        }
        if (std::has_single_bit(nNextCode))
            ++objOut.nWidth;
        return false;
    };
    std::uint32_t nString = aStrip[0];
    for (const std::uint8_t nByte : aStrip.subspan(1)) {
        const std::uint32_t nKey = nString << 8 | nByte;
        std::uint32_t nSlot = (nString << 2 ^ m_aSpread[nByte]) % kSlots;
        std::uint32_t nFound = m_aTable[nSlot];
        while (nFound >> kCodeBits != nKey && nFound != kEmptySlot) {
            nSlot = (nSlot + 1) % kSlots;
            nFound = m_aTable[nSlot];
        }
        if (nFound != kEmptySlot) {
            nString = nFound & ((1u << kCodeBits) - 1);
            continue;
        }
        objOut.Put(nString);
        m_aTable[nSlot] = nKey << kCodeBits | nNextCode;
        nString = nByte;
        if (bCount())
            m_aTable.fill(kEmptySlot);
    }
    objOut.Put(nString);
    bCount();
    objOut.Put(kEnd);
    if (objOut.nCount > 0)
        ++objOut.pOut;  // the last store left the remaining bits, then zeros, there
    aCodes.resize(static_cast<std::size_t>(objOut.pOut - aCodes.data()));
}

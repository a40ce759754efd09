// Compresses the indexes of a GIF picture through a hash table of the strings seen.
#include "src/platform/image/lzw/lzw_encoder.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <vector>

#include "src/platform/image/base/output_file.h"

static constexpr std::uint32_t kCodes = 4096;
static constexpr std::size_t kBlock = 255;
static constexpr std::size_t kGathered = 256 * kBlock;

// Puts codes of varying width into bytes, and these into sub-blocks.
class CodeWriter
{
public:
    explicit CodeWriter(OutputFile& objOut) : m_objOut(objOut), m_aBytes(kGathered + sizeof(m_nBits)) {}

    void Write(std::uint32_t nCode, unsigned nWidth)
    {
        // At most 7 bits wait, and a code has at most 12. All 8 bytes are stored, and those that are full are
        // kept.
        m_nBits |= std::uint64_t{nCode} << m_nWaiting;
        m_nWaiting += nWidth;
        for (std::size_t i = 0; i < 4; ++i)
            m_aBytes[m_nFilled + i] = static_cast<std::uint8_t>(m_nBits >> (8 * i));
        m_nFilled += m_nWaiting / 8;
        m_nBits >>= m_nWaiting / 8 * 8;
        m_nWaiting %= 8;
        if (m_nFilled >= kGathered)
            WriteBlocks(kGathered);
    }

    bool Finish()
    {
        if (m_nWaiting > 0)
            m_aBytes[m_nFilled++] = static_cast<std::uint8_t>(m_nBits);
        WriteBlocks(m_nFilled);
        return m_objOut.WriteU8(0);
    }

private:
    void WriteBlocks(std::size_t nBytes)
    {
        m_aBlocks.clear();
        for (std::size_t i = 0; i < nBytes; i += kBlock) {
            const std::size_t nBlock = std::min(kBlock, nBytes - i);
            m_aBlocks.push_back(static_cast<std::uint8_t>(nBlock));
            m_aBlocks.insert(m_aBlocks.end(), &m_aBytes[i], &m_aBytes[i] + nBlock);
        }
        m_objOut.Write(m_aBlocks);
        std::copy(m_aBytes.begin() + static_cast<std::ptrdiff_t>(nBytes),
                  m_aBytes.begin() + static_cast<std::ptrdiff_t>(m_nFilled), m_aBytes.begin());
        m_nFilled -= nBytes;
    }

    OutputFile& m_objOut;
    std::vector<std::uint8_t> m_aBytes;
    std::vector<std::uint8_t> m_aBlocks;
    std::size_t m_nFilled = 0;
    std::uint64_t m_nBits = 0;
    unsigned m_nWaiting = 0;
};

bool bWriteLzw(Bytes aIndexes, unsigned nBits, OutputFile& objOut)
{
    // The format knows no codes for single bits: pictures of two colours count as ones of four.
    const unsigned nCodeSize = std::max(nBits, 2u);
    const std::uint32_t nClear = 1u << nCodeSize, nEnd = nClear + 1;
    objOut.WriteU8(static_cast<std::uint8_t>(nCodeSize));
    CodeWriter objWriter(objOut);

    // A string is the code of its beginning and its last index. Each place holds that in its upper 20 bits
    // and the string's own code in the lower 12. With at most 4096 of 8192 places used a free one is soon
    // found.
    constexpr std::uint32_t kFree = 0xFFFFFFFF;
    constexpr unsigned kHashBits = 13;
    std::array<std::uint32_t, 1u << kHashBits> aPlaces;
    aPlaces.fill(kFree);
    std::uint32_t nNext = nEnd + 1;
    unsigned nWidth = nCodeSize + 1;

    objWriter.Write(nClear, nWidth);
    std::uint32_t nCode = aIndexes[0];
    for (const std::uint8_t nIndex : aIndexes.subspan(1)) {
        const std::uint32_t nString = nCode << 8 | nIndex;
        std::uint32_t nPlace = nString * 0x9E3779B1u >> (32 - kHashBits);
        while (aPlaces[nPlace] >> 12 != nString && aPlaces[nPlace] != kFree)
            nPlace = (nPlace + 1) % aPlaces.size();
        if (aPlaces[nPlace] != kFree) {
            nCode = aPlaces[nPlace] & (kCodes - 1);
            continue;
        }
        objWriter.Write(nCode, nWidth);
        nCode = nIndex;
        if (nNext == kCodes) {
            objWriter.Write(nClear, nWidth);
            aPlaces.fill(kFree);
            nNext = nEnd + 1;
            nWidth = nCodeSize + 1;
        } else {
            // The reader learns a code one step later than the writer, so the width grows after its first
            // use.
            if (nNext == 1u << nWidth)
                ++nWidth;
            aPlaces[nPlace] = nString << 12 | nNext++;
        }
    }
    objWriter.Write(nCode, nWidth);
    // The reader makes one more code of the last one, and may look for the end in codes that are wider by
    // then.
    if (nNext == 1u << nWidth && nWidth < 12)
        ++nWidth;
    objWriter.Write(nEnd, nWidth);
    return objWriter.Finish();
}

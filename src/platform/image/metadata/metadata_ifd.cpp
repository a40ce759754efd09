// Walks TIFF directories. Every offset comes from the file and may be anything.
#include "src/platform/image/metadata/metadata_ifd.h"

#include <algorithm>
#include <array>

static constexpr std::size_t kBlockLimit = 64 * 1024 * 1024;
static constexpr std::size_t kEntrySize = 12;

// Bytes of one value, by type; 0 for a type that is not known.
static std::size_t nTypeSize(std::uint16_t nType)
{
    static constexpr std::array<std::uint8_t, 14> kSizes = {0, 1, 1, 2, 4, 8, 1, 1, 2, 4, 8, 4, 8, 4};
    return nType < kSizes.size() ? kSizes[nType] : 0;
}

IfdReader::IfdReader(Bytes aBlock)
{
    if (aBlock.size() < 8 || aBlock.size() > kBlockLimit)
        return;
    const bool bLittle = aBlock[0] == 'I' && aBlock[1] == 'I';
    m_bBigEndian = aBlock[0] == 'M' && aBlock[1] == 'M';
    if (!bLittle && !m_bBigEndian)
        return;
    m_aBlock = aBlock;
    m_nFirst = U16(2) == 42 ? U32(4) : 0;
}

std::uint16_t IfdReader::U16(std::size_t nOffset) const
{
    if (nOffset > m_aBlock.size() || m_aBlock.size() - nOffset < 2)
        return 0;
    const std::uint8_t* p = m_aBlock.data() + nOffset;
    return static_cast<std::uint16_t>(m_bBigEndian ? p[0] << 8 | p[1] : p[1] << 8 | p[0]);
}

std::uint32_t IfdReader::U32(std::size_t nOffset) const
{
    if (nOffset > m_aBlock.size() || m_aBlock.size() - nOffset < 4)
        return 0;
    const std::uint32_t nFirst = U16(nOffset);
    const std::uint32_t nSecond = U16(nOffset + 2);
    return m_bBigEndian ? nFirst << 16 | nSecond : nSecond << 16 | nFirst;
}

std::size_t IfdReader::nEntryCount(std::size_t nDirectory) const
{
    if (nDirectory < 8 || nDirectory > m_aBlock.size() || m_aBlock.size() - nDirectory < 2)
        return 0;
    const std::size_t nCount = U16(nDirectory);
    return nCount <= (m_aBlock.size() - nDirectory - 2) / kEntrySize ? nCount : 0;
}

std::vector<IfdEntry> IfdReader::aEntries(std::size_t nDirectory) const
{
    std::vector<IfdEntry> aFound;
    const std::size_t nCount = nEntryCount(nDirectory);
    aFound.reserve(nCount);
    for (std::size_t i = 0; i < nCount; ++i) {
        IfdEntry objEntry;
        objEntry.nEntryOffset = nDirectory + 2 + i * kEntrySize;
        objEntry.nTag = U16(objEntry.nEntryOffset);
        objEntry.nType = U16(objEntry.nEntryOffset + 2);
        objEntry.nCount = U32(objEntry.nEntryOffset + 4);
        objEntry.nValueSize = nTypeSize(objEntry.nType) * objEntry.nCount;
        objEntry.nValueOffset =
            objEntry.nValueSize <= 4 ? objEntry.nEntryOffset + 8 : U32(objEntry.nEntryOffset + 8);
        if (objEntry.nValueSize > 0 && objEntry.nValueOffset <= m_aBlock.size() &&
            objEntry.nValueSize <= m_aBlock.size() - objEntry.nValueOffset)
            aFound.push_back(objEntry);
    }
    return aFound;
}

std::size_t IfdReader::nNextDirectory(std::size_t nDirectory) const
{
    const std::size_t nCount = nEntryCount(nDirectory);
    return nCount > 0 ? U32(nDirectory + 2 + nCount * kEntrySize) : 0;
}

std::optional<std::uint32_t> IfdReader::nNumber(const IfdEntry& objEntry, std::size_t nIndex) const
{
    if (nIndex >= objEntry.nCount)
        return std::nullopt;
    if (objEntry.nType == 1)
        return m_aBlock[objEntry.nValueOffset + nIndex];
    if (objEntry.nType == 3)
        return U16(objEntry.nValueOffset + nIndex * 2);
    if (objEntry.nType == 4 || objEntry.nType == 13)
        return U32(objEntry.nValueOffset + nIndex * 4);
    return std::nullopt;
}

std::optional<double> IfdReader::dRational(const IfdEntry& objEntry) const
{
    const std::uint32_t nDenominator = U32(objEntry.nValueOffset + 4);
    if (objEntry.nType != 5 || nDenominator == 0)
        return std::nullopt;
    return static_cast<double>(U32(objEntry.nValueOffset)) / nDenominator;
}

const IfdEntry* pEntryWithTag(const std::vector<IfdEntry>& aEntries, std::uint16_t nTag)
{
    const auto itFound = std::find_if(aEntries.begin(), aEntries.end(),
                                      [nTag](const IfdEntry& objEntry) { return objEntry.nTag == nTag; });
    return itFound == aEntries.end() ? nullptr : &*itFound;
}

void PutU16(std::vector<std::uint8_t>& aBlock, std::size_t nOffset, std::uint16_t nValue, bool bBigEndian)
{
    aBlock[nOffset + (bBigEndian ? 0 : 1)] = static_cast<std::uint8_t>(nValue >> 8);
    aBlock[nOffset + (bBigEndian ? 1 : 0)] = static_cast<std::uint8_t>(nValue);
}

void PutU32(std::vector<std::uint8_t>& aBlock, std::size_t nOffset, std::uint32_t nValue, bool bBigEndian)
{
    PutU16(aBlock, nOffset + (bBigEndian ? 0 : 2), static_cast<std::uint16_t>(nValue >> 16), bBigEndian);
    PutU16(aBlock, nOffset + (bBigEndian ? 2 : 0), static_cast<std::uint16_t>(nValue), bBigEndian);
}

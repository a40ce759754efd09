// Reads the directories of a TIFF structure, such as an EXIF block, in either byte order and never out of
// bounds.
// Room: platform/image/metadata.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "src/platform/image/base/byte_reader.h"

/// One tag of a directory. Offsets count from the beginning of the block; the value is known to lie inside
/// it.
struct IfdEntry {
    std::uint16_t nTag = 0;
    std::uint16_t nType = 0;       ///< 1 byte, 2 text, 3 16-bit, 4 32-bit, 5 rational, 7 undefined, ...
    std::uint32_t nCount = 0;      ///< how many of them
    std::size_t nEntryOffset = 0;  ///< where its 12 bytes are
    std::size_t nValueOffset = 0;  ///< where its value is, inside the 12 bytes if it fits there
    std::size_t nValueSize = 0;    ///< bytes of the value
};

/// A view on a block; the bytes are lent. A block without a TIFF header, or over 64 MB, has no directory.
class IfdReader
{
public:
    explicit IfdReader(Bytes aBlock);

    bool bBigEndian() const { return m_bBigEndian; }
    /// 0 for a block without a header.
    std::size_t nFirstDirectory() const { return m_nFirst; }
    /// The directory at an offset, in the order of the file. Entries of unknown type, and entries whose value
    /// isn't inside the block, are left out. Nothing for an offset that holds no whole directory.
    std::vector<IfdEntry> aEntries(std::size_t nDirectory) const;
    /// The offset of the directory that follows in the chain; 0 for none.
    std::size_t nNextDirectory(std::size_t nDirectory) const;
    /// How many entries the directory claims that it has; 0 for an offset that holds no whole directory.
    std::size_t nEntryCount(std::size_t nDirectory) const;

    /// Numbers at an offset, 0 outside the block.
    std::uint16_t U16(std::size_t nOffset) const;
    std::uint32_t U32(std::size_t nOffset) const;
    /// The number at an index of an entry of whole numbers (types 1, 3, 4, 13); nothing for other types or
    /// indices.
    std::optional<std::uint32_t> nNumber(const IfdEntry& objEntry, std::size_t nIndex = 0) const;
    /// The first rational of an entry as a quotient; nothing for other types or a zero denominator.
    std::optional<double> dRational(const IfdEntry& objEntry) const;

private:
    Bytes m_aBlock;
    bool m_bBigEndian = false;
    std::size_t m_nFirst = 0;
};

/// The entry with a tag, or null.
const IfdEntry* pEntryWithTag(const std::vector<IfdEntry>& aEntries, std::uint16_t nTag);

/// Writes a number into a block in its byte order. The caller knows that it is inside.
void PutU16(std::vector<std::uint8_t>& aBlock, std::size_t nOffset, std::uint16_t nValue, bool bBigEndian);
void PutU32(std::vector<std::uint8_t>& aBlock, std::size_t nOffset, std::uint32_t nValue, bool bBigEndian);

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
    std::uint16_t tag = 0;
    std::uint16_t type = 0;        ///< 1 byte, 2 text, 3 16-bit, 4 32-bit, 5 rational, 7 undefined, ...
    std::uint32_t count = 0;       ///< how many of them
    std::size_t entry_offset = 0;  ///< where its 12 bytes are
    std::size_t value_offset = 0;  ///< where its value is, inside the 12 bytes if it fits there
    std::size_t value_size = 0;    ///< bytes of the value
};

/// A view on a block; the bytes are lent. A block without a TIFF header, or over 64 MB, has no directory.
class IfdReader
{
public:
    explicit IfdReader(Bytes block);

    bool IsBigEndian() const { return big_endian_; }
    /// 0 for a block without a header.
    std::size_t FirstDirectory() const { return first_; }
    /// The directory at an offset, in the order of the file. Entries of unknown type, and entries whose value
    /// isn't inside the block, are left out. Nothing for an offset that holds no whole directory.
    std::vector<IfdEntry> Entries(std::size_t directory) const;
    /// The offset of the directory that follows in the chain; 0 for none.
    std::size_t NextDirectory(std::size_t directory) const;
    /// How many entries the directory claims that it has; 0 for an offset that holds no whole directory.
    std::size_t EntryCount(std::size_t directory) const;

    /// Numbers at an offset, 0 outside the block.
    std::uint16_t U16(std::size_t offset) const;
    std::uint32_t U32(std::size_t offset) const;
    /// The number at an index of an entry of whole numbers (types 1, 3, 4, 13); nothing for other types or
    /// indices.
    std::optional<std::uint32_t> Number(const IfdEntry& entry, std::size_t index = 0) const;
    /// The first rational of an entry as a quotient; nothing for other types or a zero denominator.
    std::optional<double> Rational(const IfdEntry& entry) const;

private:
    Bytes block_;
    bool big_endian_ = false;
    std::size_t first_ = 0;
};

/// The entry with a tag, or null.
const IfdEntry* EntryWithTag(const std::vector<IfdEntry>& entries, std::uint16_t tag);

/// Writes a number into a block in its byte order. The caller knows that it is inside.
void PutU16(std::vector<std::uint8_t>& block, std::size_t offset, std::uint16_t value, bool big_endian);
void PutU32(std::vector<std::uint8_t>& block, std::size_t offset, std::uint32_t value, bool big_endian);

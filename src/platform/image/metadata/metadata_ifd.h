// Reads the directories of a TIFF structure such as an EXIF block, in either byte order and always within
// bounds.
// Room: platform/image/metadata.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "src/platform/image/base/byte_reader.h"

/// A directory entry. Offsets count from the start of the block; the value is always inside it.
struct IfdEntry {
    std::uint16_t tag = 0;
    std::uint16_t type = 0;        ///< 1 byte, 2 text, 3 16-bit, 4 32-bit, 5 rational, 7 undefined, ...
    std::uint32_t count = 0;       ///< number of values
    std::size_t entry_offset = 0;  ///< of its 12 bytes
    std::size_t value_offset = 0;  ///< of its value, which is inside the 12 bytes if it fits
    std::size_t value_size = 0;    ///< of the value, in bytes
};

/// A view of a block, which must outlive it. A block without a TIFF header or over 64 MB has no directories.
class IfdReader
{
public:
    explicit IfdReader(Bytes block);

    bool IsBigEndian() const { return big_endian_; }
    /// 0 without a TIFF header.
    std::size_t FirstDirectory() const { return first_; }
    /// The entries of the directory at an offset, in stored order. Skips entries of an unknown type or with a
    /// value outside the block. Empty if the offset doesn't hold a whole directory.
    std::vector<IfdEntry> Entries(std::size_t directory) const;
    /// Offset of the next directory in the chain; 0 = none.
    std::size_t NextDirectory(std::size_t directory) const;
    /// The entry count that the directory states; 0 if the offset doesn't hold a whole directory.
    std::size_t EntryCount(std::size_t directory) const;

    /// The number at an offset; 0 outside the block.
    std::uint16_t U16(std::size_t offset) const;
    std::uint32_t U32(std::size_t offset) const;
    /// An element of an integer entry (types 1, 3, 4, 13); nothing for other types or an index out of range.
    std::optional<std::uint32_t> Number(const IfdEntry& entry, std::size_t index = 0) const;
    /// An entry's first rational as a quotient; nothing for other types or a zero denominator.
    std::optional<double> Rational(const IfdEntry& entry) const;

private:
    Bytes block_;
    bool big_endian_ = false;
    std::size_t first_ = 0;
};

/// The entry with this tag, or null.
const IfdEntry* EntryWithTag(const std::vector<IfdEntry>& entries, std::uint16_t tag);

/// Writes a number to a block in its byte order. The offset must be inside the block.
void PutU16(std::vector<std::uint8_t>& block, std::size_t offset, std::uint16_t value, bool big_endian);
void PutU32(std::vector<std::uint8_t>& block, std::size_t offset, std::uint32_t value, bool big_endian);

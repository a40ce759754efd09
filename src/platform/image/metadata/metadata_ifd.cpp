// Reads TIFF directories. No offset in the data can be trusted.
#include "src/platform/image/metadata/metadata_ifd.h"

#include <algorithm>
#include <array>

static constexpr std::size_t kBlockLimit = 64 * 1024 * 1024;
static constexpr std::size_t kEntrySize = 12;

// Bytes per value of a type; 0 for an unknown type.
static std::size_t TypeSize(std::uint16_t type)
{
    static constexpr std::array<std::uint8_t, 14> kSizes = {0, 1, 1, 2, 4, 8, 1, 1, 2, 4, 8, 4, 8, 4};
    return type < kSizes.size() ? kSizes[type] : 0;
}

IfdReader::IfdReader(Bytes block)
{
    if (block.size() < 8 || block.size() > kBlockLimit)
        return;
    const bool little = block[0] == 'I' && block[1] == 'I';
    big_endian_ = block[0] == 'M' && block[1] == 'M';
    if (!little && !big_endian_)
        return;
    block_ = block;
    first_ = U16(2) == 42 ? U32(4) : 0;
}

std::uint16_t IfdReader::U16(std::size_t offset) const
{
    if (offset > block_.size() || block_.size() - offset < 2)
        return 0;
    const std::uint8_t* p = block_.data() + offset;
    return static_cast<std::uint16_t>(big_endian_ ? p[0] << 8 | p[1] : p[1] << 8 | p[0]);
}

std::uint32_t IfdReader::U32(std::size_t offset) const
{
    if (offset > block_.size() || block_.size() - offset < 4)
        return 0;
    const std::uint32_t first = U16(offset);
    const std::uint32_t second = U16(offset + 2);
    return big_endian_ ? first << 16 | second : second << 16 | first;
}

std::size_t IfdReader::EntryCount(std::size_t directory) const
{
    if (directory < 8 || directory > block_.size() || block_.size() - directory < 2)
        return 0;
    const std::size_t count = U16(directory);
    return count <= (block_.size() - directory - 2) / kEntrySize ? count : 0;
}

std::vector<IfdEntry> IfdReader::Entries(std::size_t directory) const
{
    std::vector<IfdEntry> found;
    const std::size_t count = EntryCount(directory);
    found.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        IfdEntry entry;
        entry.entry_offset = directory + 2 + i * kEntrySize;
        entry.tag = U16(entry.entry_offset);
        entry.type = U16(entry.entry_offset + 2);
        entry.count = U32(entry.entry_offset + 4);
        entry.value_size = TypeSize(entry.type) * entry.count;
        entry.value_offset = entry.value_size <= 4 ? entry.entry_offset + 8 : U32(entry.entry_offset + 8);
        if (entry.value_size > 0 && entry.value_offset <= block_.size() &&
            entry.value_size <= block_.size() - entry.value_offset)
            found.push_back(entry);
    }
    return found;
}

std::size_t IfdReader::NextDirectory(std::size_t directory) const
{
    const std::size_t count = EntryCount(directory);
    return count > 0 ? U32(directory + 2 + count * kEntrySize) : 0;
}

std::optional<std::uint32_t> IfdReader::Number(const IfdEntry& entry, std::size_t index) const
{
    if (index >= entry.count)
        return std::nullopt;
    if (entry.type == 1)
        return block_[entry.value_offset + index];
    if (entry.type == 3)
        return U16(entry.value_offset + index * 2);
    if (entry.type == 4 || entry.type == 13)
        return U32(entry.value_offset + index * 4);
    return std::nullopt;
}

std::optional<double> IfdReader::Rational(const IfdEntry& entry) const
{
    const std::uint32_t denominator = U32(entry.value_offset + 4);
    if (entry.type != 5 || denominator == 0)
        return std::nullopt;
    return static_cast<double>(U32(entry.value_offset)) / denominator;
}

const IfdEntry* EntryWithTag(const std::vector<IfdEntry>& entries, std::uint16_t tag)
{
    const auto found = std::find_if(entries.begin(), entries.end(),
                                    [tag](const IfdEntry& entry) { return entry.tag == tag; });
    return found == entries.end() ? nullptr : &*found;
}

void PutU16(std::vector<std::uint8_t>& block, std::size_t offset, std::uint16_t value, bool big_endian)
{
    block[offset + (big_endian ? 0 : 1)] = static_cast<std::uint8_t>(value >> 8);
    block[offset + (big_endian ? 1 : 0)] = static_cast<std::uint8_t>(value);
}

void PutU32(std::vector<std::uint8_t>& block, std::size_t offset, std::uint32_t value, bool big_endian)
{
    PutU16(block, offset + (big_endian ? 0 : 2), static_cast<std::uint16_t>(value >> 16), big_endian);
    PutU16(block, offset + (big_endian ? 2 : 0), static_cast<std::uint16_t>(value), big_endian);
}

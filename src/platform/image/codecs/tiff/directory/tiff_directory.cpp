// Reads TIFF directories, classic and BigTIFF, in either byte order. No number in the file can be trusted.
#include "src/platform/image/codecs/tiff/directory/tiff_directory.h"

#include <algorithm>
#include <array>
#include <unordered_set>

#include "src/platform/image/base/input_file.h"
#include "src/platform/image/metadata/metadata_edit.h"

static constexpr std::size_t kMaxPages = 1 << 20;  // as many as libtiff reads; the format has no limit
static constexpr std::uint64_t kMaxEntries = 65535;
static constexpr std::uint64_t kMaxCopied = 64 * 1024 * 1024;  // bytes of values in total
static constexpr int kMaxDepth = 3;                            // page, EXIF, interoperability

std::uint32_t TiffTypeSize(std::uint16_t type)
{
    static constexpr std::array<std::uint8_t, 19> kSizes = {0, 1, 1, 2, 4, 8, 1, 1, 2, 4,
                                                            8, 4, 8, 4, 0, 0, 8, 8, 8};
    return type < kSizes.size() ? kSizes[type] : 0;
}

static std::uint64_t NumberAt(const std::uint8_t* bytes, std::uint32_t size, bool big_endian)
{
    std::uint64_t value = 0;
    for (std::uint32_t i = 0; i < size; ++i)
        value = value << 8 | bytes[big_endian ? i : size - 1 - i];
    return value;
}

// Reads a 2, 4 or 8-byte number; nothing past the end of the file.
static std::optional<std::uint64_t> ReadAt(InputFile& file, const TiffHeader& header, std::uint64_t offset,
                                           std::uint32_t size)
{
    std::array<std::uint8_t, 8> bytes{};
    if (file.ReadAt(offset, std::span(bytes).first(size)) != size)
        return std::nullopt;
    return NumberAt(bytes.data(), size, header.big_endian);
}

std::optional<TiffHeader> ReadTiffHeader(InputFile& file)
{
    const Bytes head = file.Head();
    if (head.size() < 8 || head[0] != head[1] || (head[0] != 'I' && head[0] != 'M'))
        return std::nullopt;
    TiffHeader header;
    header.big_endian = head[0] == 'M';
    const std::uint64_t version = NumberAt(head.data() + 2, 2, header.big_endian);
    if (version == 42) {
        header.first_directory = NumberAt(head.data() + 4, 4, header.big_endian);
        return header;
    }
    if (version != 43 || head.size() < 16 || NumberAt(head.data() + 4, 2, header.big_endian) != 8)
        return std::nullopt;
    header.big_tiff = true;
    header.first_directory = NumberAt(head.data() + 8, 8, header.big_endian);
    return header;
}

// The number of entries; 0 unless all of them are inside the file.
static std::uint64_t EntryCount(InputFile& file, const TiffHeader& header, std::uint64_t directory)
{
    const std::uint64_t count_size = header.big_tiff ? 8 : 2;
    const std::uint64_t entry_size = header.big_tiff ? 20 : 12;
    if (directory < 8 || file.Size() < count_size || directory > file.Size() - count_size)
        return 0;
    const std::uint64_t first = directory + count_size;
    const std::uint64_t count =
        ReadAt(file, header, directory, static_cast<std::uint32_t>(count_size)).value_or(0);
    if (count > kMaxEntries)
        return 0;
    return count * entry_size <= file.Size() - first ? count : 0;
}

TiffPages FindTiffPages(InputFile& file, const TiffHeader& header)
{
    TiffPages pages;
    std::unordered_set<std::uint64_t> seen;
    std::uint64_t directory = header.first_directory;
    while (directory != 0 && seen.insert(directory).second) {
        const std::uint64_t count = EntryCount(file, header, directory);
        const std::uint64_t next_pointer = directory + (header.big_tiff ? 8 + count * 20 : 2 + count * 12);
        const std::optional<std::uint64_t> next =
            count > 0 ? ReadAt(file, header, next_pointer, header.big_tiff ? 8 : 4) : std::nullopt;
        pages.breaks_off = count == 0 || !next || pages.directories.size() == kMaxPages;
        if (count > 0 && pages.directories.size() < kMaxPages)
            pages.directories.push_back(directory);
        if (pages.breaks_off)
            break;
        directory = *next;
    }
    return pages;
}

std::vector<TiffEntry> ReadEntries(InputFile& file, const TiffHeader& header, std::uint64_t directory)
{
    const std::uint64_t count = EntryCount(file, header, directory);
    const std::uint32_t count_size = header.big_tiff ? 8 : 4;  // also the offset size
    const std::uint32_t entry_size = 4 + 2 * count_size;
    const std::uint64_t first = directory + (header.big_tiff ? 8 : 2);
    std::vector<std::uint8_t> bytes(count * entry_size);
    if (file.ReadAt(first, bytes) != bytes.size())
        return {};
    std::vector<TiffEntry> found;
    found.reserve(count);
    for (std::uint64_t i = 0; i < count; ++i) {
        const std::uint8_t* stored = bytes.data() + i * entry_size;
        TiffEntry entry;
        entry.tag = static_cast<std::uint16_t>(NumberAt(stored, 2, header.big_endian));
        entry.type = static_cast<std::uint16_t>(NumberAt(stored + 2, 2, header.big_endian));
        entry.count = NumberAt(stored + 4, count_size, header.big_endian);
        const std::uint64_t size = TiffTypeSize(entry.type);
        if (size == 0 || entry.count == 0 || entry.count > file.Size() / size)
            continue;
        entry.value_offset = entry.count * size <= count_size
                                 ? first + i * entry_size + 4 + count_size
                                 : NumberAt(stored + 4 + count_size, count_size, header.big_endian);
        if (entry.value_offset <= file.Size() - entry.count * size)
            found.push_back(entry);
    }
    return found;
}

const TiffEntry* EntryOf(std::span<const TiffEntry> entries, std::uint16_t tag)
{
    const auto found = std::find_if(entries.begin(), entries.end(),
                                    [tag](const TiffEntry& entry) { return entry.tag == tag; });
    return found == entries.end() ? nullptr : &*found;
}

// Bytes of one number: a rational is two of them.
static std::uint32_t NumberSize(std::uint16_t type)
{
    return type == 5 || type == 10 ? 4 : TiffTypeSize(type);
}

std::vector<std::uint8_t> ReadValue(InputFile& file, const TiffHeader& header, const TiffEntry& entry,
                                    std::uint64_t limit, bool as_stored)
{
    const std::uint64_t size = entry.count * TiffTypeSize(entry.type);
    if (size > limit)
        return {};
    std::vector<std::uint8_t> value(size);
    if (file.ReadAt(entry.value_offset, value) != size)
        return {};
    const std::uint32_t number = NumberSize(entry.type);
    if (header.big_endian && !as_stored && number > 1)
        for (std::uint8_t* p = value.data(); p != value.data() + size; p += number)
            std::reverse(p, p + number);
    return value;
}

std::optional<std::uint64_t> ReadNumber(InputFile& file, const TiffHeader& header, const TiffEntry& entry)
{
    static constexpr std::array<std::uint16_t, 7> kWhole = {1, 3, 4, 13, 16, 18, 7};
    if (std::find(kWhole.begin(), kWhole.end(), entry.type) == kWhole.end())
        return std::nullopt;
    return ReadAt(file, header, entry.value_offset, TiffTypeSize(entry.type));
}

bool PointsToTiffDirectory(std::uint16_t tag)
{
    return tag == kTagExifDirectory || tag == kTagGpsDirectory || tag == kTagInteroperability;
}

static std::vector<TiffTag> ReadTagsAt(InputFile& file, const TiffHeader& header,
                                       std::span<const TiffEntry> entries,
                                       const std::span<const std::uint16_t>* wanted, int depth,
                                       std::uint64_t& budget)
{
    std::vector<TiffTag> tags;
    for (const TiffEntry& entry : entries) {
        if (wanted && !std::binary_search(wanted->begin(), wanted->end(), entry.tag))
            continue;
        TiffTag tag{entry.tag, entry.type, entry.count, {}, {}};
        if (PointsToTiffDirectory(entry.tag)) {
            const std::uint64_t directory = ReadNumber(file, header, entry).value_or(0);
            if (depth + 1 < kMaxDepth)
                tag.directory = ReadTagsAt(file, header, ReadEntries(file, header, directory), nullptr,
                                           depth + 1, budget);
            if (tag.directory.empty())
                continue;
        } else {
            tag.value = ReadValue(file, header, entry, budget);
            if (tag.value.empty())
                continue;
            budget -= tag.value.size();
        }
        tags.push_back(std::move(tag));
    }
    // Directories must be sorted without duplicates; repair those that aren't.
    std::stable_sort(tags.begin(), tags.end(),
                     [](const TiffTag& left, const TiffTag& right) { return left.tag < right.tag; });
    tags.erase(std::unique(tags.begin(), tags.end(),
                           [](const TiffTag& left, const TiffTag& right) { return left.tag == right.tag; }),
               tags.end());
    return tags;
}

std::vector<TiffTag> ReadTags(InputFile& file, const TiffHeader& header, std::span<const TiffEntry> entries,
                              std::span<const std::uint16_t> wanted)
{
    // Values that don't overlap can't exceed the file size; the budget stops entries that all refer to the
    // same block.
    std::uint64_t budget = std::min(file.Size(), kMaxCopied);
    return ReadTagsAt(file, header, entries, &wanted, 0, budget);
}

// Edits EXIF blocks so that unedited parts keep their place.
#include "src/platform/image/metadata/metadata_edit.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <iterator>

static constexpr std::size_t kEntrySize = 12;

namespace
{
struct Range {
    std::size_t begin;
    std::size_t end;
};
struct RawEntry {
    std::uint16_t tag;
    std::array<std::uint8_t, kEntrySize> bytes;
};
}  // namespace

void SetExifNumber(std::vector<std::uint8_t>& exif, const IfdEntry& entry, std::uint32_t value)
{
    const bool big_endian = IfdReader(exif).IsBigEndian();
    if (entry.type == 3)
        PutU16(exif, entry.value_offset, static_cast<std::uint16_t>(value), big_endian);
    else if (entry.type == 4)
        PutU32(exif, entry.value_offset, value, big_endian);
}

void SetExifRational(std::vector<std::uint8_t>& exif, const IfdEntry& entry, double value)
{
    if (entry.type != 5 || !(value >= 0) || value > 4'000'000)
        return;
    const bool big_endian = IfdReader(exif).IsBigEndian();
    const bool whole = std::abs(value - std::round(value)) < 0.0005;
    const double denominator = whole ? 1 : 1000;
    PutU32(exif, entry.value_offset, static_cast<std::uint32_t>(std::lround(value * denominator)),
           big_endian);
    PutU32(exif, entry.value_offset + 4, static_cast<std::uint32_t>(denominator), big_endian);
}

// Adds the byte ranges of a directory and its values.
static void AddRanges(const IfdReader& reader, std::size_t directory, std::size_t block_size,
                      std::vector<Range>& ranges)
{
    const std::size_t count = reader.EntryCount(directory);
    if (count == 0)
        return;
    ranges.push_back({directory, std::min(block_size, directory + 2 + count * kEntrySize + 4)});
    for (const IfdEntry& entry : reader.Entries(directory))
        ranges.push_back({entry.value_offset, entry.value_offset + entry.value_size});
}

// Byte ranges of the directories to keep: the first, and those it points to.
static std::vector<Range> KeptRanges(const IfdReader& reader, std::size_t block_size)
{
    std::vector<Range> ranges = {{0, 8}};
    const auto first = reader.Entries(reader.FirstDirectory());
    AddRanges(reader, reader.FirstDirectory(), block_size, ranges);
    for (const std::uint16_t tag : {kTagExifDirectory, kTagGpsDirectory}) {
        const IfdEntry* pointer = EntryWithTag(first, tag);
        const std::size_t directory = pointer ? reader.Number(*pointer).value_or(0) : 0;
        AddRanges(reader, directory, block_size, ranges);
        const auto inner_entries = reader.Entries(directory);
        if (const IfdEntry* interoperability = EntryWithTag(inner_entries, kTagInteroperability))
            AddRanges(reader, reader.Number(*interoperability).value_or(0), block_size, ranges);
    }
    return ranges;
}

// Byte ranges of the thumbnail's directory and the thumbnail.
static std::vector<Range> ThumbnailRanges(const IfdReader& reader, std::size_t directory,
                                          std::size_t block_size)
{
    constexpr std::uint16_t kStripOffsets = 0x0111, kStripSizes = 0x0117, kJpegOffset = 0x0201,
                            kJpegSize = 0x0202;
    std::vector<Range> ranges;
    AddRanges(reader, directory, block_size, ranges);
    const auto entries = reader.Entries(directory);
    const auto add_data = [&](std::uint16_t offset_tag, std::uint16_t size_tag) {
        const IfdEntry* offset = EntryWithTag(entries, offset_tag);
        const IfdEntry* size_entry = EntryWithTag(entries, size_tag);
        const std::size_t parts = offset && size_entry ? std::min(offset->count, size_entry->count) : 0;
        for (std::size_t i = 0; i < parts; ++i) {
            const std::size_t begin = reader.Number(*offset, i).value_or(0);
            const std::size_t size = reader.Number(*size_entry, i).value_or(0);
            if (begin < block_size)
                ranges.push_back({begin, begin + std::min(size, block_size - begin)});
        }
    };
    add_data(kJpegOffset, kJpegSize);
    add_data(kStripOffsets, kStripSizes);
    return ranges;
}

void DropExifThumbnail(std::vector<std::uint8_t>& exif)
{
    constexpr std::size_t kPadding = 3;  // bytes that may pad the thumbnail to 32 bits
    const IfdReader reader(exif);
    const std::size_t second = reader.NextDirectory(reader.FirstDirectory());
    if (second == 0)
        return;
    const std::vector<Range> kept_ranges = KeptRanges(reader, exif.size());
    std::vector<Range> removed = ThumbnailRanges(reader, second, exif.size());
    std::size_t stay_end = 0;
    for (const Range& range : kept_ranges)
        stay_end = std::max(stay_end, range.end);
    // No camera writes thousands of entries, and comparing them pairwise would only waste time.
    constexpr std::size_t kManyRanges = 4096;
    if (kept_ranges.size() > kManyRanges || removed.size() > kManyRanges)
        removed.clear();
    std::erase_if(removed, [&](const Range& range) {
        return std::any_of(kept_ranges.begin(), kept_ranges.end(), [&](const Range& kept) {
            return range.begin < kept.end && kept.begin < range.end;
        });
    });
    const std::size_t next_offset =
        reader.FirstDirectory() + 2 + reader.EntryCount(reader.FirstDirectory()) * kEntrySize;
    PutU32(exif, next_offset, 0, reader.IsBigEndian());
    std::sort(removed.begin(), removed.end(), [](const Range& a, const Range& b) { return a.end > b.end; });
    std::size_t end = exif.size();
    for (const Range& range : removed) {
        std::fill(exif.begin() + static_cast<std::ptrdiff_t>(range.begin),
                  exif.begin() + static_cast<std::ptrdiff_t>(range.end), std::uint8_t{0});
        if (range.end + kPadding >= end)
            end = std::min(end, std::max(range.begin, stay_end));
    }
    exif.resize(end);
}

// True for tags that describe how or where pixels are stored, or hold a block that is copied separately.
static bool IsStorageTag(std::uint16_t tag)
{
    static constexpr std::array<std::uint16_t, 34> kTags = {
        0x00FE, 0x00FF, 0x0100, 0x0101, 0x0102, 0x0103, 0x0106, 0x010A, 0x0111, 0x0115, 0x0116, 0x0117,
        0x011C, 0x0120, 0x0121, 0x0124, 0x0125, 0x013D, 0x0140, 0x0142, 0x0143, 0x0144, 0x0145, 0x014A,
        0x0152, 0x0153, 0x015B, 0x0200, 0x0201, 0x0202, 0x02BC, 0x83BB, 0x8649, 0x8773};
    return std::find(kTags.begin(), kTags.end(), tag) != kTags.end();
}

static std::size_t AppendSpace(std::vector<std::uint8_t>& exif, std::size_t size)
{
    const std::size_t offset = (exif.size() + 1) / 2 * 2;
    exif.resize(offset + size);
    return offset;
}

// The entry for a text. Its bytes replace the old text if they fit there, or else go to the end.
static RawEntry TextEntry(std::vector<std::uint8_t>& exif, const ExifText& text, const IfdEntry* old,
                          bool big_endian)
{
    const std::size_t size = text.text.size() + 1;
    std::vector<std::uint8_t> bytes(kEntrySize);
    PutU16(bytes, 0, text.tag, big_endian);
    PutU16(bytes, 2, 2, big_endian);
    PutU32(bytes, 4, static_cast<std::uint32_t>(size), big_endian);
    if (size <= 4) {
        std::memcpy(bytes.data() + 8, text.text.c_str(), size);
    } else {
        const bool fits = old && old->type == 2 && old->value_size >= size;
        const std::size_t offset = fits ? old->value_offset : AppendSpace(exif, size);
        std::memcpy(exif.data() + offset, text.text.c_str(), size);
        PutU32(bytes, 8, static_cast<std::uint32_t>(offset), big_endian);
    }
    RawEntry entry{text.tag, {}};
    std::copy(bytes.begin(), bytes.end(), entry.bytes.begin());
    return entry;
}

static void WriteDirectory(std::vector<std::uint8_t>& exif, std::size_t offset,
                           const std::vector<RawEntry>& raw, bool big_endian)
{
    PutU16(exif, offset, static_cast<std::uint16_t>(raw.size()), big_endian);
    std::size_t at = offset + 2;
    for (const RawEntry& entry : raw) {
        std::copy(entry.bytes.begin(), entry.bytes.end(), exif.begin() + static_cast<std::ptrdiff_t>(at));
        at += kEntrySize;
    }
    PutU32(exif, at, 0, big_endian);
}

void RewriteExif(std::vector<std::uint8_t>& exif, const std::vector<ExifText>& texts)
{
    if (IfdReader(exif).FirstDirectory() == 0)
        exif = {'I', 'I', 42, 0, 0, 0, 0, 0};
    const bool big_endian = IfdReader(exif).IsBigEndian();
    const std::size_t old_directory = IfdReader(exif).FirstDirectory();
    const std::size_t old_count = IfdReader(exif).EntryCount(old_directory);
    const std::vector<IfdEntry> old = IfdReader(exif).Entries(old_directory);

    std::vector<RawEntry> raw;
    for (const IfdEntry& entry : old) {
        const bool replaced = std::any_of(texts.begin(), texts.end(),
                                          [&](const ExifText& text) { return text.tag == entry.tag; });
        if (replaced || IsStorageTag(entry.tag))
            continue;
        raw.push_back({entry.tag, {}});
        std::memcpy(raw.back().bytes.data(), exif.data() + entry.entry_offset, kEntrySize);
    }
    for (const ExifText& text : texts)
        raw.push_back(TextEntry(exif, text, EntryWithTag(old, text.tag), big_endian));
    if (raw.empty() || raw.size() > 0xFFFF) {
        exif.clear();
        return;
    }
    std::stable_sort(raw.begin(), raw.end(),
                     [](const RawEntry& a, const RawEntry& b) { return a.tag < b.tag; });

    const std::size_t new_size = 2 + raw.size() * kEntrySize + 4;
    const std::size_t old_size =
        old_count > 0 ? std::min(exif.size() - old_directory, 2 + old_count * kEntrySize + 4) : 0;
    std::fill_n(exif.begin() + static_cast<std::ptrdiff_t>(old_count > 0 ? old_directory : 0), old_size,
                std::uint8_t{0});
    const std::size_t directory = new_size <= old_size ? old_directory : AppendSpace(exif, new_size);
    WriteDirectory(exif, directory, raw, big_endian);
    PutU32(exif, 4, static_cast<std::uint32_t>(directory), big_endian);
}

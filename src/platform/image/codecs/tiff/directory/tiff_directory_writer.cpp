// Serialises TIFF directories: values first, then the directory that refers to them.
#include "src/platform/image/codecs/tiff/directory/tiff_directory_writer.h"

#include <algorithm>
#include <cmath>
#include <limits>

void AppendNumber(std::vector<std::uint8_t>& bytes, std::uint64_t value, std::uint32_t size)
{
    for (std::uint32_t i = 0; i < size; ++i)
        bytes.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
}

TiffTag NumberTag(std::uint16_t tag, std::uint16_t type, const std::vector<std::uint64_t>& numbers)
{
    TiffTag result{tag, type, numbers.size(), {}, {}};
    const std::uint32_t size = TiffTypeSize(type);
    result.value.reserve(numbers.size() * size);
    for (const std::uint64_t number : numbers)
        AppendNumber(result.value, number, size);
    return result;
}

// A denominator of 1000 represents common resolutions (72, 300, 118.11 per cm) exactly.
TiffTag RationalTag(std::uint16_t tag, double value)
{
    const double denominator = value < 4'000'000 ? 1000 : 1;
    const double numerator = std::clamp(std::round(value * denominator), 0.0, 4294967295.0);
    TiffTag result{tag, 5, 1, {}, {}};
    AppendNumber(result.value, static_cast<std::uint64_t>(numerator), 4);
    AppendNumber(result.value, static_cast<std::uint64_t>(denominator), 4);
    return result;
}

TiffTag TextTag(std::uint16_t tag, std::string_view text)
{
    text = text.substr(0, text.find('\0'));
    TiffTag result{tag, 2, text.size() + 1, {}, {}};
    result.value.assign(text.begin(), text.end());
    result.value.push_back(0);
    return result;
}

TiffTag BytesTag(std::uint16_t tag, std::uint16_t type, Bytes bytes)
{
    return {tag, type, bytes.size() / std::max(1u, TiffTypeSize(type)), {bytes.begin(), bytes.end()}, {}};
}

static std::uint64_t NumberOf(const std::uint8_t* bytes, std::uint32_t size)
{
    std::uint64_t value = 0;
    for (std::uint32_t i = size; i > 0; --i)
        value = value << 8 | bytes[i - 1];
    return value;
}

// Narrows a tag to 32 bits for classic TIFF; false if a value doesn't fit.
static bool MakeClassic(TiffTag& tag)
{
    const bool is_signed = tag.type == 17;
    if (tag.type != 16 && tag.type != 18 && !is_signed)
        return true;
    std::vector<std::uint8_t> narrow;
    for (std::size_t i = 0; i + 8 <= tag.value.size(); i += 8) {
        const std::uint64_t value = NumberOf(tag.value.data() + i, 8);
        const auto signed_value = static_cast<std::int64_t>(value);
        if (is_signed ? signed_value != static_cast<std::int32_t>(signed_value)
                      : value > std::numeric_limits<std::uint32_t>::max())
            return false;
        AppendNumber(narrow, value, 4);
    }
    tag.type = is_signed ? 9 : tag.type == 18 ? 13 : 4;
    tag.value = std::move(narrow);
    return true;
}

// Appends sub-directories, then values, then the directory.
static TiffDirectoryBytes AppendDirectory(std::vector<std::uint8_t> bytes, std::vector<TiffTag> tags,
                                          std::uint64_t place, bool big_tiff)
{
    const std::uint32_t offset_size = big_tiff ? 8 : 4;
    const auto aligned_end = [&] {
        bytes.resize((bytes.size() + 1) / 2 * 2);
        return place + bytes.size();
    };
    if (!big_tiff)
        std::erase_if(tags, [](TiffTag& tag) { return !MakeClassic(tag); });
    std::vector<std::uint8_t> directory;
    AppendNumber(directory, tags.size(), big_tiff ? 8 : 2);
    for (TiffTag& tag : tags) {
        if (!tag.directory.empty()) {
            TiffDirectoryBytes inner =
                AppendDirectory(std::move(bytes), std::move(tag.directory), place, big_tiff);
            bytes = std::move(inner.bytes);
            tag.type = 4;
            tag.count = 1;
            tag.value.clear();
            AppendNumber(tag.value, inner.directory, 4);
            if (inner.directory > std::numeric_limits<std::uint32_t>::max()) {
                tag.type = 18;
                tag.value.clear();
                AppendNumber(tag.value, inner.directory, 8);
            }
        }
        AppendNumber(directory, tag.tag, 2);
        AppendNumber(directory, tag.type, 2);
        AppendNumber(directory, tag.count, offset_size);
        if (tag.value.size() <= offset_size) {
            tag.value.resize(offset_size);
            directory.insert(directory.end(), tag.value.begin(), tag.value.end());
        } else {
            AppendNumber(directory, aligned_end(), offset_size);
            bytes.insert(bytes.end(), tag.value.begin(), tag.value.end());
        }
    }
    const std::uint64_t directory_offset = aligned_end();
    bytes.insert(bytes.end(), directory.begin(), directory.end());
    const std::uint64_t next_pointer = place + bytes.size();
    AppendNumber(bytes, 0, offset_size);
    return {std::move(bytes), directory_offset, next_pointer};
}

TiffDirectoryBytes DirectoryBytes(const std::vector<TiffTag>& tags, std::uint64_t place, bool big_tiff)
{
    return AppendDirectory({}, tags, place, big_tiff);
}

std::vector<std::uint8_t> TiffHeaderBytes(std::uint64_t first_directory, bool big_tiff)
{
    std::vector<std::uint8_t> bytes = {'I', 'I'};
    AppendNumber(bytes, big_tiff ? 43 : 42, 2);
    if (big_tiff)
        AppendNumber(bytes, 8, 4);  // offset size, then zero
    AppendNumber(bytes, first_directory, big_tiff ? 8 : 4);
    bytes.resize(16);
    return bytes;
}

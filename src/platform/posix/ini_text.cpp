// Finds and replaces lines of a settings file.
#include "src/platform/posix/ini_text.h"

#include "src/base/text.h"
#include "src/base/text_encoding.h"

static constexpr std::string_view kBlanks = " \t\r";
static constexpr std::string_view kMarkUtf8 = "\xEF\xBB\xBF";

std::string IniTextOf(std::string_view bytes)
{
    if (bytes.starts_with(kMarkUtf8))
        bytes.remove_prefix(kMarkUtf8.size());
    return bIsUtf8(bytes) ? std::string(bytes) : sUtf8FromWindows1252(bytes);
}

static std::string_view Trim(std::string_view text)
{
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

static bool IsQuoted(std::string_view value)
{
    return value.size() >= 2 && value.front() == value.back() &&
           (value.front() == '"' || value.front() == '\'');
}

namespace
{
/// Where a key is, or where it would be inserted.
struct KeyPlace {
    bool has_section = false;
    bool has_key = false;
    std::size_t begin = 0;     ///< start of the key's line, or the insertion point
    std::size_t end = 0;       ///< end of the key's line, including the line end
    std::string_view value{};  ///< trimmed
};
}  // namespace

static KeyPlace FindKey(std::string_view text, std::string_view section, std::string_view key)
{
    KeyPlace place;
    std::size_t begin = 0;
    while (begin < text.size()) {
        const std::size_t line_end = text.find('\n', begin);
        const std::size_t end = line_end == std::string_view::npos ? text.size() : line_end + 1;
        const std::string_view line = Trim(text.substr(begin, line_end - begin));
        if (line.starts_with('[')) {
            if (place.has_section)
                return place;
            place.has_section = bEqualIgnoringCase(Trim(line.substr(1, line.find(']') - 1)), section);
        } else if (place.has_section && !line.starts_with(';')) {
            const std::size_t sign = line.find('=');
            if (sign != std::string_view::npos && bEqualIgnoringCase(Trim(line.substr(0, sign)), key)) {
                place.has_key = true;
                place.begin = begin;
                place.end = end;
                place.value = Trim(line.substr(sign + 1));
                return place;
            }
        }
        if (place.has_section && !line.empty())
            place.begin = place.end = end;
        begin = end;
    }
    if (!place.has_section)
        place.begin = place.end = text.size();
    return place;
}

std::optional<std::string> IniValue(std::string_view text, std::string_view section, std::string_view key)
{
    const KeyPlace place = FindKey(text, section, key);
    if (!place.has_key)
        return std::nullopt;
    std::string_view value = place.value;
    if (IsQuoted(value))
        value = value.substr(1, value.size() - 2);
    return std::string(value);
}

// The value as written to the file.
static std::string StoredValue(std::string_view value)
{
    std::string stored = bIsUtf8(value) ? std::string(value) : sUtf8FromWindows1252(value);
    for (char& c : stored)
        if (c == '\r' || c == '\n')
            c = ' ';
    return IsQuoted(Trim(stored)) ? "\"" + stored + "\"" : stored;
}

std::string IniTextWith(std::string_view text, std::string_view section, std::string_view key,
                        std::string_view value)
{
    const KeyPlace place = FindKey(text, section, key);
    const std::size_t first_end = text.find('\n');
    const bool cr_lf = first_end != std::string_view::npos && first_end > 0 && text[first_end - 1] == '\r';
    const std::string line_end = cr_lf ? "\r\n" : "\n";

    std::string result(text.substr(0, place.begin));
    if (!result.empty() && result.back() != '\n')
        result += line_end;
    if (!place.has_section)
        result.append("[").append(section).append("]").append(line_end);
    result.append(key).append("=").append(StoredValue(value)).append(line_end);
    return result.append(text.substr(place.end));
}

// Builds the extension area of a Targa file.
#include "src/platform/image/codecs/tga/tga_extension.h"

#include <algorithm>
#include <charconv>
#include <span>
#include <string>
#include <string_view>

#include "src/platform/image/metadata/metadata.h"

// Field offsets, and field sizes including the terminating NUL.
static constexpr std::size_t kAuthor = 2;
static constexpr std::size_t kShortText = 41;
static constexpr std::size_t kComments = 43;
static constexpr std::size_t kCommentLine = 81;
static constexpr std::size_t kCommentLines = 4;
static constexpr std::size_t kDate = 367;
static constexpr std::size_t kJobName = 379;
static constexpr std::size_t kSoftware = 426;
static constexpr std::size_t kSoftwareVersion = 467;

static constexpr std::uint8_t kUsefulAlpha = 3;

static void PutU16(std::span<std::uint8_t> place, std::size_t value)
{
    place[0] = static_cast<std::uint8_t>(value);
    place[1] = static_cast<std::uint8_t>(value >> 8);
}

// The longest part of text that fits in `room` bytes without splitting a UTF-8 character.
static std::string_view TruncateUtf8(std::string_view text, std::size_t room)
{
    if (text.size() <= room)
        return text;
    while (room > 0 && (static_cast<unsigned char>(text[room]) & 0xC0) == 0x80)
        --room;
    return text.substr(0, room);
}

static void PutText(std::span<std::uint8_t> field, std::string_view text)
{
    const std::string_view put = TruncateUtf8(text, field.size() - 1);
    std::copy(put.begin(), put.end(), field.begin());
}

// Writes text to the lines starting at line_index and advances it; text that doesn't fit is dropped.
static void PutLines(std::span<std::uint8_t> comments, std::string_view text, std::size_t& line_index)
{
    for (; !text.empty() && line_index < kCommentLines; ++line_index) {
        const std::size_t line_break = std::min(text.find('\n'), text.size());
        const std::string_view line = TruncateUtf8(text.substr(0, line_break), kCommentLine - 1);
        PutText(comments.subspan(line_index * kCommentLine, kCommentLine), line);
        text.remove_prefix(line.size() == line_break ? std::min(line_break + 1, text.size())
                                                     : std::max<std::size_t>(line.size(), 1));
    }
}

// Month, day, year, hour, minute, second.
static void PutDate(std::span<std::uint8_t> field, const std::string& date_time)
{
    const std::string date = ExifDate(date_time);
    static constexpr std::string_view kForm = "dddd:dd:dd dd:dd:dd";
    const bool valid = date.size() == kForm.size() &&
                       std::equal(kForm.begin(), kForm.end(), date.begin(), [](char form, char character) {
                           return form == 'd' ? character >= '0' && character <= '9' : form == character;
                       });
    if (!valid)
        return;
    static constexpr std::array<std::size_t, 6> kFrom = {5, 8, 0, 11, 14, 17};
    for (std::size_t i = 0; i < kFrom.size(); ++i) {
        std::size_t number = 0;
        std::from_chars(date.data() + kFrom[i], date.data() + kFrom[i] + (kFrom[i] == 0 ? 4 : 2), number);
        PutU16(field.subspan(i * 2, 2), number);
    }
}

std::array<std::uint8_t, kTgaExtensionSize> TgaExtension(const ImageInfoTexts& texts, bool has_alpha)
{
    std::array<std::uint8_t, kTgaExtensionSize> area{};
    const std::span<std::uint8_t> all(area);
    PutU16(all, kTgaExtensionSize);
    PutText(all.subspan(kAuthor, kShortText), texts.sAuthor);
    std::size_t line = 0;
    const auto comments = all.subspan(kComments, kCommentLines * kCommentLine);
    PutLines(comments, texts.sTitle, line);
    PutLines(comments, texts.sDescription, line);
    PutDate(all.subspan(kDate, 12), texts.sDateTime);
    PutText(all.subspan(kJobName, kShortText), texts.sTitle);
    PutText(all.subspan(kSoftware, kShortText), "Varnel");
    PutU16(all.subspan(kSoftwareVersion, 2), 100);  // in hundredths
    area[kSoftwareVersion + 2] = ' ';
    area.back() = has_alpha ? kUsefulAlpha : 0;
    return area;
}

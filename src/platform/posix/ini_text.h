// Sections and keys in the text of a settings file.
// Room: platform/posix.
//
// A line is a section's head "[name]", a comment that begins with ";", "key=value", or anything else, which
// is kept but means nothing. Of two sections, or two keys in one section, that are equal without regard to
// case the first counts.
#pragma once

#include <optional>
#include <string>
#include <string_view>

/// The bytes of a settings file as text: UTF-8 as it stands, less its mark; else read as Windows-1252.
std::string IniTextOf(std::string_view bytes);

/// The value less the blanks and tabs around it and then one pair of equal quotes; nothing when there is no
/// such key.
std::optional<std::string> IniValue(std::string_view text, std::string_view section, std::string_view key);

/// The text with the value entered: in the line that holds the key, or behind the section's last line, or in
/// a new section at the end. Every other line stays as it is, and new lines end as the first line does. Line
/// ends in a value become blanks, what isn't UTF-8 is taken for Windows-1252, and a value that begins and
/// ends with equal quotes gets another pair, since reading takes one off.
std::string IniTextWith(std::string_view text, std::string_view section, std::string_view key,
                        std::string_view value);

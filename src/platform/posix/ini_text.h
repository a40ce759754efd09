// Sections and keys in the text of a settings file.
// Room: platform/posix.
//
// A line is a section header "[name]", a comment that starts with ";", "key=value", or something else, which
// is kept but ignored. If section or key names are equal ignoring case, the first wins.
#pragma once

#include <optional>
#include <string>
#include <string_view>

/// Decodes a settings file: UTF-8 without its byte order mark, otherwise Windows-1252.
std::string IniTextOf(std::string_view bytes);

/// The value, trimmed of spaces and tabs and then of one pair of equal quotes; nothing if the key is missing.
std::optional<std::string> IniValue(std::string_view text, std::string_view section, std::string_view key);

/// Sets a value: in the line that has the key, or after the section's last line, or in a new section at the
/// end. Other lines are unchanged, and new lines use the first line's line end. Line ends in the value become
/// spaces, bytes that aren't UTF-8 are taken as Windows-1252, and a value in equal quotes gets a second pair,
/// because reading strips one.
std::string IniTextWith(std::string_view text, std::string_view section, std::string_view key,
                        std::string_view value);

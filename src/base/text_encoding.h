// Converts between UTF-8, used throughout the program, and the encodings of files.
// Room: base.
#pragma once

#include <string>
#include <string_view>

/// True if all of sBytes is well-formed UTF-8: no overlong forms, no surrogates, nothing above U+10FFFF, no
/// truncated character at the end. True for an empty text.
bool bIsUtf8(std::string_view sBytes);

/// Length of the longest prefix that has at most nLimit bytes and doesn't split a character.
std::size_t nWholeCharacters(std::string_view sBytes, std::size_t nLimit);

/// Every byte decodes: the five that the code page leaves undefined become the C1 control characters of the
/// same number.
std::string sUtf8FromWindows1252(std::string_view sBytes);

/// Characters that the code page lacks become "?".
std::string sWindows1252FromUtf8(std::string_view sText);

/// A lone surrogate becomes U+FFFD; an odd last byte is dropped.
std::string sUtf8FromUtf16(std::string_view sBytes, bool bBigEndian);

/// Writes no byte order mark. Malformed UTF-8 becomes U+FFFD.
std::string sUtf16FromUtf8(std::string_view sText, bool bBigEndian);

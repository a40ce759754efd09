// Texts in the encodings that files come in, to and from the UTF-8 that the program works with.
// Room: base.
#pragma once

#include <string>
#include <string_view>

/// True when all of it is well-formed UTF-8: no overlong forms, no surrogates, nothing beyond U+10FFFF, no
/// character cut short at the end. An empty text is.
bool bIsUtf8(std::string_view sBytes);

/// The length of the longest head of sBytes that is at most nLimit bytes and doesn't end inside a character.
std::size_t nWholeCharacters(std::string_view sBytes, std::size_t nLimit);

/// Windows-1252 as UTF-8. Every byte has a character: the five that the code page leaves free become the
/// control characters of their number.
std::string sUtf8FromWindows1252(std::string_view sBytes);

/// A UTF-8 text in Windows-1252, with "?" for each character that the code page doesn't have.
std::string sWindows1252FromUtf8(std::string_view sText);

/// UTF-16 as UTF-8, with U+FFFD for a lone surrogate; an odd last byte is dropped.
std::string sUtf8FromUtf16(std::string_view sBytes, bool bBigEndian);

/// A UTF-8 text as UTF-16 without a mark, with U+FFFD for what isn't UTF-8.
std::string sUtf16FromUtf8(std::string_view sText, bool bBigEndian);

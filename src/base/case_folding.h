// Case folding: makes texts equal that differ only in upper and lower case.
// Room: base.
#pragma once

#include <string>
#include <string_view>

/// The simple case folding of Unicode: one character becomes one character, whatever the language.
char32_t nFoldCase(char32_t nCharacter);

/// Folds every character of a UTF-8 text; the length in bytes may change. Bytes that aren't UTF-8 stay. For
/// comparing, not for showing: most letters become lower case, but a final sigma becomes a sigma, for
/// example.
std::string sFoldCase(std::string_view sText);

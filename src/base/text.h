// String helpers: trimming, case, splitting, joining.
// Room: base.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// Strips spaces (U+0020 only, not tabs) from both ends, the right end, or the left end.
std::string sTrim(std::string_view sText);
std::string sRTrim(std::string_view sText);
std::string sLTrim(std::string_view sText);

/// Lower-cases ASCII, Latin-1, Greek and Cyrillic letters of a UTF-8 text. Other bytes are unchanged, and so
/// is the length in bytes.
std::string sLower(std::string_view sText);

/// Compares the texts with their case folded (see case_folding.h).
bool bEqualIgnoringCase(std::string_view sLeft, std::string_view sRight);

/// True if sText contains sPart; an empty sPart always matches. The second form ignores case.
bool bContains(std::string_view sText, std::string_view sPart);
bool bContainsIgnoringCase(std::string_view sText, std::string_view sPart);

/// Splits at every delimiter: n delimiters give n + 1 pieces, but an empty text gives none.
std::vector<std::string> aSplit(std::string_view sText, char cDelimiter);
std::string sJoin(const std::vector<std::string>& aPieces, std::string_view sDelimiter);

/// Replaces every occurrence from left to right; replacements aren't searched again. An empty sFind changes
/// nothing.
std::string sReplaceAll(std::string_view sText, std::string_view sFind, std::string_view sReplacement);

/// Writes control characters as "\x1B" and the like, so that a file name can't drive a terminal or forge
/// lines. sKeep lists those that stay.
std::string sPrintable(std::string_view sText, std::string_view sKeep = "");

/// The first lCount characters of a UTF-8 text.
std::string sFirstLetters(std::string_view sText, std::int32_t lCount);

/// Number of characters (code points) in a UTF-8 text.
std::int32_t lLetters(std::string_view sText);

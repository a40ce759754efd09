// Text helpers that several rooms share: trimming, case, splitting, joining.
// Room: base.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// Without the blanks (U+0020 only, no tabs) at both ends; at the right end; at the left end.
std::string sTrim(std::string_view sText);
std::string sRTrim(std::string_view sText);
std::string sLTrim(std::string_view sText);

/// Lower case of a UTF-8 text: ASCII, Latin-1, Greek and Cyrillic letters; every other byte stays as it is,
/// and the length in bytes never changes.
std::string sLower(std::string_view sText);

/// Equal when both are lower-cased.
bool bEqualIgnoringCase(std::string_view sLeft, std::string_view sRight);

/// True when sPart occurs in sText; an empty sPart always does. The second compares lower-cased texts.
bool bContains(std::string_view sText, std::string_view sPart);
bool bContainsIgnoringCase(std::string_view sText, std::string_view sPart);

/// The pieces of sText between delimiters: always one more than there are delimiters, except that an empty
/// text gives no piece at all.
std::vector<std::string> aSplit(std::string_view sText, char cDelimiter);
std::string sJoin(const std::vector<std::string>& aPieces, std::string_view sDelimiter);

/// Every occurrence replaced, from left to right, without looking again at what was put in. An empty sFind
/// changes nothing.
std::string sReplaceAll(std::string_view sText, std::string_view sFind, std::string_view sReplacement);

/// How many letters a UTF-8 text has.
std::int32_t lLetters(std::string_view sText);

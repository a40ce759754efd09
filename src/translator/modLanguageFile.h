// Language files as bytes: what they are written in, and the table that they hold.
// Room: translator.
//
// A language file is a list of lines, a pair of English text and translation in each. Nothing is escaped. It
// is 8-bit text (UTF-8, or Windows-1252 if it isn't that as a whole) or UTF-16, each with or without a mark
// at its head.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>

#include "src/forms/translator_state.h"

/// Decided by the first character of the first line, which must be a double quote in one of the two readings.
LanguageFileFormat iFormatOfLanguageFile(std::string_view sBytes);

/// The encoding within a format; UTF-8 for one that is unreadable.
LanguageFileEncoding eEncodingOfLanguageFile(std::string_view sBytes, LanguageFileFormat iFormat);

/// The text of such a file as UTF-8, without the mark.
std::string sDecodeLanguageFile(std::string_view sBytes, LanguageFileEncoding eEncoding);

/// A text as such a file holds it, without a mark.
std::string sEncodeForLanguageFile(std::string_view sText, LanguageFileEncoding eEncoding);

/// CR LF if the first line ends in it, else LF.
std::string sLineEndOf(std::string_view sText);

/// Adds the pairs of a decoded file to the table, up to the line that ends it. A key that is there keeps its
/// value.
void ReadLanguageTable(std::string_view sText,
                       std::unordered_map<std::string, std::string>& dictTranslations);

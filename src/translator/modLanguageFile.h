// Language files: encoding detection and the table of translations.
// Room: translator.
//
// Each line of a language file holds an English text and its translation; nothing is escaped. The file is
// 8-bit (UTF-8 if all of it is valid UTF-8, else Windows-1252) or UTF-16, with or without a byte order mark.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>

#include "src/forms/translator_state.h"

/// Detects the format from the first character, which must be a double quote in either reading.
LanguageFileFormat iFormatOfLanguageFile(std::string_view sBytes);

/// The encoding within that format; UTF-8 if the format is Unreadable.
LanguageFileEncoding eEncodingOfLanguageFile(std::string_view sBytes, LanguageFileFormat iFormat);

/// Decodes a file to UTF-8, without the byte order mark.
std::string sDecodeLanguageFile(std::string_view sBytes, LanguageFileEncoding eEncoding);

/// Encodes text to append to a file, without a byte order mark.
std::string sEncodeForLanguageFile(std::string_view sText, LanguageFileEncoding eEncoding);

/// CR LF if the first line ends in it, otherwise LF.
std::string sLineEndOf(std::string_view sText);

/// Adds the pairs of a decoded file to the table, up to the terminator line. Existing keys keep their value.
void ReadLanguageTable(std::string_view sText,
                       std::unordered_map<std::string, std::string>& dictTranslations);

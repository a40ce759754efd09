// What the translator knows while the program runs.
// Room: forms.
#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>

enum class LanguageFileFormat : std::int16_t { EightBit = 0, Utf16 = -1, Unreadable = 99 };
/// How exactly the letters of a language file are written; a mark at its head says nothing more.
enum class LanguageFileEncoding { Utf8, Windows1252, Utf16LittleEndian, Utf16BigEndian };

struct TranslatorState {
    std::string sLanguage = "English";
    std::string sLanguageFile;  ///< full path; empty while the language is English
    std::string sLanguageFont;  ///< font name for all controls; empty if none was chosen
    std::string sProductStem = "Varnel";
    LanguageFileFormat iLanguageFileFormat = LanguageFileFormat::EightBit;
    LanguageFileEncoding eLanguageFileEncoding = LanguageFileEncoding::Utf8;
    std::string sLanguageFileLineEnd = "\n";  ///< what ends the file's lines
    bool bLanguageFileEndsALine = true;       ///< what is appended needs no line end before it
    std::int32_t lUserLCID = 1033;
    std::unordered_map<std::string, std::string> dictTranslations;  ///< English text to the text to show
    bool bAppendFailureShown = false;  ///< one box about an unwritable language file is enough
};

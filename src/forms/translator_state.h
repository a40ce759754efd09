// The translator's state.
// Room: forms.
#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>

enum class LanguageFileFormat : std::int16_t { EightBit = 0, Utf16 = -1, Unreadable = 99 };
/// Exact encoding of a language file, with or without a byte order mark.
enum class LanguageFileEncoding { Utf8, Windows1252, Utf16LittleEndian, Utf16BigEndian };

struct TranslatorState {
    std::string sLanguage = "English";
    std::string sLanguageFile;  ///< full path; empty for English
    std::string sLanguageFont;  ///< font name for all controls; empty for the default
    std::string sProductStem = "Varnel";
    LanguageFileFormat iLanguageFileFormat = LanguageFileFormat::EightBit;
    LanguageFileEncoding eLanguageFileEncoding = LanguageFileEncoding::Utf8;
    std::string sLanguageFileLineEnd = "\n";  ///< line ending of the file
    bool bLanguageFileEndsALine = true;  ///< the last line is terminated, so appending can start right away
    std::int32_t lUserLCID = 1033;
    std::unordered_map<std::string, std::string> dictTranslations;  ///< English text to translation
    bool bAppendFailureShown = false;  ///< the unwritable language file has been reported
};

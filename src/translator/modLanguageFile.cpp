// Decodes, parses and encodes language files.
#include "src/translator/modLanguageFile.h"

#include "src/base/text.h"
#include "src/base/text_encoding.h"

using namespace std::string_view_literals;

static constexpr std::string_view kMarkUtf8 = "\xEF\xBB\xBF"sv;
static constexpr std::string_view kMarkLittleEndian = "\xFF\xFE"sv;
static constexpr std::string_view kMarkBigEndian = "\xFE\xFF"sv;
static constexpr std::string_view kQuoteLittleEndian = "\"\0"sv;
static constexpr std::string_view kQuoteBigEndian = "\0\""sv;

static std::string_view sWithoutMark(std::string_view sBytes, std::string_view sMark)
{
    return sBytes.starts_with(sMark) ? sBytes.substr(sMark.size()) : sBytes;
}

LanguageFileFormat iFormatOfLanguageFile(std::string_view sBytes)
{
    const std::string_view sLittle = sWithoutMark(sBytes, kMarkLittleEndian);
    const std::string_view sBig = sWithoutMark(sBytes, kMarkBigEndian);
    // Check for UTF-16 first: without a mark, the quote's low byte would pass for the quote of an 8-bit file.
    if (sLittle.starts_with(kQuoteLittleEndian) || sBig.starts_with(kQuoteBigEndian))
        return LanguageFileFormat::Utf16;
    if (sWithoutMark(sBytes, kMarkUtf8).starts_with('"'))
        return LanguageFileFormat::EightBit;
    return LanguageFileFormat::Unreadable;
}

LanguageFileEncoding eEncodingOfLanguageFile(std::string_view sBytes, LanguageFileFormat iFormat)
{
    if (iFormat == LanguageFileFormat::Utf16) {
        const bool bBigEndian = sBytes.starts_with(kMarkBigEndian) || sBytes.starts_with(kQuoteBigEndian);
        return bBigEndian ? LanguageFileEncoding::Utf16BigEndian : LanguageFileEncoding::Utf16LittleEndian;
    }
    if (iFormat == LanguageFileFormat::EightBit && !bIsUtf8(sBytes))
        return LanguageFileEncoding::Windows1252;
    return LanguageFileEncoding::Utf8;
}

std::string sDecodeLanguageFile(std::string_view sBytes, LanguageFileEncoding eEncoding)
{
    switch (eEncoding) {
        case LanguageFileEncoding::Utf16LittleEndian:
            return sUtf8FromUtf16(sWithoutMark(sBytes, kMarkLittleEndian), false);
        case LanguageFileEncoding::Utf16BigEndian:
            return sUtf8FromUtf16(sWithoutMark(sBytes, kMarkBigEndian), true);
        case LanguageFileEncoding::Windows1252:
            return sUtf8FromWindows1252(sWithoutMark(sBytes, kMarkUtf8));
        case LanguageFileEncoding::Utf8:
            break;
    }
    return std::string(sWithoutMark(sBytes, kMarkUtf8));
}

std::string sEncodeForLanguageFile(std::string_view sText, LanguageFileEncoding eEncoding)
{
    switch (eEncoding) {
        case LanguageFileEncoding::Utf16LittleEndian:
            return sUtf16FromUtf8(sText, false);
        case LanguageFileEncoding::Utf16BigEndian:
            return sUtf16FromUtf8(sText, true);
        case LanguageFileEncoding::Windows1252:
            return sWindows1252FromUtf8(sText);
        case LanguageFileEncoding::Utf8:
            break;
    }
    return std::string(sText);
}

std::string sLineEndOf(std::string_view sText)
{
    const std::size_t nEnd = sText.find('\n');
    return nEnd != std::string_view::npos && nEnd > 0 && sText[nEnd - 1] == '\r' ? "\r\n" : "\n";
}

// Drop the first, or the last, character; an empty text stays empty.
static std::string_view sLessFirst(std::string_view sText)
{
    std::size_t nLength = sText.empty() ? 0 : 1;
    while (nLength < sText.size() && (static_cast<unsigned char>(sText[nLength]) & 0xC0) == 0x80)
        ++nLength;
    return sText.substr(nLength);
}

static std::string_view sLessLast(std::string_view sText)
{
    while (!sText.empty() && (static_cast<unsigned char>(sText.back()) & 0xC0) == 0x80)
        sText.remove_suffix(1);
    if (!sText.empty())
        sText.remove_suffix(1);
    return sText;
}

static void ReadLine(std::string_view sLine, std::unordered_map<std::string, std::string>& dictTranslations)
{
    const std::string_view kBetween = "\",\"";
    const std::size_t nBetween = sLine.find(kBetween);
    if (nBetween == std::string_view::npos) {
        const std::string sText(sLessLast(sLessFirst(sLine)));
        dictTranslations.try_emplace(sText, sText);
        return;
    }
    // A second `","` ends the value, which then loses its last character instead of a closing quote. This is
    // intentional: existing language files rely on it.
    const std::string_view sRest = sLine.substr(nBetween + kBetween.size());
    dictTranslations.try_emplace(std::string(sLessFirst(sLine.substr(0, nBetween))),
                                 sLessLast(sRest.substr(0, sRest.find(kBetween))));
}

void ReadLanguageTable(std::string_view sText, std::unordered_map<std::string, std::string>& dictTranslations)
{
    while (!sText.empty()) {
        const std::size_t nEnd = sText.find('\n');
        std::string_view sLine = sText.substr(0, nEnd);
        sText.remove_prefix(nEnd == std::string_view::npos ? sText.size() : nEnd + 1);
        if (sLine.ends_with('\r'))
            sLine.remove_suffix(1);
        if (sLine.starts_with("\"****"))
            return;
        if (sLine.find_first_not_of(' ') != std::string_view::npos && !sLine.starts_with("\"!"))
            ReadLine(sLine, dictTranslations);
    }
}

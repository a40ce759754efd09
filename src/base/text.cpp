// Trims, lower-cases, splits and joins UTF-8 text.
#include "src/base/text.h"

#include <algorithm>
#include <cstdint>

#include "src/base/case_folding.h"

std::string sRTrim(std::string_view sText)
{
    const std::size_t nLast = sText.find_last_not_of(' ');
    return nLast == std::string_view::npos ? std::string() : std::string(sText.substr(0, nLast + 1));
}

std::string sLTrim(std::string_view sText)
{
    const std::size_t nFirst = sText.find_first_not_of(' ');
    return nFirst == std::string_view::npos ? std::string() : std::string(sText.substr(nFirst));
}

std::string sTrim(std::string_view sText)
{
    return sLTrim(sRTrim(sText));
}

// Lower-cases a code point whose upper and lower case both take two bytes in UTF-8.
static std::uint32_t nLowerTwoByte(std::uint32_t nCode)
{
    const bool bLatin1 = nCode >= 0xC0 && nCode <= 0xDE && nCode != 0xD7;
    const bool bLatinPairs = (nCode >= 0x100 && nCode <= 0x12F) || (nCode >= 0x132 && nCode <= 0x137) ||
                             (nCode >= 0x14A && nCode <= 0x177);
    const bool bLatinOddPairs = (nCode >= 0x139 && nCode <= 0x148) || (nCode >= 0x179 && nCode <= 0x17E);
    const bool bGreek = nCode >= 0x391 && nCode <= 0x3A9 && nCode != 0x3A2;
    const bool bCyrillic = nCode >= 0x410 && nCode <= 0x42F;
    const bool bCyrillicExtra = nCode >= 0x400 && nCode <= 0x40F;
    if (bLatin1 || bGreek || bCyrillic)
        return nCode + 0x20;
    if (bCyrillicExtra)
        return nCode + 0x50;
    if (bLatinPairs)
        return nCode | 1;
    if (bLatinOddPairs)
        return nCode + (nCode & 1);
    return nCode;
}

std::string sLower(std::string_view sText)
{
    std::string sResult(sText);
    for (std::size_t i = 0; i < sResult.size(); ++i) {
        const auto nByte = static_cast<std::uint8_t>(sResult[i]);
        if (nByte >= 'A' && nByte <= 'Z') {
            sResult[i] = static_cast<char>(nByte + 0x20);
        } else if (nByte >= 0xC3 && nByte <= 0xD0 && i + 1 < sResult.size() &&
                   (static_cast<std::uint8_t>(sResult[i + 1]) & 0xC0) == 0x80) {
            const std::uint32_t nCode =
                (nByte & 0x1Fu) << 6 | (static_cast<std::uint8_t>(sResult[i + 1]) & 0x3Fu);
            const std::uint32_t nLower = nLowerTwoByte(nCode);
            sResult[i] = static_cast<char>(0xC0 | nLower >> 6);
            sResult[i + 1] = static_cast<char>(0x80 | (nLower & 0x3F));
            ++i;
        }
    }
    return sResult;
}

bool bEqualIgnoringCase(std::string_view sLeft, std::string_view sRight)
{
    return sLeft == sRight || sFoldCase(sLeft) == sFoldCase(sRight);
}

bool bContains(std::string_view sText, std::string_view sPart)
{
    return sText.find(sPart) != std::string_view::npos;
}

bool bContainsIgnoringCase(std::string_view sText, std::string_view sPart)
{
    return bContains(sFoldCase(sText), sFoldCase(sPart));
}

std::vector<std::string> aSplit(std::string_view sText, char cDelimiter)
{
    std::vector<std::string> aPieces;
    if (sText.empty())
        return aPieces;
    std::size_t nBegin = 0;
    for (std::size_t nEnd = 0; (nEnd = sText.find(cDelimiter, nBegin)) != std::string_view::npos;
         nBegin = nEnd + 1)
        aPieces.emplace_back(sText.substr(nBegin, nEnd - nBegin));
    aPieces.emplace_back(sText.substr(nBegin));
    return aPieces;
}

std::string sJoin(const std::vector<std::string>& aPieces, std::string_view sDelimiter)
{
    std::string sResult;
    for (std::size_t i = 0; i < aPieces.size(); ++i) {
        if (i > 0)
            sResult += sDelimiter;
        sResult += aPieces[i];
    }
    return sResult;
}

std::string sReplaceAll(std::string_view sText, std::string_view sFind, std::string_view sReplacement)
{
    std::string sResult;
    std::size_t nBegin = 0;
    while (!sFind.empty()) {
        const std::size_t nFound = sText.find(sFind, nBegin);
        if (nFound == std::string_view::npos)
            break;
        sResult.append(sText.substr(nBegin, nFound - nBegin)).append(sReplacement);
        nBegin = nFound + sFind.size();
    }
    return sResult.append(sText.substr(nBegin));
}

std::string sPrintable(std::string_view sText, std::string_view sKeep)
{
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string sResult;
    for (std::size_t n = 0; n < sText.size(); ++n) {
        // C1 control characters have two bytes, of which only the second one tells them apart.
        const bool bC1 = sText[n] == '\xC2' && n + 1 < sText.size() &&
                         static_cast<std::uint8_t>(sText[n + 1]) >= 0x80 &&
                         static_cast<std::uint8_t>(sText[n + 1]) < 0xA0;
        const auto nByte = static_cast<std::uint8_t>(sText[bC1 ? ++n : n]);
        if (bC1 || ((nByte < 0x20 || nByte == 0x7F) && !bContains(sKeep, sText.substr(n, 1))))
            (sResult += "\\x") += {kDigits[nByte >> 4], kDigits[nByte & 15]};
        else
            sResult += sText[n];
    }
    return sResult;
}

static bool bContinuesCharacter(char c)
{
    return (static_cast<std::uint8_t>(c) & 0xC0) == 0x80;
}

std::string sFirstLetters(std::string_view sText, std::int32_t lCount)
{
    std::size_t nEnd = 0;
    for (; nEnd < sText.size(); ++nEnd)
        if (!bContinuesCharacter(sText[nEnd]) && lCount-- <= 0)
            break;
    return std::string(sText.substr(0, nEnd));
}

std::int32_t lLetters(std::string_view sText)
{
    // Count every byte that isn't a continuation byte.
    return static_cast<std::int32_t>(std::count_if(
        sText.begin(), sText.end(), [](char c) { return (static_cast<std::uint8_t>(c) & 0xC0) != 0x80; }));
}

// Converts between UTF-8, UTF-16 and Windows-1252.
#include "src/base/text_encoding.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

static constexpr std::uint32_t kNoCharacter = 0xFFFFFFFF;
static constexpr std::uint32_t kReplacement = 0xFFFD;

// Code points of the bytes 80 to 9F; every other byte is its own code point.
static constexpr std::array<std::uint16_t, 32> kWindows1252 = {
    0x20AC, 0x81,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x8D,   0x017D, 0x8F,   0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D,   0x017E, 0x0178};

static std::uint32_t nByteAt(std::string_view sBytes, std::size_t i)
{
    return static_cast<std::uint8_t>(sBytes[i]);
}

// Decodes the character at i and advances i past it. Malformed input gives kNoCharacter and advances by one
// byte.
static std::uint32_t nNextCharacter(std::string_view sBytes, std::size_t& i)
{
    const std::uint32_t nFirst = nByteAt(sBytes, i++);
    if (nFirst < 0x80)
        return nFirst;
    const std::size_t nMore = nFirst >= 0xF0 ? 3 : nFirst >= 0xE0 ? 2 : 1;
    if (nFirst < 0xC2 || nFirst > 0xF4 || i + nMore > sBytes.size())
        return kNoCharacter;
    std::uint32_t nCode = nFirst & (0x3Fu >> nMore);
    for (std::size_t n = 0; n < nMore; ++n) {
        const std::uint32_t nByte = nByteAt(sBytes, i + n);
        if ((nByte & 0xC0) != 0x80)
            return kNoCharacter;
        nCode = nCode << 6 | (nByte & 0x3F);
    }
    constexpr std::array<std::uint32_t, 4> kLeast = {0, 0x80, 0x800, 0x10000};
    if (nCode < kLeast[nMore] || nCode > 0x10FFFF || (nCode >= 0xD800 && nCode <= 0xDFFF))
        return kNoCharacter;
    i += nMore;
    return nCode;
}

static void AppendCharacter(std::string& sText, std::uint32_t nCode)
{
    const auto Append = [&](std::uint32_t nByte) { sText += static_cast<char>(nByte); };
    if (nCode < 0x80) {
        Append(nCode);
    } else if (nCode < 0x800) {
        Append(0xC0 | nCode >> 6);
        Append(0x80 | (nCode & 0x3F));
    } else if (nCode < 0x10000) {
        Append(0xE0 | nCode >> 12);
        Append(0x80 | (nCode >> 6 & 0x3F));
        Append(0x80 | (nCode & 0x3F));
    } else {
        Append(0xF0 | nCode >> 18);
        Append(0x80 | (nCode >> 12 & 0x3F));
        Append(0x80 | (nCode >> 6 & 0x3F));
        Append(0x80 | (nCode & 0x3F));
    }
}

bool bIsUtf8(std::string_view sBytes)
{
    std::size_t i = 0;
    while (i < sBytes.size()) {
        // Most texts are nearly all ASCII: skip eight bytes at a time while no high bit is set.
        std::uint64_t nEight = 0;
        while (i + sizeof nEight <= sBytes.size()) {
            std::memcpy(&nEight, sBytes.data() + i, sizeof nEight);
            if ((nEight & 0x8080808080808080u) != 0)
                break;
            i += sizeof nEight;
        }
        if (i < sBytes.size() && nNextCharacter(sBytes, i) == kNoCharacter)
            return false;
    }
    return true;
}

std::size_t nWholeCharacters(std::string_view sBytes, std::size_t nLimit)
{
    if (sBytes.size() <= nLimit)
        return sBytes.size();
    // A character has at most three continuation bytes. If there are more, this isn't UTF-8: cut at the
    // limit.
    for (std::size_t nCut = nLimit; nCut + 4 > nLimit; --nCut) {
        if ((nByteAt(sBytes, nCut) & 0xC0) != 0x80)
            return nCut;
        if (nCut == 0)
            break;
    }
    return nLimit;
}

std::string sUtf8FromWindows1252(std::string_view sBytes)
{
    std::string sText;
    sText.reserve(sBytes.size() + sBytes.size() / 8);
    for (std::size_t i = 0; i < sBytes.size(); ++i) {
        const std::uint32_t nByte = nByteAt(sBytes, i);
        AppendCharacter(sText, nByte >= 0x80 && nByte < 0xA0 ? kWindows1252[nByte - 0x80] : nByte);
    }
    return sText;
}

std::string sWindows1252FromUtf8(std::string_view sText)
{
    std::string sBytes;
    for (std::size_t i = 0; i < sText.size();) {
        const std::uint32_t nCode = nNextCharacter(sText, i);
        const auto itFound = std::find(kWindows1252.begin(), kWindows1252.end(), nCode);
        if (nCode < 0x80 || (nCode >= 0xA0 && nCode <= 0xFF))
            sBytes += static_cast<char>(nCode);
        else if (itFound != kWindows1252.end())
            sBytes += static_cast<char>(0x80 + (itFound - kWindows1252.begin()));
        else
            sBytes += '?';
    }
    return sBytes;
}

std::string sUtf8FromUtf16(std::string_view sBytes, bool bBigEndian)
{
    const auto nUnitAt = [&](std::size_t i) {
        const std::uint32_t nFirst = nByteAt(sBytes, i);
        const std::uint32_t nSecond = nByteAt(sBytes, i + 1);
        return bBigEndian ? nFirst << 8 | nSecond : nSecond << 8 | nFirst;
    };
    std::string sText;
    sText.reserve(sBytes.size() / 2);
    for (std::size_t i = 0; i + 1 < sBytes.size(); i += 2) {
        const std::uint32_t nUnit = nUnitAt(i);
        const std::uint32_t nLow =
            nUnit >= 0xD800 && nUnit < 0xDC00 && i + 3 < sBytes.size() ? nUnitAt(i + 2) : 0;
        if (nLow >= 0xDC00 && nLow < 0xE000) {
            AppendCharacter(sText, 0x10000 + ((nUnit & 0x3FF) << 10 | (nLow & 0x3FF)));
            i += 2;
        } else {
            AppendCharacter(sText, nUnit >= 0xD800 && nUnit < 0xE000 ? kReplacement : nUnit);
        }
    }
    return sText;
}

std::string sUtf16FromUtf8(std::string_view sText, bool bBigEndian)
{
    std::string sBytes;
    const auto AppendUnit = [&](std::uint32_t nUnit) {
        const auto cHigh = static_cast<char>(nUnit >> 8);
        const auto cLow = static_cast<char>(nUnit & 0xFF);
        sBytes += bBigEndian ? cHigh : cLow;
        sBytes += bBigEndian ? cLow : cHigh;
    };
    for (std::size_t i = 0; i < sText.size();) {
        std::uint32_t nCode = nNextCharacter(sText, i);
        if (nCode == kNoCharacter)
            nCode = kReplacement;
        if (nCode >= 0x10000) {
            AppendUnit(0xD800 | (nCode - 0x10000) >> 10);
            AppendUnit(0xDC00 | (nCode & 0x3FF));
        } else {
            AppendUnit(nCode);
        }
    }
    return sBytes;
}

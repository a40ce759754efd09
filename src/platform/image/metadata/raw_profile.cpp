// Turns blocks of metadata into hexadecimal text and back.
#include "src/platform/image/metadata/raw_profile.h"

#include <algorithm>
#include <charconv>
#include <cstring>

static constexpr std::uint16_t kIptcResource = 0x0404;

static int nHexDigit(char cDigit)
{
    if (cDigit >= '0' && cDigit <= '9')
        return cDigit - '0';
    if (cDigit >= 'a' && cDigit <= 'f')
        return cDigit - 'a' + 10;
    if (cDigit >= 'A' && cDigit <= 'F')
        return cDigit - 'A' + 10;
    return -1;
}

std::vector<std::uint8_t> aFromRawProfile(std::string_view sText)
{
    const std::size_t nKind = sText.find_first_not_of('\n');
    const std::size_t nKindEnd = sText.find('\n', nKind);
    if (nKind == std::string_view::npos || nKindEnd == std::string_view::npos)
        return {};
    const std::size_t nDigits = std::min(sText.find_first_not_of(" \n", nKindEnd), sText.size());
    std::uint32_t nLength = 0;
    const auto [pEnd, objError] =
        std::from_chars(sText.data() + nDigits, sText.data() + sText.size(), nLength);
    // Two digits a byte: a length that the text can't hold is not believed.
    if (objError != std::errc{} || nLength > sText.size() / 2)
        return {};
    std::vector<std::uint8_t> aBlock;
    aBlock.reserve(nLength);
    int nHigh = -1;
    for (const char* pDigit = pEnd; pDigit != sText.data() + sText.size() && aBlock.size() < nLength;
         ++pDigit) {
        const int nDigit = nHexDigit(*pDigit);
        if (nDigit < 0)
            continue;
        if (nHigh >= 0)
            aBlock.push_back(static_cast<std::uint8_t>(nHigh << 4 | nDigit));
        nHigh = nHigh < 0 ? nDigit : -1;
    }
    return aBlock.size() == nLength ? aBlock : std::vector<std::uint8_t>{};
}

std::string sToRawProfile(std::string_view sKind, Bytes aBlock)
{
    static constexpr std::string_view kDigits = "0123456789abcdef";
    static constexpr std::size_t kBytesALine = 36;
    std::string sLength = std::to_string(aBlock.size());
    sLength.insert(0, sLength.size() < 8 ? 8 - sLength.size() : 0, ' ');
    std::string sText = "\n" + std::string(sKind) + "\n" + sLength;
    for (std::size_t i = 0; i < aBlock.size(); ++i) {
        if (i % kBytesALine == 0)
            sText += '\n';
        sText += kDigits[aBlock[i] >> 4];
        sText += kDigits[aBlock[i] & 15];
    }
    return sText + "\n";
}

std::vector<std::uint8_t> aIptcOfResources(Bytes aBlock)
{
    if (!aBlock.empty() && aBlock[0] == 0x1C)
        return {aBlock.begin(), aBlock.end()};
    ByteReader objReader(aBlock);
    while (objReader.Left() >= 12) {
        const Bytes aMark = objReader.Take(4);
        if (std::memcmp(aMark.data(), "8BIM", 4) != 0)
            return {};
        const std::uint16_t nNumber = objReader.U16Be();
        // The name and the data are each padded to an even length; the name's own length byte counts with it.
        objReader.Take(objReader.U8() | 1U);
        const std::uint32_t nLength = objReader.U32Be();
        const Bytes aData = objReader.Take(nLength);
        if (objReader.Failed())
            return {};
        if (nNumber == kIptcResource && !aData.empty() && aData[0] == 0x1C)
            return {aData.begin(), aData.end()};
        if (nLength % 2 == 1 && objReader.Left() > 0)
            objReader.Take(1);
    }
    return {};
}

std::vector<std::uint8_t> aIptcAsResource(Bytes aIptc)
{
    const auto nLength = static_cast<std::uint32_t>(aIptc.size());
    std::vector<std::uint8_t> aBlock = {'8', 'B', 'I', 'M', kIptcResource >> 8, kIptcResource & 0xFF, 0, 0};
    for (int nShift = 24; nShift >= 0; nShift -= 8)
        aBlock.push_back(static_cast<std::uint8_t>(nLength >> nShift));
    aBlock.insert(aBlock.end(), aIptc.begin(), aIptc.end());
    if (nLength % 2 == 1)
        aBlock.push_back(0);
    return aBlock;
}

// Converts metadata blocks to hexadecimal text and back.
#include "src/platform/image/metadata/raw_profile.h"

#include <algorithm>
#include <charconv>
#include <cstring>

static constexpr std::uint16_t kIptcResource = 0x0404;

static int HexDigit(char digit)
{
    if (digit >= '0' && digit <= '9')
        return digit - '0';
    if (digit >= 'a' && digit <= 'f')
        return digit - 'a' + 10;
    if (digit >= 'A' && digit <= 'F')
        return digit - 'A' + 10;
    return -1;
}

std::vector<std::uint8_t> FromRawProfile(std::string_view text)
{
    const std::size_t kind = text.find_first_not_of('\n');
    const std::size_t kind_end = text.find('\n', kind);
    if (kind == std::string_view::npos || kind_end == std::string_view::npos)
        return {};
    const std::size_t digits = std::min(text.find_first_not_of(" \n", kind_end), text.size());
    std::uint32_t length = 0;
    const auto [end, error] = std::from_chars(text.data() + digits, text.data() + text.size(), length);
    // Each byte takes two digits; don't trust a length that the text can't hold.
    if (error != std::errc{} || length > text.size() / 2)
        return {};
    std::vector<std::uint8_t> block;
    block.reserve(length);
    int high = -1;
    for (const char* digit = end; digit != text.data() + text.size() && block.size() < length; ++digit) {
        const int value = HexDigit(*digit);
        if (value < 0)
            continue;
        if (high >= 0)
            block.push_back(static_cast<std::uint8_t>(high << 4 | value));
        high = high < 0 ? value : -1;
    }
    return block.size() == length ? block : std::vector<std::uint8_t>{};
}

std::string ToRawProfile(std::string_view kind, Bytes block)
{
    static constexpr std::string_view kDigits = "0123456789abcdef";
    static constexpr std::size_t kBytesALine = 36;
    std::string length = std::to_string(block.size());
    length.insert(0, length.size() < 8 ? 8 - length.size() : 0, ' ');
    std::string text = "\n" + std::string(kind) + "\n" + length;
    for (std::size_t i = 0; i < block.size(); ++i) {
        if (i % kBytesALine == 0)
            text += '\n';
        text += kDigits[block[i] >> 4];
        text += kDigits[block[i] & 15];
    }
    return text + "\n";
}

std::vector<std::uint8_t> IptcOfResources(Bytes block)
{
    if (!block.empty() && block[0] == 0x1C)
        return {block.begin(), block.end()};
    ByteReader reader(block);
    while (reader.Left() >= 12) {
        const Bytes mark = reader.Take(4);
        if (std::memcmp(mark.data(), "8BIM", 4) != 0)
            return {};
        const std::uint16_t number = reader.U16Be();
        // Name and data are padded to even lengths; the name's length includes its length byte.
        reader.Take(reader.U8() | 1U);
        const std::uint32_t length = reader.U32Be();
        const Bytes data = reader.Take(length);
        if (reader.Failed())
            return {};
        if (number == kIptcResource && !data.empty() && data[0] == 0x1C)
            return {data.begin(), data.end()};
        if (length % 2 == 1 && reader.Left() > 0)
            reader.Take(1);
    }
    return {};
}

std::vector<std::uint8_t> IptcAsResource(Bytes iptc)
{
    const auto length = static_cast<std::uint32_t>(iptc.size());
    std::vector<std::uint8_t> block = {'8', 'B', 'I', 'M', kIptcResource >> 8, kIptcResource & 0xFF, 0, 0};
    for (int shift = 24; shift >= 0; shift -= 8)
        block.push_back(static_cast<std::uint8_t>(length >> shift));
    block.insert(block.end(), iptc.begin(), iptc.end());
    if (length % 2 == 1)
        block.push_back(0);
    return block;
}

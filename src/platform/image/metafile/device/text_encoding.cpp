// Converts text from code pages, UTF-16 and symbol fonts.
#include "src/platform/image/metafile/device/text_encoding.h"

#include <iconv.h>

#include <array>
#include <string_view>

static constexpr char32_t kReplacement = 0xFFFD;

static const char* CodePage(std::uint8_t char_set)
{
    switch (char_set) {
        case 77:
            return "MACINTOSH";
        case 128:
            return "CP932";
        case 129:
            return "CP949";
        case 130:
            return "JOHAB";
        case 134:
            return "GBK";
        case 136:
            return "BIG5";
        case 161:
            return "CP1253";
        case 162:
            return "CP1254";
        case 163:
            return "CP1258";
        case 177:
            return "CP1255";
        case 178:
            return "CP1256";
        case 186:
            return "CP1257";
        case 204:
            return "CP1251";
        case 222:
            return "CP874";
        case 238:
            return "CP1250";
        case 255:
            return "CP850";
        default:
            return "CP1252";
    }
}

static bool HasDoubleBytes(std::uint8_t char_set)
{
    return char_set >= 128 && char_set <= 136;
}

// Converts a single character of count bytes; 0 if they are invalid.
static char32_t Convert(iconv_t converter, const std::uint8_t* bytes, std::size_t count)
{
    std::array<char, 2> in{};
    for (std::size_t n = 0; n < count; ++n)
        in[n] = static_cast<char>(bytes[n]);
    std::array<std::uint8_t, 16> out{};
    char* in_at = in.data();
    char* out_at = reinterpret_cast<char*>(out.data());
    std::size_t in_left = count;
    std::size_t out_left = out.size();
    iconv(converter, nullptr, nullptr, nullptr, nullptr);
    // The second call flushes a character held back for a combining accent.
    if (iconv(converter, &in_at, &in_left, &out_at, &out_left) == static_cast<std::size_t>(-1) ||
        in_left != 0 ||
        iconv(converter, nullptr, nullptr, &out_at, &out_left) == static_cast<std::size_t>(-1) ||
        out_left + 4 > out.size())
        return 0;
    return ByteReader(out).U32Le();
}

std::vector<TextCharacter> DecodeBytes(Bytes text, std::uint8_t char_set)
{
    std::vector<TextCharacter> result;
    iconv_t converter = iconv_open("UTF-32LE", CodePage(char_set));
    const bool none = converter == reinterpret_cast<iconv_t>(-1);
    for (std::size_t n = 0; n < text.size();) {
        std::uint32_t units = 1;
        char32_t code = text[n] < 0x80 ? text[n] : none ? 0 : Convert(converter, &text[n], 1);
        if (code == 0 && text[n] != 0 && HasDoubleBytes(char_set) && n + 1 < text.size() && !none) {
            code = Convert(converter, &text[n], 2);
            units = code != 0 ? 2 : 1;
        }
        result.push_back({code != 0 ? code : kReplacement, units});
        n += units;
    }
    if (!none)
        iconv_close(converter);
    return result;
}

std::vector<TextCharacter> DecodeUtf16(Bytes text)
{
    std::vector<TextCharacter> result;
    ByteReader reader(text);
    while (reader.Left() >= 2) {
        const char32_t word = reader.U16Le();
        if (word < 0xD800 || word > 0xDFFF) {
            result.push_back({word, 1});
            continue;
        }
        ByteReader next = reader;
        const char32_t second = next.U16Le();
        if (word < 0xDC00 && second >= 0xDC00 && second <= 0xDFFF) {
            result.push_back({0x10000 + ((word - 0xD800) << 10) + (second - 0xDC00), 2});
            reader = next;
        } else
            result.push_back({kReplacement, 1});
    }
    return result;
}

std::string Utf8(const std::vector<TextCharacter>& text)
{
    std::string result;
    for (const TextCharacter& character : text) {
        const char32_t n = character.code;
        const auto put = [&result](char32_t byte) { result.push_back(static_cast<char>(byte)); };
        if (n < 0x80)
            put(n);
        else if (n < 0x800) {
            put(0xC0 | n >> 6);
            put(0x80 | (n & 63));
        } else if (n < 0x10000) {
            put(0xE0 | n >> 12);
            put(0x80 | (n >> 6 & 63));
            put(0x80 | (n & 63));
        } else {
            put(0xF0 | n >> 18);
            put(0x80 | (n >> 12 & 63));
            put(0x80 | (n >> 6 & 63));
            put(0x80 | (n & 63));
        }
    }
    return result;
}

char32_t UnicodeOfSymbol(std::uint8_t code)
{
    // The Symbol encoding for 0x20 to 0x7E and 0xA0 to 0xFE.
    static constexpr std::u32string_view kLow =
        U" !\u2200#\u2203%&\u220B()\u2217+,\u2212./0123456789:;<=>?"
        U"\u2245\u0391\u0392\u03A7\u0394\u0395\u03A6\u0393\u0397\u0399\u03D1\u039A\u039B\u039C\u039D\u039F"
        U"\u03A0\u0398\u03A1\u03A3\u03A4\u03A5\u03C2\u03A9\u039E\u03A8\u0396[\u2234]\u22A5_"
        U"\u203E\u03B1\u03B2\u03C7\u03B4\u03B5\u03C6\u03B3\u03B7\u03B9\u03D5\u03BA\u03BB\u03BC\u03BD\u03BF"
        U"\u03C0\u03B8\u03C1\u03C3\u03C4\u03C5\u03D6\u03C9\u03BE\u03C8\u03B6{|}\u223C";
    static constexpr std::u32string_view kHigh =
        U"\u20AC\u03D2\u2032\u2264\u2044\u221E\u0192\u2663\u2666\u2665\u2660\u2194\u2190\u2191\u2192\u2193"
        U"\u00B0\u00B1\u2033\u2265\u00D7\u221D\u2202\u2022\u00F7\u2260\u2261\u2248\u2026\u23D0\u23AF\u21B5"
        U"\u2135\u2111\u211C\u2118\u2297\u2295\u2205\u2229\u222A\u2283\u2287\u2284\u2282\u2286\u2208\u2209"
        U"\u2220\u2207\u00AE\u00A9\u2122\u220F\u221A\u22C5\u00AC\u2227\u2228\u21D4\u21D0\u21D1\u21D2\u21D3"
        U"\u25CA\u2329\u00AE\u00A9\u2122\u2211\u239B\u239C\u239D\u23A1\u23A2\u23A3\u23A7\u23A8\u23A9\u23AA"
        U"\uF8FF\u232A\u222B\u2320\u23AE\u2321\u239E\u239F\u23A0\u23A4\u23A5\u23A6\u23AB\u23AC\u23AD";
    static_assert(kLow.size() == 0x7F - 0x20);
    static_assert(kHigh.size() == 0xFF - 0xA0);
    if (code >= 0x20 && code < 0x7F)
        return kLow[code - 0x20u];
    return code >= 0xA0 && code < 0xFF ? kHigh[code - 0xA0u] : 0;
}

char32_t UnicodeOfWingdings(std::uint8_t code)
{
    switch (code) {
        case 0x20:
            return U' ';
        case 0x4A:
            return 0x263A;
        case 0x6C:
            return 0x25CF;
        case 0x6E:
            return 0x25A0;
        case 0x6F:
            return 0x25A1;
        case 0x71:
            return 0x2751;
        case 0x74:
            return 0x2B27;
        case 0x75:
            return 0x25C6;
        case 0x76:
            return 0x2756;
        case 0x9F:
            return 0x2022;
        case 0xA7:
            return 0x25AA;
        case 0xA8:
            return 0x25FB;
        case 0xD8:
            return 0x27A2;
        case 0xDF:
            return 0x2190;
        case 0xE0:
            return 0x2192;
        case 0xE1:
            return 0x2191;
        case 0xE2:
            return 0x2193;
        case 0xE8:
            return 0x2794;
        case 0xF0:
            return 0x21E8;
        case 0xFB:
            return 0x2718;
        case 0xFC:
            return 0x2714;
        case 0xFD:
            return 0x2612;
        case 0xFE:
            return 0x2611;
        default:
            return 0;
    }
}

// Decodes texts.
#include "src/platform/image/metafile/device/text_encoding.h"

#include <iconv.h>

#include <array>
#include <string_view>

static constexpr char32_t kReplacement = 0xFFFD;

static const char* sCodePage(std::uint8_t nCharSet)
{
    switch (nCharSet) {
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

static bool bHasDoubleBytes(std::uint8_t nCharSet)
{
    return nCharSet >= 128 && nCharSet <= 136;
}

// One character of nCount bytes, or 0 if they are none.
static char32_t nConverted(iconv_t pConverter, const std::uint8_t* pBytes, std::size_t nCount)
{
    std::array<char, 2> aIn{};
    for (std::size_t n = 0; n < nCount; ++n)
        aIn[n] = static_cast<char>(pBytes[n]);
    std::array<std::uint8_t, 16> aOut{};
    char* pIn = aIn.data();
    char* pOut = reinterpret_cast<char*>(aOut.data());
    std::size_t nInLeft = nCount;
    std::size_t nOutLeft = aOut.size();
    iconv(pConverter, nullptr, nullptr, nullptr, nullptr);
    // The second call brings out what a converter holds back to see whether an accent follows.
    if (iconv(pConverter, &pIn, &nInLeft, &pOut, &nOutLeft) == static_cast<std::size_t>(-1) || nInLeft != 0 ||
        iconv(pConverter, nullptr, nullptr, &pOut, &nOutLeft) == static_cast<std::size_t>(-1) ||
        nOutLeft + 4 > aOut.size())
        return 0;
    return ByteReader(aOut).U32Le();
}

std::vector<TextCharacter> aDecodedBytes(Bytes aText, std::uint8_t nCharSet)
{
    std::vector<TextCharacter> aResult;
    iconv_t pConverter = iconv_open("UTF-32LE", sCodePage(nCharSet));
    const bool bNone = pConverter == reinterpret_cast<iconv_t>(-1);
    for (std::size_t n = 0; n < aText.size();) {
        std::uint32_t nUnits = 1;
        char32_t nCode = aText[n] < 0x80 ? aText[n] : bNone ? 0 : nConverted(pConverter, &aText[n], 1);
        if (nCode == 0 && aText[n] != 0 && bHasDoubleBytes(nCharSet) && n + 1 < aText.size() && !bNone) {
            nCode = nConverted(pConverter, &aText[n], 2);
            nUnits = nCode != 0 ? 2 : 1;
        }
        aResult.push_back({nCode != 0 ? nCode : kReplacement, nUnits});
        n += nUnits;
    }
    if (!bNone)
        iconv_close(pConverter);
    return aResult;
}

std::vector<TextCharacter> aDecodedWords(Bytes aText)
{
    std::vector<TextCharacter> aResult;
    ByteReader rd(aText);
    while (rd.Left() >= 2) {
        const char32_t nWord = rd.U16Le();
        if (nWord < 0xD800 || nWord > 0xDFFF) {
            aResult.push_back({nWord, 1});
            continue;
        }
        ByteReader rdNext = rd;
        const char32_t nSecond = rdNext.U16Le();
        if (nWord < 0xDC00 && nSecond >= 0xDC00 && nSecond <= 0xDFFF) {
            aResult.push_back({0x10000 + ((nWord - 0xD800) << 10) + (nSecond - 0xDC00), 2});
            rd = rdNext;
        } else
            aResult.push_back({kReplacement, 1});
    }
    return aResult;
}

std::string sUtf8(const std::vector<TextCharacter>& aText)
{
    std::string sResult;
    for (const TextCharacter& objCharacter : aText) {
        const char32_t n = objCharacter.nCode;
        const auto Put = [&sResult](char32_t nByte) { sResult.push_back(static_cast<char>(nByte)); };
        if (n < 0x80)
            Put(n);
        else if (n < 0x800) {
            Put(0xC0 | n >> 6);
            Put(0x80 | (n & 63));
        } else if (n < 0x10000) {
            Put(0xE0 | n >> 12);
            Put(0x80 | (n >> 6 & 63));
            Put(0x80 | (n & 63));
        } else {
            Put(0xF0 | n >> 18);
            Put(0x80 | (n >> 12 & 63));
            Put(0x80 | (n >> 6 & 63));
            Put(0x80 | (n & 63));
        }
    }
    return sResult;
}

char32_t nUnicodeOfSymbol(std::uint8_t nCode)
{
    // The Symbol font's own encoding, from 0x20 to 0x7E and from 0xA0 to 0xFE.
    static constexpr std::u32string_view sLow =
        U" !\u2200#\u2203%&\u220B()\u2217+,\u2212./0123456789:;<=>?"
        U"\u2245\u0391\u0392\u03A7\u0394\u0395\u03A6\u0393\u0397\u0399\u03D1\u039A\u039B\u039C\u039D\u039F"
        U"\u03A0\u0398\u03A1\u03A3\u03A4\u03A5\u03C2\u03A9\u039E\u03A8\u0396[\u2234]\u22A5_"
        U"\u203E\u03B1\u03B2\u03C7\u03B4\u03B5\u03C6\u03B3\u03B7\u03B9\u03D5\u03BA\u03BB\u03BC\u03BD\u03BF"
        U"\u03C0\u03B8\u03C1\u03C3\u03C4\u03C5\u03D6\u03C9\u03BE\u03C8\u03B6{|}\u223C";
    static constexpr std::u32string_view sHigh =
        U"\u20AC\u03D2\u2032\u2264\u2044\u221E\u0192\u2663\u2666\u2665\u2660\u2194\u2190\u2191\u2192\u2193"
        U"\u00B0\u00B1\u2033\u2265\u00D7\u221D\u2202\u2022\u00F7\u2260\u2261\u2248\u2026\u23D0\u23AF\u21B5"
        U"\u2135\u2111\u211C\u2118\u2297\u2295\u2205\u2229\u222A\u2283\u2287\u2284\u2282\u2286\u2208\u2209"
        U"\u2220\u2207\u00AE\u00A9\u2122\u220F\u221A\u22C5\u00AC\u2227\u2228\u21D4\u21D0\u21D1\u21D2\u21D3"
        U"\u25CA\u2329\u00AE\u00A9\u2122\u2211\u239B\u239C\u239D\u23A1\u23A2\u23A3\u23A7\u23A8\u23A9\u23AA"
        U"\uF8FF\u232A\u222B\u2320\u23AE\u2321\u239E\u239F\u23A0\u23A4\u23A5\u23A6\u23AB\u23AC\u23AD";
    static_assert(sLow.size() == 0x7F - 0x20);
    static_assert(sHigh.size() == 0xFF - 0xA0);
    if (nCode >= 0x20 && nCode < 0x7F)
        return sLow[nCode - 0x20u];
    return nCode >= 0xA0 && nCode < 0xFF ? sHigh[nCode - 0xA0u] : 0;
}

char32_t nUnicodeOfWingdings(std::uint8_t nCode)
{
    switch (nCode) {
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

// UTF-8 validation and conversion to and from other encodings.
#include "src/base/text_encoding.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

using namespace std::string_literals;

TEST(IsUtf8, AcceptsCharactersOfEveryLength)
{
    EXPECT_TRUE(bIsUtf8(""));
    EXPECT_TRUE(bIsUtf8("plain text, longer than eight bytes"));
    EXPECT_TRUE(bIsUtf8("ü € 😀 at the end of a long enough text ü"));
    EXPECT_TRUE(bIsUtf8("a\0b"s));
    EXPECT_TRUE(bIsUtf8("\xF4\x8F\xBF\xBF"));
}

TEST(IsUtf8, RejectsTruncatedOverlongAndOutOfRangeCharacters)
{
    EXPECT_FALSE(bIsUtf8("\xE2\x82"));
    EXPECT_FALSE(bIsUtf8("12345678\xC3"));
    EXPECT_FALSE(bIsUtf8("\x80 alone"));
    EXPECT_FALSE(bIsUtf8("\xC0\x80"));
    EXPECT_FALSE(bIsUtf8("\xC1\xBF"));
    EXPECT_FALSE(bIsUtf8("\xE0\x9F\xBF"));
    EXPECT_FALSE(bIsUtf8("\xED\xA0\x80"));
    EXPECT_FALSE(bIsUtf8("\xF0\x8F\xBF\xBF"));
    EXPECT_FALSE(bIsUtf8("\xF4\x90\x80\x80"));
    EXPECT_FALSE(bIsUtf8("\xF8\x88\x80\x80\x80"));
    EXPECT_FALSE(bIsUtf8("caf\xE9 au lait"));
}

TEST(WholeCharacters, NeverSplitsACharacter)
{
    EXPECT_EQ(nWholeCharacters("abc", 5), 3u);
    EXPECT_EQ(nWholeCharacters("abc", 2), 2u);
    EXPECT_EQ(nWholeCharacters("ab€", 2), 2u);
    EXPECT_EQ(nWholeCharacters("ab€", 3), 2u);
    EXPECT_EQ(nWholeCharacters("ab€", 4), 2u);
    EXPECT_EQ(nWholeCharacters("ab€", 5), 5u);
    EXPECT_EQ(nWholeCharacters("😀", 3), 0u);
    EXPECT_EQ(nWholeCharacters("", 0), 0u);
}

TEST(WholeCharacters, CutsMalformedUtf8AtTheLimit)
{
    EXPECT_EQ(nWholeCharacters("\x80\x80\x80\x80\x80\x80\x80", 5), 5u);
    EXPECT_EQ(nWholeCharacters("\x80\x80\x80", 2), 2u);
}

TEST(Windows1252, ConvertsEuroSignAndWesternEuropeanLetters)
{
    EXPECT_EQ(sUtf8FromWindows1252("\x80 caf\xE9 \x9F"), "€ café Ÿ");
    EXPECT_EQ(sWindows1252FromUtf8("€ café Ÿ"), "\x80 caf\xE9 \x9F");
}

TEST(Windows1252, ReplacesUnmappableCharactersWithQuestionMarks)
{
    EXPECT_EQ(sWindows1252FromUtf8("日本 ok"), "?? ok");
    EXPECT_EQ(sWindows1252FromUtf8("\xFF"), "?");
}

RC_GTEST_PROP(Windows1252, RoundTripsEveryByte, (const std::string& sBytes))
{
    const std::string sText = sUtf8FromWindows1252(sBytes);

    RC_ASSERT(bIsUtf8(sText));
    RC_ASSERT(sWindows1252FromUtf8(sText) == sBytes);
}

TEST(Utf16, ConvertsBothByteOrdersAndSurrogatePairs)
{
    EXPECT_EQ(sUtf8FromUtf16("a\0\xAC\x20\x3D\xD8\x00\xDE"s, false), "a€😀");
    EXPECT_EQ(sUtf8FromUtf16("\0a\x20\xAC\xD8\x3D\xDE\x00"s, true), "a€😀");
    EXPECT_EQ(sUtf16FromUtf8("a€😀", false), "a\0\xAC\x20\x3D\xD8\x00\xDE"s);
    EXPECT_EQ(sUtf16FromUtf8("a€😀", true), "\0a\x20\xAC\xD8\x3D\xDE\x00"s);
}

TEST(Utf16, ReplacesLoneSurrogatesAndDropsTrailingByte)
{
    EXPECT_EQ(sUtf8FromUtf16("\x3D\xD8"s, false), "\uFFFD");
    EXPECT_EQ(sUtf8FromUtf16("\x3D\xD8z\0"s, false), "\uFFFDz");
    EXPECT_EQ(sUtf8FromUtf16("\x00\xDEz\0q"s, false), "\uFFFDz");
}

RC_GTEST_PROP(Utf16, DecodesAnyBytesToValidUtf8, (const std::string& sBytes, bool bBigEndian))
{
    const std::string sText = sUtf8FromUtf16(sBytes, bBigEndian);

    RC_ASSERT(bIsUtf8(sText));
    RC_ASSERT(sUtf8FromUtf16(sUtf16FromUtf8(sText, bBigEndian), bBigEndian) == sText);
}

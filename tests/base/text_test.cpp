// Trimming, case, splitting, joining and replacing.
#include "src/base/text.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

TEST(Trim, RemovesOnlySpacesFromTheEnds)
{
    EXPECT_EQ(sTrim("  a b  "), "a b");
    EXPECT_EQ(sLTrim("  a b  "), "a b  ");
    EXPECT_EQ(sRTrim("  a b  "), "  a b");
    EXPECT_EQ(sTrim("\t a\n "), "\t a\n");
    EXPECT_EQ(sTrim("   "), "");
    EXPECT_EQ(sTrim(""), "");
    EXPECT_EQ(sTrim(std::string(" \0 ", 3)), std::string("\0", 1));
}

TEST(Lower, HandlesEuropeanLettersAndLeavesOthersAlone)
{
    EXPECT_EQ(sLower("AbC-19_Z"), "abc-19_z");
    EXPECT_EQ(sLower("ÄÖÜ É Ñ Þ ×"), "äöü é ñ þ ×");
    EXPECT_EQ(sLower("ŁÓDŹ Ž Ĺ"), "łódź ž ĺ");
    EXPECT_EQ(sLower("ΑΩΣ"), "αωσ");
    EXPECT_EQ(sLower("ЖЯ Ё Ї"), "жя ё ї");
    EXPECT_EQ(sLower("日本ẞ"), "日本ẞ");
}

TEST(Lower, LeavesOtherBytesUnchanged)
{
    for (const std::string sText : {"\xFF\xC3", "\xC3(", "\x80\xD0", "\xC3\x9F\xC3"})
        EXPECT_EQ(sLower(sText), sText);
}

TEST(Lower, KeepsTheLengthAndIsIdempotent)
{
    EXPECT_TRUE(rc::check([](const std::string& sText) {
        const std::string sOnce = sLower(sText);
        RC_ASSERT(sOnce.size() == sText.size());
        RC_ASSERT(sLower(sOnce) == sOnce);
    }));
}

TEST(EqualIgnoringCase, ComparesLowerCasedTexts)
{
    EXPECT_TRUE(bEqualIgnoringCase("C:\\Öl.JPG", "c:\\öl.jpg"));
    EXPECT_FALSE(bEqualIgnoringCase("a", "ab"));
    EXPECT_FALSE(bEqualIgnoringCase("ss", "ß"));
    EXPECT_TRUE(bEqualIgnoringCase("", ""));
}

TEST(Contains, AlwaysFindsAnEmptyPart)
{
    EXPECT_TRUE(bContains("S12", "S"));
    EXPECT_FALSE(bContains("s12", "S"));
    EXPECT_TRUE(bContains("abc", ""));
    EXPECT_TRUE(bContains("", ""));
    EXPECT_TRUE(bContainsIgnoringCase("Where to SAVE", "save"));
    EXPECT_FALSE(bContainsIgnoringCase("a", "ab"));
}

TEST(Split, GivesOneMorePieceThanDelimiters)
{
    EXPECT_EQ(aSplit("a^b^c", '^'), (std::vector<std::string>{"a", "b", "c"}));
    EXPECT_EQ(aSplit("a^^", '^'), (std::vector<std::string>{"a", "", ""}));
    EXPECT_EQ(aSplit("^", '^'), (std::vector<std::string>{"", ""}));
    EXPECT_EQ(aSplit("a", '^'), std::vector<std::string>{"a"});
    EXPECT_EQ(aSplit("", '^'), std::vector<std::string>{});
}

TEST(Split, IsUndoneByJoin)
{
    EXPECT_TRUE(
        rc::check([](const std::string& sText) { RC_ASSERT(sJoin(aSplit(sText, 'a'), "a") == sText); }));
}

TEST(Join, InsertsTheDelimiterBetweenPieces)
{
    EXPECT_EQ(sJoin({"a", "", "b"}, "\r\r"), "a\r\r\r\rb");
    EXPECT_EQ(sJoin({"a"}, ","), "a");
    EXPECT_EQ(sJoin({}, ","), "");
}

TEST(ReplaceAll, DoesNotRescanReplacements)
{
    EXPECT_EQ(sReplaceAll("aaa", "a", "aa"), "aaaaaa");
    EXPECT_EQ(sReplaceAll("C:\\\\x", ":\\\\", ":\\"), "C:\\x");
    EXPECT_EQ(sReplaceAll("///", "//", "/"), "//");
    EXPECT_EQ(sReplaceAll("abc", "", "x"), "abc");
    EXPECT_EQ(sReplaceAll("S1S2", "S", ""), "12");
    EXPECT_EQ(sReplaceAll("", "a", "b"), "");
}

TEST(Letters, CountCharactersRatherThanBytes)
{
    EXPECT_EQ(lLetters("äbc"), 3);
    EXPECT_EQ(lLetters("日本"), 2);
    EXPECT_EQ(lLetters(""), 0);
}

TEST(Printable, EscapesControlCharacters)
{
    EXPECT_EQ(sPrintable("a\x1B[31mb\x07\x7F\n\t"), "a\\x1B[31mb\\x07\\x7F\\x0A\\x09");
    EXPECT_EQ(sPrintable("\xC2\x9B"
                         "2J \xC2\xA0"),
              "\\x9B2J \xC2\xA0");
    EXPECT_EQ(sPrintable("a\rb\n\tc\x1B", "\r\n\t"), "a\rb\n\tc\\x1B");
    EXPECT_EQ(sPrintable("Ünï€ 日本"), "Ünï€ 日本");
    EXPECT_EQ(sPrintable(std::string_view("\0", 1)), "\\x00");
}

TEST(FirstLetters, CountsCharactersNotBytes)
{
    EXPECT_EQ(sFirstLetters("äöü", 2), "äö");
    EXPECT_EQ(sFirstLetters("a日b", 2), "a日");
    EXPECT_EQ(sFirstLetters("abc", 9), "abc");
    EXPECT_EQ(sFirstLetters("abc", 0), "");
    EXPECT_EQ(sFirstLetters("abc", -1), "");
}

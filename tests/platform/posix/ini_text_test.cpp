// Tests of sections and keys in the text of a settings file.
#include "src/platform/posix/ini_text.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "src/base/text_encoding.h"

using namespace std::string_literals;

TEST(IniValue, IsFoundIgnoringCase)
{
    EXPECT_EQ(IniValue("[Language]\nLanguage_Code=German\n", "LANGUAGE", "language_code"), "German");
}

TEST(IniValue, LosesSpacesAndOnePairOfQuotes)
{
    const std::string text = "[s]\r\n a =  one \t\r\nb=\" two \"\r\nc=''three''\r\nd=\"four'\r\ne=\"\r\n";

    EXPECT_EQ(IniValue(text, "s", "a"), "one");
    EXPECT_EQ(IniValue(text, "s", "b"), " two ");
    EXPECT_EQ(IniValue(text, "s", "c"), "'three'");
    EXPECT_EQ(IniValue(text, "s", "d"), "\"four'");
    EXPECT_EQ(IniValue(text, "s", "e"), "\"");
}

TEST(IniValue, MayBeEmpty)
{
    EXPECT_EQ(IniValue("[s]\na=\nb\n", "s", "a"), "");
    EXPECT_EQ(IniValue("[s]\na=\nb\n", "s", "b"), std::nullopt);
}

TEST(IniValue, ComesFromFirstMatchOfFirstSection)
{
    const std::string text = "a=0\n[s]\na=1\na=2\n[t]\na=3\n[S]\na=4\nb=5\n";

    EXPECT_EQ(IniValue(text, "s", "a"), "1");
    EXPECT_EQ(IniValue(text, "t", "a"), "3");
    EXPECT_EQ(IniValue(text, "s", "b"), std::nullopt);
    EXPECT_EQ(IniValue(text, "u", "a"), std::nullopt);
}

TEST(IniValue, MayContainEqualSignAndBracket)
{
    const std::string text = "[s]\n;a=0\na=x=[y];z\n";

    EXPECT_EQ(IniValue(text, "s", "a"), "x=[y];z");
    EXPECT_EQ(IniValue(text, "s", ";a"), std::nullopt);
}

TEST(IniValue, IsFoundInSectionWithUntidyHead)
{
    EXPECT_EQ(IniValue(" [ s ] ; note\na=1", "s", "a"), "1");
    EXPECT_EQ(IniValue("[s\na=1", "s", "a"), "1");
}

TEST(IniTextWith, ReplacesValueAndKeepsOtherLines)
{
    const std::string text = "; mine\n[s]\nnonsense\na=1\n;c\nA=2\n[t]\na=3\n";

    EXPECT_EQ(IniTextWith(text, "S", "a", "new"), "; mine\n[s]\nnonsense\na=new\n;c\nA=2\n[t]\na=3\n");
}

TEST(IniTextWith, AddsKeyAfterLastLineOfSection)
{
    EXPECT_EQ(IniTextWith("[s]\na=1\n\n[t]\nb=2\n", "s", "c", "3"), "[s]\na=1\nc=3\n\n[t]\nb=2\n");
    EXPECT_EQ(IniTextWith("[s]\n[t]\n", "s", "c", "3"), "[s]\nc=3\n[t]\n");
    EXPECT_EQ(IniTextWith("[s]", "s", "c", "3"), "[s]\nc=3\n");
}

TEST(IniTextWith, AddsMissingSectionAtEnd)
{
    EXPECT_EQ(IniTextWith("", "s", "a", "1"), "[s]\na=1\n");
    EXPECT_EQ(IniTextWith("[t]\nb=2", "s", "a", "1"), "[t]\nb=2\n[s]\na=1\n");
}

TEST(IniTextWith, UsesLineEndOfFirstLine)
{
    EXPECT_EQ(IniTextWith("[s]\r\na=1\r\n", "s", "b", "2"), "[s]\r\na=1\r\nb=2\r\n");
}

TEST(IniTextWith, KeepsValueOnOneLineInUtf8)
{
    EXPECT_EQ(IniTextWith("", "s", "a", "x\r\n[t]\nb=1"), "[s]\na=x  [t] b=1\n");
    EXPECT_EQ(IniTextWith("", "s", "a", "caf\xE9"), "[s]\na=café\n");
}

TEST(IniTextWith, ProtectsQuotesThatBelongToValue)
{
    const std::string text = IniTextWith("", "s", "a", "\"C:\\My pics\\a.exe\"");

    EXPECT_EQ(text, "[s]\na=\"\"C:\\My pics\\a.exe\"\"\n");
    EXPECT_EQ(IniValue(text, "s", "a"), "\"C:\\My pics\\a.exe\"");
}

TEST(IniTextOf, DropsByteOrderMarkAndConvertsWindows1252)
{
    EXPECT_EQ(IniTextOf("\xEF\xBB\xBF[s]"), "[s]");
    EXPECT_EQ(IniTextOf("a=ü"), "a=ü");
    EXPECT_EQ(IniTextOf("a=\xFC"), "a=ü");
}

RC_GTEST_PROP(IniText, TakesAnyBytesAndGivesBackWhatWasWritten, (const std::string& bytes, std::string value))
{
    std::erase_if(value, [](char c) { return c <= ' '; });
    const std::string text = IniTextOf(bytes);

    const std::string new_text = IniTextWith(text, "some section", "some key", value);

    RC_ASSERT(bIsUtf8(new_text));
    RC_ASSERT(IniValue(new_text, "Some Section", "SOME KEY") == value);
}

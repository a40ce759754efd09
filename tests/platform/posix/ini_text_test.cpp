// Sections and keys in the text of a settings file.
#include "src/platform/posix/ini_text.h"

#include <rapidcheck/gtest.h>

#include "src/base/text_encoding.h"

using namespace std::string_literals;

TEST(IniValue, IsFoundWithoutRegardToCase)
{
    EXPECT_EQ(sIniValue("[Language]\nLanguage_Code=German\n", "LANGUAGE", "language_code"), "German");
}

TEST(IniValue, IsTrimmedAndLosesOnePairOfEqualQuotes)
{
    const std::string sText = "[s]\r\n a =  one \t\r\nb=\" two \"\r\nc=''three''\r\nd=\"four'\r\ne=\"\r\n";

    EXPECT_EQ(sIniValue(sText, "s", "a"), "one");
    EXPECT_EQ(sIniValue(sText, "s", "b"), " two ");
    EXPECT_EQ(sIniValue(sText, "s", "c"), "'three'");
    EXPECT_EQ(sIniValue(sText, "s", "d"), "\"four'");
    EXPECT_EQ(sIniValue(sText, "s", "e"), "\"");
}

TEST(IniValue, MayBeEmpty)
{
    EXPECT_EQ(sIniValue("[s]\na=\nb\n", "s", "a"), "");
    EXPECT_EQ(sIniValue("[s]\na=\nb\n", "s", "b"), std::nullopt);
}

TEST(IniValue, IsTheFirstOfTheFirstSection)
{
    const std::string sText = "a=0\n[s]\na=1\na=2\n[t]\na=3\n[S]\na=4\nb=5\n";

    EXPECT_EQ(sIniValue(sText, "s", "a"), "1");
    EXPECT_EQ(sIniValue(sText, "t", "a"), "3");
    EXPECT_EQ(sIniValue(sText, "s", "b"), std::nullopt);
    EXPECT_EQ(sIniValue(sText, "u", "a"), std::nullopt);
}

TEST(IniValue, MayHoldAnEqualSignAndABracketButNoCommentsKey)
{
    const std::string sText = "[s]\n;a=0\na=x=[y];z\n";

    EXPECT_EQ(sIniValue(sText, "s", "a"), "x=[y];z");
    EXPECT_EQ(sIniValue(sText, "s", ";a"), std::nullopt);
}

TEST(IniValue, IsFoundInASectionWhoseHeadIsNotNeat)
{
    EXPECT_EQ(sIniValue(" [ s ] ; note\na=1", "s", "a"), "1");
    EXPECT_EQ(sIniValue("[s\na=1", "s", "a"), "1");
}

TEST(IniTextWith, ReplacesTheValueAndKeepsEveryOtherLine)
{
    const std::string sText = "; mine\n[s]\nnonsense\na=1\n;c\nA=2\n[t]\na=3\n";

    EXPECT_EQ(sIniTextWith(sText, "S", "a", "new"), "; mine\n[s]\nnonsense\na=new\n;c\nA=2\n[t]\na=3\n");
}

TEST(IniTextWith, AddsAKeyBehindTheSectionsLastLine)
{
    EXPECT_EQ(sIniTextWith("[s]\na=1\n\n[t]\nb=2\n", "s", "c", "3"), "[s]\na=1\nc=3\n\n[t]\nb=2\n");
    EXPECT_EQ(sIniTextWith("[s]\n[t]\n", "s", "c", "3"), "[s]\nc=3\n[t]\n");
    EXPECT_EQ(sIniTextWith("[s]", "s", "c", "3"), "[s]\nc=3\n");
}

TEST(IniTextWith, AddsASectionAtTheEnd)
{
    EXPECT_EQ(sIniTextWith("", "s", "a", "1"), "[s]\na=1\n");
    EXPECT_EQ(sIniTextWith("[t]\nb=2", "s", "a", "1"), "[t]\nb=2\n[s]\na=1\n");
}

TEST(IniTextWith, EndsNewLinesAsTheFirstLineEnds)
{
    EXPECT_EQ(sIniTextWith("[s]\r\na=1\r\n", "s", "b", "2"), "[s]\r\na=1\r\nb=2\r\n");
}

TEST(IniTextWith, KeepsAValueOnOneLineAndInUtf8)
{
    EXPECT_EQ(sIniTextWith("", "s", "a", "x\r\n[t]\nb=1"), "[s]\na=x  [t] b=1\n");
    EXPECT_EQ(sIniTextWith("", "s", "a", "caf\xE9"), "[s]\na=café\n");
}

TEST(IniTextWith, SavesAValuesOwnQuotesFromBeingTakenOff)
{
    const std::string sText = sIniTextWith("", "s", "a", "\"C:\\My pics\\a.exe\"");

    EXPECT_EQ(sText, "[s]\na=\"\"C:\\My pics\\a.exe\"\"\n");
    EXPECT_EQ(sIniValue(sText, "s", "a"), "\"C:\\My pics\\a.exe\"");
}

TEST(IniTextOf, DropsAMarkAndReadsWhatIsNotUtf8AsWindows1252)
{
    EXPECT_EQ(sIniTextOf("\xEF\xBB\xBF[s]"), "[s]");
    EXPECT_EQ(sIniTextOf("a=ü"), "a=ü");
    EXPECT_EQ(sIniTextOf("a=\xFC"), "a=ü");
}

RC_GTEST_PROP(IniText, TakesAnyBytesAndGivesBackWhatWasWritten,
              (const std::string& sBytes, std::string sValue))
{
    std::erase_if(sValue, [](char c) { return c <= ' '; });
    const std::string sText = sIniTextOf(sBytes);

    const std::string sNew = sIniTextWith(sText, "some section", "some key", sValue);

    RC_ASSERT(bIsUtf8(sNew));
    RC_ASSERT(sIniValue(sNew, "Some Section", "SOME KEY") == sValue);
}

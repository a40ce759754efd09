// Decoding and parsing of language files.
#include "src/translator/modLanguageFile.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <vector>

#include "src/base/text_encoding.h"

using namespace std::string_literals;

static std::unordered_map<std::string, std::string> TableOf(const std::string& sText)
{
    std::unordered_map<std::string, std::string> dict;
    ReadLanguageTable(sText, dict);
    return dict;
}

using Table = std::unordered_map<std::string, std::string>;

TEST(ReadLanguageTable, ReadsOnePairPerLine)
{
    EXPECT_EQ(TableOf("\"Done\",\"Erledigt\"\r\n\"Add\",\"Neu\"\n"),
              (Table{{"Done", "Erledigt"}, {"Add", "Neu"}}));
}

TEST(ReadLanguageTable, MapsUntranslatedTextsToThemselves)
{
    EXPECT_EQ(TableOf("\"Done\"\r\n"), (Table{{"Done", "Done"}}));
}

TEST(ReadLanguageTable, SkipsEmptyLinesBlankLinesAndComments)
{
    EXPECT_EQ(TableOf("\"! made by hand\n\n   \n\r\n\"Done\"\n"), (Table{{"Done", "Done"}}));
}

TEST(ReadLanguageTable, StopsAtTheTerminatorLine)
{
    EXPECT_EQ(TableOf("\"Done\"\n\"**** to do\n\"Add\"\n"), (Table{{"Done", "Done"}}));
    EXPECT_EQ(TableOf("\"***\"\n\"Add\"\n"), (Table{{"***", "***"}, {"Add", "Add"}}));
}

TEST(ReadLanguageTable, KeepsTheFirstTranslationOfAText)
{
    EXPECT_EQ(TableOf("\"Done\",\"eins\"\n\"Done\",\"zwei\"\n"), (Table{{"Done", "eins"}}));
}

TEST(ReadLanguageTable, DropsTheLastCharacterBeforeASecondSeparator)
{
    EXPECT_EQ(TableOf("\"Done\",\"Erledigt\",\"mehr\"\n"), (Table{{"Done", "Erledig"}}));
}

TEST(ReadLanguageTable, DistinguishesTrailingSpaces)
{
    EXPECT_EQ(TableOf("\"Done \",\"a\"\n\"Done\",\"b\"\n"), (Table{{"Done ", "a"}, {"Done", "b"}}));
}

TEST(ReadLanguageTable, StripsWholeCharactersAtBothEnds)
{
    EXPECT_EQ(TableOf("«Done»\n"), (Table{{"Done", "Done"}}));
}

TEST(ReadLanguageTable, ToleratesVeryShortLines)
{
    EXPECT_EQ(TableOf("\"\nx\n\"\"\n"), (Table{{"", ""}}));
    EXPECT_EQ(TableOf("\",\""), (Table{{"", ""}}));
    EXPECT_EQ(TableOf("\"a\",\""), (Table{{"a", ""}}));
}

TEST(ReadLanguageTable, KeepsCarriageReturnsInsideATranslation)
{
    EXPECT_EQ(TableOf("\"one\rtwo\",\"eins\rzwei\"\r\n"), (Table{{"one\rtwo", "eins\rzwei"}}));
}

TEST(FormatOfLanguageFile, IsEightBitIfItStartsWithAQuote)
{
    EXPECT_EQ(iFormatOfLanguageFile("\"Done\"\n"), LanguageFileFormat::EightBit);
    EXPECT_EQ(iFormatOfLanguageFile("\"! a comment will do\n"), LanguageFileFormat::EightBit);
    EXPECT_EQ(iFormatOfLanguageFile("\xEF\xBB\xBF\"Done\"\n"), LanguageFileFormat::EightBit);
}

TEST(FormatOfLanguageFile, IsUtf16InBothByteOrdersWithOrWithoutAMark)
{
    EXPECT_EQ(iFormatOfLanguageFile("\xFF\xFE\"\0D\0"s), LanguageFileFormat::Utf16);
    EXPECT_EQ(iFormatOfLanguageFile("\"\0D\0"s), LanguageFileFormat::Utf16);
    EXPECT_EQ(iFormatOfLanguageFile("\xFE\xFF\0\"\0D"s), LanguageFileFormat::Utf16);
    EXPECT_EQ(iFormatOfLanguageFile("\0\"\0D"s), LanguageFileFormat::Utf16);
}

TEST(FormatOfLanguageFile, IsUnreadableUnlessItStartsWithAQuote)
{
    EXPECT_EQ(iFormatOfLanguageFile(""), LanguageFileFormat::Unreadable);
    EXPECT_EQ(iFormatOfLanguageFile("Done"), LanguageFileFormat::Unreadable);
    EXPECT_EQ(iFormatOfLanguageFile("\n\"Done\"\n"), LanguageFileFormat::Unreadable);
    EXPECT_EQ(iFormatOfLanguageFile(" \"Done\"\n"), LanguageFileFormat::Unreadable);
    EXPECT_EQ(iFormatOfLanguageFile("\xFF\xFE"s), LanguageFileFormat::Unreadable);
    EXPECT_EQ(iFormatOfLanguageFile("\xFF\xFE"
                                    "D\0\"\0"s),
              LanguageFileFormat::Unreadable);
    EXPECT_EQ(iFormatOfLanguageFile("\x7F"
                                    "ELF\0\0\xFF"s),
              LanguageFileFormat::Unreadable);
}

TEST(EncodingOfLanguageFile, IsWindows1252OnlyForMalformedUtf8)
{
    EXPECT_EQ(eEncodingOfLanguageFile("\"ü\"", LanguageFileFormat::EightBit), LanguageFileEncoding::Utf8);
    EXPECT_EQ(eEncodingOfLanguageFile("\"ü\xFC\"", LanguageFileFormat::EightBit),
              LanguageFileEncoding::Windows1252);
}

TEST(DecodeLanguageFile, GivesTheSameTextForEveryEncoding)
{
    const std::string sText = "\"Done\",\"Fertig – ü\"\n";
    const std::string sMarkUtf8 = "\xEF\xBB\xBF", sMarkLittle = "\xFF\xFE", sMarkBig = "\xFE\xFF";
    const std::vector<std::string> aFiles = {sText,
                                             sMarkUtf8 + sText,
                                             sWindows1252FromUtf8(sText),
                                             sUtf16FromUtf8(sText, false),
                                             sMarkLittle + sUtf16FromUtf8(sText, false),
                                             sUtf16FromUtf8(sText, true),
                                             sMarkBig + sUtf16FromUtf8(sText, true)};
    for (const std::string& sBytes : aFiles) {
        const LanguageFileFormat iFormat = iFormatOfLanguageFile(sBytes);
        EXPECT_EQ(sDecodeLanguageFile(sBytes, eEncodingOfLanguageFile(sBytes, iFormat)), sText);
    }
}

TEST(LineEndOf, DependsOnTheFirstLine)
{
    EXPECT_EQ(sLineEndOf("a\r\nb\n"), "\r\n");
    EXPECT_EQ(sLineEndOf("a\nb\r\n"), "\n");
    EXPECT_EQ(sLineEndOf("a"), "\n");
    EXPECT_EQ(sLineEndOf("\n"), "\n");
    EXPECT_EQ(sLineEndOf(""), "\n");
}

RC_GTEST_PROP(ReadLanguageTable, SurvivesArbitraryBytes, (const std::string& sBytes))
{
    for (const auto iFormat : {LanguageFileFormat::EightBit, LanguageFileFormat::Utf16})
        TableOf(sDecodeLanguageFile(sBytes, eEncodingOfLanguageFile(sBytes, iFormat)));
}

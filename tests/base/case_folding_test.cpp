// Case folding of letters of many scripts.
#include "src/base/case_folding.h"

#include <gtest/gtest.h>

#include "src/base/text.h"

TEST(FoldCase, MakesBothCasesOfEveryScriptEqual)
{
    const std::pair<const char*, const char*> aPairs[] = {
        {"AZ", "az"}, {"ÄÖÜÉ", "äöüé"}, {"ŁŽĹĀ", "łžĺā"}, {"ƏƠƯ", "əơư"}, {"ẠỆỮ", "ạệữ"},    {"ΑΩΣΆ", "αωσά"},
        {"ᾈᾼ", "ᾀᾳ"}, {"ЖЯЁЇ", "жяёї"}, {"ԱՖ", "աֆ"},     {"ႠჅ", "ⴀⴥ"},   {"ᲐᲺ", "აჺ"},  {"Ꭰ", "ꭰ"},
        {"Ⲁ", "ⲁ"},   {"Ⰰ", "ⰰ"},       {"Ⓐ", "ⓐ"},       {"Ａ", "ａ"},   {"𐐀", "𐐨"},        {"𞤀", "𞤢"},
        {"K", "k"},   {"Å", "å"},       {"ſ", "s"},       {"ς", "σ"},     {"ẞ", "ß"},        {"µ", "μ"},
        {"Ǆ", "ǆ"},   {"Ȿ", "ȿ"},       {"Ꞵ", "ꞵ"},   {"Ⱥ", "ⱥ"},     {"\xCD\x85", "ι"},
    };
    for (const auto& [sUpper, sLower] : aPairs) {
        EXPECT_EQ(sFoldCase(sUpper), sFoldCase(sLower)) << sUpper;
        EXPECT_TRUE(bEqualIgnoringCase(sUpper, sLower)) << sUpper;
    }
}

TEST(FoldCase, KeepsDifferentLettersApart)
{
    EXPECT_FALSE(bEqualIgnoringCase("ss", "ß"));
    EXPECT_FALSE(bEqualIgnoringCase("İ", "i"));
    EXPECT_FALSE(bEqualIgnoringCase("ı", "i"));
    EXPECT_FALSE(bEqualIgnoringCase("a", "ä"));
    EXPECT_EQ(sFoldCase("日本 123 ×÷"), "日本 123 ×÷");
}

TEST(FoldCase, ChangesNothingTheSecondTime)
{
    int lFolded = 0;
    for (char32_t nCode = 0; nCode < 0x110000; ++nCode) {
        const char32_t nOnce = nFoldCase(nCode);
        lFolded += nOnce != nCode;
        ASSERT_EQ(nFoldCase(nOnce), nOnce) << std::hex << static_cast<unsigned>(nCode);
    }
    EXPECT_EQ(lFolded, 1454);
}

TEST(FoldCase, LeavesBytesThatAreNotUtf8)
{
    for (const std::string sText : {"\xFF", "a\xC3", "\xC3(", "\x80\x80", "\xED\xA0", "\xF4\x90"}) {
        EXPECT_EQ(sFoldCase(sText), sText);
        EXPECT_EQ(sFoldCase(sText + "Ä"), sText + "ä");
    }
}

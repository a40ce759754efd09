// Numbers, names, texts and parameters of the special processes.
#include "src/catalogue/modSpecialProcessCatalogue.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>

TEST(SpecialProcessCatalogue, ListsTheLaunchFirstThenOthersByNumber)
{
    const auto aRows = SpecialProcessCatalogue();

    ASSERT_EQ(aRows.size(), 58u);
    EXPECT_EQ(aRows[0].lSpecialProcess, 100);
    for (std::size_t n = 2; n < aRows.size(); ++n)
        EXPECT_LT(aRows[n - 1].lSpecialProcess, aRows[n].lSpecialProcess);
}

TEST(SpecialProcessCatalogue, LeavesOnlyTheReservedNumbersUnused)
{
    std::set<std::int32_t> aMissing;
    for (std::int32_t l = -1; l <= 101; ++l)
        if (!pSpecialProcess(l))
            aMissing.insert(l);

    std::set<std::int32_t> aExpected = {-1, 0, 1, 30, 57, 101};
    for (std::int32_t l = 61; l <= 99; ++l)
        aExpected.insert(l);
    EXPECT_EQ(aMissing, aExpected);
}

TEST(SpecialProcessCatalogue, FindsAProcessByNumber)
{
    EXPECT_STREQ(pSpecialProcess(56)->sConstant, "SP_FILTERRESERVED56");
    EXPECT_STREQ(pSpecialProcess(SP_LAUNCH)->sConstant, "SP_LAUNCH");
    EXPECT_EQ(sDetailsKey(*pSpecialProcess(2)), "sSP_Details_SP_TRANSFORM_RESIZE");
}

TEST(SpecialProcessCatalogue, HasDefaultDetailsForThirtyEightProcesses)
{
    std::set<std::string> aKeys;
    for (const SpecialProcessRow& objRow : SpecialProcessCatalogue())
        if (!sFirstStartDetails(objRow).empty())
            aKeys.insert(sDetailsKey(objRow));

    EXPECT_EQ(aKeys.size(), 38u);
}

TEST(SpecialProcessCatalogue, HasTheExpectedDefaultDetails)
{
    const std::map<std::int32_t, std::string> aExpected = {{2, "100^100^0^0^FALSE"},
                                                           {3, "90"},
                                                           {5, "0"},
                                                           {6, "0^0^0"},
                                                           {7, "FALSE^45"},
                                                           {8, "FALSE^45"},
                                                           {9, "50"},
                                                           {10, "2"},
                                                           {13, "0^0^0"},
                                                           {14, "128"},
                                                           {15, "40"},
                                                           {16, "255^255^255"},
                                                           {17, "0.75"},
                                                           {19, "0.5"},
                                                           {20, "0.5"},
                                                           {21, "128"},
                                                           {22, "0.0"},
                                                           {25, "0.2"},
                                                           {26, "5"},
                                                           {27, "128"},
                                                           {28, "0"},
                                                           {29, "100"},
                                                           {31, "FALSE^35"},
                                                           {32, "10^10"},
                                                           {33, "FALSE^100^100"},
                                                           {34, "0^10^1"},
                                                           {35, "FALSE^40^40"},
                                                           {36, "1"},
                                                           {37, "1^1"},
                                                           {38, "FALSE^6"},
                                                           {39, "0^10"},
                                                           {40, "50"},
                                                           {41, "0^4^10"},
                                                           {42, "10^5^0"},
                                                           {43, "FALSE^100^100"},
                                                           {44, "50"},
                                                           {58, "2"},
                                                           {59, "2"}};

    for (const SpecialProcessRow& objRow : SpecialProcessCatalogue()) {
        const auto itFound = aExpected.find(objRow.lSpecialProcess);
        EXPECT_EQ(sFirstStartDetails(objRow), itFound == aExpected.end() ? "" : itFound->second)
            << objRow.sConstant;
    }
}

TEST(SpecialProcessCatalogue, KeepsMisspellingsThatTranslationsUseAsKeys)
{
    EXPECT_STREQ(pSpecialProcess(36)->sLabel, "Effect: Gaussian Blurr");
    EXPECT_STREQ(pSpecialProcess(48)->sLabel, "Filter: Laplas");
    EXPECT_STREQ(pSpecialProcess(46)->sLabel, "Filter: Low Pass");
    EXPECT_STREQ(pSpecialProcess(45)->sLabel, "Filter: High pass");
    EXPECT_STREQ(pSpecialProcess(51)->sDescription, "Apply Prewitt filter");
    EXPECT_STREQ(pSpecialProcess(41)->sDescription, "Embossing effect.");
    EXPECT_STREQ(pSpecialProcess(38)->aParameters[0].sLabel,
                 "No color interpratation (Unchecked is more realistic)");
    EXPECT_STREQ(pSpecialProcess(9)->aParameters[0].sLabel, "(degrees) Pitch angle [-360.0 to +360.0]");
    EXPECT_STREQ(pSpecialProcess(48)->aParameters[0].sLabel, "Filter type..");
}

TEST(SpecialProcessCatalogue, OrdersHighPassAndLowPassKindsDifferently)
{
    EXPECT_STREQ(pSpecialProcess(45)->aChoices[0], "Medium");
    EXPECT_STREQ(pSpecialProcess(46)->aChoices[0], "Strong");
}

TEST(SpecialProcessCatalogue, GivesEachParameterAnInputOnAnExistingTab)
{
    for (const SpecialProcessRow& objRow : SpecialProcessCatalogue()) {
        if (objRow.lSpecialProcess == 56)
            continue;  // its parameter has no input
        std::set<InputSlot> aSlots;
        std::size_t nTabs = 0;
        for (const SpecialProcessParameter& objParameter : objRow.aParameters) {
            EXPECT_TRUE(aSlots.insert(objParameter.eSlot).second) << objRow.sConstant;
            EXPECT_NE(objParameter.eSlot, InputSlot::None) << objRow.sConstant;
            EXPECT_EQ(objParameter.sLabel == nullptr, objParameter.eType == FieldType::Colour)
                << objRow.sConstant;
            EXPECT_GE(objParameter.lTab, 1) << objRow.sConstant;
            nTabs = std::max(nTabs, static_cast<std::size_t>(objParameter.lTab));
        }
        EXPECT_EQ(objRow.aTabs.size(), nTabs) << objRow.sConstant;
        EXPECT_EQ(objRow.aChoices.empty(), !aSlots.contains(InputSlot::List)) << objRow.sConstant;
    }
}

TEST(SpecialProcessCatalogue, ShowsAnInvertedChoiceForThreeProcesses)
{
    std::set<std::int32_t> aInverted;
    for (const SpecialProcessRow& objRow : SpecialProcessCatalogue())
        if (std::any_of(objRow.aParameters.begin(), objRow.aParameters.end(),
                        [](const SpecialProcessParameter& obj) { return obj.bShownInverted; }))
            aInverted.insert(objRow.lSpecialProcess);

    EXPECT_EQ(aInverted, (std::set<std::int32_t>{31, 38, 60}));
}

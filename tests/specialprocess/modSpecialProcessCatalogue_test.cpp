// The numbers and names of the special processes.
#include "src/specialprocess/modSpecialProcessCatalogue.h"

#include <set>

TEST(SpecialProcessCatalogue, BeginsWithTheLaunchAndGoesOnByNumber)
{
    const auto aRows = SpecialProcessCatalogue();

    ASSERT_EQ(aRows.size(), 58u);
    EXPECT_EQ(aRows[0].lSpecialProcess, 100);
    for (std::size_t n = 2; n < aRows.size(); ++n)
        EXPECT_LT(aRows[n - 1].lSpecialProcess, aRows[n].lSpecialProcess);
}

TEST(SpecialProcessCatalogue, HasNoGapButThoseThatAreWanted)
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

TEST(SpecialProcessCatalogue, KnowsAProcessByItsNumber)
{
    EXPECT_STREQ(pSpecialProcess(56)->sConstant, "SP_FILTERRESERVED56");
    EXPECT_STREQ(pSpecialProcess(SP_LAUNCH)->sConstant, "SP_LAUNCH");
    EXPECT_STREQ(pSpecialProcess(SP_TWIRL)->sFirstStartDetails, "50");
    EXPECT_EQ(sDetailsKey(*pSpecialProcess(2)), "sSP_Details_SP_TRANSFORM_RESIZE");
}

TEST(SpecialProcessCatalogue, KeepsDetailsOfThirtyEightProcesses)
{
    std::set<std::string> aKeys;
    for (const SpecialProcessRow& objRow : SpecialProcessCatalogue())
        if (objRow.sFirstStartDetails)
            aKeys.insert(sDetailsKey(objRow));

    EXPECT_EQ(aKeys.size(), 38u);
}

// Formatting and parsing of special process details.
#include "src/catalogue/modSpecialProcessDetails.h"

#include <gtest/gtest.h>

#include "src/base/text.h"

static const std::string kPrefix = "1^0^FALSE^75^title^^^^^^^";

static const SpecialProcessRow& objRowOf(std::int32_t lSpecialProcess)
{
    return *pSpecialProcess(lSpecialProcess);
}

static std::string sWritten(std::int32_t lSpecialProcess, const DetailsValues& aValues)
{
    return WriteDetails(objRowOf(lSpecialProcess), "p^", aValues);
}

/// Parses sOwn after a complete prefix, starting from default values.
static DetailsValues aRead(std::int32_t lSpecialProcess, const std::string& sOwn, char cDecimalSign = '.')
{
    DetailsValues aValues = aFreshValues(objRowOf(lSpecialProcess));
    std::string sPrefix;
    ReadDetails(objRowOf(lSpecialProcess), kPrefix + sOwn, sPrefix, aValues, cDecimalSign);
    return aValues;
}

TEST(WriteDetails, AppendsEachValueAndACaretToThePrefix)
{
    EXPECT_EQ(sWritten(6, {1, -2, 255}), "p^1^-2^255^");
    EXPECT_EQ(sWritten(13, {0.5, -1.0, 33.25}), "p^0.5^-1^33.25^");
    EXPECT_EQ(sWritten(24, {}), "p^");
}

TEST(WriteDetails, UsesCapitalBooleansOnlyForResize)
{
    EXPECT_EQ(sWritten(2, {10, 20, 1, 0, true}), "p^10^20^1^0^TRUE^");
    EXPECT_EQ(sWritten(2, {10, 20, 1, 0, false}), "p^10^20^1^0^FALSE^");
    EXPECT_EQ(sWritten(7, {true, 45.0}), "p^True^45^");
    EXPECT_EQ(sWritten(31, {false, 35}), "p^False^35^");
    EXPECT_EQ(sWritten(43, {true, 1, 2}), "p^True^1^2^");
    EXPECT_EQ(sWritten(60, {true, false}), "p^True^False^");
}

TEST(WriteDetails, UsesTheDecimalSignOfTheLocale)
{
    EXPECT_EQ(WriteDetails(objRowOf(17), "", {0.75}, ','), "0,75^");
}

TEST(WriteDetails, RoundsZoomBlurAlthoughItReadsAsDouble)
{
    EXPECT_EQ(sWritten(44, {33.7}), "p^34^");
    EXPECT_EQ(aRead(44, "34^"), (DetailsValues{34.0}));
    EXPECT_EQ(aRead(44, "33.7^"), (DetailsValues{33.7}));
}

TEST(ReadDetails, RoundTripsTheDetailsOfEveryProcess)
{
    for (const SpecialProcessRow& objRow : SpecialProcessCatalogue()) {
        DetailsValues aValues = aFreshValues(objRow);
        for (DetailsValue& objValue : aValues) {
            if (std::holds_alternative<std::int32_t>(objValue))
                objValue = std::int32_t{-7};
            else if (std::holds_alternative<double>(objValue))
                objValue = objRow.lSpecialProcess == 44 ? 2.0 : 2.5;  // zoom blur is rounded
            else
                objValue = true;
        }
        DetailsValues aBack = aFreshValues(objRow);
        std::string sPrefix;
        ReadDetails(objRow, WriteDetails(objRow, kPrefix, aValues), sPrefix, aBack);
        EXPECT_EQ(aBack, aValues) << objRow.sConstant;
        EXPECT_EQ(sPrefix, kPrefix) << objRow.sConstant;
    }
}

TEST(ReadDetails, AssignsFieldsInTheOrderOfTheText)
{
    EXPECT_EQ(aRead(32, "1.5^20^"), (DetailsValues{1.5, 20}));
    EXPECT_EQ(aRead(34, "1.5^2.5^3^"), (DetailsValues{1.5, 2.5, 3}));
    EXPECT_EQ(aRead(37, "1.5^20^"), (DetailsValues{1.5, 20}));
    EXPECT_EQ(aRead(31, "True^20^"), (DetailsValues{true, 20}));
    EXPECT_EQ(aRead(38, "True^20^"), (DetailsValues{true, 20}));
    EXPECT_EQ(aRead(33, "True^20^30^"), (DetailsValues{true, 20, 30}));
}

TEST(ReadDetails, ChangesNothingForATextWithoutFields)
{
    for (const std::string sDetails : {"", "5", "no fields"}) {
        DetailsValues aValues = {true, 7.0};
        std::string sPrefix = "mine";
        ReadDetails(objRowOf(7), sDetails, sPrefix, aValues);
        EXPECT_EQ(sPrefix, "mine");
        EXPECT_EQ(aValues, (DetailsValues{true, 7.0}));
    }
}

TEST(ReadDetails, KeepsValuesIfTheTextIsOnlyAPrefix)
{
    DetailsValues aValues = {true, 7.0};
    std::string sPrefix = "mine";
    ReadDetails(objRowOf(7), kPrefix, sPrefix, aValues);
    EXPECT_EQ(sPrefix, kPrefix);
    EXPECT_EQ(aValues, (DetailsValues{true, 7.0}));
}

TEST(ReadDetails, AcceptsAnIncompletePrefix)
{
    DetailsValues aValues = {3};
    std::string sPrefix = "mine";
    ReadDetails(objRowOf(15), "a^b", sPrefix, aValues);
    EXPECT_EQ(sPrefix, "a^b^");
    EXPECT_EQ(aValues, (DetailsValues{3}));
}

TEST(ReadDetails, SkipsMalformedFieldsAndKeepsTheirValues)
{
    DetailsValues aValues = {1, 2, 3};
    std::string sPrefix;
    ReadDetails(objRowOf(6), kPrefix + "wide^20^99999999999", sPrefix, aValues);
    EXPECT_EQ(aValues, (DetailsValues{1, 20, 3}));
}

TEST(ReadDetails, KeepsTheValuesOfMissingFields)
{
    DetailsValues aValues = {1.0, 2};
    std::string sPrefix;
    ReadDetails(objRowOf(3), kPrefix + "90", sPrefix, aValues);
    EXPECT_EQ(aValues, (DetailsValues{90.0, 2}));
}

TEST(ReadDetails, ReadsMissingResizeBooleanAsFalse)
{
    for (const std::string sOwn : {"1^2^0^0", "1^2^0^0^", "1^2^0^0^^"}) {
        DetailsValues aValues = {0, 0, 0, 0, true};
        std::string sPrefix;
        ReadDetails(objRowOf(2), kPrefix + sOwn, sPrefix, aValues);
        EXPECT_EQ(aValues, (DetailsValues{1, 2, 0, 0, false})) << sOwn;
    }
    DetailsValues aValues = {0, 0, 0, 0, true};
    std::string sPrefix;
    ReadDetails(objRowOf(2), kPrefix + "1^2^0^0^perhaps", sPrefix, aValues);
    EXPECT_EQ(aValues.back(), DetailsValue(true));
}

TEST(ReadDetails, AcceptsBooleansInAnyCaseAndAsNumbers)
{
    for (const std::string sTrue : {"True", "TRUE", "true", "1", "-1", "0.5"})
        EXPECT_EQ(aRead(60, sTrue)[0], DetailsValue(true)) << sTrue;
    for (const std::string sFalse : {"False", "FALSE", "0", "yes", ""})
        EXPECT_EQ(aRead(60, sFalse)[0], DetailsValue(false)) << sFalse;
}

TEST(ReadDetails, RoundsLongsHalfToEven)
{
    EXPECT_EQ(aRead(15, "2.5^"), (DetailsValues{2}));
    EXPECT_EQ(aRead(15, "3.5^"), (DetailsValues{4}));
    EXPECT_EQ(aRead(15, "-2.6^"), (DetailsValues{-3}));
}

TEST(ReadDetails, AcceptsTheDecimalCommaOfTheLocale)
{
    EXPECT_EQ(aRead(17, "0,75^", ','), (DetailsValues{0.75}));
    EXPECT_EQ(aRead(17, "0.75^", ','), (DetailsValues{0.75}));
}

TEST(ReadDetails, AcceptsDefaultDetailsWithoutATrailingCaret)
{
    EXPECT_EQ(aRead(3, sFirstStartDetails(objRowOf(3))), (DetailsValues{90.0, 0}));
    EXPECT_EQ(aRead(2, sFirstStartDetails(objRowOf(2))), (DetailsValues{100, 100, 0, 0, false}));
}

TEST(ReadDetails, ShiftsAllFieldsIfThePrefixLacksOne)
{
    DetailsValues aValues = {0, 0, 0};
    std::string sPrefix;
    ReadDetails(objRowOf(6), "1^0^FALSE^75^^^^^^^11^12^13^", sPrefix, aValues);
    EXPECT_EQ(aValues, (DetailsValues{12, 13, 0}));
    EXPECT_TRUE(sPrefix.ends_with("11^"));
}

TEST(LaunchDetails, AreThreeNumbersWithoutPrefixOrTrailingCaret)
{
    EXPECT_EQ(WriteLaunchDetails({64, 1, -1}), "64^1^-1");
    const LaunchDetails objDetails = ReadLaunchDetails("64^1^-1");
    EXPECT_EQ(objDetails.lPriority, 64);
    EXPECT_EQ(objDetails.lWindowState, 1);
    EXPECT_EQ(objDetails.lWaitSeconds, -1);
}

TEST(LaunchDetails, DefaultToZeroForMalformedFields)
{
    EXPECT_EQ(ReadLaunchDetails("x^6^y").lPriority, 0);
    EXPECT_EQ(ReadLaunchDetails("x^6^y").lWindowState, 6);
    EXPECT_EQ(ReadLaunchDetails("x^6^y").lWaitSeconds, 0);
    EXPECT_EQ(ReadLaunchDetails("64^1").lWaitSeconds, 0);
    EXPECT_EQ(ReadLaunchDetails("64^1^5^").lWaitSeconds, 5);
}

TEST(LaunchDetails, DefaultToZeroForATextWithoutFields)
{
    EXPECT_EQ(ReadLaunchDetails("64").lPriority, 0);
    EXPECT_EQ(ReadLaunchDetails("").lWaitSeconds, 0);
}

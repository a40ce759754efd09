// Parsing and formatting of numbers and Booleans.
#include "src/base/number_text.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <limits>
#include <random>

#include "src/base/raised_error.h"

TEST(IsNumeric, AcceptsDecimalNumbersWithSurroundingSpaces)
{
    for (const char* sText : {"0", "-1", "+7", " 12 ", "1.5", ".5", "5.", "1e3", "-2.5E-2", "1,000", "007"})
        EXPECT_TRUE(bIsNumeric(sText)) << sText;
}

TEST(IsNumeric, RejectsAnythingElse)
{
    for (const char* sText :
         {"",      " ",    "-",   "+",   ".",     ",",      "a",       "1a",        "5-",
          "1.2.3", "--1",  "+-1", "-+1", "++1",   "0x10",   "1e",      "e5",        "inf",
          "nan",   "-inf", "1 2", "1\t", "1e400", "nan(1)", "-NaN(0)", "infinity1", "1e5x"})
        EXPECT_FALSE(bIsNumeric(sText)) << sText;
}

TEST(IsNumeric, UsesTheDecimalSignOfTheLocale)
{
    EXPECT_TRUE(bIsNumeric("1,5", ','));
    EXPECT_TRUE(bIsNumeric("1.234,5", ','));
    EXPECT_TRUE(bIsNumeric("1.5", ','));
    EXPECT_FALSE(bIsNumeric("1,2,3", ','));
}

TEST(ToDouble, AcceptsLocaleDecimalSignAndASinglePoint)
{
    EXPECT_EQ(dToDouble("1.5"), 1.5);
    EXPECT_EQ(dToDouble("1,500"), 1500);
    EXPECT_EQ(dToDouble("1,5", ','), 1.5);
    EXPECT_EQ(dToDouble("1.5", ','), 1.5);
    EXPECT_EQ(dToDouble("1.500,25", ','), 1500.25);
    EXPECT_EQ(dToDouble("1.000.000", ','), 1000000);
    EXPECT_EQ(dToDouble("1e-400"), 0);
}

TEST(ToDouble, RaisesTypeMismatchOrOverflow)
{
    try {
        dToDouble("5-");
        FAIL();
    } catch (const clsRaisedError& objError) {
        EXPECT_EQ(objError.lNumber(), kErrTypeMismatch);
        EXPECT_EQ(objError.sDescription(), "Type mismatch");
    }
    try {
        dToDouble("1e400");
        FAIL();
    } catch (const clsRaisedError& objError) {
        EXPECT_EQ(objError.lNumber(), kErrOverflow);
        EXPECT_EQ(objError.sDescription(), "Overflow");
    }
}

TEST(ToLong, RoundsHalvesToEven)
{
    EXPECT_EQ(lToLong("0.5"), 0);
    EXPECT_EQ(lToLong("1.5"), 2);
    EXPECT_EQ(lToLong("2.5"), 2);
    EXPECT_EQ(lToLong("-0.5"), 0);
    EXPECT_EQ(lToLong("-1.5"), -2);
    EXPECT_EQ(lToLong("2.51"), 3);
}

TEST(ToLong, RaisesOverflowBeyondThirtyTwoBits)
{
    EXPECT_EQ(lToLong("2147483647"), INT_MAX);
    EXPECT_EQ(lToLong("-2147483648"), INT_MIN);
    EXPECT_EQ(lToLong("2147483647.4"), INT_MAX);
    EXPECT_THROW(lToLong("2147483648"), clsRaisedError);
    EXPECT_THROW(lToLong("2147483647.5"), clsRaisedError);
    EXPECT_THROW(lToLong("-2147483649"), clsRaisedError);
    EXPECT_THROW(lToLong("1e300"), clsRaisedError);
    EXPECT_THROW(lToLong(""), clsRaisedError);
}

TEST(ToLong, RoundTripsAnyNumber)
{
    std::mt19937 objRandom(7);
    for (int i = 0; i < 2000; ++i) {
        const auto lNumber = static_cast<std::int32_t>(objRandom());
        EXPECT_EQ(lToLong(std::to_string(lNumber)), lNumber);
        EXPECT_EQ(lToLong(std::to_string(lNumber), ','), lNumber);
    }
}

TEST(ToBoolean, AcceptsTrueFalseAndNumbers)
{
    for (const char* sText : {"TRUE", "true", " True ", "1", "-1", "0.5"})
        EXPECT_TRUE(bToBoolean(sText)) << sText;
    for (const char* sText : {"FALSE", "false", "0", "0.0", "-0"})
        EXPECT_FALSE(bToBoolean(sText)) << sText;
    for (const char* sText : {"", "yes", "T", "true1"})
        EXPECT_THROW(bToBoolean(sText), clsRaisedError) << sText;
}

TEST(LeadingNumber, StopsAtTheFirstNonDigit)
{
    EXPECT_EQ(lLeadingNumber("12abc"), 12);
    EXPECT_EQ(lLeadingNumber("  -12.9"), -12);
    EXPECT_EQ(lLeadingNumber("abc"), 0);
    EXPECT_EQ(lLeadingNumber(""), 0);
    EXPECT_EQ(lLeadingNumber("-"), 0);
}

TEST(LeadingNumber, ClampsToThirtyTwoBits)
{
    EXPECT_EQ(lLeadingNumber("2147483648"), INT_MAX);
    EXPECT_EQ(lLeadingNumber("-2147483648"), INT_MIN);
    EXPECT_EQ(lLeadingNumber("-99999999999999999999999999"), INT_MIN);
    EXPECT_EQ(lLeadingNumber("99999999999999999999999999"), INT_MAX);
}

TEST(LeadingDouble, StopsAtTheFirstForeignLetter)
{
    EXPECT_EQ(dLeadingNumber("12.5abc"), 12.5);
    EXPECT_EQ(dLeadingNumber("  -12.25 "), -12.25);
    EXPECT_EQ(dLeadingNumber("+3"), 3);
    EXPECT_EQ(dLeadingNumber(".5"), 0.5);
    EXPECT_EQ(dLeadingNumber("5."), 5);
    EXPECT_EQ(dLeadingNumber("1e3x"), 1000);
    EXPECT_EQ(dLeadingNumber("31e"), 31);
    EXPECT_EQ(dLeadingNumber("0,5"), 0);
    EXPECT_EQ(dLeadingNumber("1,500"), 1);
}

TEST(LeadingDouble, IsZeroForATextWithoutANumber)
{
    for (const char* sText : {"", " ", "-", "+", ".", "abc", "inf", "-inf", "nan", "--1", "+-1", "&H1F"})
        EXPECT_EQ(dLeadingNumber(sText), 0) << sText;
}

TEST(LeadingDouble, ClampsToTheRangeOfADouble)
{
    const double dMost = std::numeric_limits<double>::max();
    EXPECT_EQ(dLeadingNumber("1e999"), dMost);
    EXPECT_EQ(dLeadingNumber("-1e999 days"), -dMost);
    EXPECT_EQ(dLeadingNumber(std::string(400, '9')), dMost);
    EXPECT_EQ(dLeadingNumber("1e-999"), 0);
    EXPECT_EQ(dLeadingNumber("-1E-999"), 0);
    EXPECT_EQ(dLeadingNumber("0." + std::string(400, '0') + "1"), 0);
}

TEST(FormatOneDecimal, AlwaysWritesOneDecimalAndALeadingDigit)
{
    EXPECT_EQ(sFormatOneDecimal(0), "0.0");
    EXPECT_EQ(sFormatOneDecimal(0.04), "0.0");
    EXPECT_EQ(sFormatOneDecimal(0.25), "0.3");
    EXPECT_EQ(sFormatOneDecimal(-0.25), "-0.3");
    EXPECT_EQ(sFormatOneDecimal(-0.04), "0.0");
    EXPECT_EQ(sFormatOneDecimal(33.333333), "33.3");
    EXPECT_EQ(sFormatOneDecimal(12345.95), "12346.0");
    EXPECT_EQ(sFormatOneDecimal(12.5, ','), "12,5");
}

TEST(FormatOneDecimal, HandlesExtremeNumbers)
{
    EXPECT_TRUE(sFormatOneDecimal(1e307).ends_with(".0"));
    EXPECT_GT(sFormatOneDecimal(1e307).size(), 300u);
    for (const double dOdd : {1e308, -1e308, HUGE_VAL, -HUGE_VAL, std::nan("")})
        EXPECT_FALSE(sFormatOneDecimal(dOdd).empty());
}

TEST(FormatTwoDecimals, PadsAndRoundsHalfAwayFromZero)
{
    EXPECT_EQ(sFormatTwoDecimals(0), "0.00");
    EXPECT_EQ(sFormatTwoDecimals(45), "45.00");
    EXPECT_EQ(sFormatTwoDecimals(0.5), "0.50");
    EXPECT_EQ(sFormatTwoDecimals(0.125), "0.13");
    EXPECT_EQ(sFormatTwoDecimals(1.005), "1.01");
    EXPECT_EQ(sFormatTwoDecimals(-1.005), "-1.01");
    EXPECT_EQ(sFormatTwoDecimals(-0.004), "0.00");
    EXPECT_EQ(sFormatTwoDecimals(99.995), "100.00");
    EXPECT_EQ(sFormatTwoDecimals(33.333333), "33.33");
    EXPECT_EQ(sFormatTwoDecimals(12.5, ','), "12,50");
}

TEST(FormatTwoDecimals, HandlesExtremeNumbers)
{
    EXPECT_TRUE(sFormatTwoDecimals(1e307).ends_with(".00"));
    EXPECT_EQ(sFormatTwoDecimals(5e-324), "0.00");
    for (const double dOdd : {1e308, -1e308, HUGE_VAL, -HUGE_VAL, std::nan("")})
        EXPECT_FALSE(sFormatTwoDecimals(dOdd).empty());
}

TEST(FromDouble, GivesTheShortestTextThatRoundTrips)
{
    EXPECT_EQ(sFromDouble(0.75), "0.75");
    EXPECT_EQ(sFromDouble(45), "45");
    EXPECT_EQ(sFromDouble(-0.1), "-0.1");
    EXPECT_EQ(sFromDouble(0), "0");
    EXPECT_EQ(sFromDouble(0.0001), "0.0001");
    EXPECT_EQ(sFromDouble(1.0 / 3), "0.3333333333333333");
}

TEST(FromDouble, UsesTheDecimalSignOfTheLocale)
{
    EXPECT_EQ(sFromDouble(0.75, ','), "0,75");
}

TEST(FromDouble, UsesExponentsOnlyForExtremeValues)
{
    EXPECT_EQ(dToDouble(sFromDouble(1.7e308)), 1.7e308);
    EXPECT_EQ(dToDouble(sFromDouble(-4.9e-324)), -4.9e-324);
    EXPECT_EQ(sFromDouble(1e20), "1e+20");
}

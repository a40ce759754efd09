// Parsing of page ranges.
#include "src/conversion/modPageRanges.h"

#include <gtest/gtest.h>

#include <string>

#include "src/base/raised_error.h"

namespace
{

struct Parsed {
    std::string sRange;
    std::int32_t lStatus;
    bool operator==(const Parsed&) const = default;
};

void PrintTo(const Parsed& objParsed, std::ostream* pStream)
{
    *pStream << '"' << objParsed.sRange << "\" with status " << objParsed.lStatus;
}

Parsed objParse(std::string sRange)
{
    const std::int32_t lStatus = lParseRangeString(sRange);
    return {sRange, lStatus};
}

}  // namespace

TEST(ParseRangeString, ExpandsSortsAndRemovesDuplicates)
{
    EXPECT_EQ(objParse("1-3"), (Parsed{"1,2,3", 0}));
    EXPECT_EQ(objParse("2,5-10"), (Parsed{"2,5,6,7,8,9,10", 0}));
    EXPECT_EQ(objParse("2,5-10,3"), (Parsed{"2,3,5,6,7,8,9,10", 0}));
    EXPECT_EQ(objParse("3,1,3"), (Parsed{"1,3", 0}));
}

TEST(ParseRangeString, AcceptsReversedBounds)
{
    EXPECT_EQ(objParse("7-5"), (Parsed{"5,6,7", 0}));
}

TEST(ParseRangeString, ReportsAnEmptyText)
{
    EXPECT_EQ(objParse(""), (Parsed{"", 1}));
}

TEST(ParseRangeString, DropsInvalidCharacters)
{
    EXPECT_EQ(objParse("a"), (Parsed{"", 3}));
    EXPECT_EQ(objParse("1.5"), (Parsed{"15", 2}));
    EXPECT_EQ(objParse("*"), (Parsed{"", 3}));
    EXPECT_EQ(objParse(" 1 - 3 "), (Parsed{"1,2,3", 2}));
}

TEST(ParseRangeString, ReadsAnEmptyEntryAsPageZero)
{
    EXPECT_EQ(objParse("1,,2"), (Parsed{"0,1,2", 0}));
    EXPECT_EQ(objParse(","), (Parsed{"0", 0}));
}

TEST(ParseRangeString, ReadsAnEntryWithTwoHyphensAsPageZero)
{
    EXPECT_EQ(objParse("1-2-3"), (Parsed{"0", 0}));
    EXPECT_EQ(objParse("4,1-2-3"), (Parsed{"0,4", 0}));
}

TEST(ParseRangeString, RaisesTypeMismatchForAMissingBound)
{
    for (const std::string sRange : {"5-", "-5", "-"}) {
        try {
            objParse(sRange);
            FAIL() << sRange;
        } catch (const clsRaisedError& objError) {
            EXPECT_EQ(objError.lNumber(), kErrTypeMismatch) << sRange;
        }
    }
}

TEST(ParseRangeString, ExpandsLongRangesCompletely)
{
    std::string sRange = "1-1000000";

    EXPECT_EQ(lParseRangeString(sRange), 0);

    EXPECT_TRUE(sRange.starts_with("1,2,3,4,"));
    EXPECT_TRUE(sRange.ends_with(",999999,1000000"));
}

TEST(ParseRangeString, RaisesOutOfMemoryForHugeRanges)
{
    std::string sRange = "1-2147483647";

    EXPECT_THROW(lParseRangeString(sRange), clsRaisedError);
}

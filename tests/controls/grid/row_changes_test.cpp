// The sum of many insertions and removals.
#include "src/controls/grid/row_changes.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

using Ranges = std::vector<RowRange>;

TEST(RowChanges, AreNoneWhenNothingHappened)
{
    const RowChanges objChanges(5);
    EXPECT_EQ(objChanges.aRemoved(), Ranges{});
    EXPECT_EQ(objChanges.aInserted(), Ranges{});
    EXPECT_FALSE(objChanges.bScrambled());
}

TEST(RowChanges, JoinInsertionsThatTouch)
{
    RowChanges objChanges(2);
    objChanges.Insert(1, 1);
    objChanges.Insert(2, 1);
    objChanges.Insert(1, 3);
    EXPECT_EQ(objChanges.aInserted(), (Ranges{{1, 5}}));
    EXPECT_EQ(objChanges.aRemoved(), Ranges{});
    EXPECT_TRUE(objChanges.bIsNew(1));
    EXPECT_TRUE(objChanges.bIsNew(5));
    EXPECT_FALSE(objChanges.bIsNew(0));
    EXPECT_FALSE(objChanges.bIsNew(6));
}

TEST(RowChanges, TellRemovalsInTheOldNumbering)
{
    RowChanges objChanges(10);
    objChanges.Remove(1, 2);
    objChanges.Remove(1, 1);
    objChanges.Remove(5, 2);
    EXPECT_EQ(objChanges.aRemoved(), (Ranges{{8, 9}, {1, 3}}));
    EXPECT_EQ(objChanges.aInserted(), Ranges{});
}

TEST(RowChanges, KeepApartARowThatWasReplaced)
{
    RowChanges objChanges(3);
    objChanges.Remove(1, 1);
    objChanges.Insert(1, 1);
    EXPECT_EQ(objChanges.aRemoved(), (Ranges{{1, 1}}));
    EXPECT_EQ(objChanges.aInserted(), (Ranges{{1, 1}}));
}

TEST(RowChanges, BeginWithAnEmptyTable)
{
    RowChanges objChanges(0);
    objChanges.Insert(0, 2);
    objChanges.Remove(0, 1);
    EXPECT_EQ(objChanges.aInserted(), (Ranges{{0, 0}}));
}

TEST(RowChanges, StaySummedUpWhileATableGrowsAtItsEnd)
{
    RowChanges objChanges(2);
    for (std::int32_t l = 0; l < 100000; ++l)
        objChanges.Insert(l + 1, 1);
    EXPECT_FALSE(objChanges.bScrambled());
    EXPECT_EQ(objChanges.aInserted(), (Ranges{{1, 100000}}));
}

TEST(RowChanges, GiveUpOnceTheyAreScatteredTooWidely)
{
    RowChanges objChanges(10000);
    for (std::int32_t l = 0; l < 400; ++l)
        objChanges.Insert(l * 3, 1);
    EXPECT_FALSE(objChanges.bScrambled());
    EXPECT_EQ(objChanges.aInserted().size(), 400u);
    for (std::int32_t l = 400; l < 2000; ++l)
        objChanges.Insert(l * 3, 1);
    EXPECT_TRUE(objChanges.bScrambled());
}

// The table of texts: rows, cells, the current cell, formats that follow their rows, and whom it tells.
#include "src/controls/grid/grid.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace
{

struct GridForm : Form {
    GridForm() : Form("frmGrid") {}
    Grid fg{*this, "fg", 4};
};

std::string sRow(const Grid& fg, std::int32_t lRow)
{
    std::string sCells;
    for (std::int32_t l = 0; l < fg.Cols(); ++l)
        sCells += fg.TextMatrix(lRow, l) + "|";
    return sCells;
}

}  // namespace

TEST(Grid, HasOneEmptyRowWhenNew)
{
    GridForm frm;
    EXPECT_EQ(frm.fg.Rows(), 1);
    EXPECT_EQ(frm.fg.Cols(), 4);
    EXPECT_EQ(frm.fg.Row(), 0);
    EXPECT_EQ(sRow(frm.fg, 0), "||||");
}

TEST(Grid, TakesARowOfCellsPartedByTabs)
{
    GridForm frm;
    frm.fg.AddItem("a\tb", 1);
    frm.fg.AddItem("1\t2\t3\t4\t5\t6", 1);
    frm.fg.AddItem("", 0);
    EXPECT_EQ(frm.fg.Rows(), 4);
    EXPECT_EQ(sRow(frm.fg, 2), "1|2|3|4|");
    EXPECT_EQ(sRow(frm.fg, 3), "a|b|||");
}

TEST(Grid, PutsARowForAnIndexOutOfRangeAtTheNearestEnd)
{
    GridForm frm;
    frm.fg.AddItem("last", 99);
    frm.fg.AddItem("first", -5);
    EXPECT_EQ(frm.fg.TextMatrix(0, 0), "first");
    EXPECT_EQ(frm.fg.TextMatrix(2, 0), "last");
}

TEST(Grid, ReadsNothingWhereThereIsNoCell)
{
    GridForm frm;
    frm.fg.SetTextMatrix(0, 3, "x");
    for (const auto& [lRow, lCol] : {std::pair{-1, 0}, {1, 0}, {0, -1}, {0, 4}}) {
        EXPECT_EQ(frm.fg.TextMatrix(lRow, lCol), "");
        frm.fg.SetTextMatrix(lRow, lCol, "y");
        frm.fg.SetFormat(lRow, lCol, {.bBold = true});
        EXPECT_EQ(frm.fg.Format(lRow, lCol), CellFormat{});
    }
    EXPECT_EQ(sRow(frm.fg, 0), "|||x|");
}

TEST(Grid, WritesCellsInAnyOrder)
{
    GridForm frm;
    frm.fg.SetTextMatrix(0, 2, "c");
    frm.fg.SetTextMatrix(0, 0, "a");
    frm.fg.SetTextMatrix(0, 3, "d");
    frm.fg.SetTextMatrix(0, 2, "");
    EXPECT_EQ(sRow(frm.fg, 0), "a|||d|");
}

TEST(Grid, PutsABlankInPlaceOfATabOrALineEnd)
{
    GridForm frm;
    frm.fg.SetTextMatrix(0, 1, "a\tb\r\nc");
    frm.fg.AddItem("x\r\ty\nz", 1);
    EXPECT_EQ(sRow(frm.fg, 0), "|a b  c|||");
    EXPECT_EQ(sRow(frm.fg, 1), "x |y z|||");
}

TEST(Grid, HoldsAnyOtherByte)
{
    GridForm frm;
    const std::string sText("\0\xFF*\x01", 4);
    frm.fg.SetTextMatrix(0, 1, sText);
    EXPECT_EQ(frm.fg.TextMatrix(0, 1), sText);
}

TEST(Grid, AgreesWithATableOfStrings)
{
    GridForm frm;
    std::vector<std::vector<std::string>> aExpected(1, std::vector<std::string>(4));
    std::mt19937 objRandom(3);
    for (int i = 0; i < 3000; ++i) {
        const auto nRow = objRandom() % aExpected.size();
        const auto nCol = objRandom() % 4;
        const auto lRow = static_cast<std::int32_t>(nRow);
        const std::string sText(objRandom() % 3, static_cast<char>('a' + objRandom() % 3));
        switch (objRandom() % 4) {
            case 0:
                frm.fg.AddItem(sText + "\tb", lRow);
                aExpected.insert(aExpected.begin() + lRow, {sText, "b", "", ""});
                break;
            case 1:
                if (aExpected.size() > 1) {
                    frm.fg.RemoveItem(lRow);
                    aExpected.erase(aExpected.begin() + lRow);
                }
                break;
            default:
                frm.fg.SetTextMatrix(lRow, static_cast<std::int32_t>(nCol), sText);
                aExpected[nRow][nCol] = sText;
        }
    }
    ASSERT_EQ(frm.fg.Rows(), static_cast<std::int32_t>(aExpected.size()));
    for (std::size_t nRow = 0; nRow < aExpected.size(); ++nRow)
        for (std::size_t nCol = 0; nCol < 4; ++nCol)
            EXPECT_EQ(frm.fg.TextMatrix(static_cast<std::int32_t>(nRow), static_cast<std::int32_t>(nCol)),
                      aExpected[nRow][nCol]);
}

TEST(Grid, CutsRowsOffAtTheEndAndAddsEmptyOnes)
{
    GridForm frm;
    frm.fg.SetRows(4);
    frm.fg.SetTextMatrix(2, 0, "x");
    frm.fg.SetFormat(2, 0, {.bBold = true});
    frm.fg.SetRow(3);

    frm.fg.SetRows(2);
    EXPECT_EQ(frm.fg.Row(), 1);
    frm.fg.SetRows(3);

    EXPECT_EQ(sRow(frm.fg, 2), "||||");
    EXPECT_EQ(frm.fg.Format(2, 0), CellFormat{});
    frm.fg.SetRows(-1);
    EXPECT_EQ(frm.fg.Rows(), 0);
    EXPECT_EQ(frm.fg.Row(), 0);
}

TEST(Grid, LeavesAndEntersOnlyAnotherRow)
{
    GridForm frm;
    frm.fg.SetRows(3);
    std::string sEvents;
    frm.fg.OnLeaveCell = [&] { sEvents += "leave" + std::to_string(frm.fg.Row()) + " "; };
    frm.fg.OnEnterCell = [&] { sEvents += "enter" + std::to_string(frm.fg.Row()) + " "; };

    frm.fg.SetRow(2);
    frm.fg.SetRow(2);
    frm.fg.SetRow(99);
    frm.fg.SetRow(-1);

    EXPECT_EQ(sEvents, "leave0 enter2 leave2 enter0 ");
}

TEST(Grid, StaysInsideWhenLeavingARowRemovesRows)
{
    GridForm frm;
    frm.fg.SetRows(5);
    frm.fg.OnLeaveCell = [&] { frm.fg.SetRows(2); };
    frm.fg.SetRow(4);
    EXPECT_EQ(frm.fg.Row(), 1);
}

TEST(Grid, RefusesAColumnThatItHasnt)
{
    GridForm frm;
    EXPECT_TRUE(frm.fg.SetCol(3));
    EXPECT_FALSE(frm.fg.SetCol(4));
    EXPECT_FALSE(frm.fg.SetCol(-1));
    EXPECT_EQ(frm.fg.Col(), 3);
    EXPECT_EQ(frm.fg.ColSel(), 3);
    frm.fg.SetCol(0);
    frm.fg.SetColSel(99);
    EXPECT_EQ(frm.fg.ColSel(), 3);
}

TEST(Grid, MovesFormatsWithTheirRows)
{
    GridForm frm;
    frm.fg.SetRows(4);
    frm.fg.SetFormat(1, 0, {.lFontSize = 1});
    frm.fg.SetFormat(2, 1, {.lFontSize = 2});
    frm.fg.SetFormat(2, 3, {.lFontSize = 3});

    frm.fg.AddItem("new", 2);
    EXPECT_EQ(frm.fg.Format(1, 0).lFontSize, 1);
    EXPECT_EQ(frm.fg.Format(2, 1), CellFormat{});
    EXPECT_EQ(frm.fg.Format(3, 1).lFontSize, 2);
    EXPECT_EQ(frm.fg.Format(3, 3).lFontSize, 3);

    frm.fg.RemoveItem(1);
    EXPECT_EQ(frm.fg.Format(1, 0), CellFormat{});
    EXPECT_EQ(frm.fg.Format(2, 1).lFontSize, 2);
    frm.fg.RemoveItem(2);
    EXPECT_EQ(frm.fg.Format(2, 1), CellFormat{});
}

TEST(Grid, ForgetsAFormatThatIsSetBackToPlain)
{
    GridForm frm;
    frm.fg.SetFormat(0, 0, {.bBold = true});
    frm.fg.SetFormat(0, 0, {});
    EXPECT_EQ(frm.fg.Format(0, 0), CellFormat{});
}

TEST(Grid, RemovesNothingThatIsntThere)
{
    GridForm frm;
    frm.fg.RemoveItem(1);
    frm.fg.RemoveItem(-1);
    EXPECT_EQ(frm.fg.Rows(), 1);
    frm.fg.RemoveItem(0);
    EXPECT_EQ(frm.fg.Rows(), 0);
    EXPECT_EQ(sRow(frm.fg, 0), "||||");
}

TEST(Grid, MovesRowsWithTheirFormats)
{
    GridForm frm;
    frm.fg.SetRows(6);
    for (std::int32_t l = 0; l < 6; ++l)
        frm.fg.SetTextMatrix(l, 0, std::to_string(l));
    frm.fg.SetFormat(1, 0, {.bBold = true});
    const auto sColumn = [&] {
        std::string sAll;
        for (std::int32_t l = 0; l < frm.fg.Rows(); ++l)
            sAll += frm.fg.TextMatrix(l, 0);
        return sAll;
    };

    EXPECT_TRUE(frm.fg.MoveItems(1, 2, 5));
    EXPECT_EQ(sColumn(), "034125");
    EXPECT_TRUE(frm.fg.Format(3, 0).bBold);
    EXPECT_TRUE(frm.fg.MoveItems(3, 4, 1));
    EXPECT_EQ(sColumn(), "012345");

    for (const auto& [lFirst, lLast, lBefore] : std::vector<std::array<std::int32_t, 3>>{
             {-1, 1, 3}, {2, 1, 4}, {5, 6, 0}, {1, 2, -1}, {1, 2, 7}, {1, 2, 1}, {1, 2, 2}, {1, 2, 3}})
        EXPECT_FALSE(frm.fg.MoveItems(lFirst, lLast, lBefore));
    EXPECT_EQ(sColumn(), "012345");
}

TEST(Grid, TakesManyRowsAtOnceAsItTakesEach)
{
    GridForm frm;
    frm.fg.SetRows(2);
    frm.fg.AddItems({"a\tb", "1\t2\t3\t4\t5", "x\r\ty"}, 1);
    EXPECT_EQ(frm.fg.Rows(), 5);
    EXPECT_EQ(sRow(frm.fg, 1), "a|b|||");
    EXPECT_EQ(sRow(frm.fg, 2), "1|2|3|4|");
    EXPECT_EQ(sRow(frm.fg, 3), "x |y|||");
    frm.fg.AddItems({}, 1);
    EXPECT_EQ(frm.fg.Rows(), 5);
}

TEST(Grid, SelectsAllCellsOfARow)
{
    GridForm frm;
    frm.fg.SetCol(2);
    frm.fg.SelectRow();
    EXPECT_EQ(frm.fg.Col(), 0);
    EXPECT_EQ(frm.fg.ColSel(), 3);
}

TEST(Grid, TakesEveryRowForVisibleUntilAViewKnowsBetter)
{
    GridForm frm;
    EXPECT_TRUE(frm.fg.RowIsVisible(0));
    frm.fg.UserScrolls(7, 1);
    EXPECT_FALSE(frm.fg.RowIsVisible(0));
    EXPECT_TRUE(frm.fg.RowIsVisible(7));
    EXPECT_FALSE(frm.fg.RowIsVisible(8));
    EXPECT_EQ(frm.fg.TopRow(), 7);
}

TEST(Grid, LetsAPersonChooseAnyRowButTheHeader)
{
    GridForm frm;
    frm.fg.SetRows(4);
    std::string sEvents;
    frm.fg.OnLeaveCell = [&] { sEvents += "leave" + std::to_string(frm.fg.Row()) + " "; };
    frm.fg.OnEnterCell = [&] { sEvents += "enter" + std::to_string(frm.fg.Row()) + " "; };

    frm.fg.UserChoosesRow(2);
    frm.fg.UserChoosesRow(2);
    frm.fg.UserChoosesRow(0);
    frm.fg.UserChoosesRow(-1);
    frm.fg.UserChoosesRow(4);
    frm.fg.SetEnabled(false);
    frm.fg.UserChoosesRow(3);

    EXPECT_EQ(sEvents, "leave0 enter2 ");
    EXPECT_EQ(frm.fg.Row(), 2);
}

TEST(Grid, AsksItsLogicBeforeAPersonChangesTheRow)
{
    GridForm frm;
    frm.fg.SetRows(4);
    frm.fg.SetRow(1);
    std::int32_t lAsked = -1;
    bool bLet = false;
    frm.fg.OnBeforeRowChange = [&](std::int32_t lRow) {
        lAsked = lRow;
        return bLet;
    };

    frm.fg.UserChoosesRow(3);
    EXPECT_EQ(lAsked, 3);
    EXPECT_EQ(frm.fg.Row(), 1);
    bLet = true;
    frm.fg.UserChoosesRow(3);
    EXPECT_EQ(frm.fg.Row(), 3);

    bLet = false;
    frm.fg.SetRow(2);
    EXPECT_EQ(frm.fg.Row(), 2);
}

TEST(Grid, TakesNoRowChangeFromAViewThatIsBehind)
{
    GridForm frm;
    frm.fg.SetRows(4);
    const RedrawLock objLock(frm.fg);
    frm.fg.UserChoosesRow(3);
    EXPECT_EQ(frm.fg.Row(), 0);
}

TEST(Grid, KeepsTheWidthThatAPersonGivesAColumn)
{
    GridForm frm;
    frm.fg.UserResizesCol(1, 495);
    frm.fg.UserResizesCol(4, 495);
    frm.fg.UserResizesCol(1, -1);
    EXPECT_EQ(frm.fg.ColWidth(1), 495);
}

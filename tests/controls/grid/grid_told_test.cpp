// What a table tells its views: exactly which rows and cells, before and after, and how often.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "src/controls/grid/grid.h"

namespace
{

struct GridForm : Form {
    GridForm() : Form("frmGrid") {}
    Grid fg{*this, "fg", 4};
};

/// Writes down what it is told. A range of one is written as its number.
struct RecordingTable : GridObserver {
    explicit RecordingTable(Grid& fg) : m_objWatch(fg, *this) {}

    void RowsAboutToBeInserted(std::int32_t lFirst, std::int32_t lLast) override { Note("+", lFirst, lLast); }
    void RowsInserted(std::int32_t lFirst, std::int32_t lLast) override { Note("in", lFirst, lLast); }
    void RowsAboutToBeRemoved(std::int32_t lFirst, std::int32_t lLast) override { Note("-", lFirst, lLast); }
    void RowsRemoved(std::int32_t lFirst, std::int32_t lLast) override { Note("out", lFirst, lLast); }
    void RowsAboutToBeMoved(std::int32_t lFirst, std::int32_t lLast, std::int32_t lBefore) override
    {
        Note("~", lFirst, lLast);
        sTold += "to" + std::to_string(lBefore) + " ";
    }
    void RowsMoved(std::int32_t lFirst, std::int32_t lLast, std::int32_t lBefore) override
    {
        Note("moved", lFirst, lLast);
        sTold += "to" + std::to_string(lBefore) + " ";
    }
    void AboutToBeReset() override { sTold += "*"; }
    void Reset() override { sTold += "reset "; }
    void CellsChanged(const CellRange& objCells) override
    {
        Note("cells", objCells.lFirstRow, objCells.lLastRow);
        sTold.back() = ',';
        Note("", objCells.lFirstCol, objCells.lLastCol);
    }
    void CurrentCellChanged() override { sTold += "current "; }
    void TopRowChanged() override { sTold += "top "; }
    void ColWidthChanged(std::int32_t lCol) override { Note("width", lCol, lCol); }
    void Refreshed() override { sTold += "refresh "; }

    std::string sTold;

private:
    void Note(const char* sWhat, std::int32_t lFirst, std::int32_t lLast)
    {
        sTold += sWhat + std::to_string(lFirst) +
                 (lLast == lFirst ? std::string() : "-" + std::to_string(lLast)) + " ";
    }
    Observation m_objWatch;
};

/// A model as a toolkit's table needs it: its own copy of the rows, kept up with nothing but what it is told.
struct MirrorTable : GridObserver {
    explicit MirrorTable(Grid& fgMirrored) : fg(fgMirrored), m_objWatch(fgMirrored, *this) { Reset(); }

    void RowsAboutToBeInserted(std::int32_t, std::int32_t) override { Begin(); }
    void RowsInserted(std::int32_t lFirst, std::int32_t lLast) override
    {
        End();
        aRows.insert(aRows.begin() + lFirst, static_cast<std::size_t>(lLast - lFirst + 1), "?");
        ++nInsertions;
        nInserted += lLast - lFirst + 1;
    }
    void RowsAboutToBeRemoved(std::int32_t, std::int32_t) override { Begin(); }
    void RowsRemoved(std::int32_t lFirst, std::int32_t lLast) override
    {
        End();
        aRows.erase(aRows.begin() + lFirst, aRows.begin() + lLast + 1);
        ++nRemovals;
    }
    void RowsAboutToBeMoved(std::int32_t, std::int32_t, std::int32_t) override { Begin(); }
    void RowsMoved(std::int32_t lFirst, std::int32_t lLast, std::int32_t lBefore) override
    {
        End();
        const std::vector<std::string> aMoved(aRows.begin() + lFirst, aRows.begin() + lLast + 1);
        aRows.erase(aRows.begin() + lFirst, aRows.begin() + lLast + 1);
        if (lBefore > lLast)
            lBefore -= lLast - lFirst + 1;
        aRows.insert(aRows.begin() + lBefore, aMoved.begin(), aMoved.end());
    }
    void AboutToBeReset() override { Begin(); }
    void Reset() override
    {
        bBegun = false;
        aRows.assign(static_cast<std::size_t>(fg.Rows()), "?");
        ++nResets;
    }
    void CellsChanged(const CellRange& objCells) override
    {
        for (std::int32_t l = objCells.lFirstRow; l <= objCells.lLastRow; ++l)
            aRows.at(static_cast<std::size_t>(l)) = "?";
        ++nCellChanges;
    }
    /// The rows as a view would show them: those told of are read from the table, the others are remembered.
    const std::vector<std::string>& aShown()
    {
        for (std::size_t n = 0; n < aRows.size(); ++n)
            if (aRows[n] == "?")
                aRows[n] = sRead(static_cast<std::int32_t>(n));
        return aRows;
    }
    std::vector<std::string> aTrue() const
    {
        std::vector<std::string> aAll;
        for (std::int32_t l = 0; l < fg.Rows(); ++l)
            aAll.push_back(sRead(l));
        return aAll;
    }

    int nInsertions = 0;
    int nInserted = 0;
    int nRemovals = 0;
    int nCellChanges = 0;
    int nResets = -1;  ///< not counting the first reading

private:
    std::string sRead(std::int32_t lRow) const
    {
        std::string sCells;
        for (std::int32_t l = 0; l < fg.Cols(); ++l)
            sCells += fg.TextMatrix(lRow, l) + "|" + (fg.Format(lRow, l).bBold ? "b" : "");
        return sCells;
    }
    void Begin()
    {
        EXPECT_FALSE(bBegun);
        bBegun = true;
    }
    void End()
    {
        EXPECT_TRUE(bBegun);
        bBegun = false;
    }
    Grid& fg;
    std::vector<std::string> aRows;
    bool bBegun = false;
    Observation m_objWatch;
};

}  // namespace

TEST(GridObserver, HearsOfEachChangeBeforeAndAfter)
{
    GridForm frm;
    RecordingTable objView(frm.fg);

    frm.fg.AddItem("a", 1);
    frm.fg.SetTextMatrix(1, 2, "x");
    frm.fg.SetTextMatrix(1, 2, "x");
    frm.fg.SetFormat(1, 3, {.bBold = true});
    frm.fg.SetFormat(1, 3, {.bBold = true});
    frm.fg.SetRows(5);
    frm.fg.RemoveItem(4);
    frm.fg.MoveItems(1, 1, 4);
    frm.fg.SetRows(2);
    frm.fg.SetRows(2);
    frm.fg.SetColWidth(1, 495);
    frm.fg.SetColWidth(1, 495);
    frm.fg.Refresh();

    EXPECT_EQ(objView.sTold,
              "+1 in1 cells1,2 cells1,3 +2-4 in2-4 -4 out4 ~1 to4 moved1 to4 -2-3 out2-3 width1 refresh ");
}

TEST(GridObserver, SeesTheOldRowsBeforeAndTheNewOnesAfter)
{
    struct Looking : GridObserver {
        explicit Looking(Grid& fgSeen) : fg(fgSeen), m_objWatch(fgSeen, *this) {}
        void RowsAboutToBeInserted(std::int32_t, std::int32_t) override
        {
            sSeen += std::to_string(fg.Rows());
        }
        void RowsInserted(std::int32_t, std::int32_t) override { sSeen += std::to_string(fg.Rows()) + " "; }
        void RowsAboutToBeRemoved(std::int32_t, std::int32_t) override { sSeen += std::to_string(fg.Rows()); }
        void RowsRemoved(std::int32_t, std::int32_t) override { sSeen += std::to_string(fg.Rows()) + " "; }
        Grid& fg;
        std::string sSeen;
        Observation m_objWatch;
    };
    GridForm frm;
    Looking objView(frm.fg);
    frm.fg.AddItem("a", 1);
    frm.fg.SetRows(5);
    frm.fg.RemoveItem(3);
    EXPECT_EQ(objView.sSeen, "12 25 54 ");
}

TEST(GridObserver, HearsOfTheCurrentCellWithoutAChangeOfTheTable)
{
    GridForm frm;
    frm.fg.SetRows(3);
    RecordingTable objView(frm.fg);

    frm.fg.SetRow(2);
    frm.fg.SetCol(1);
    frm.fg.SetColSel(3);
    frm.fg.SetTopRow(2);
    EXPECT_EQ(objView.sTold, "current current current top ");
    EXPECT_EQ(frm.fg.TopRow(), 2);

    objView.sTold.clear();
    frm.fg.SetRow(2);
    frm.fg.SetCol(0);
    frm.fg.SelectRow();
    frm.fg.SelectRow();
    frm.fg.SetColSel(3);
    frm.fg.SetTopRow(2);
    EXPECT_EQ(objView.sTold, "current current ");
}

TEST(GridObserver, HearsOfTheCurrentCellWhenTheRowsInFrontOfItChange)
{
    GridForm frm;
    frm.fg.SetRows(4);
    frm.fg.SetRow(2);
    RecordingTable objView(frm.fg);

    frm.fg.AddItem("a", 1);
    frm.fg.AddItem("b", 4);
    frm.fg.RemoveItem(5);
    frm.fg.RemoveItem(0);

    EXPECT_EQ(objView.sTold, "+1 in1 current +4 in4 -5 out5 -0 out0 current ");
}

TEST(GridObserver, ShowsTheOldRowAgainWhereAPersonsChangeIsRefused)
{
    GridForm frm;
    frm.fg.SetRows(4);
    frm.fg.OnBeforeRowChange = [](std::int32_t) { return false; };
    RecordingTable objView(frm.fg);

    frm.fg.UserChoosesRow(3);
    frm.fg.UserChoosesRow(0);
    frm.fg.SetEnabled(false);
    objView.sTold.clear();
    frm.fg.UserChoosesRow(3);

    EXPECT_EQ(objView.sTold, "current ");
}

TEST(GridObserver, IsToldOfTheNewRowBeforeTheLogicIs)
{
    GridForm frm;
    frm.fg.SetRows(4);
    RecordingTable objView(frm.fg);
    frm.fg.OnEnterCell = [&] { objView.sTold += "enter "; };
    frm.fg.UserChoosesRow(3);
    EXPECT_EQ(objView.sTold, "current enter ");
}

TEST(GridObserver, IsToldOnceAfterALock)
{
    GridForm frm;
    frm.fg.AddItem("marker", 1);
    RecordingTable objView(frm.fg);
    {
        const RedrawLock objOuter(frm.fg);
        for (int i = 0; i < 100; ++i) {
            const RedrawLock objInner(frm.fg);
            frm.fg.AddItem("a", frm.fg.Rows() - 1);
        }
        frm.fg.SetTextMatrix(1, 1, "x");
        frm.fg.SetRow(3);
        frm.fg.RemoveItem(2);
        frm.fg.Refresh();
        frm.fg.Refresh();
        EXPECT_EQ(objView.sTold, "");
    }
    EXPECT_EQ(objView.sTold, "+1-99 in1-99 current refresh ");
}

TEST(GridObserver, HearsNothingOfRowsThatCameAndWentUnderALock)
{
    GridForm frm;
    frm.fg.SetRows(3);
    RecordingTable objView(frm.fg);
    {
        const RedrawLock objLock(frm.fg);
        frm.fg.AddItem("a", 2);
        frm.fg.SetTextMatrix(2, 0, "b");
        frm.fg.RemoveItem(2);
    }
    EXPECT_EQ(objView.sTold, "");
}

TEST(GridObserver, HearsOfRemovalsFirstThenOfInsertions)
{
    GridForm frm;
    frm.fg.SetRows(10);
    RecordingTable objView(frm.fg);
    {
        const RedrawLock objLock(frm.fg);
        frm.fg.RemoveItem(2);
        frm.fg.RemoveItem(2);
        frm.fg.AddItem("a", 5);
        frm.fg.RemoveItem(8);
        frm.fg.AddItem("b", 8);
        frm.fg.AddItem("c", 9);
    }
    EXPECT_EQ(objView.sTold, "-9 out9 -2-3 out2-3 +5 in5 +8-9 in8-9 ");
}

TEST(GridObserver, HearsOfCellsAsRanges)
{
    GridForm frm;
    frm.fg.SetRows(10);
    RecordingTable objView(frm.fg);
    {
        const RedrawLock objLock(frm.fg);
        for (std::int32_t l = 1; l < 5; ++l)
            frm.fg.SetTextMatrix(l, 2, "x");
        frm.fg.SetTextMatrix(7, 0, "a");
        frm.fg.SetTextMatrix(7, 3, "d");
        frm.fg.SetFormat(8, 1, {.bBold = true});
        frm.fg.AddItem("new", 0);
        frm.fg.SetTextMatrix(0, 1, "not told: the row is new");
        frm.fg.RemoveItem(3);
    }
    EXPECT_EQ(objView.sTold, "-2 out2 +0 in0 cells2-4,2 cells7,0-3 cells8,1 current ");
}

TEST(GridObserver, IsResetOnlyWhereRowsChangedPlacesUnderALock)
{
    GridForm frm;
    frm.fg.SetRows(10);
    frm.fg.SetTextMatrix(3, 0, "x");
    RecordingTable objView(frm.fg);
    MirrorTable objMirror(frm.fg);
    objMirror.aShown();
    {
        const RedrawLock objLock(frm.fg);
        frm.fg.SetTextMatrix(4, 0, "y");
        frm.fg.MoveItems(3, 3, 9);
        frm.fg.AddItem("new", 10);
    }
    EXPECT_EQ(objView.sTold, "*reset current ");
    EXPECT_EQ(objMirror.aShown(), objMirror.aTrue());

    objView.sTold.clear();
    frm.fg.SetTextMatrix(4, 0, "z");
    EXPECT_EQ(objView.sTold, "cells4,0 ");
}

TEST(GridObserver, ThatComesUnderALockHearsOnlyOfWhatFollows)
{
    GridForm frm;
    RecordingTable objFirst(frm.fg);
    const auto fnChange = [&] {
        frm.fg.AddItem("a", 1);
        frm.fg.SetTextMatrix(0, 0, frm.fg.TextMatrix(0, 0) + "x");
    };
    {
        const RedrawLock objLock(frm.fg);
        fnChange();
        RecordingTable objLate(frm.fg);
        EXPECT_EQ(objFirst.sTold, "+1 in1 cells0,0 ");
        fnChange();
        EXPECT_EQ(objLate.sTold, "");
    }
    EXPECT_EQ(objFirst.sTold, "+1 in1 cells0,0 +1 in1 cells0,0 ");
}

TEST(GridObserver, ThatComesUnderALockAfterTheOnlyOtherWentStartsAfresh)
{
    GridForm frm;
    std::optional<RecordingTable> objFirst(std::in_place, frm.fg);
    const RedrawLock objOuter(frm.fg);
    frm.fg.AddItem("a", 1);
    objFirst.reset();
    frm.fg.AddItem("a", 1);
    MirrorTable objLate(frm.fg);
    {
        frm.fg.AddItem("c", 3);
        RecordingTable objFlushes(frm.fg);
    }
    EXPECT_EQ(objLate.aShown(), objLate.aTrue());
    EXPECT_EQ(objLate.nInsertions, 1);
}

TEST(GridObserver, IsToldOf30000LogRowsByAsManyInsertionsAndNoReset)
{
    GridForm frm;
    frm.fg.SetRows(2);
    MirrorTable objView(frm.fg);

    for (int i = 0; i < 30000; ++i) {
        const RedrawLock objLock(frm.fg);
        frm.fg.AddItem("job\tfile\t+", frm.fg.Rows() - 1);
        frm.fg.SetFormat(frm.fg.Rows() - 2, 2, {.bBold = true});
        frm.fg.SetRow(frm.fg.Rows() - 1);
        frm.fg.Refresh();
    }

    EXPECT_EQ(objView.nInsertions, 30000);
    EXPECT_EQ(objView.nInserted, 30000);
    EXPECT_EQ(objView.nRemovals, 0);
    EXPECT_EQ(objView.nCellChanges, 0);
    EXPECT_EQ(objView.nResets, 0);
    EXPECT_EQ(objView.aShown(), objView.aTrue());
}

TEST(GridObserver, IsToldOnceOf30000RowsAddedAtOnce)
{
    GridForm frm;
    frm.fg.SetRows(2);
    MirrorTable objView(frm.fg);
    {
        const RedrawLock objLock(frm.fg);
        frm.fg.AddItems(std::vector<std::string>(30000, "a\tb\tc\td"), 1);
        for (std::int32_t l = 1; l <= 30000; ++l)
            frm.fg.SetTextMatrix(l, 2, std::to_string(l));
    }
    EXPECT_EQ(objView.nInsertions, 1);
    EXPECT_EQ(objView.nInserted, 30000);
    EXPECT_EQ(objView.nCellChanges + objView.nRemovals + objView.nResets, 0);
    EXPECT_EQ(objView.aShown(), objView.aTrue());
}

TEST(GridObserver, CanMirrorAnyCourseOfChanges)
{
    for (unsigned nSeed = 0; nSeed < 300; ++nSeed) {
        GridForm frm;
        frm.fg.SetRows(8);
        MirrorTable objView(frm.fg);
        std::mt19937 objRandom(nSeed);
        std::vector<std::unique_ptr<RedrawLock>> aLocks;
        const auto lBelow = [&](std::int32_t lLimit) {
            return static_cast<std::int32_t>(objRandom() % static_cast<unsigned>(std::max(lLimit, 1)));
        };
        int nMoves = 0;
        for (int i = 0; i < 60; ++i) {
            switch (lBelow(9)) {
                case 0:
                    aLocks.push_back(std::make_unique<RedrawLock>(frm.fg));
                    break;
                case 1:
                    if (!aLocks.empty())
                        aLocks.pop_back();
                    break;
                case 2:
                case 3:
                    frm.fg.AddItem("new" + std::to_string(i), lBelow(frm.fg.Rows() + 1));
                    break;
                case 4:
                    frm.fg.RemoveItem(lBelow(frm.fg.Rows()));
                    break;
                case 5:
                    frm.fg.SetRows(std::max(frm.fg.Rows() + lBelow(5) - 2, 0));
                    break;
                case 6:
                    frm.fg.SetFormat(lBelow(frm.fg.Rows()), lBelow(4), {.bBold = lBelow(2) == 1});
                    break;
                case 7:
                    if (lBelow(8) == 0)
                        nMoves += frm.fg.MoveItems(lBelow(4), lBelow(4), lBelow(frm.fg.Rows() + 1)) ? 1 : 0;
                    break;
                default:
                    frm.fg.SetTextMatrix(lBelow(frm.fg.Rows()), lBelow(4), std::to_string(i));
            }
            if (aLocks.empty()) {
                ASSERT_EQ(objView.aShown(), objView.aTrue()) << "seed " << nSeed << ", step " << i;
            }
        }
        while (!aLocks.empty())
            aLocks.pop_back();
        ASSERT_EQ(objView.aShown(), objView.aTrue()) << "seed " << nSeed;
        if (nMoves == 0) {
            EXPECT_EQ(objView.nResets, 0) << "seed " << nSeed;
        }
    }
}

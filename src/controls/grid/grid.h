// The table of texts: rows of cells, a current cell, a selection, and pictures and colours for the few cells
// that have them.
// Room: controls/grid.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "src/controls/control.h"
#include "src/controls/grid/row_changes.h"

enum class CellPicture { None, imagePass, imageFail };
enum class CellAlignment { Left, Centre };

/// What a cell may have beside its text.
struct CellFormat {
    CellPicture ePicture = CellPicture::None;
    CellAlignment eAlignment = CellAlignment::Left;
    bool bBold = false;
    std::int32_t lForeColor = 0;  ///< 0: the view's own; a system colour reference else
    std::int32_t lBackColor = 0;
    std::int32_t lFontSize = 0;  ///< points; 0: the view's own

    bool operator==(const CellFormat&) const = default;
};

/// First and last are both included.
struct CellRange {
    std::int32_t lFirstRow = 0;
    std::int32_t lFirstCol = 0;
    std::int32_t lLastRow = 0;
    std::int32_t lLastCol = 0;
    bool operator==(const CellRange&) const = default;
};

/// Made so that a model can mirror the table: each AboutTo is followed by its end, and nothing comes between.
/// At the end of a RedrawLock the table has already changed; the ranges come in an order that keeps an
/// observer's own row count right at each step, and cells should be read after the last one. An observer
/// must not change the table.
class GridObserver : public ControlObserver
{
public:
    virtual void RowsAboutToBeInserted(std::int32_t /*lFirst*/, std::int32_t /*lLast*/) {}
    virtual void RowsInserted(std::int32_t /*lFirst*/, std::int32_t /*lLast*/) {}
    virtual void RowsAboutToBeRemoved(std::int32_t /*lFirst*/, std::int32_t /*lLast*/) {}
    virtual void RowsRemoved(std::int32_t /*lFirst*/, std::int32_t /*lLast*/) {}
    /// lBefore: the row that they are put in front of, counted before the move.
    virtual void RowsAboutToBeMoved(std::int32_t /*lFirst*/, std::int32_t /*lLast*/, std::int32_t /*lBefore*/)
    {
    }
    virtual void RowsMoved(std::int32_t /*lFirst*/, std::int32_t /*lLast*/, std::int32_t /*lBefore*/) {}
    /// Read all rows again: changes under a lock that can't be told as ranges.
    virtual void AboutToBeReset() {}
    virtual void Reset() {}
    virtual void CellsChanged(const CellRange& /*objCells*/) {}  ///< texts or formats; not of new rows
    virtual void CurrentCellChanged() {}  ///< the current row or the selection; also when a person's change
                                          ///< was refused, or the rows in front of it changed
    virtual void TopRowChanged() {}
    virtual void ColWidthChanged(std::int32_t /*lCol*/) {}
    virtual void Refreshed() {}  ///< paint again; nothing changed
};

/// Rows and columns count from 0; row 0 has the headings. A row is stored as one tab separated text, so that
/// 30,000 rows load in a moment and cost little more than their letters. Reading a cell that isn't there
/// gives
/// "".
class Grid : public Control
{
public:
    using Observer = GridObserver;
    Grid(Form& frmOwner, std::string sName, std::int32_t lCols);
    ControlKind eKind() const override { return ControlKind::Grid; }

    std::int32_t Rows() const { return static_cast<std::int32_t>(m_aRows.size()); }
    std::int32_t Cols() const { return m_lCols; }
    /// Cuts rows off at the end or adds empty ones.
    void SetRows(std::int32_t lRows);

    std::string TextMatrix(std::int32_t lRow, std::int32_t lCol) const;
    /// A blank takes the place of each tab and line end in sText, so that a row stays one line of cells.
    void SetTextMatrix(std::int32_t lRow, std::int32_t lCol, const std::string& sText);

    /// Inserts a row in front of lIndex, from cells separated by tabs; cells beyond the last column are
    /// dropped.
    void AddItem(std::string_view sTabbedCells, std::int32_t lIndex);
    /// Inserts many rows in front of lIndex, as AddItem does each of them.
    void AddItems(std::vector<std::string> aTabbedRows, std::int32_t lIndex);
    void RemoveItem(std::int32_t lIndex);
    /// Moves rows in front of row lBefore, counted before the move; False if there are no such rows, or they
    /// are there already.
    bool MoveItems(std::int32_t lFirst, std::int32_t lLast, std::int32_t lBefore);

    std::int32_t Row() const { return m_lRow; }  ///< stays the same number when rows come or go
    std::int32_t Col() const { return m_lCol; }
    std::int32_t ColSel() const { return m_lColSel; }
    /// Makes a row current: OnLeaveCell before, OnEnterCell after, if it is another one. A row out of range
    /// is put to the nearest.
    void SetRow(std::int32_t lRow);
    /// False, with the column as it was, when the grid has no such column. The selection is then this one
    /// column.
    bool SetCol(std::int32_t lCol);
    void SetColSel(std::int32_t lColSel);
    /// Selects all cells of the current row.
    void SelectRow();

    std::int32_t TopRow() const { return m_lTopRow; }
    void SetTopRow(std::int32_t lTopRow);
    /// True as long as no view says otherwise.
    bool RowIsVisible(std::int32_t lRow) const;

    const CellFormat& Format(std::int32_t lRow, std::int32_t lCol) const;
    void SetFormat(std::int32_t lRow, std::int32_t lCol, const CellFormat& objFormat);

    std::int32_t ColWidth(std::int32_t lCol) const { return m_aColWidths.at(static_cast<std::size_t>(lCol)); }
    void SetColWidth(std::int32_t lCol, std::int32_t lTwips);
    /// Paints again.
    void Refresh();

    // A person's acts. While a RedrawLock holds, a view's rows aren't the table's, and none is taken.
    void UserChoosesRow(std::int32_t lRow);  ///< not row 0, and only if OnBeforeRowChange lets it
    void UserResizesCol(std::int32_t lCol, std::int32_t lTwips);
    /// The view shows lCount rows from lTopRow on; no act, and always taken.
    void UserScrolls(std::int32_t lTopRow, std::int32_t lCount);

    // The logic's handlers.
    std::function<void()> OnEnterCell;
    std::function<void()> OnLeaveCell;
    std::function<bool(std::int32_t lRow)> OnBeforeRowChange;  ///< False: a person can't go to this row

private:
    struct Line {
        std::string sCells;
        std::vector<std::pair<std::int32_t, CellFormat>> aFormats;  ///< by column; few rows have any
        std::int32_t lFirstChanged =
            0;  ///< cells that the views haven't been told of; none while last < first
        std::int32_t lLastChanged = -1;
    };
    const Line* pLine(std::int32_t lRow) const;
    bool bHasCell(std::int32_t lRow, std::int32_t lCol) const;
    void AboutToInsert(std::int32_t lFirst, std::int32_t lCount);
    void Inserted(std::int32_t lFirst, std::int32_t lCount);
    void RemoveRows(std::int32_t lFirst, std::int32_t lCount);
    void ChangeRow(std::int32_t lRow);
    void TellCell(std::int32_t lRow, std::int32_t lCol);
    void TellCurrentCell() { TellOrHold(m_bCurrentCellHeld, &GridObserver::CurrentCellChanged); }
    RowChanges& HeldRows();
    void HoldCell(std::int32_t lRow, std::int32_t lCol);
    void TellHeldBack() override;
    void TellHeldRows(const RowChanges& objChanges);
    void TellHeldCells(const RowChanges* pChanges);

    std::int32_t m_lCols;
    std::vector<Line> m_aRows;
    std::vector<std::int32_t> m_aColWidths;
    std::int32_t m_lRow = 0;
    std::int32_t m_lCol = 0;
    std::int32_t m_lColSel = 0;
    std::int32_t m_lTopRow = 1;
    std::int32_t m_lVisibleRows = 0;  ///< 0 while no view says how many

    // Held back under a RedrawLock
    std::optional<RowChanges> m_objRowsHeld;
    std::int32_t m_lFirstRowHeld = 0;  ///< between these rows are all those with changed cells
    std::int32_t m_lLastRowHeld = -1;
    bool m_bCurrentCellHeld = false;
    bool m_bTopRowHeld = false;
    bool m_bRefreshHeld = false;
};

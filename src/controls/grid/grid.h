// The table of texts: rows of cells, a current cell, a selection, and pictures and colours for the few cells
// that have them.
// Room: controls/grid.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "src/controls/control.h"

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

/// Rows and columns count from 0. A row is stored as one tab separated text, so that 30,000 rows load in a
/// moment and cost little more than their letters. Reading a cell that isn't there gives "".
class Grid : public Control
{
public:
    Grid(Form& frm, std::string sName, std::int32_t lCols);

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
    void RemoveItem(std::int32_t lIndex);

    std::int32_t Row() const { return m_lRow; }
    std::int32_t Col() const { return m_lCol; }
    std::int32_t ColSel() const { return m_lColSel; }
    /// Makes a row current: OnLeaveCell before, OnEnterCell after, if it is another one. A row out of range
    /// is put to the nearest.
    void SetRow(std::int32_t lRow);
    /// False, with the column as it was, when the grid has no such column. The selection is then this one
    /// column.
    bool SetCol(std::int32_t lCol);
    void SetColSel(std::int32_t lColSel);

    std::int32_t TopRow() const { return m_lTopRow; }
    void SetTopRow(std::int32_t lTopRow);
    /// True as long as no view says otherwise.
    bool RowIsVisible(std::int32_t lRow) const;

    const CellFormat& Format(std::int32_t lRow, std::int32_t lCol) const;
    void SetFormat(std::int32_t lRow, std::int32_t lCol, const CellFormat& objFormat);

    std::int32_t ColWidth(std::int32_t lCol) const { return m_aColWidths.at(lCol); }  ///< twips
    void SetColWidth(std::int32_t lCol, std::int32_t lTwips);

    /// While off, the view isn't told of changes; switching it on tells it once.
    void SetRedraw(bool bRedraw);
    void Refresh();

    std::function<void()> OnEnterCell;  ///< belongs to the logic
    std::function<void()> OnLeaveCell;  ///< belongs to the logic
    // The rest belongs to the binder.
    std::function<void()> OnChanged;       ///< the current row, selection or top row
    std::function<void()> OnTableChanged;  ///< anything else may have changed
    std::function<void(std::int32_t lRow)> OnRowInserted;
    std::function<void(std::int32_t lRow)> OnRowRemoved;
    std::function<void(std::int32_t lRow, std::int32_t lCol)> OnCell;  ///< the text or format of one cell
    std::function<bool(std::int32_t lRow)> OnRowIsVisible;

private:
    void RaiseChanged();
    void RaiseTableChanged();

    std::int32_t m_lCols;
    std::vector<std::string> m_aRows;
    std::map<std::pair<std::int32_t, std::int32_t>, CellFormat> m_aFormats;  ///< by row, then column
    std::vector<std::int32_t> m_aColWidths;
    std::int32_t m_lRow = 0;
    std::int32_t m_lCol = 0;
    std::int32_t m_lColSel = 0;
    std::int32_t m_lTopRow = 1;
    bool m_bRedraw = true;
};

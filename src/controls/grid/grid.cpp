// Stores a table's rows, formats, current cell and column widths, and notifies its views.
#include "src/controls/grid/grid.h"

#include <algorithm>

Grid::Grid(Form& frmOwner, std::string sName, std::int32_t lCols)
    : Control(frmOwner, std::move(sName)),
      m_lCols(lCols),
      m_aRows(1),
      m_aColWidths(static_cast<std::size_t>(lCols), 0)
{
}

// The bounds of a cell in its row's text; both npos if the row has fewer cells.
static std::pair<std::size_t, std::size_t> aCellBounds(std::string_view sRow, std::int32_t lCol)
{
    std::size_t nBegin = 0;
    for (std::int32_t l = 0; l < lCol; ++l) {
        nBegin = sRow.find('\t', nBegin);
        if (nBegin == std::string::npos)
            return {nBegin, nBegin};
        ++nBegin;
    }
    return {nBegin, std::min(sRow.find('\t', nBegin), sRow.size())};
}

// Length of the text in a row's cells, without any cells beyond the last column.
static std::size_t nEndOfCells(std::string_view sRow, std::int32_t lCols)
{
    const auto [nBegin, nEnd] = aCellBounds(sRow, lCols - 1);
    return nBegin == std::string::npos ? sRow.size() : nEnd;
}

// Tabs separate cells and, in job files, line ends separate rows, so a cell can't hold either: they become
// blanks.
static void BlankOut(std::string& sRow, std::string_view sLetters, std::size_t nBegin, std::size_t nEnd)
{
    for (const char cLetter : sLetters)
        for (std::size_t n = sRow.find(cLetter, nBegin); n < nEnd; n = sRow.find(cLetter, n))
            sRow[n] = ' ';
}

const Grid::Line* Grid::pLine(std::int32_t lRow) const
{
    return lRow >= 0 && lRow < Rows() ? &m_aRows[static_cast<std::size_t>(lRow)] : nullptr;
}

bool Grid::bHasCell(std::int32_t lRow, std::int32_t lCol) const
{
    return lRow >= 0 && lRow < Rows() && lCol >= 0 && lCol < m_lCols;
}

void Grid::AboutToInsert(std::int32_t lFirst, std::int32_t lCount)
{
    if (bWatched() && bRedrawLocked())
        HeldRows().Insert(lFirst, lCount);
    else
        TellBefore(&GridObserver::RowsAboutToBeInserted, lFirst, lFirst + lCount - 1);
}

void Grid::Inserted(std::int32_t lFirst, std::int32_t lCount)
{
    if (m_lFirstRowHeld >= lFirst)
        m_lFirstRowHeld += lCount;
    if (m_lLastRowHeld >= lFirst)
        m_lLastRowHeld += lCount;
    if (!bRedrawLocked())
        Tell(&GridObserver::RowsInserted, lFirst, lFirst + lCount - 1);
    if (lFirst <= m_lRow)
        TellCurrentCell();  // a view's current row moved with the rows
}

void Grid::RemoveRows(std::int32_t lFirst, std::int32_t lCount)
{
    const std::int32_t lLast = lFirst + lCount - 1;
    if (bWatched() && bRedrawLocked())
        HeldRows().Remove(lFirst, lCount);
    else
        TellBefore(&GridObserver::RowsAboutToBeRemoved, lFirst, lLast);
    m_aRows.erase(m_aRows.begin() + lFirst, m_aRows.begin() + lLast + 1);
    if (m_lFirstRowHeld >= lFirst)
        m_lFirstRowHeld = std::max(lFirst, m_lFirstRowHeld - lCount);
    if (m_lLastRowHeld >= lFirst)
        m_lLastRowHeld = std::max(lFirst - 1, m_lLastRowHeld - lCount);
    const bool bMoved = lFirst <= m_lRow;
    m_lRow = std::clamp(m_lRow, 0, std::max(Rows() - 1, 0));
    if (!bRedrawLocked())
        Tell(&GridObserver::RowsRemoved, lFirst, lLast);
    if (bMoved)
        TellCurrentCell();
}

void Grid::SetRows(std::int32_t lRows)
{
    lRows = std::max(lRows, 0);
    const std::int32_t lBefore = Rows();
    if (lRows < lBefore)
        RemoveRows(lRows, lBefore - lRows);
    if (lRows <= lBefore)
        return;
    AboutToInsert(lBefore, lRows - lBefore);
    m_aRows.resize(static_cast<std::size_t>(lRows));
    Inserted(lBefore, lRows - lBefore);
}

std::string Grid::TextMatrix(std::int32_t lRow, std::int32_t lCol) const
{
    if (!bHasCell(lRow, lCol))
        return "";
    const std::string& sRow = pLine(lRow)->sCells;
    const auto [nBegin, nEnd] = aCellBounds(sRow, lCol);
    return nBegin == std::string::npos ? std::string() : sRow.substr(nBegin, nEnd - nBegin);
}

void Grid::SetTextMatrix(std::int32_t lRow, std::int32_t lCol, const std::string& sText)
{
    if (!bHasCell(lRow, lCol))
        return;
    std::string& sRow = m_aRows[static_cast<std::size_t>(lRow)].sCells;
    const auto nTabs = static_cast<std::int32_t>(std::count(sRow.begin(), sRow.end(), '\t'));
    if (nTabs < lCol)
        sRow.append(static_cast<std::size_t>(lCol - nTabs), '\t');
    const auto [nBegin, nEnd] = aCellBounds(sRow, lCol);
    if (sRow.compare(nBegin, nEnd - nBegin, sText) == 0)
        return;
    sRow.replace(nBegin, nEnd - nBegin, sText);
    BlankOut(sRow, "\t\r\n", nBegin, nBegin + sText.size());
    TellCell(lRow, lCol);
}

void Grid::AddItem(std::string_view sTabbedCells, std::int32_t lIndex)
{
    lIndex = std::clamp(lIndex, 0, Rows());
    AboutToInsert(lIndex, 1);
    std::string& sCells = m_aRows.emplace(m_aRows.begin() + lIndex)->sCells;
    sCells = sTabbedCells.substr(0, nEndOfCells(sTabbedCells, m_lCols));
    BlankOut(sCells, "\r\n", 0, sCells.size());
    Inserted(lIndex, 1);
}

void Grid::AddItems(std::vector<std::string> aTabbedRows, std::int32_t lIndex)
{
    if (aTabbedRows.empty())
        return;
    lIndex = std::clamp(lIndex, 0, Rows());
    const auto lCount = static_cast<std::int32_t>(aTabbedRows.size());
    AboutToInsert(lIndex, lCount);
    m_aRows.reserve(m_aRows.size() + aTabbedRows.size());
    auto itLine = m_aRows.insert(m_aRows.begin() + lIndex, aTabbedRows.size(), Line{});
    for (std::string& sCells : aTabbedRows) {
        sCells.resize(nEndOfCells(sCells, m_lCols));
        BlankOut(sCells, "\r\n", 0, sCells.size());
        (itLine++)->sCells = std::move(sCells);
    }
    Inserted(lIndex, lCount);
}

void Grid::RemoveItem(std::int32_t lIndex)
{
    if (lIndex >= 0 && lIndex < Rows())
        RemoveRows(lIndex, 1);
}

bool Grid::MoveItems(std::int32_t lFirst, std::int32_t lLast, std::int32_t lBefore)
{
    if (lFirst < 0 || lLast < lFirst || lLast >= Rows() || lBefore < 0 || lBefore > Rows() ||
        (lBefore >= lFirst && lBefore <= lLast + 1))
        return false;
    if (bWatched() && bRedrawLocked())
        HeldRows().Scramble();
    else
        TellBefore(&GridObserver::RowsAboutToBeMoved, lFirst, lLast, lBefore);
    const auto itRows = m_aRows.begin();
    if (lBefore < lFirst)
        std::rotate(itRows + lBefore, itRows + lFirst, itRows + lLast + 1);
    else
        std::rotate(itRows + lFirst, itRows + lLast + 1, itRows + lBefore);
    if (m_lFirstRowHeld <= m_lLastRowHeld) {
        m_lFirstRowHeld = 0;
        m_lLastRowHeld = Rows() - 1;
    }
    if (!bRedrawLocked())
        Tell(&GridObserver::RowsMoved, lFirst, lLast, lBefore);
    if (m_lRow >= std::min(lFirst, lBefore) && m_lRow <= std::max(lLast, lBefore - 1))
        TellCurrentCell();
    return true;
}

void Grid::ChangeRow(std::int32_t lRow)
{
    Raise(OnLeaveCell);
    m_lRow = std::clamp(lRow, 0, std::max(Rows() - 1, 0));  // the handler may have removed rows
    TellCurrentCell();
    Raise(OnEnterCell);
}

void Grid::SetRow(std::int32_t lRow)
{
    lRow = std::clamp(lRow, 0, std::max(Rows() - 1, 0));
    if (lRow != m_lRow)
        ChangeRow(lRow);
}

bool Grid::SetCol(std::int32_t lCol)
{
    if (lCol < 0 || lCol >= m_lCols)
        return false;
    if (lCol != m_lCol || lCol != m_lColSel) {
        m_lCol = m_lColSel = lCol;
        TellCurrentCell();
    }
    return true;
}

void Grid::SetColSel(std::int32_t lColSel)
{
    lColSel = std::clamp(lColSel, 0, m_lCols - 1);
    if (lColSel == m_lColSel)
        return;
    m_lColSel = lColSel;
    TellCurrentCell();
}

void Grid::SelectRow()
{
    if (m_lCol == 0 && m_lColSel == m_lCols - 1)
        return;
    m_lCol = 0;
    m_lColSel = m_lCols - 1;
    TellCurrentCell();
}

void Grid::SetTopRow(std::int32_t lTopRow)
{
    if (lTopRow == m_lTopRow)
        return;
    m_lTopRow = lTopRow;
    TellOrHold(m_bTopRowHeld, &GridObserver::TopRowChanged);
}

bool Grid::RowIsVisible(std::int32_t lRow) const
{
    return m_lVisibleRows == 0 || (lRow >= m_lTopRow && lRow - m_lTopRow < m_lVisibleRows);
}

const CellFormat& Grid::Format(std::int32_t lRow, std::int32_t lCol) const
{
    static const CellFormat objPlain;
    if (const Line* p = pLine(lRow))
        for (const auto& [lFormatted, objFormat] : p->aFormats)
            if (lFormatted == lCol)
                return objFormat;
    return objPlain;
}

void Grid::SetFormat(std::int32_t lRow, std::int32_t lCol, const CellFormat& objFormat)
{
    if (!bHasCell(lRow, lCol) || Format(lRow, lCol) == objFormat)
        return;
    auto& aFormats = m_aRows[static_cast<std::size_t>(lRow)].aFormats;
    std::erase_if(aFormats, [lCol](const auto& objEntry) { return objEntry.first == lCol; });
    if (objFormat != CellFormat{})
        aFormats.emplace_back(lCol, objFormat);
    TellCell(lRow, lCol);
}

void Grid::SetColWidth(std::int32_t lCol, std::int32_t lTwips)
{
    std::int32_t& lWidth = m_aColWidths.at(static_cast<std::size_t>(lCol));
    if (lWidth == lTwips)
        return;
    lWidth = lTwips;
    Tell(&GridObserver::ColWidthChanged, lCol);
}

void Grid::Refresh()
{
    TellOrHold(m_bRefreshHeld, &GridObserver::Refreshed);
}

void Grid::UserChoosesRow(std::int32_t lRow)
{
    if (!bAccepts(&GridObserver::CurrentCellChanged))
        return;
    const bool bPossible = !bRedrawLocked() && lRow >= 1 && lRow < Rows();
    if (bPossible && lRow == m_lRow)
        return;
    if (bPossible && (!OnBeforeRowChange || OnBeforeRowChange(lRow)))
        SetRow(lRow);
    else
        TellCurrentCell();
}

void Grid::UserResizesCol(std::int32_t lCol, std::int32_t lTwips)
{
    if (bAccepts() && lCol >= 0 && lCol < m_lCols && lTwips >= 0)
        SetColWidth(lCol, lTwips);
}

void Grid::UserScrolls(std::int32_t lTopRow, std::int32_t lCount)
{
    m_lVisibleRows = std::max(lCount, 0);
    m_lTopRow = lTopRow;
}

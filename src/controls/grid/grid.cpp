// Keeps the rows of a table and tells the views what changed.
#include "src/controls/grid/grid.h"

#include <algorithm>
#include <cstddef>

Grid::Grid(Form& frm, std::string sName, std::int32_t lCols)
    : Control(frm, std::move(sName)), m_lCols(lCols), m_aRows(1), m_aColWidths(lCols, 0)
{
}

// The bounds of a cell inside its row's text; both npos when the row ends before it.
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

// Tabs part the cells of a row, and line ends the rows of a file, so a text in a cell can't hold one: a blank
// takes its place.
static void BlankOut(std::string& sRow, std::string_view sLetters, std::size_t nBegin, std::size_t nEnd)
{
    for (const char cLetter : sLetters)
        for (std::size_t n = sRow.find(cLetter, nBegin); n < nEnd; n = sRow.find(cLetter, n))
            sRow[n] = ' ';
}

void Grid::SetRows(std::int32_t lRows)
{
    m_aRows.resize(std::max(lRows, 0));
    m_aFormats.erase(m_aFormats.lower_bound({lRows, 0}), m_aFormats.end());
    m_lRow = std::clamp(m_lRow, 0, std::max(Rows() - 1, 0));
    RaiseTableChanged();
}

std::string Grid::TextMatrix(std::int32_t lRow, std::int32_t lCol) const
{
    if (lRow < 0 || lRow >= Rows() || lCol < 0 || lCol >= m_lCols)
        return "";
    const auto [nBegin, nEnd] = aCellBounds(m_aRows[lRow], lCol);
    return nBegin == std::string::npos ? std::string() : m_aRows[lRow].substr(nBegin, nEnd - nBegin);
}

void Grid::SetTextMatrix(std::int32_t lRow, std::int32_t lCol, const std::string& sText)
{
    if (lRow < 0 || lRow >= Rows() || lCol < 0 || lCol >= m_lCols)
        return;
    std::string& sRow = m_aRows[static_cast<std::size_t>(lRow)];
    const auto nTabs = static_cast<std::int32_t>(std::count(sRow.begin(), sRow.end(), '\t'));
    if (nTabs < lCol)
        sRow.append(static_cast<std::size_t>(lCol - nTabs), '\t');
    const auto [nBegin, nEnd] = aCellBounds(sRow, lCol);
    if (sRow.compare(nBegin, nEnd - nBegin, sText) == 0)
        return;
    sRow.replace(nBegin, nEnd - nBegin, sText);
    BlankOut(sRow, "\t\r\n", nBegin, nBegin + sText.size());
    if (m_bRedraw && OnCell)
        OnCell(lRow, lCol);
}

// Formats of the rows from lRow on move by lBy rows, since they belong to their row. They keep their order,
// so each is put back where it was taken from.
static void MoveFormats(std::map<std::pair<std::int32_t, std::int32_t>, CellFormat>& aFormats,
                        std::int32_t lRow, std::int32_t lBy)
{
    std::vector<std::map<std::pair<std::int32_t, std::int32_t>, CellFormat>::node_type> aMoved;
    for (auto it = aFormats.lower_bound({lRow, 0}); it != aFormats.end();)
        aMoved.push_back(aFormats.extract(it++));
    for (auto& objNode : aMoved) {
        objNode.key().first += lBy;
        aFormats.insert(aFormats.end(), std::move(objNode));
    }
}

void Grid::AddItem(std::string_view sTabbedCells, std::int32_t lIndex)
{
    lIndex = std::clamp(lIndex, 0, Rows());
    const auto [nBegin, nEnd] = aCellBounds(sTabbedCells, m_lCols - 1);
    if (nBegin != std::string::npos)
        sTabbedCells = sTabbedCells.substr(0, nEnd);
    const auto itRow = m_aRows.emplace(m_aRows.begin() + lIndex, sTabbedCells);
    BlankOut(*itRow, "\r\n", 0, itRow->size());
    MoveFormats(m_aFormats, lIndex, 1);
    if (m_bRedraw && OnRowInserted)
        OnRowInserted(lIndex);
}

void Grid::RemoveItem(std::int32_t lIndex)
{
    if (lIndex < 0 || lIndex >= Rows())
        return;
    m_aRows.erase(m_aRows.begin() + lIndex);
    m_aFormats.erase(m_aFormats.lower_bound({lIndex, 0}), m_aFormats.lower_bound({lIndex + 1, 0}));
    MoveFormats(m_aFormats, lIndex + 1, -1);
    m_lRow = std::clamp(m_lRow, 0, std::max(Rows() - 1, 0));
    if (m_bRedraw && OnRowRemoved)
        OnRowRemoved(lIndex);
}

void Grid::SetRow(std::int32_t lRow)
{
    lRow = std::clamp(lRow, 0, std::max(Rows() - 1, 0));
    if (lRow == m_lRow)
        return;
    if (OnLeaveCell)
        OnLeaveCell();
    m_lRow = std::clamp(lRow, 0, std::max(Rows() - 1, 0));  // the handler may have removed rows
    if (OnEnterCell)
        OnEnterCell();
    if (m_bRedraw)
        RaiseChanged();
}

bool Grid::SetCol(std::int32_t lCol)
{
    if (lCol < 0 || lCol >= m_lCols)
        return false;
    m_lCol = m_lColSel = lCol;
    if (m_bRedraw)
        RaiseChanged();
    return true;
}

void Grid::SetColSel(std::int32_t lColSel)
{
    m_lColSel = std::clamp(lColSel, 0, m_lCols - 1);
    if (m_bRedraw)
        RaiseChanged();
}

void Grid::SetTopRow(std::int32_t lTopRow)
{
    m_lTopRow = lTopRow;
    if (m_bRedraw)
        RaiseChanged();
}

void Grid::RaiseChanged()
{
    if (OnChanged)
        OnChanged();
}

bool Grid::RowIsVisible(std::int32_t lRow) const
{
    return !OnRowIsVisible || OnRowIsVisible(lRow);
}

const CellFormat& Grid::Format(std::int32_t lRow, std::int32_t lCol) const
{
    static const CellFormat objPlain;
    const auto itFound = m_aFormats.find({lRow, lCol});
    return itFound == m_aFormats.end() ? objPlain : itFound->second;
}

void Grid::SetFormat(std::int32_t lRow, std::int32_t lCol, const CellFormat& objFormat)
{
    if (lRow < 0 || lRow >= Rows() || lCol < 0 || lCol >= m_lCols)
        return;
    if (objFormat == CellFormat{})
        m_aFormats.erase({lRow, lCol});
    else
        m_aFormats[{lRow, lCol}] = objFormat;
    if (m_bRedraw && OnCell)
        OnCell(lRow, lCol);
}

void Grid::SetColWidth(std::int32_t lCol, std::int32_t lTwips)
{
    m_aColWidths.at(lCol) = lTwips;
    RaiseTableChanged();
}

void Grid::SetRedraw(bool bRedraw)
{
    m_bRedraw = bRedraw;
    RaiseTableChanged();
}

void Grid::Refresh()
{
    RaiseTableChanged();
}

void Grid::RaiseTableChanged()
{
    if (!m_bRedraw)
        return;
    if (OnTableChanged)
        OnTableChanged();
    RaiseChanged();
}

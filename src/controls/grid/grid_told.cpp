// What a table tells its views: at once, or summed up when a redraw lock ends.
#include <algorithm>

#include "src/controls/grid/grid.h"

void Grid::TellCell(std::int32_t lRow, std::int32_t lCol)
{
    if (!bWatched())
        return;
    if (bRedrawLocked())
        HoldCell(lRow, lCol);
    else
        Tell(&GridObserver::CellsChanged, CellRange{lRow, lCol, lRow, lCol});
}

RowChanges& Grid::HeldRows()
{
    if (!m_objRowsHeld)
        m_objRowsHeld.emplace(Rows());
    return *m_objRowsHeld;
}

void Grid::HoldCell(std::int32_t lRow, std::int32_t lCol)
{
    Line& objRow = m_aRows[static_cast<std::size_t>(lRow)];
    if (objRow.lLastChanged < objRow.lFirstChanged)
        objRow.lFirstChanged = objRow.lLastChanged = lCol;
    objRow.lFirstChanged = std::min(objRow.lFirstChanged, lCol);
    objRow.lLastChanged = std::max(objRow.lLastChanged, lCol);
    if (m_lLastRowHeld < m_lFirstRowHeld)
        m_lFirstRowHeld = m_lLastRowHeld = lRow;
    m_lFirstRowHeld = std::min(m_lFirstRowHeld, lRow);
    m_lLastRowHeld = std::max(m_lLastRowHeld, lRow);
}

void Grid::TellHeldBack()
{
    const std::optional<RowChanges> objRows = std::exchange(m_objRowsHeld, std::nullopt);
    if (objRows)
        TellHeldRows(*objRows);
    TellHeldCells(objRows ? &*objRows : nullptr);
    TellIfHeld(m_bCurrentCellHeld, &GridObserver::CurrentCellChanged);
    TellIfHeld(m_bTopRowHeld, &GridObserver::TopRowChanged);
    TellIfHeld(m_bRefreshHeld, &GridObserver::Refreshed);
}

void Grid::TellHeldRows(const RowChanges& objChanges)
{
    if (objChanges.bScrambled()) {
        TellBefore(&GridObserver::AboutToBeReset);
        Tell(&GridObserver::Reset);
        m_bCurrentCellHeld = true;  // a view that was reset has lost its place
        return;
    }
    for (const RowRange& objRange : objChanges.aRemoved()) {
        TellBefore(&GridObserver::RowsAboutToBeRemoved, objRange.lFirst, objRange.lLast);
        Tell(&GridObserver::RowsRemoved, objRange.lFirst, objRange.lLast);
    }
    for (const RowRange& objRange : objChanges.aInserted()) {
        TellBefore(&GridObserver::RowsAboutToBeInserted, objRange.lFirst, objRange.lLast);
        Tell(&GridObserver::RowsInserted, objRange.lFirst, objRange.lLast);
    }
}

// Rows with the same changed columns that follow each other are one range.
void Grid::TellHeldCells(const RowChanges* pChanges)
{
    std::vector<CellRange> aRanges;
    for (std::int32_t lRow = m_lFirstRowHeld; lRow <= m_lLastRowHeld; ++lRow) {
        Line& objRow = m_aRows[static_cast<std::size_t>(lRow)];
        const CellRange objCells{lRow, std::exchange(objRow.lFirstChanged, 0), lRow,
                                 std::exchange(objRow.lLastChanged, -1)};
        if (objCells.lLastCol < objCells.lFirstCol ||
            (pChanges && (pChanges->bScrambled() || pChanges->bIsNew(lRow))))
            continue;
        if (!aRanges.empty() && aRanges.back().lLastRow == lRow - 1 &&
            aRanges.back().lFirstCol == objCells.lFirstCol && aRanges.back().lLastCol == objCells.lLastCol)
            aRanges.back().lLastRow = lRow;
        else
            aRanges.push_back(objCells);
    }
    m_lFirstRowHeld = 0;
    m_lLastRowHeld = -1;
    for (const CellRange& objCells : aRanges)
        Tell(&GridObserver::CellsChanged, objCells);
}

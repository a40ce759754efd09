// A view of a table that counts what it is told, and keeps the number of rows by it.
// Room: tests/fakes.
#pragma once

#include <cstdint>

#include "src/controls/grid/grid.h"

class CountingTable : public GridObserver
{
public:
    explicit CountingTable(Grid& fg) : lRows(fg.Rows()), m_fg(fg), m_objWatch(fg, *this) {}

    void RowsInserted(std::int32_t lFirst, std::int32_t lLast) override
    {
        ++nInsertions;
        lRows += lLast - lFirst + 1;
    }
    void RowsRemoved(std::int32_t lFirst, std::int32_t lLast) override
    {
        ++nRemovals;
        lRows -= lLast - lFirst + 1;
    }
    void Reset() override
    {
        ++nResets;
        lRows = m_fg.Rows();
    }
    void CellsChanged(const CellRange&) override { ++nCellChanges; }

    std::int32_t lRows;  ///< as far as it was told
    int nInsertions = 0;
    int nRemovals = 0;
    int nResets = 0;
    int nCellChanges = 0;

private:
    Grid& m_fg;
    Observation m_objWatch;
};

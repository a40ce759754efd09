// A grid as Qt's item views read it.
// Room: platform/qt/views.
#pragma once

#include <QAbstractTableModel>
#include <QIcon>
#include <set>

#include "src/controls/grid/grid.h"

/// What a grid shows beyond its cells.
struct GridLook {
    std::set<int> path_columns;  ///< elided in the middle
    std::set<int> tip_columns;   ///< their whole text is the tool tip
    QIcon pass_icon;
    QIcon fail_icon;
    QString passed;  ///< read out for the pictures
    QString failed;
};

/// The grid's row 0 is the horizontal header, its row n the model's row n - 1. Follows every insertion,
/// removal and move, so that a view keeps its place and its selection. Never resets for less than Grid's own
/// reset.
class GridModel final : public QAbstractTableModel
{
public:
    GridModel(const Grid& grid, const GridLook& look);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    // As the grid's observer is told; rows in the grid's numbering.
    void BeginInsert(int first, int last);
    void EndInsert();
    void BeginRemove(int first, int last);
    void EndRemove();
    void BeginMove(int first, int last, int before);
    void EndMove();
    void BeginReset();
    void EndReset();
    void CellsChanged(const CellRange& cells);
    /// True between Begin and End: what a view's current row does meanwhile isn't a person's choice.
    bool IsChanging() const { return changing_; }

private:
    QVariant Picture(CellPicture picture) const;
    QVariant AccessibleText(int row, int column) const;
    void Header();

    const Grid& grid_;
    const GridLook& look_;
    int grid_rows_;  ///< as the views know them, header included
    int next_rows_ = 0;
    bool rows_change_ = false;  ///< the model's rows change, and not only the header
    bool changing_ = false;
};

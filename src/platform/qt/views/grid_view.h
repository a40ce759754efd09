// The table widget, and the view that ties it to a grid.
// Room: platform/qt/views.
#pragma once

#include <QTableView>

#include "src/controls/grid/grid.h"
#include "src/platform/qt/views/control_view.h"
#include "src/platform/qt/views/grid_model.h"

/// A table of whole rows: no grid lines, rows of equal height, elided paths.
class GridWidget : public QTableView
{
public:
    GridWidget(GridLook look, QWidget* parent = nullptr);
    const GridLook& Look() const { return look_; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    GridLook look_;
};

/// Widths are 15 twips to a pixel; a column of width 0 is hidden. A person's choice of a row is asked for
/// once the mouse or key event is over, and the table then shows the row that the grid has.
class GridView final : public ControlView<Grid, GridWidget>
{
public:
    GridView(Grid& control, GridWidget& widget);
    ~GridView() override;

    void RowsAboutToBeInserted(std::int32_t first, std::int32_t last) override;
    void RowsInserted(std::int32_t first, std::int32_t last) override;
    void RowsAboutToBeRemoved(std::int32_t first, std::int32_t last) override;
    void RowsRemoved(std::int32_t first, std::int32_t last) override;
    void RowsAboutToBeMoved(std::int32_t first, std::int32_t last, std::int32_t before) override;
    void RowsMoved(std::int32_t first, std::int32_t last, std::int32_t before) override;
    void AboutToBeReset() override;
    void Reset() override;
    void CellsChanged(const CellRange& cells) override;
    void CurrentCellChanged() override;
    void TopRowChanged() override;
    void ColWidthChanged(std::int32_t column) override;
    void Refreshed() override;

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    int FirstShownColumn() const;
    void RowChosen(int row);
    void TellVisibleRows();
    bool PassOnKey(const QKeyEvent& event);

    GridModel model_;
    bool showing_ = false;  ///< the program, not a person, changes the current row or a width
};

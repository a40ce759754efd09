// Maps a grid's rows and notifications to those of a Qt model.
#include "src/platform/qt/views/grid_model.h"

#include <QFont>
#include <algorithm>

#include "src/platform/qt/views/qt_text.h"

// Rows of the model for so many rows of the grid.
static int ModelRows(int grid_rows)
{
    return std::max(grid_rows - 1, 0);
}

GridModel::GridModel(const Grid& grid, const GridLook& look)
    : grid_(grid), look_(look), grid_rows_(grid.Rows())
{
}

int GridModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ModelRows(grid_rows_);
}

int GridModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : grid_.Cols();
}

QVariant GridModel::Picture(CellPicture picture) const
{
    switch (picture) {
        case CellPicture::imagePass:
            return look_.pass_icon;
        case CellPicture::imageFail:
            return look_.fail_icon;
        default:
            return {};
    }
}

QVariant GridModel::AccessibleText(int row, int column) const
{
    switch (grid_.Format(row, column).ePicture) {
        case CellPicture::imagePass:
            return look_.passed;
        case CellPicture::imageFail:
            return look_.failed;
        default:
            return ToQt(grid_.TextMatrix(row, column));
    }
}

QVariant GridModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return {};
    const int row = index.row() + 1;
    const int column = index.column();
    const CellFormat& format = grid_.Format(row, column);
    switch (role) {
        case Qt::DisplayRole:
            // A picture takes the place of its text.
            return format.ePicture == CellPicture::None ? ToQt(grid_.TextMatrix(row, column)) : QString();
        case Qt::EditRole:
            return ToQt(grid_.TextMatrix(row, column));
        case Qt::DecorationRole:
            return Picture(format.ePicture);
        case Qt::AccessibleTextRole:
            return AccessibleText(row, column);
        case Qt::ToolTipRole: {
            const QString text = ToQt(grid_.TextMatrix(row, column));
            return look_.tip_columns.contains(column) && !text.isEmpty() ? QVariant(text) : QVariant();
        }
        case Qt::FontRole: {
            if (!format.bBold)
                return {};
            QFont font;
            font.setBold(true);
            return font;
        }
        default:
            return {};
    }
}

QVariant GridModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal)
        return {};
    if (role == Qt::DisplayRole || role == Qt::AccessibleTextRole)
        return ToQt(grid_.TextMatrix(0, section));
    if (role == Qt::TextAlignmentRole)
        return static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter);
    return {};
}

void GridModel::Header()
{
    Q_EMIT headerDataChanged(Qt::Horizontal, 0, grid_.Cols() - 1);
}

void GridModel::BeginInsert(int first, int last)
{
    changing_ = true;
    next_rows_ = grid_rows_ + last - first + 1;
    const int count = ModelRows(next_rows_) - ModelRows(grid_rows_);
    const int at = std::max(first - 1, 0);
    rows_change_ = count > 0;
    if (rows_change_)
        beginInsertRows({}, at, at + count - 1);
}

void GridModel::EndInsert()
{
    const bool new_header = grid_rows_ == 0;
    grid_rows_ = next_rows_;
    if (rows_change_)
        endInsertRows();
    if (new_header)
        Header();
    changing_ = false;
}

void GridModel::BeginRemove(int first, int last)
{
    changing_ = true;
    next_rows_ = grid_rows_ - (last - first + 1);
    const int count = ModelRows(grid_rows_) - ModelRows(next_rows_);
    const int at = std::max(first - 1, 0);
    rows_change_ = count > 0;
    if (rows_change_)
        beginRemoveRows({}, at, at + count - 1);
}

void GridModel::EndRemove()
{
    grid_rows_ = next_rows_;
    if (rows_change_)
        endRemoveRows();
    changing_ = false;
}

void GridModel::BeginMove(int first, int last, int before)
{
    changing_ = true;
    rows_change_ = first >= 1 && before >= 1 && beginMoveRows({}, first - 1, last - 1, {}, before - 1);
    if (!rows_change_)
        beginResetModel();  // the header took part
}

void GridModel::EndMove()
{
    if (rows_change_)
        endMoveRows();
    else
        endResetModel();
    changing_ = false;
}

void GridModel::BeginReset()
{
    changing_ = true;
    beginResetModel();
}

void GridModel::EndReset()
{
    grid_rows_ = grid_.Rows();
    endResetModel();
    changing_ = false;
}

void GridModel::CellsChanged(const CellRange& cells)
{
    if (cells.lFirstRow == 0)
        Q_EMIT headerDataChanged(Qt::Horizontal, cells.lFirstCol, cells.lLastCol);
    if (cells.lLastRow >= 1)
        Q_EMIT dataChanged(index(std::max(cells.lFirstRow, 1) - 1, cells.lFirstCol),
                           index(cells.lLastRow - 1, cells.lLastCol));
}

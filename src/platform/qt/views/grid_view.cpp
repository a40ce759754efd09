// Shows a grid in a table and passes on what a person does in it.
#include "src/platform/qt/views/grid_view.h"

#include <QApplication>
#include <QHeaderView>
#include <QHelpEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <QToolTip>
#include <algorithm>

#include "src/platform/qt/views/qt_text.h"

static constexpr int kTwipsPerPixel = 15;

namespace
{

class CellDelegate final : public QStyledItemDelegate
{
public:
    CellDelegate(const GridLook& look, QObject* parent) : QStyledItemDelegate(parent), look_(look) {}

    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        option->state &= ~QStyle::State_HasFocus;  // the whole row is current
        option->textElideMode =
            look_.path_columns.contains(index.column()) ? Qt::ElideMiddle : Qt::ElideRight;
        if (option->features & QStyleOptionViewItem::HasDecoration)
            option->decorationAlignment = Qt::AlignCenter;
    }

    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override
    {
        const QString text = index.data(Qt::ToolTipRole).toString();
        if (event->type() != QEvent::ToolTip || text.isEmpty())
            return QStyledItemDelegate::helpEvent(event, view, option, index);
        // Qt takes what looks like markup for rich text, and a path can look like anything.
        QToolTip::showText(event->globalPos(),
                           QStringLiteral("<qt>") + text.toHtmlEscaped() + QStringLiteral("</qt>"), view);
        return true;
    }

private:
    const GridLook& look_;
};

}  // namespace

namespace
{

/// Plain headings above a line.
class QuietHeader final : public QHeaderView
{
public:
    explicit QuietHeader(QWidget* parent) : QHeaderView(Qt::Horizontal, parent)
    {
        setSectionsMovable(false);
        setHighlightSections(false);
    }

protected:
    void paintEvent(QPaintEvent* event) override
    {
        QHeaderView::paintEvent(event);
        QPainter painter(viewport());
        const QRect area = viewport()->rect();
        painter.fillRect(area.adjusted(length() - offset(), 0, 0, 0), palette().brush(QPalette::Base));
        painter.fillRect(area.adjusted(0, area.height() - 1, 0, 0), palette().brush(QPalette::Midlight));
    }
    void paintSection(QPainter* painter, const QRect& rect, int section) const override
    {
        painter->fillRect(rect, palette().brush(QPalette::Base));
        const QString text = model()->headerData(section, Qt::Horizontal).toString();
        const QRect inner = rect.adjusted(kTextMargin, 0, -kTextMargin, 0);
        painter->setPen(palette().color(QPalette::PlaceholderText));
        painter->drawText(inner, Qt::AlignLeft | Qt::AlignVCenter,
                          fontMetrics().elidedText(text, Qt::ElideRight, inner.width()));
    }
    QSize sectionSizeFromContents(int section) const override
    {
        QSize size = QHeaderView::sectionSizeFromContents(section);
        size.setHeight(fontMetrics().height() * 28 / 17);
        return size;
    }

private:
    static constexpr int kTextMargin = 3;  ///< as in the cells
};

}  // namespace

GridWidget::GridWidget(GridLook look, QWidget* parent) : QTableView(parent), look_(std::move(look))
{
    setItemDelegate(new CellDelegate(look_, this));
    setHorizontalHeader(new QuietHeader(this));
    setSelectionBehavior(SelectRows);
    setSelectionMode(SingleSelection);
    setEditTriggers(NoEditTriggers);
    setAlternatingRowColors(true);
    setShowGrid(false);
    setWordWrap(false);
    setTabKeyNavigation(false);
    setCornerButtonEnabled(false);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollMode(ScrollPerPixel);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() * 28 / 17);
    verticalScrollBar()->setSingleStep(verticalHeader()->defaultSectionSize());
    horizontalHeader()->setSectionsClickable(false);
    // Room for what the narrow columns hold by default, "S100" and their headers.
    horizontalHeader()->setMinimumSectionSize(fontMetrics().horizontalAdvance("S100") + 10);
}

// Continues the rows to the right of the last column.
void GridWidget::paintEvent(QPaintEvent* event)
{
    QTableView::paintEvent(event);
    const QRect area = viewport()->rect();
    const int left = horizontalHeader()->length() - horizontalHeader()->offset();
    if (!model() || left >= area.width())
        return;
    QPainter painter(viewport());
    const QPalette::ColorGroup group = hasFocus() ? QPalette::Active : QPalette::Inactive;
    for (int row = rowAt(0); row >= 0 && row < model()->rowCount(); ++row) {
        const QRect rest(left, rowViewportPosition(row), area.width() - left, rowHeight(row));
        if (rest.top() > area.bottom())
            break;
        if (selectionModel()->isRowSelected(row))
            painter.fillRect(rest, palette().brush(group, QPalette::Highlight));
        else if (row % 2 == 1)
            painter.fillRect(rest, palette().brush(group, QPalette::AlternateBase));
    }
}

GridView::GridView(Grid& control, GridWidget& widget)
    : ControlView(control, widget), model_(control, widget.Look())
{
    widget.setModel(&model_);
    for (int column = 0; column < control.Cols(); ++column)
        ColWidthChanged(column);
    CurrentCellChanged();
    NameForScreenReaders(ToQt(control.Caption()), widget);
    widget.viewport()->installEventFilter(this);
    if (control.OnDrop)
        widget.viewport()->setAcceptDrops(true);
    connect(widget.selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex& current) { RowChosen(current.row()); });
    connect(&widget, &QTableView::doubleClicked, this, [this] { control_.UserDoubleClicks(); });
    connect(widget.horizontalHeader(), &QHeaderView::sectionResized, this,
            [this](int column, int, int pixels) {
                if (!showing_ && pixels > 0)
                    control_.UserResizesCol(column, pixels * kTwipsPerPixel);
            });
    connect(widget.verticalScrollBar(), &QScrollBar::valueChanged, this, [this] { TellVisibleRows(); });
    connect(widget.verticalScrollBar(), &QScrollBar::rangeChanged, this, [this] { TellVisibleRows(); });
}

GridView::~GridView()
{
    widget_.setModel(nullptr);
}

void GridView::RowsAboutToBeInserted(std::int32_t first, std::int32_t last)
{
    model_.BeginInsert(first, last);
}

void GridView::RowsInserted(std::int32_t, std::int32_t)
{
    model_.EndInsert();
}

void GridView::RowsAboutToBeRemoved(std::int32_t first, std::int32_t last)
{
    model_.BeginRemove(first, last);
}

void GridView::RowsRemoved(std::int32_t, std::int32_t)
{
    model_.EndRemove();
}

void GridView::RowsAboutToBeMoved(std::int32_t first, std::int32_t last, std::int32_t before)
{
    model_.BeginMove(first, last, before);
}

void GridView::RowsMoved(std::int32_t, std::int32_t, std::int32_t)
{
    model_.EndMove();
}

void GridView::AboutToBeReset()
{
    model_.BeginReset();
}

void GridView::Reset()
{
    model_.EndReset();
}

void GridView::CellsChanged(const CellRange& cells)
{
    model_.CellsChanged(cells);
}

int GridView::FirstShownColumn() const
{
    int column = 0;
    while (column + 1 < control_.Cols() && widget_.isColumnHidden(column))
        ++column;
    return column;
}

void GridView::CurrentCellChanged()
{
    const QScopedValueRollback<bool> showing(showing_, true);
    const QModelIndex index = model_.index(control_.Row() - 1, FirstShownColumn());
    widget_.selectionModel()->setCurrentIndex(
        index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    if (!index.isValid())
        widget_.selectionModel()->clear();
}

void GridView::TopRowChanged()
{
    widget_.scrollTo(model_.index(control_.TopRow() - 1, FirstShownColumn()), QTableView::PositionAtTop);
}

void GridView::ColWidthChanged(std::int32_t column)
{
    const QScopedValueRollback<bool> showing(showing_, true);
    const int pixels = (control_.ColWidth(column) + kTwipsPerPixel / 2) / kTwipsPerPixel;
    widget_.setColumnHidden(column, pixels == 0);
    if (pixels > 0 && widget_.columnWidth(column) != pixels)
        widget_.setColumnWidth(column, pixels);
}

void GridView::Refreshed()
{
    widget_.viewport()->update();
}

void GridView::RowChosen(int row)
{
    if (showing_ || model_.IsChanging() || row < 0)
        return;
    // The logic may ask a question before it leaves a row. Qt is in the middle of the mouse's event, so that
    // has to wait until it is over.
    QMetaObject::invokeMethod(
        this,
        [this, row] {
            control_.UserChoosesRow(row + 1);
            CurrentCellChanged();
        },
        Qt::QueuedConnection);
}

void GridView::TellVisibleRows()
{
    const int height = std::max(widget_.verticalHeader()->defaultSectionSize(), 1);
    const int top = std::max(widget_.rowAt(0), 0);
    control_.UserScrolls(top + 1, widget_.viewport()->height() / height);
}

bool GridView::PassOnKey(const QKeyEvent& event)
{
    const std::string key = KeyName(event);
    if (!key.empty() && control_.UserPresses(key))
        return true;
    if (key != "Return")
        return false;
    control_.UserDoubleClicks();
    return true;
}

bool GridView::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == &widget_ && event->type() == QEvent::KeyPress)
        return PassOnKey(static_cast<QKeyEvent&>(*event));
    if (watched == widget_.viewport() && event->type() == QEvent::Resize)
        QMetaObject::invokeMethod(
            this, [this] { TellVisibleRows(); }, Qt::QueuedConnection);
    if (watched == widget_.viewport() && event->type() == QEvent::FocusOut)
        return false;
    return ControlView::eventFilter(watched, event);
}

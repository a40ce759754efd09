// Makes widgets that look alike on all forms.
#include "src/platform/qt/forms/layout.h"

#include <QApplication>
#include <QEvent>
#include <QFontMetrics>
#include <QLineEdit>
#include <QPainter>
#include <algorithm>
#include <utility>

#include "src/platform/qt/views/button_views.h"
#include "src/platform/qt/views/line_icon.h"

int Space(int pixels)
{
    return pixels * std::max(QFontMetrics(QApplication::font()).height(), 16) / 16;
}

QHBoxLayout* Row(std::initializer_list<QWidget*> widgets)
{
    auto* row = new QHBoxLayout;
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(Space(4));
    for (QWidget* widget : widgets)
        if (widget)
            row->addWidget(widget);
        else
            row->addStretch(1);
    return row;
}

QVBoxLayout* Column(QWidget* parent)
{
    auto* column = new QVBoxLayout(parent);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(Space(8));
    return column;
}

QLabel* Heading(const QString& text)
{
    auto* label = new QLabel(text);
    QFont font = label->font();
    font.setBold(true);
    label->setFont(font);
    label->setContentsMargins(0, Space(8), 0, 0);
    return label;
}

QLabel* Caption(const char* name, const QString& text, QWidget* buddy)
{
    auto* label = Named<QLabel>(name, text);
    label->setTextFormat(Qt::PlainText);
    label->setBuddy(buddy);
    return label;
}

QLabel* Note(const char* name)
{
    auto* label = Named<QLabel>(name);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    return label;
}

QComboBox* RecentTexts(const char* name)
{
    auto* combo = Named<QComboBox>(name);
    combo->setEditable(true);
    combo->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    combo->setMinimumContentsLength(12);
    combo->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    return combo;
}

QComboBox* Choice(const char* name)
{
    auto* combo = Named<QComboBox>(name);
    combo->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    combo->setMinimumContentsLength(8);
    combo->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    combo->setMaxVisibleItems(20);
    return combo;
}

QToolButton* IconButton(const char* name, const QString& icon, const QString& tip)
{
    auto* button = Named<QToolButton>(name);
    button->setIcon(LineIcon(icon));
    button->setIconSize(QSize(Space(20), Space(20)));
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::StrongFocus);
    button->setToolTip(tip);
    button->setAccessibleName(tip);
    return button;
}

QLineEdit* NumberField(const char* name, int digits)
{
    auto* edit = Named<QLineEdit>(name);
    edit->setFixedWidth(edit->fontMetrics().horizontalAdvance(QString(digits, u'0')) + Space(16));
    return edit;
}

QVBoxLayout* DialogColumn(QWidget& dialog)
{
    QVBoxLayout* column = Column(&dialog);
    column->setContentsMargins(Space(16), Space(12), Space(16), Space(16));
    return column;
}

QWidget* Group(const char* name)
{
    auto* group = Named<QWidget>(name);
    QVBoxLayout* column = Column(group);
    QLabel* caption = Heading(QString());
    caption->setProperty(kFrameCaption, true);
    column->addWidget(caption);
    return group;
}

QTabBar* TabRow(const char* name, const QString& accessible_name)
{
    auto* tabs = Named<QTabBar>(name);
    tabs->setExpanding(false);
    tabs->setDrawBase(false);
    tabs->setAccessibleName(accessible_name);
    return tabs;
}

namespace
{

/// Paints a button as the next step: filled with the accent colour while it is enabled.
class PrimaryPainter final : public QObject
{
public:
    explicit PrimaryPainter(QAbstractButton& button) : QObject(&button), button_(button)
    {
        button.installEventFilter(this);
    }
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() != QEvent::Paint)
            return false;
        Paint();
        return true;
    }

private:
    void Paint()
    {
        QPainter painter(&button_);
        painter.setRenderHint(QPainter::Antialiasing);
        const QPalette& palette = button_.palette();
        const bool enabled = button_.isEnabled();
        if (enabled) {
            QColor fill = palette.color(QPalette::Active, QPalette::Highlight);
            if (button_.isDown())
                fill = fill.darker(115);
            else if (button_.underMouse())
                fill = fill.lighter(110);
            painter.setBrush(fill);
            painter.setPen(button_.hasFocus() ? QPen(palette.color(QPalette::WindowText), 1.5)
                                              : QPen(Qt::NoPen));
            painter.drawRoundedRect(QRectF(button_.rect()).adjusted(1, 1, -1, -1), Space(4), Space(4));
        }
        PaintContents(painter, enabled);
    }

    void PaintContents(QPainter& painter, bool enabled)
    {
        const QString text = button_.text();
        const QSize icon = button_.icon().isNull() ? QSize(0, 0) : button_.iconSize();
        const int gap = icon.isEmpty() ? 0 : Space(6);
        const int width = button_.fontMetrics().size(Qt::TextShowMnemonic, text).width();
        QRect rest = button_.rect();
        rest.setLeft(std::max((rest.width() - icon.width() - gap - width) / 2, 0));
        button_.icon().paint(&painter, rest.left(), (button_.height() - icon.height()) / 2, icon.width(),
                             icon.height(), Qt::AlignCenter, enabled ? QIcon::Normal : QIcon::Disabled);
        rest.setLeft(rest.left() + icon.width() + gap);
        painter.setPen(enabled ? button_.palette().color(QPalette::Active, QPalette::HighlightedText)
                               : button_.palette().color(QPalette::Disabled, QPalette::ButtonText));
        painter.drawText(rest, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextShowMnemonic, text);
    }

    QAbstractButton& button_;
};

class BehindFilter final : public QObject
{
public:
    BehindFilter(QWidget& back, QWidget& front) : QObject(&front), back_(back)
    {
        front.installEventFilter(this);
    }
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::ShowToParent)
            back_.hide();
        if (event->type() == QEvent::HideToParent)
            back_.show();
        return false;
    }

private:
    QWidget& back_;
};

}  // namespace

void HideBehind(QWidget& back, QWidget& front)
{
    new BehindFilter(back, front);
}

void MakePrimary(QAbstractButton* button)
{
    QFont font = button->font();
    font.setBold(true);
    button->setFont(font);
    button->setMinimumWidth(button->sizeHint().width() + Space(16));
    button->setMinimumHeight(Space(32));
    new PrimaryPainter(*button);
}

QSize ElidedLabel::minimumSizeHint() const
{
    return {0, QLabel::minimumSizeHint().height()};
}

void ElidedLabel::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const QRect area = contentsRect();
    style()->drawItemText(&painter, area, static_cast<int>(alignment() | Qt::AlignVCenter), palette(),
                          isEnabled(), fontMetrics().elidedText(text(), Qt::ElideMiddle, area.width()),
                          foregroundRole());
}

// Makes widgets that look alike on all forms.
#include "src/platform/qt/forms/layout.h"

#include <QApplication>
#include <QFontMetrics>
#include <QLineEdit>
#include <QPainter>
#include <algorithm>

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

void MakePrimary(QAbstractButton* button)
{
    button->setStyleSheet(
        QStringLiteral("QAbstractButton { background: palette(highlight); color: palette(highlighted-text);"
                       " border: 1px solid palette(highlight); border-radius: %1px; padding: %2px %3px;"
                       " font-weight: 600; }"
                       "QAbstractButton:hover, QAbstractButton:focus { border-color: palette(window-text); }"
                       "QAbstractButton:disabled { background: transparent; color: palette(mid);"
                       " border-color: transparent; }")
            .arg(Space(4))
            .arg(Space(4))
            .arg(Space(12)));
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

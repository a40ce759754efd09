// Building blocks of the layouts.
// Room: platform/qt/forms.
#pragma once

#include <QBoxLayout>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QString>
#include <QTabBar>
#include <QToolButton>
#include <functional>
#include <initializer_list>

/// Translates a text that belongs to no control.
using Translate = std::function<QString(const char* text)>;

/// A distance of so many pixels at the usual font size; it grows with the font. Use multiples of 4.
int Space(int pixels);

template <typename TWidget, typename... TArguments>
TWidget* Named(const char* name, TArguments... arguments)
{
    auto* widget = new TWidget(arguments...);
    widget->setObjectName(QString::fromLatin1(name));
    return widget;
}

/// Layouts without margins, spaced for a row and for a column of rows. Null is a stretch.
QHBoxLayout* Row(std::initializer_list<QWidget*> widgets);
QVBoxLayout* Column(QWidget* parent = nullptr);

/// A bold caption above a group.
QLabel* Heading(const QString& text);
/// A caption for a field.
QLabel* Caption(const char* name, const QString& text, QWidget* buddy = nullptr);
/// A label that wraps.
QLabel* Note(const char* name);
/// An editable field with a list of recent texts. It takes whatever width there is.
QComboBox* RecentTexts(const char* name);
/// A list to choose from, no wider than what is in it.
QComboBox* Choice(const char* name);
/// A flat button with an icon; the tip is its name as well.
QToolButton* IconButton(const char* name, const QString& icon, const QString& tip);
/// A field for a number.
QLineEdit* NumberField(const char* name, int digits);

/// A column with the margins of a dialog.
QVBoxLayout* DialogColumn(QWidget& dialog);
/// A frame without lines, its caption in bold above its column.
QWidget* Group(const char* name);
/// A row of tabs at the left, each as wide as its text.
QTabBar* TabRow(const char* name, const QString& accessible_name);

/// Shows a widget only while another, in the same place, is hidden.
void HideBehind(QWidget& back, QWidget& front);

/// The button for the next step: filled with the accent colour.
void MakePrimary(QAbstractButton* button);

/// A label that elides its text, in the middle, instead of asking for its width.
class ElidedLabel : public QLabel
{
public:
    using QLabel::QLabel;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
};

// Fields of text and lists: text box, combo box, list box.
// Room: platform/qt/views.
#pragma once

#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>

#include "src/controls/lists/combo_box.h"
#include "src/controls/lists/list_box.h"
#include "src/controls/text_box.h"
#include "src/platform/qt/views/control_view.h"

class TextBoxView final : public ControlView<TextBox, QLineEdit>
{
public:
    TextBoxView(TextBox& control, QLineEdit& widget);
    void TextChanged() override;
    void TextSelected() override;
};

/// A text box of several lines.
class LongTextView final : public ControlView<TextBox, QPlainTextEdit>
{
public:
    LongTextView(TextBox& control, QPlainTextEdit& widget);
    void TextChanged() override;
};

/// Entries carry their item data as Qt::UserRole.
class ComboBoxView final : public ControlView<ComboBox, QComboBox>
{
public:
    ComboBoxView(ComboBox& control, QComboBox& widget);
    void TextChanged() override;
    void TextSelected() override;
    void ItemsChanged() override;
    void ListIndexChanged() override;
    bool eventFilter(QObject* watched, QEvent* event) override;
};

class ListBoxView final : public ControlView<ListBox, QListWidget>
{
public:
    ListBoxView(ListBox& control, QListWidget& widget);
    void ItemsChanged() override;
    void ListIndexChanged() override;

private:
    bool showing_ = false;  ///< the program, not a person, changes the current entry
};

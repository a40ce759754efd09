// Shows texts and entries, and passes on what is typed and chosen.
#include "src/platform/qt/views/text_views.h"

#include <QScopedValueRollback>
#include <QSignalBlocker>

#include "src/platform/qt/views/qt_text.h"

// The program may correct a text while it is typed: the cursor stays in front of what was behind it.
static void ShowText(QLineEdit& edit, const QString& text)
{
    if (edit.text() == text)
        return;
    const int cursor = edit.cursorPosition();
    const QString behind = edit.text().mid(cursor);
    const bool typing = edit.isModified() || edit.hasFocus();
    edit.setText(text);
    if (!typing)
        edit.setCursorPosition(0);  // shows where the text begins
    else if (text.endsWith(behind))
        edit.setCursorPosition(static_cast<int>(text.size() - behind.size()));
    else
        edit.setCursorPosition(cursor);
}

TextBoxView::TextBoxView(TextBox& control, QLineEdit& widget) : ControlView(control, widget)
{
    widget.setReadOnly(control.Locked());
    TextChanged();
    NameForScreenReaders(ToQt(control.Caption()), widget);
    connect(&widget, &QLineEdit::textEdited, this,
            [this](const QString& text) { control_.UserTypes(FromQt(text)); });
}

void TextBoxView::TextChanged()
{
    ShowText(widget_, ToQt(control_.Text()));
}

void TextBoxView::TextSelected()
{
    widget_.setSelection(control_.SelStart(), control_.SelLength());
}

LongTextView::LongTextView(TextBox& control, QPlainTextEdit& widget) : ControlView(control, widget)
{
    widget.setReadOnly(control.Locked());
    widget.setTabChangesFocus(true);
    TextChanged();
    NameForScreenReaders(ToQt(control.Caption()), widget);
    connect(&widget, &QPlainTextEdit::textChanged, this,
            [this] { control_.UserTypes(FromQt(widget_.toPlainText())); });
}

void LongTextView::TextChanged()
{
    const QString text = WithPlainLineEnds(ToQt(control_.Text()));
    if (widget_.toPlainText() == text)
        return;
    const QSignalBlocker blocker(&widget_);
    widget_.setPlainText(text);
}

ComboBoxView::ComboBoxView(ComboBox& control, QComboBox& widget) : ControlView(control, widget)
{
    if (QLineEdit* edit = widget.lineEdit()) {
        widget.setCompleter(nullptr);
        widget.setInsertPolicy(QComboBox::NoInsert);
        edit->installEventFilter(this);
        if (control.OnDrop)
            edit->setAcceptDrops(true);
        connect(edit, &QLineEdit::textEdited, this,
                [this](const QString& text) { control_.UserTypes(FromQt(text)); });
    }
    widget.setFocusPolicy(Qt::StrongFocus);
    ItemsChanged();
    NameForScreenReaders(ToQt(control.Caption()), widget);
    connect(&widget, &QComboBox::activated, this, [this](int index) {
        control_.UserChooses(index);
        ListIndexChanged();
    });
}

void ComboBoxView::TextChanged()
{
    if (QLineEdit* edit = widget_.lineEdit())
        ShowText(*edit, ToQt(control_.Text()));
}

void ComboBoxView::TextSelected()
{
    if (QLineEdit* edit = widget_.lineEdit())
        edit->setSelection(control_.SelStart(), control_.SelLength());
}

void ComboBoxView::ItemsChanged()
{
    const QSignalBlocker blocker(&widget_);
    widget_.setUpdatesEnabled(false);
    widget_.clear();
    for (std::int32_t n = 0; n < control_.ListCount(); ++n)
        widget_.addItem(ToQt(control_.List(n)), static_cast<int>(control_.ItemData(n)));
    widget_.setUpdatesEnabled(true);
    ListIndexChanged();
}

void ComboBoxView::ListIndexChanged()
{
    widget_.setCurrentIndex(control_.ListIndex());
    TextChanged();
}

bool ComboBoxView::eventFilter(QObject* watched, QEvent* event)
{
    // Scrolling past a field must not change it.
    if (event->type() == QEvent::Wheel && !widget_.hasFocus()) {
        event->ignore();
        return true;
    }
    return ControlView::eventFilter(watched, event);
}

ListBoxView::ListBoxView(ListBox& control, QListWidget& widget) : ControlView(control, widget)
{
    ItemsChanged();
    NameForScreenReaders(ToQt(control.Caption()), widget);
    connect(&widget, &QListWidget::currentRowChanged, this, [this](int row) {
        if (showing_)
            return;
        control_.UserChooses(row);
        ListIndexChanged();
    });
    connect(&widget, &QListWidget::itemDoubleClicked, this, [this] { control_.UserDoubleClicks(); });
}

void ListBoxView::ItemsChanged()
{
    const QScopedValueRollback<bool> showing(showing_, true);
    widget_.clear();
    for (std::int32_t n = 0; n < control_.ListCount(); ++n) {
        auto* item = new QListWidgetItem(ToQt(control_.List(n)), &widget_);
        item->setData(Qt::UserRole, static_cast<int>(control_.ItemData(n)));
    }
    ListIndexChanged();
}

void ListBoxView::ListIndexChanged()
{
    const QScopedValueRollback<bool> showing(showing_, true);
    widget_.setCurrentRow(control_.ListIndex());
}

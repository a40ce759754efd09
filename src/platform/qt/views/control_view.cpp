// Shows and passes on what all controls have in common.
#include "src/platform/qt/views/control_view.h"

#include <QApplication>
#include <QDropEvent>
#include <QFocusEvent>
#include <QLabel>
#include <QMimeData>
#include <QUrl>

#include "src/platform/qt/views/qt_text.h"

void ShowVisible(const Control& control, QWidget& widget)
{
    widget.setVisible(control.Visible());
}

void ShowEnabled(const Control& control, QWidget& widget)
{
    widget.setEnabled(control.Enabled());
}

void ShowToolTip(const Control& control, QWidget& widget)
{
    if (control.ToolTipText().empty())
        return;
    widget.setToolTip(ToQt(control.ToolTipText()));
    NameForScreenReaders(ToQt(control.Caption()), widget);
}

void ShowFont(const Control& control, QWidget& widget)
{
    if (control.FontName().empty())
        return;
    QFont font = widget.font();
    font.setFamily(ToQt(control.FontName()));
    widget.setFont(font);
}

static QColor ToColour(std::int32_t colour)
{
    return QColor(colour & 0xff, (colour >> 8) & 0xff, (colour >> 16) & 0xff);
}

void ShowColours(const Control& control, QWidget& widget)
{
    // A palette without own entries follows the window's again.
    QPalette palette;
    palette.setResolveMask(0);
    if (control.BackColor())
        for (const QPalette::ColorRole role : {QPalette::Window, QPalette::Base})
            palette.setColor(role, ToColour(*control.BackColor()));
    if (control.ForeColor())
        for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text})
            palette.setColor(role, ToColour(*control.ForeColor()));
    if (control.BackColor() || control.ForeColor() || widget.testAttribute(Qt::WA_SetPalette)) {
        widget.setPalette(palette);
        widget.setAutoFillBackground(control.BackColor().has_value());
    }
}

void ShowCaption(const Control& control, QAbstractButton& widget)
{
    if (!control.Caption().empty())
        widget.setText(ToQt(control.Caption()));
    NameForScreenReaders(widget.text(), widget);
}

static QString BuddyText(const QWidget& widget)
{
    const QWidget* const window = widget.window();
    for (const QLabel* label : window->findChildren<QLabel*>())
        if (label->buddy() == &widget)
            return label->text();
    return {};
}

void NameForScreenReaders(const QString& caption, QWidget& widget)
{
    for (const QString& text : {caption, BuddyText(widget), widget.toolTip()})
        if (const QString plain = WithoutMnemonic(text); !plain.isEmpty()) {
            widget.setAccessibleName(plain);
            return;
        }
}

static std::vector<std::string> DroppedPaths(const QMimeData& data)
{
    std::vector<std::string> paths;
    for (const QUrl& url : data.urls())
        if (url.isLocalFile())
            paths.push_back(FromQt(url.toLocalFile()));
    return paths;
}

bool PassOnEvent(Control& control, QEvent& event)
{
    switch (event.type()) {
        case QEvent::FocusOut:
            // A menu, a list or another window that comes to the front doesn't end the editing of a field.
            if (const auto reason = static_cast<QFocusEvent&>(event).reason();
                reason != Qt::PopupFocusReason && reason != Qt::ActiveWindowFocusReason)
                control.UserLeaves();
            return false;
        case QEvent::DragEnter:
        case QEvent::DragMove: {
            auto& drag = static_cast<QDropEvent&>(event);
            if (!control.OnDrop || !control.bTakesActs() || !drag.mimeData()->hasUrls())
                return false;
            drag.setDropAction(Qt::CopyAction);
            drag.accept();
            return true;
        }
        case QEvent::Drop: {
            auto& drop = static_cast<QDropEvent&>(event);
            const std::vector<std::string> paths = DroppedPaths(*drop.mimeData());
            if (!control.OnDrop || paths.empty())
                return false;
            drop.setDropAction(Qt::CopyAction);
            drop.accept();
            // The program that the files come from waits until this returns, and a handler may ask things.
            QMetaObject::invokeMethod(
                qApp, [&control, paths] { control.UserDrops(paths); }, Qt::QueuedConnection);
            return true;
        }
        default:
            return false;
    }
}

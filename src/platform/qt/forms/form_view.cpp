// Shows forms in their windows and passes on what concerns a window as a whole.
#include "src/platform/qt/forms/form_view.h"

#include <QDialog>
#include <QKeyEvent>
#include <QScopedValueRollback>
#include <QScreen>

#include "src/platform/qt/views/qt_text.h"

static constexpr int kTwipsPerPixel = 15;

FormView::FormView(Form& form, QWidget& widget, QWidget& root)
    : form_(form), widget_(widget), bindings_(BindControls(form, root)), watch_(form, *this)
{
    widget.setObjectName(ToQt(form.sName()));
    FormView::CaptionChanged();
    EnabledChanged();
    FontChanged();
    HourglassChanged();
}

void FormView::CaptionChanged()
{
    QString title = ToQt(form_.Caption());
    if (compose_)
        title = compose_(title);
    if (widget_.isWindow())
        title.replace(QStringLiteral("[*]"), QStringLiteral("[*][*]"));  // Qt's mark of a changed document
    if (!title.isEmpty() || !widget_.isWindow())
        widget_.setWindowTitle(title);
}

void FormView::ComposeTitle(std::function<QString(const QString&)> compose)
{
    compose_ = std::move(compose);
    FormView::CaptionChanged();
}

void FormView::FontChanged()
{
    if (form_.FontName().empty())
        return;
    QFont font = widget_.font();
    font.setFamily(ToQt(form_.FontName()));
    widget_.setFont(font);
}

void FormView::HourglassChanged()
{
    if (form_.Hourglass())
        widget_.setCursor(Qt::WaitCursor);
    else
        widget_.unsetCursor();
}

FormWindow::FormWindow(Form& form, std::unique_ptr<QWidget> window)
    : FormView(form, *window, *window), window_(std::move(window))
{
    window_->installEventFilter(this);
    PlaceChanged();
    FormWindow::VisibleChanged();
}

FormWindow::~FormWindow()
{
    window_->removeEventFilter(this);
    Unbind();
}

void FormWindow::VisibleChanged()
{
    if (form_.Visible() == window_->isVisible())
        return;
    window_->setVisible(form_.Visible());
    if (form_.Visible())
        BroughtToFront();
    else if (loop_)
        loop_->quit();
}

void FormWindow::BroughtToFront()
{
    window_->raise();
    window_->activateWindow();
}

static bool IsOnScreen(const QRect& place, const QWidget& window)
{
    for (const QScreen* screen : window.screen()->virtualSiblings())
        if (screen->availableGeometry().intersects(place.adjusted(0, 0, 0, -place.height() / 2)))
            return true;
    return false;
}

void FormWindow::PlaceChanged()
{
    const WindowPlace& place = form_.Place();
    if (placing_ || place.lWidth <= 0 || place.lHeight <= 0)
        return;
    const QScopedValueRollback<bool> placing(placing_, true);
    const QRect rect(place.lLeft / kTwipsPerPixel, place.lTop / kTwipsPerPixel, place.lWidth / kTwipsPerPixel,
                     place.lHeight / kTwipsPerPixel);
    window_->resize(rect.size());
    if (IsOnScreen(rect, *window_))
        window_->move(rect.topLeft());
    Qt::WindowStates state = window_->windowState() & ~(Qt::WindowMaximized | Qt::WindowMinimized);
    if (place.lWindowState == kWindowMaximized)
        state |= Qt::WindowMaximized;
    window_->setWindowState(state);
}

void FormWindow::TellPlace()
{
    if (placing_ || !window_->isVisible())
        return;
    const QScopedValueRollback<bool> placing(placing_, true);
    WindowPlace place = form_.Place();
    if (window_->isMaximized() || window_->isMinimized()) {
        place.lWindowState = window_->isMaximized() ? kWindowMaximized : kWindowMinimized;
    } else {
        // The frame's position and the size of what is inside it.
        place = {kWindowNormal, window_->x() * kTwipsPerPixel, window_->y() * kTwipsPerPixel,
                 window_->width() * kTwipsPerPixel, window_->height() * kTwipsPerPixel};
    }
    form_.UserPlaces(place);
}

bool FormWindow::PassOnKey(const QKeyEvent& event)
{
    const std::string key = KeyName(event);
    if (key.empty() || form_.UserPresses(key))
        return !key.empty();
    if (key != "Esc" || !qobject_cast<QDialog*>(window_.get()))
        return false;
    form_.UserCloses();
    return true;
}

bool FormWindow::eventFilter(QObject*, QEvent* event)
{
    switch (event->type()) {
        case QEvent::Close:
            event->ignore();  // the form decides
            form_.UserCloses();
            return true;
        case QEvent::KeyPress:
            return PassOnKey(static_cast<QKeyEvent&>(*event));
        case QEvent::Resize:
        case QEvent::Move:
        case QEvent::WindowStateChange:
            TellPlace();
            return false;
        default:
            return false;
    }
}

void FormWindow::RunUntilHidden()
{
    QEventLoop loop;
    const QScopedValueRollback<QEventLoop*> waiting(loop_, &loop);
    if (form_.Visible())
        loop.exec();
}

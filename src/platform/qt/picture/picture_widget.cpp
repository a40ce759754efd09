// Draws pictures and follows wheel and mouse.
#include "src/platform/qt/picture/picture_widget.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>
#include <QThreadPool>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>
#include <utility>

static constexpr qint64 kPixelsAtOnce = 4'000'000;  ///< up to here, making the levels takes less than a frame
static constexpr double kWheelStep = 1.25;
static constexpr double kSharpFrom = 2;  ///< from this zoom on, pixels are shown as squares

PictureWidget::PictureWidget(QWidget* parent) : QWidget(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setProperty("zoom", zoom_);
}

QSize PictureWidget::ViewSize() const
{
    return (QSizeF(size()) * devicePixelRatioF()).toSize();
}

QSize PictureWidget::sizeHint() const
{
    return {640, 480};
}

QSize PictureWidget::minimumSizeHint() const
{
    return {320, 240};
}

void PictureWidget::SetPicture(std::shared_ptr<const ImageBuffer> picture)
{
    ++generation_;
    levels_.reset();
    if (picture && picture->width > 0 && picture->height > 0) {
        if (qint64{picture->width} * picture->height <= kPixelsAtOnce) {
            levels_ = PictureLevels::Make(std::move(picture));
        } else {
            levels_ = std::make_shared<PictureLevels>(picture);
            MakeLevels(std::move(picture));
        }
    }
    setCursor(levels_ ? Qt::OpenHandCursor : Qt::ArrowCursor);
    update();
}

void PictureWidget::MakeLevels(std::shared_ptr<const ImageBuffer> picture)
{
    QThreadPool::globalInstance()->start(
        [widget = QPointer<PictureWidget>(this), generation = generation_, picture = std::move(picture)] {
            auto levels = PictureLevels::Make(picture);
            QMetaObject::invokeMethod(
                qApp,
                [widget, generation, levels = std::move(levels)] {
                    if (!widget || widget->generation_ != generation)
                        return;
                    widget->levels_ = levels;
                    widget->update();
                },
                Qt::QueuedConnection);
        });
}

void PictureWidget::SetZoom(double zoom)
{
    zoom_ = zoom;
    setProperty("zoom", zoom_);
    update();
}

void PictureWidget::SetOffset(QPointF offset)
{
    offset_ = offset;
    update();
}

static void DrawChecks(QPainter& painter, const QRectF& area, const QPalette& palette)
{
    constexpr int kCheck = 8;
    QPixmap tile(2 * kCheck, 2 * kCheck);
    tile.fill(palette.color(QPalette::Base));
    QPainter checks(&tile);
    const QColor dark = palette.color(QPalette::AlternateBase);
    checks.fillRect(0, 0, kCheck, kCheck, dark);
    checks.fillRect(kCheck, kCheck, kCheck, kCheck, dark);
    checks.end();
    painter.drawTiledPixmap(area, tile);
}

void PictureWidget::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), palette().brush(QPalette::Base));
    if (!levels_)
        return;
    // In pixels of the screen from here on.
    const double ratio = devicePixelRatioF();
    painter.scale(1 / ratio, 1 / ratio);
    const QSize view = ViewSize();
    const QSizeF picture = levels_->Level(0).size();
    // Whole pixels of the screen, so that a picture at 100 percent isn't blurred.
    const QPointF origin(std::round(view.width() / 2.0 - offset_.x() * zoom_),
                         std::round(view.height() / 2.0 - offset_.y() * zoom_));
    const QRectF target = QRectF(origin, picture * zoom_) & QRectF(QPointF(0, 0), QSizeF(view));
    if (target.isEmpty())
        return;
    const std::size_t n = levels_->LevelFor(zoom_);
    const QImage& level = levels_->Level(n);
    const double scale_x = level.width() / (picture.width() * zoom_);
    const double scale_y = level.height() / (picture.height() * zoom_);
    const QRectF source((target.x() - origin.x()) * scale_x, (target.y() - origin.y()) * scale_y,
                        target.width() * scale_x, target.height() * scale_y);
    if (levels_->HasAlpha())
        DrawChecks(painter, target, palette());
    // While the levels aren't there, shrinking smoothly would read the whole picture for each frame.
    const bool coarse = zoom_ < 0.5 && levels_->Count() == 1;
    painter.setRenderHint(QPainter::SmoothPixmapTransform, zoom_ != 1 && zoom_ < kSharpFrom && !coarse);
    painter.drawImage(target, level, source);
}

void PictureWidget::resizeEvent(QResizeEvent*)
{
    if (on_resize)
        on_resize();
}

void PictureWidget::ZoomAround(QPointF position, double factor)
{
    if (!levels_ || !on_zoom)
        return;
    const double ratio = devicePixelRatioF();
    const QPointF from_middle = (position - QPointF(width() / 2.0, height() / 2.0)) * ratio;
    const double zoom = std::clamp(zoom_ * factor, 0.01, 10.0);
    on_zoom(zoom, offset_ + from_middle / zoom_ - from_middle / zoom);
}

void PictureWidget::wheelEvent(QWheelEvent* event)
{
    const double steps = event->angleDelta().y() / 120.0;
    if (steps != 0)
        ZoomAround(event->position(), std::pow(kWheelStep, steps));
    event->accept();
}

void PictureWidget::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || !levels_)
        return;
    dragging_ = true;
    drag_from_ = event->position();
    offset_at_drag_ = offset_;
    setCursor(Qt::ClosedHandCursor);
}

void PictureWidget::mouseMoveEvent(QMouseEvent* event)
{
    if (dragging_ && on_scroll)
        on_scroll(offset_at_drag_ - (event->position() - drag_from_) * devicePixelRatioF() / zoom_);
}

void PictureWidget::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || !dragging_)
        return;
    dragging_ = false;
    setCursor(Qt::OpenHandCursor);
}

void PictureWidget::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton && on_double_click)
        on_double_click();
}

void PictureWidget::keyPressEvent(QKeyEvent* event)
{
    const double step = 40 * devicePixelRatioF() / zoom_;
    const auto scroll = [&](double x, double y) {
        if (on_scroll)
            on_scroll(offset_ + QPointF(x, y));
    };
    switch (event->key()) {
        case Qt::Key_Plus:
        case Qt::Key_Equal:
            return ZoomAround(rect().toRectF().center(), kWheelStep);
        case Qt::Key_Minus:
            return ZoomAround(rect().toRectF().center(), 1 / kWheelStep);
        case Qt::Key_Left:
            return scroll(-step, 0);
        case Qt::Key_Right:
            return scroll(step, 0);
        case Qt::Key_Up:
            return scroll(0, -step);
        case Qt::Key_Down:
            return scroll(0, step);
        case Qt::Key_Return:
        case Qt::Key_Enter:
            if (on_double_click)
                on_double_click();
            return;
        default:
            QWidget::keyPressEvent(event);
    }
}

// Shows a picture at any zoom.
// Room: platform/qt/picture.
#pragma once

#include <QPointF>
#include <QWidget>
#include <functional>
#include <memory>

#include "src/platform/image_buffer.h"
#include "src/platform/qt/picture/picture_levels.h"

/// Draws the picture with the point `offset` (in its pixels) in the middle. At a zoom of 1 a pixel of the
/// picture is one of the screen. Wheel and mouse only report what the person wants; the owner sets zoom and
/// offset. The dynamic property "zoom" has the zoom.
class PictureWidget : public QWidget
{
public:
    explicit PictureWidget(QWidget* parent = nullptr);

    /// Null blanks the view. A large picture is drawn coarsely until its levels are made, which happens in
    /// the background.
    void SetPicture(std::shared_ptr<const ImageBuffer> picture);
    void SetZoom(double zoom);
    void SetOffset(QPointF offset);
    /// The view's size in pixels of the screen.
    QSize ViewSize() const;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

    std::function<void(double zoom, QPointF offset)> on_zoom;
    std::function<void(QPointF offset)> on_scroll;
    std::function<void()> on_resize;
    std::function<void()> on_double_click;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void ZoomAround(QPointF position, double factor);
    void MakeLevels(std::shared_ptr<const ImageBuffer> picture);

    std::shared_ptr<const PictureLevels> levels_;  ///< null for a blank view
    std::uint64_t generation_ = 0;  ///< of the picture: levels that come late for an older one are dropped
    double zoom_ = 1;
    QPointF offset_;
    QPointF drag_from_;  ///< where the mouse was pressed
    QPointF offset_at_drag_;
    bool dragging_ = false;
};

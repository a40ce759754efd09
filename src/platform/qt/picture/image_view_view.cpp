// Shows an image view's picture and passes on zooming and panning.
#include "src/platform/qt/picture/image_view_view.h"

#include "src/platform/qt/views/qt_text.h"

ImageViewView::ImageViewView(ImageView& control, PictureWidget& widget) : ControlView(control, widget)
{
    widget.on_zoom = [this](double zoom, QPointF offset) {
        const RedrawLock lock(control_);
        control_.UserZooms(zoom);
        control_.UserScrolls(offset.x(), offset.y());
    };
    widget.on_scroll = [this](QPointF offset) { control_.UserScrolls(offset.x(), offset.y()); };
    widget.on_resize = [this] {
        control_.UserResizes(widget_.ViewSize().width(), widget_.ViewSize().height());
    };
    widget.on_double_click = [this] { control_.UserDoubleClicks(); };
    widget.on_resize();
    ImageChanged();
}

ImageViewView::~ImageViewView()
{
    widget_.on_zoom = nullptr;
    widget_.on_scroll = nullptr;
    widget_.on_resize = nullptr;
    widget_.on_double_click = nullptr;
}

void ImageViewView::ImageChanged()
{
    widget_.SetPicture(control_.pImage());
    ZoomChanged();
    OffsetChanged();
    Describe();
}

void ImageViewView::ZoomChanged()
{
    widget_.SetZoom(control_.Zoom());
}

void ImageViewView::OffsetChanged()
{
    widget_.SetOffset({control_.OffsetX(), control_.OffsetY()});
}

void ImageViewView::Describe()
{
    if (!control_.pImage())
        return widget_.setAccessibleDescription({});
    const std::string& file = control_.Caption().empty() ? control_.Tag() : control_.Caption();
    widget_.setAccessibleDescription(
        QStringLiteral("%1, %2 × %3").arg(ToQt(file)).arg(control_.ImageWidth()).arg(control_.ImageHeight()));
}

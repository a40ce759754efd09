// Ties an image view to the widget that draws it.
// Room: platform/qt/picture.
#pragma once

#include "src/controls/image_view.h"
#include "src/platform/qt/picture/picture_widget.h"
#include "src/platform/qt/views/control_view.h"

/// The accessible description names the file (the view's caption, else its tag) and its size.
class ImageViewView final : public ControlView<ImageView, PictureWidget>
{
public:
    ImageViewView(ImageView& control, PictureWidget& widget);
    ~ImageViewView() override;
    void ImageChanged() override;
    void ZoomChanged() override;
    void OffsetChanged() override;
    void CaptionChanged() override { Describe(); }
    void TagChanged() override { Describe(); }

private:
    void Describe();
};

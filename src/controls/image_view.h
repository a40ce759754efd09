// Shows one picture: which, how large, and which part of it.
// Room: controls.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>

#include "src/controls/control.h"

struct ImageBuffer;

class ImageViewObserver : public ControlObserver
{
public:
    virtual void ImageChanged() {
    }  ///< another picture or page, or none; zoom and offsets may have changed too
    virtual void ZoomChanged() {}
    virtual void OffsetChanged() {}
};

/// Change several things about it under a RedrawLock, and it is drawn once.
class ImageView : public Control
{
public:
    using Observer = ImageViewObserver;
    using Control::Control;
    ControlKind eKind() const override { return ControlKind::ImageView; }

    /// The picture on show, shared with the views, or null for a blank view.
    const std::shared_ptr<const ImageBuffer>& pImage() const { return m_pImage; }
    std::int32_t Page() const { return m_lPage; }  ///< of its file, from 0
    std::int32_t ImageWidth() const;               ///< pixels; 0 for a blank view
    std::int32_t ImageHeight() const;
    /// Shows a picture from its middle on, at the zoom of the one before; null blanks the view.
    void SetImage(std::shared_ptr<const ImageBuffer> pImage, std::int32_t lPage = 0);

    double Zoom() const { return m_dZoom; }  ///< 1 is 100 percent
    void SetZoom(double dZoom);              ///< from 0.01 to 10; another value goes to the nearest
    /// Makes the whole picture fit the view, in its middle.
    void FitToWindow();
    double OffsetX() const { return m_dOffsetX; }  ///< the picture's column in the middle of the view
    double OffsetY() const { return m_dOffsetY; }  ///< the picture's row there
    /// Stays inside the picture.
    void SetOffset(double dX, double dY);
    /// The picture's size as it is shown, in pixels.
    std::int32_t ShownWidth() const;
    std::int32_t ShownHeight() const;

    // A person's acts: wheel and mouse, and the size given to the view, which is no act and is always taken.
    void UserZooms(double dZoom);
    void UserScrolls(double dOffsetX, double dOffsetY);
    void UserResizes(std::int32_t lWidth, std::int32_t lHeight);
    std::int32_t ViewWidth() const { return m_lViewWidth; }  ///< pixels; 0 without a view
    std::int32_t ViewHeight() const { return m_lViewHeight; }

    // The logic's handlers.
    std::function<void()> OnZoom;    ///< a person zoomed
    std::function<void()> OnScroll;  ///< a person moved the picture
    std::function<void()> OnResize;  ///< the view has another size

private:
    void TellHeldBack() override;
    bool StoreZoom(double dZoom);
    bool StoreOffset(double dX, double dY);

    std::shared_ptr<const ImageBuffer> m_pImage;
    std::int32_t m_lPage = 0;
    double m_dZoom = 1;
    double m_dOffsetX = 0;
    double m_dOffsetY = 0;
    std::int32_t m_lViewWidth = 0;
    std::int32_t m_lViewHeight = 0;
    bool m_bImageHeld = false;
    bool m_bZoomHeld = false;
    bool m_bOffsetHeld = false;
};

// Keeps the image, zoom and offset of an image view within their limits.
#include "src/controls/image_view.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "src/platform/image_buffer.h"

constexpr double kLeastZoom = 0.01;
constexpr double kMostZoom = 10;

std::int32_t ImageView::ImageWidth() const
{
    return m_pImage ? m_pImage->width : 0;
}

std::int32_t ImageView::ImageHeight() const
{
    return m_pImage ? m_pImage->height : 0;
}

std::int32_t ImageView::ShownWidth() const
{
    return static_cast<std::int32_t>(std::lround(ImageWidth() * m_dZoom));
}

std::int32_t ImageView::ShownHeight() const
{
    return static_cast<std::int32_t>(std::lround(ImageHeight() * m_dZoom));
}

void ImageView::SetImage(std::shared_ptr<const ImageBuffer> pImage, std::int32_t lPage)
{
    if (!pImage && !m_pImage)
        return;
    m_pImage = std::move(pImage);
    m_lPage = m_pImage ? lPage : 0;
    m_dOffsetX = 0.5 * ImageWidth();
    m_dOffsetY = 0.5 * ImageHeight();
    TellOrHold(m_bImageHeld, &ImageViewObserver::ImageChanged);
}

bool ImageView::StoreZoom(double dZoom)
{
    dZoom = std::isnan(dZoom) ? m_dZoom : std::clamp(dZoom, kLeastZoom, kMostZoom);
    if (dZoom == m_dZoom)
        return false;
    m_dZoom = dZoom;
    TellOrHold(m_bZoomHeld, &ImageViewObserver::ZoomChanged);
    return true;
}

bool ImageView::StoreOffset(double dX, double dY)
{
    dX = std::clamp(std::isnan(dX) ? m_dOffsetX : dX, 0.0, static_cast<double>(ImageWidth()));
    dY = std::clamp(std::isnan(dY) ? m_dOffsetY : dY, 0.0, static_cast<double>(ImageHeight()));
    if (dX == m_dOffsetX && dY == m_dOffsetY)
        return false;
    m_dOffsetX = dX;
    m_dOffsetY = dY;
    TellOrHold(m_bOffsetHeld, &ImageViewObserver::OffsetChanged);
    return true;
}

void ImageView::SetZoom(double dZoom)
{
    StoreZoom(dZoom);
}

void ImageView::SetOffset(double dX, double dY)
{
    StoreOffset(dX, dY);
}

void ImageView::FitToWindow()
{
    StoreOffset(0.5 * ImageWidth(), 0.5 * ImageHeight());
    if (ImageWidth() > 0 && ImageHeight() > 0 && m_lViewWidth > 0 && m_lViewHeight > 0)
        StoreZoom(std::min(1.0 * m_lViewWidth / ImageWidth(), 1.0 * m_lViewHeight / ImageHeight()));
    else
        StoreZoom(1);
}

void ImageView::UserZooms(double dZoom)
{
    if (bAccepts(&ImageViewObserver::ZoomChanged) && StoreZoom(dZoom))
        Raise(OnZoom);
}

void ImageView::UserScrolls(double dOffsetX, double dOffsetY)
{
    if (bAccepts(&ImageViewObserver::OffsetChanged) && StoreOffset(dOffsetX, dOffsetY))
        Raise(OnScroll);
}

void ImageView::UserResizes(std::int32_t lWidth, std::int32_t lHeight)
{
    if (lWidth == m_lViewWidth && lHeight == m_lViewHeight)
        return;
    m_lViewWidth = std::max(lWidth, 0);
    m_lViewHeight = std::max(lHeight, 0);
    Raise(OnResize);
}

void ImageView::TellHeldBack()
{
    TellIfHeld(m_bImageHeld, &ImageViewObserver::ImageChanged);
    TellIfHeld(m_bZoomHeld, &ImageViewObserver::ZoomChanged);
    TellIfHeld(m_bOffsetHeld, &ImageViewObserver::OffsetChanged);
}

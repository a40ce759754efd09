// Draws bitmaps on a metafile's picture.
// Room: platform/image/metafile/device.
#pragma once

#include <functional>
#include <optional>

#include "src/platform/image/metafile/device/device_context.h"

/// A parallelogram on the picture: where the source's top left, top right and bottom left corners go.
struct Corners {
    Point top_left;
    Point top_right;
    Point bottom_left;
};
Corners CornersOf(const Rect& rect, const Affine& map);

/// A part of a decoded bitmap. Negative widths and heights mirror it.
struct BitmapPart {
    const ImageBuffer& image;
    Rect source;  ///< pixels
};

/// A 1-bit mask; its pixel (x, y) is aligned with the source's top left corner.
struct BitmapMask {
    ImageBuffer image;
    std::int32_t x = 0;
    std::int32_t y = 0;
};

/// Draws the bitmap with the ternary raster operation rop, or rop_outside where the mask is 0.
void DrawBitmap(DeviceContext& dc, const BitmapPart& part, const Corners& corners, std::uint8_t rop,
                const BitmapMask* mask = nullptr, std::uint8_t rop_outside = 0xAA);
/// Blends the bitmap by alpha / 255 and, with own_alpha, by its own alpha; its colours are then
/// premultiplied.
void BlendBitmap(DeviceContext& dc, const BitmapPart& part, const Corners& corners, std::uint32_t alpha,
                 bool own_alpha);
/// Draws all pixels except those of one colour (red, green, blue).
void DrawBitmapExceptColor(DeviceContext& dc, const BitmapPart& part, const Corners& corners,
                           std::uint32_t left_out);
/// Applies a raster operation without a source to a rectangle in logical units.
void PaintRect(DeviceContext& dc, const Rect& rect, std::uint8_t rop);
/// Copies the picture's pixels around a rectangle in logical units, for use as a source.
bool CopyPicture(DeviceContext& dc, const Rect& rect, ImageBuffer& image);

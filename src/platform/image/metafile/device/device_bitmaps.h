// Bitmaps laid on a metafile's picture.
// Room: platform/image/metafile/device.
#pragma once

#include <functional>
#include <optional>

#include "src/platform/image/metafile/device/device_context.h"

/// Three corners on the picture: where the source's top left, top right and bottom left come.
struct Corners {
    Point top_left;
    Point top_right;
    Point bottom_left;
};
Corners CornersOf(const Rect& rect, const Affine& map);

/// A part of a decoded bitmap. Widths and heights below 0 mirror it.
struct BitmapPart {
    const ImageBuffer& image;
    Rect source;  ///< pixels
};

/// A bitmap of one bit a pixel that chooses pixels, lying over the source with (x, y) at the source's
/// corner.
struct BitmapMask {
    ImageBuffer image;
    std::int32_t x = 0;
    std::int32_t y = 0;
};

/// Lays the bitmap on the picture by ternary raster operations: rop, and where a mask says 0 rop_outside.
void DrawBitmap(DeviceContext& dc, const BitmapPart& part, const Corners& corners, std::uint8_t rop,
                const BitmapMask* mask = nullptr, std::uint8_t rop_outside = 0xAA);
/// Mixes it in by alpha / 255 and, if the bitmap is of that kind, by its own alpha, with which its colours
/// have been multiplied.
void BlendBitmap(DeviceContext& dc, const BitmapPart& part, const Corners& corners, std::uint32_t alpha,
                 bool own_alpha);
/// Leaves out the pixels of one colour (red, green, blue).
void DrawBitmapExceptColor(DeviceContext& dc, const BitmapPart& part, const Corners& corners,
                           std::uint32_t left_out);
/// A raster operation without a source on a rectangle of logical units.
void PaintRect(DeviceContext& dc, const Rect& rect, std::uint8_t rop);
/// The pixels of the picture around a rectangle of logical units, as a source.
bool CopyPicture(DeviceContext& dc, const Rect& rect, ImageBuffer& image);

// Bitmaps laid on a metafile's picture.
// Room: platform/image/metafile/device.
#pragma once

#include <functional>
#include <optional>

#include "src/platform/image/metafile/device/device_context.h"

/// Three corners on the picture: where the source's top left, top right and bottom left come.
struct Corners {
    Point ptTopLeft;
    Point ptTopRight;
    Point ptBottomLeft;
};
Corners objCornersOf(const Rect& rc, const Affine& objMap);

/// A part of a decoded bitmap. Widths and heights below 0 mirror it.
struct BitmapPart {
    const ImageBuffer& aImage;
    Rect rcSource;  ///< pixels
};

/// A bitmap of one bit a pixel that chooses pixels, lying over the source with (lX, lY) at the source's
/// corner.
struct BitmapMask {
    ImageBuffer aImage;
    std::int32_t lX = 0;
    std::int32_t lY = 0;
};

/// Lays the bitmap on the picture by ternary raster operations: nRop, and where a mask says 0 nRopOutside.
void DrawBitmap(DeviceContext& dc, const BitmapPart& objPart, const Corners& objCorners, std::uint8_t nRop,
                const BitmapMask* pMask = nullptr, std::uint8_t nRopOutside = 0xAA);
/// Mixes it in by nAlpha / 255 and, if the bitmap is of that kind, by its own alpha, with which its colours
/// have been multiplied.
void BlendBitmap(DeviceContext& dc, const BitmapPart& objPart, const Corners& objCorners,
                 std::uint32_t nAlpha, bool bOwnAlpha);
/// Leaves out the pixels of one colour (red, green, blue).
void DrawBitmapBut(DeviceContext& dc, const BitmapPart& objPart, const Corners& objCorners,
                   std::uint32_t nLeftOut);
/// A raster operation without a source on a rectangle of logical units.
void PaintRect(DeviceContext& dc, const Rect& rc, std::uint8_t nRop);
/// The pixels of the picture around a rectangle of logical units, as a source.
bool bCopyPicture(DeviceContext& dc, const Rect& rc, ImageBuffer& aImage);

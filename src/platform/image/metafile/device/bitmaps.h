// Decodes the bitmaps of records.
// Room: platform/image/metafile/device.
#pragma once

#include <optional>
#include <vector>

#include "src/platform/image/metafile/canvas/ink.h"
#include "src/platform/image/metafile/device/objects.h"
#include "src/platform/image_buffer.h"

class DeviceContext;

/// The dimensions of a bitmap, from its header.
struct DibShape {
    std::int64_t width = 0;
    std::int64_t height = 0;  ///< absolute value
    bool top_down = false;
    std::uint32_t bits = 0;
};
std::optional<DibShape> DibShapeOf(Bytes header);

/// Splits a packed DIB, as WMF records hold it, into header with palette, and bits. Empty if it isn't valid.
DibSource PackedDib(Bytes dib, bool indexes_palette);

/// A copy of the header, from which shape was read, with another height.
std::vector<std::uint8_t> WithHeight(Bytes header, const DibShape& shape, std::int64_t height);

enum class DibColors {
    kAsStored,
    kWithAlpha,    ///< the high byte of 32-bit pixels is alpha, whatever the header says
    kTextAndBack,  ///< two colours: text and background
};

/// Decodes a bitmap. False if it is invalid or the budget is spent.
bool DecodeBitmap(const DibSource& dib, const DeviceContext& dc, DibColors colors, ImageBuffer& image);
/// The same for a device-dependent bitmap; 1-bit pixels take the text and background colours.
bool DecodeBitmap(const Bitmap16Source& bitmap, const DeviceContext& dc, ImageBuffer& image);

/// The part of image within box, box-filtered by step_x by step_y pixels (1 copies pixels). Opaque unless
/// has_alpha.
Pixels PixelsOf(const ImageBuffer& image, const Box& box, std::int32_t step_x, std::int32_t step_y,
                bool has_alpha);

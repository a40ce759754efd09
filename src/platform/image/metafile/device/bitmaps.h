// The bitmaps that records carry, decoded.
// Room: platform/image/metafile/device.
#pragma once

#include <optional>
#include <vector>

#include "src/platform/image/metafile/canvas/ink.h"
#include "src/platform/image/metafile/device/objects.h"
#include "src/platform/image_buffer.h"

class DeviceContext;

/// What a bitmap's header says of its size.
struct DibShape {
    std::int64_t width = 0;
    std::int64_t height = 0;  ///< without its sign
    bool top_down = false;
    std::uint32_t bits = 0;
};
std::optional<DibShape> DibShapeOf(Bytes header);

/// A packed bitmap parted into header with palette and bits, as WMF records hold it. Empty when it is none.
DibSource PackedDib(Bytes dib, bool indexes_palette);

/// The header, which shape was read from, for another number of rows.
std::vector<std::uint8_t> WithHeight(Bytes header, const DibShape& shape, std::int64_t height);

enum class DibColors {
    kAsStored,
    kWithAlpha,    ///< the high byte of 32 bits is alpha, whatever the header says
    kTextAndBack,  ///< two colours, which are those of the text and its background
};

/// Decodes a bitmap. False for a broken one, or when the work isn't granted.
bool DecodeBitmap(const DibSource& dib, const DeviceContext& dc, DibColors colors, ImageBuffer& image);
/// The same of an old bitmap: one bit a pixel takes the colours of text and background.
bool DecodeBitmap(const Bitmap16Source& bitmap, const DeviceContext& dc, ImageBuffer& image);

/// The part of a picture within box, each pixel of it the mean of step_x by step_y pixels (1 for the pixels
/// themselves). Alpha is taken over only on demand.
Pixels PixelsOf(const ImageBuffer& image, const Box& box, std::int32_t step_x, std::int32_t step_y,
                bool has_alpha);

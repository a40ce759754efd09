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
    std::int64_t lWidth = 0;
    std::int64_t lHeight = 0;  ///< without its sign
    bool bTopDown = false;
    std::uint32_t nBits = 0;
};
std::optional<DibShape> objDibShape(Bytes aHeader);

/// A packed bitmap parted into header with palette and bits, as WMF records hold it. Empty when it is none.
DibSource objPackedDib(Bytes aDib, bool bIndexesPalette);

/// The header, which objShape was read from, for another number of rows.
std::vector<std::uint8_t> aWithHeight(Bytes aHeader, const DibShape& objShape, std::int64_t lHeight);

enum class DibColors {
    AsStored,
    WithAlpha,    ///< the high byte of 32 bits is alpha, whatever the header says
    TextAndBack,  ///< two colours, which are those of the text and its background
};

/// Decodes a bitmap. False for a broken one, or when the work isn't granted.
bool bDecoded(const DibSource& objDib, const DeviceContext& dc, DibColors eColors, ImageBuffer& aImage);
/// The same of an old bitmap: one bit a pixel takes the colours of text and background.
bool bDecoded(const Bitmap16Source& objBitmap, const DeviceContext& dc, ImageBuffer& aImage);

/// The part of a picture within box, each pixel of it the mean of nStepX by nStepY pixels (1 for the pixels
/// themselves). Alpha is taken over only on demand.
Pixels objPixelsOf(const ImageBuffer& aImage, const Box& box, std::int32_t nStepX, std::int32_t nStepY,
                   bool bAlpha);

// Turns brushes into colours and tiles.
#include "src/platform/image/metafile/device/brush_ink.h"

#include "src/platform/image/metafile/device/bitmaps.h"
#include "src/platform/image/metafile/device/device_context.h"

// Patterns are 8 by 8 pixels, as a rule; what is larger than a screen is no pattern.
static constexpr std::int64_t kMostPatternPixels = 4'000'000;

// Hatches have one line in eight pixels of the picture, whatever its scale.
static bool bOnHatch(std::uint32_t nHatch, std::int32_t x, std::int32_t y)
{
    const bool bLevel = y == 3;
    const bool bUpright = x == 4;
    const bool bFalling = x == y;
    const bool bRising = x + y == 7;
    switch (nHatch) {
        case 0:
            return bLevel;
        case 1:
            return bUpright;
        case 2:
            return bFalling;
        case 3:
            return bRising;
        case 4:
            return bLevel || bUpright;
        default:
            return bFalling || bRising;
    }
}

static std::optional<Ink> objTileInk(const ImageBuffer& aImage)
{
    const bool bTooLarge = std::int64_t{aImage.width} * aImage.height > kMostPatternPixels ||
                           aImage.width > kMaxSurfaceSide || aImage.height > kMaxSurfaceSide;
    if (bTooLarge)
        return std::nullopt;
    const Box boxAll{0, 0, aImage.width, aImage.height};
    return Ink{0, std::make_shared<const Pixels>(objPixelsOf(aImage, boxAll, 1, 1, false)), 0, 0};
}

std::optional<Ink> objInkOf(const Brush& objBrush, const DeviceContext& dc)
{
    ImageBuffer aImage;
    switch (objBrush.eKind) {
        case BrushKind::Null:
            return std::nullopt;
        case BrushKind::Solid:
            return Ink{dc.Resolved(objBrush.nColor), nullptr, 0, 0};
        case BrushKind::Hatched: {
            // The numbers above are dithered and solid fills.
            if (objBrush.nHatch > 5)
                return Ink{dc.Resolved(objBrush.nColor), nullptr, 0, 0};
            Pixels objTile{8, 8, std::vector<std::uint32_t>(64)};
            const std::uint32_t nBack =
                dc.State.bOpaqueBack ? dc.Resolved(dc.State.nBackColor) | 0xFF000000 : 0;
            for (std::int32_t y = 0; y < 8; ++y)
                for (std::int32_t x = 0; x < 8; ++x)
                    objTile.Row(y)[x] =
                        bOnHatch(objBrush.nHatch, x, y) ? dc.Resolved(objBrush.nColor) | 0xFF000000 : nBack;
            return Ink{0, std::make_shared<const Pixels>(std::move(objTile)), 0, 0};
        }
        case BrushKind::Dib:
            return bDecoded(objBrush.objDib, dc, DibColors::AsStored, aImage) ? objTileInk(aImage)
                                                                              : std::nullopt;
        case BrushKind::MonoDib:
            return bDecoded(objBrush.objDib, dc, DibColors::TextAndBack, aImage) ? objTileInk(aImage)
                                                                                 : std::nullopt;
        case BrushKind::Bitmap16:
            return bDecoded(objBrush.objBitmap16, dc, aImage) ? objTileInk(aImage) : std::nullopt;
    }
    return std::nullopt;
}

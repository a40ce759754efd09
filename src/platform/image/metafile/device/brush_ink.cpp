// Converts brushes to colours and tiles.
#include "src/platform/image/metafile/device/brush_ink.h"

#include "src/platform/image/metafile/device/bitmaps.h"
#include "src/platform/image/metafile/device/device_context.h"

// Patterns are usually 8 by 8 pixels; one larger than a screen is invalid.
static constexpr std::int64_t kMaxPatternPixels = 4'000'000;

// Hatch lines are eight picture pixels apart at any scale.
static bool IsOnHatch(std::uint32_t hatch, std::int32_t x, std::int32_t y)
{
    const bool is_level = y == 3;
    const bool upright = x == 4;
    const bool falling = x == y;
    const bool rising = x + y == 7;
    switch (hatch) {
        case 0:
            return is_level;
        case 1:
            return upright;
        case 2:
            return falling;
        case 3:
            return rising;
        case 4:
            return is_level || upright;
        default:
            return falling || rising;
    }
}

static std::optional<Ink> TileInk(const ImageBuffer& image)
{
    const bool too_large = std::int64_t{image.width} * image.height > kMaxPatternPixels ||
                           image.width > kMaxSurfaceSide || image.height > kMaxSurfaceSide;
    if (too_large)
        return std::nullopt;
    const Box all{0, 0, image.width, image.height};
    return Ink::Tile(PixelsOf(image, all, 1, 1, false));
}

std::optional<Ink> BrushInk(const Brush& brush, const DeviceContext& dc)
{
    ImageBuffer image;
    switch (brush.kind) {
        case BrushKind::kNull:
            return std::nullopt;
        case BrushKind::kSolid:
            return Ink::Solid(dc.ResolveColor(brush.color));
        case BrushKind::kHatched: {
            // Higher values are dithered and solid fills.
            if (brush.hatch > 5)
                return Ink::Solid(dc.ResolveColor(brush.color));
            Pixels tile{8, 8, std::vector<std::uint32_t>(64)};
            const std::uint32_t back =
                dc.state.opaque_back ? dc.ResolveColor(dc.state.back_color) | 0xFF000000 : 0;
            for (std::int32_t y = 0; y < 8; ++y)
                for (std::int32_t x = 0; x < 8; ++x)
                    tile.Row(y)[x] =
                        IsOnHatch(brush.hatch, x, y) ? dc.ResolveColor(brush.color) | 0xFF000000 : back;
            return Ink::Tile(std::move(tile));
        }
        case BrushKind::kDib:
            return DecodeBitmap(brush.dib, dc, DibColors::kAsStored, image) ? TileInk(image) : std::nullopt;
        case BrushKind::kMonoDib:
            return DecodeBitmap(brush.dib, dc, DibColors::kTextAndBack, image) ? TileInk(image)
                                                                               : std::nullopt;
        case BrushKind::kBitmap16:
            return DecodeBitmap(brush.bitmap16, dc, image) ? TileInk(image) : std::nullopt;
    }
    return std::nullopt;
}

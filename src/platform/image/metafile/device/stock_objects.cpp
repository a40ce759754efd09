// The stock pens, brushes and fonts of every device context.
#include "src/platform/image/metafile/device/objects.h"

static Object SolidBrush(ColorRef color)
{
    return std::make_shared<const Brush>(Brush{BrushKind::kSolid, color, 0, {}, {}});
}

static Object ThinPen(std::uint32_t style, ColorRef color)
{
    Pen pen;
    pen.style = style;
    pen.brush.color = color;
    return std::make_shared<const Pen>(pen);
}

static Object StockFont(double height, std::int32_t weight, const char* face, bool fixed)
{
    Font result;
    result.height = height;
    result.weight = weight;
    result.face = face;
    result.pitch_and_family = fixed ? 0x31 : 0x22;
    return std::make_shared<const Font>(result);
}

Object StockObject(std::uint32_t index)
{
    switch (index) {
        case 0:
        case 18:
            return SolidBrush(0xFFFFFF);
        case 1:
            return SolidBrush(0xC0C0C0);
        case 2:
            return SolidBrush(0x808080);
        case 3:
            return SolidBrush(0x404040);
        case 4:
            return SolidBrush(0x000000);
        case 5:
            return std::make_shared<const Brush>(Brush{BrushKind::kNull, 0, 0, {}, {}});
        case 6:
            return ThinPen(0, 0xFFFFFF);
        case 7:
        case 19:
            return ThinPen(0, 0x000000);
        case 8:
            return ThinPen(PenStyle::kNull, 0);
        case 10:
        case 11:
        case 16:
            return StockFont(12, 400, "Courier New", true);
        case 12:
        case 17:
            return StockFont(-11, 400, "Arial", false);
        case 13:
        case 14:
            return StockFont(16, 700, "Arial", false);
        case 15:
            return DefaultPalette();
        default:
            return {};
    }
}

std::shared_ptr<const Palette> DefaultPalette()
{
    static const auto kPalette = std::make_shared<const Palette>(
        Palette{{0x000000, 0x800000, 0x008000, 0x808000, 0x000080, 0x800080, 0x008080,
                 0xC0C0C0, 0xC0DCC0, 0xA6CAF0, 0xFFFBF0, 0xA0A0A4, 0x808080, 0xFF0000,
                 0x00FF00, 0xFFFF00, 0x0000FF, 0xFF00FF, 0x00FFFF, 0xFFFFFF}});
    return kPalette;
}

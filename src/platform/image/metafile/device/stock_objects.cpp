// The pens, brushes and fonts that every device context has.
#include "src/platform/image/metafile/device/objects.h"

static Object objSolidBrush(ColorRef nColor)
{
    return std::make_shared<const Brush>(Brush{BrushKind::Solid, nColor, 0, {}, {}});
}

static Object objThinPen(std::uint32_t nStyle, ColorRef nColor)
{
    Pen objPen;
    objPen.nStyle = nStyle;
    objPen.objBrush.nColor = nColor;
    return std::make_shared<const Pen>(objPen);
}

static Object objFont(double dHeight, std::int32_t lWeight, const char* sFace, bool bFixed)
{
    Font objResult;
    objResult.dHeight = dHeight;
    objResult.lWeight = lWeight;
    objResult.sFace = sFace;
    objResult.nPitchAndFamily = bFixed ? 0x31 : 0x22;
    return std::make_shared<const Font>(objResult);
}

Object objStock(std::uint32_t nIndex)
{
    switch (nIndex) {
        case 0:
        case 18:
            return objSolidBrush(0xFFFFFF);
        case 1:
            return objSolidBrush(0xC0C0C0);
        case 2:
            return objSolidBrush(0x808080);
        case 3:
            return objSolidBrush(0x404040);
        case 4:
            return objSolidBrush(0x000000);
        case 5:
            return std::make_shared<const Brush>(Brush{BrushKind::Null, 0, 0, {}, {}});
        case 6:
            return objThinPen(0, 0xFFFFFF);
        case 7:
        case 19:
            return objThinPen(0, 0x000000);
        case 8:
            return objThinPen(PenStyle::kNull, 0);
        case 10:
        case 11:
        case 16:
            return objFont(12, 400, "Courier New", true);
        case 12:
        case 17:
            return objFont(-11, 400, "Arial", false);
        case 13:
        case 14:
            return objFont(16, 700, "Arial", false);
        case 15:
            return pDefaultPalette();
        default:
            return {};
    }
}

std::shared_ptr<const Palette> pDefaultPalette()
{
    static const auto pPalette = std::make_shared<const Palette>(
        Palette{{0x000000, 0x800000, 0x008000, 0x808000, 0x000080, 0x800080, 0x008080,
                 0xC0C0C0, 0xC0DCC0, 0xA6CAF0, 0xFFFBF0, 0xA0A0A4, 0x808080, 0xFF0000,
                 0x00FF00, 0xFFFF00, 0x0000FF, 0xFF00FF, 0x00FFFF, 0xFFFFFF}});
    return pPalette;
}

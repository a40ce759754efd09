// Builds EMF and WMF files record by record.
#pragma once

#include <array>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string_view>
#include <vector>

#include "src/platform/image_buffer.h"
#include "tests/platform/image/support/byte_maker.h"

constexpr std::uint32_t kRed = 0x0000FF;  // as records hold colours: red in the low byte
constexpr std::uint32_t kGreen = 0x00FF00;
constexpr std::uint32_t kBlue = 0xFF0000;
constexpr std::uint32_t kYellow = 0x00FFFF;
constexpr std::uint32_t kBlack = 0x000000;
constexpr std::uint32_t kWhite = 0xFFFFFF;

/// Stock objects by their numbers in EMF records.
constexpr std::int32_t kNullBrush = static_cast<std::int32_t>(0x80000005);
constexpr std::int32_t kBlackPen = static_cast<std::int32_t>(0x80000007);
constexpr std::int32_t kNullPen = static_cast<std::int32_t>(0x80000008);
constexpr std::int32_t kBlackBrush = static_cast<std::int32_t>(0x80000004);

/// The numbers of EMF records, as far as tests name them.
namespace Emr
{
enum : std::uint32_t {
    PolyBezier = 2,
    Polygon = 3,
    Polyline = 4,
    PolyBezierTo = 5,
    PolylineTo = 6,
    PolyPolyline = 7,
    PolyPolygon = 8,
    SetWindowExt = 9,
    SetWindowOrg = 10,
    SetViewportExt = 11,
    SetViewportOrg = 12,
    SetBrushOrg = 13,
    Eof = 14,
    SetPixel = 15,
    SetMapMode = 17,
    SetBkMode = 18,
    SetPolyFillMode = 19,
    SetRop2 = 20,
    SetStretchBltMode = 21,
    SetTextAlign = 22,
    SetTextColor = 24,
    SetBkColor = 25,
    OffsetClip = 26,
    MoveTo = 27,
    SetMetaRegion = 28,
    ExcludeClipRect = 29,
    IntersectClipRect = 30,
    ScaleViewportExt = 31,
    ScaleWindowExt = 32,
    SaveDc = 33,
    RestoreDc = 34,
    SetWorldTransform = 35,
    ModifyWorldTransform = 36,
    SelectObject = 37,
    CreatePen = 38,
    CreateBrush = 39,
    DeleteObject = 40,
    AngleArc = 41,
    Ellipse = 42,
    Rectangle = 43,
    RoundRect = 44,
    Arc = 45,
    Chord = 46,
    Pie = 47,
    SelectPalette = 48,
    CreatePalette = 49,
    SetPaletteEntries = 50,
    ResizePalette = 51,
    ExtFloodFill = 53,
    LineTo = 54,
    ArcTo = 55,
    PolyDraw = 56,
    SetArcDirection = 57,
    SetMiterLimit = 58,
    BeginPath = 59,
    EndPath = 60,
    CloseFigure = 61,
    FillPath = 62,
    StrokeAndFillPath = 63,
    StrokePath = 64,
    FlattenPath = 65,
    WidenPath = 66,
    SelectClipPath = 67,
    AbortPath = 68,
    Comment = 70,
    FillRegion = 71,
    FrameRegion = 72,
    InvertRegion = 73,
    PaintRegion = 74,
    ExtSelectClipRegion = 75,
    BitBlt = 76,
    StretchBlt = 77,
    MaskBlt = 78,
    PlgBlt = 79,
    SetDibitsToDevice = 80,
    StretchDibits = 81,
    CreateFont = 82,
    ExtTextOutA = 83,
    ExtTextOutW = 84,
    PolyBezier16 = 85,
    Polygon16 = 86,
    Polyline16 = 87,
    PolyBezierTo16 = 88,
    PolylineTo16 = 89,
    PolyPolyline16 = 90,
    PolyPolygon16 = 91,
    PolyDraw16 = 92,
    CreateMonoBrush = 93,
    CreateDibBrush = 94,
    ExtCreatePen = 95,
    PolyTextOutW = 97,
    SmallTextOut = 108,
    AlphaBlend = 114,
    TransparentBlt = 116,
    GradientFill = 118,
    SetTextJustification = 120,
};
}

/// Ternary raster operations.
constexpr std::uint32_t kSrcCopy = 0x00CC0020;
constexpr std::uint32_t kSrcAnd = 0x008800C6;
constexpr std::uint32_t kSrcPaint = 0x00EE0086;
constexpr std::uint32_t kSrcInvert = 0x00660046;
constexpr std::uint32_t kPatCopy = 0x00F00021;
constexpr std::uint32_t kPatInvert = 0x005A0049;
constexpr std::uint32_t kDstInvert = 0x00550009;
constexpr std::uint32_t kBlackness = 0x00000042;
constexpr std::uint32_t kWhiteness = 0x00FF0062;

/// A bitmap: header with palette, and bits.
struct Dib {
    ByteMaker objHeader;
    ByteMaker objBits;
};
/// 24 bits from rows of colours (red in the low byte), top row first; stored from the bottom up.
Dib objDib24(std::int32_t lWidth, const std::vector<std::uint32_t>& aColors);
/// 32 bits, the high byte of each colour being its alpha.
Dib objDib32(std::int32_t lWidth, const std::vector<std::uint32_t>& aColors);
/// 1 bit: rows of '#' (the second colour) and other signs (the first), as long as each other, top row first.
Dib objDib1(const std::vector<std::string_view>& aRows, std::uint32_t nFirst, std::uint32_t nSecond);

/// An EMF of so many pixels at 96 an inch, on a reference device with the same pixels.
class EmfMaker
{
public:
    EmfMaker(std::int32_t lWidth, std::int32_t lHeight);

    EmfMaker& Record(std::uint32_t nType, const ByteMaker& objData);
    EmfMaker& Record(std::uint32_t nType, std::initializer_list<std::int32_t> aFields = {});
    /// A record that begins with its bounds.
    EmfMaker& Bounded(std::uint32_t nType, std::initializer_list<std::int32_t> aFields);

    EmfMaker& Select(std::int32_t lObject) { return Record(Emr::SelectObject, {lObject}); }
    /// Makes and selects.
    EmfMaker& Pen(std::int32_t lIndex, std::uint32_t nStyle, std::int32_t lWidth, std::uint32_t nColor);
    EmfMaker& Brush(std::int32_t lIndex, std::uint32_t nColor, std::uint32_t nStyle = 0,
                    std::uint32_t nHatch = 0);
    EmfMaker& GeometricPen(std::int32_t lIndex, std::uint32_t nStyle, std::int32_t lWidth,
                           std::uint32_t nColor, std::initializer_list<std::int32_t> aDashes = {});
    EmfMaker& Font(std::int32_t lIndex, std::int32_t lHeight, std::u16string_view sFace,
                   std::int32_t lEscapement = 0, std::int32_t lWeight = 400, std::uint32_t nStyles = 0);
    EmfMaker& Text(std::int32_t x, std::int32_t y, std::u16string_view sText,
                   const std::vector<std::int32_t>& aSteps = {}, std::uint32_t nOptions = 0,
                   std::initializer_list<std::int32_t> aBox = {0, 0, 0, 0});
    EmfMaker& World(std::uint32_t nMode, double d11, double d12, double d21, double d22, double dX,
                    double dY);
    EmfMaker& Region(std::uint32_t nType, std::initializer_list<std::int32_t> aBefore,
                     const std::vector<std::array<std::int32_t, 4>>& aRects);
    EmfMaker& StretchDib(const Dib& objDib, std::array<std::int32_t, 4> aDest,
                         std::array<std::int32_t, 4> aSource, std::uint32_t nRop = kSrcCopy);
    /// BitBlt and its kin: target, what stands between target and source corner, source corner, and what
    /// follows.
    EmfMaker& Transfer(std::uint32_t nType, std::array<std::int32_t, 4> aDest, std::uint32_t nHow,
                       std::array<std::int32_t, 2> aSource, const std::optional<Dib>& objDib,
                       std::initializer_list<std::int32_t> aAfter = {});

    /// The file, closed by the end record.
    std::vector<std::uint8_t> aFile() const;

private:
    std::int32_t m_lWidth;
    std::int32_t m_lHeight;
    ByteMaker m_objRecords;
    std::uint32_t m_nRecords = 1;
};

/// A WMF.
class WmfMaker
{
public:
    /// Placeable, with a window of so many units at 96 an inch.
    WmfMaker(std::int16_t iWidth, std::int16_t iHeight) : m_iWidth(iWidth), m_iHeight(iHeight) {}
    /// Without the header that makes it placeable.
    WmfMaker() = default;
    WmfMaker& UnitsPerInch(std::uint16_t nUnits)
    {
        m_nUnitsPerInch = nUnits;
        return *this;
    }

    WmfMaker& Record(std::uint16_t nFunction, const ByteMaker& objParameters);
    WmfMaker& Record(std::uint16_t nFunction, std::initializer_list<std::int32_t> aWords = {});
    WmfMaker& Pen(std::uint16_t nStyle, std::int16_t iWidth, std::uint32_t nColor);
    WmfMaker& Brush(std::uint32_t nColor, std::uint16_t nStyle = 0, std::uint16_t nHatch = 0);
    WmfMaker& Select(std::int32_t lObject) { return Record(0x012D, {lObject}); }
    WmfMaker& Font(std::int16_t iHeight, std::string_view sFace, std::uint8_t nCharSet = 0);

    std::vector<std::uint8_t> aFile() const;

private:
    std::int16_t m_iWidth = 0;
    std::int16_t m_iHeight = 0;
    std::uint16_t m_nUnitsPerInch = 96;
    ByteMaker m_objRecords;
};

/// The parameter words of a record that mixes 16 and 32 bits: a 32-bit value as its two words.
constexpr std::int32_t lLow(std::uint32_t n)
{
    return static_cast<std::int32_t>(n & 0xFFFF);
}
constexpr std::int32_t lHigh(std::uint32_t n)
{
    return static_cast<std::int32_t>(n >> 16);
}

/// What a metafile gives; fails the test, and gives an empty picture, if it is refused.
ImageBuffer aPlayed(const EmfMaker& objMaker);
ImageBuffer aPlayed(const WmfMaker& objMaker);
/// The colour of a pixel as records hold colours.
std::uint32_t nColorAt(const ImageBuffer& aImage, std::int32_t x, std::int32_t y);
/// How many pixels of a box (left, top, right, bottom) have the colour.
int nCountOf(const ImageBuffer& aImage, std::uint32_t nColor, std::array<std::int32_t, 4> aBox);
/// The smallest box (left, top, right, bottom) around all pixels that are not white; all 0 if there are none.
std::array<std::int32_t, 4> aInk(const ImageBuffer& aImage);

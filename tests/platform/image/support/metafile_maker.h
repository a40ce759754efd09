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

constexpr std::uint32_t kRed = 0x0000FF;  // as in records: red in the low byte
constexpr std::uint32_t kGreen = 0x00FF00;
constexpr std::uint32_t kBlue = 0xFF0000;
constexpr std::uint32_t kYellow = 0x00FFFF;
constexpr std::uint32_t kBlack = 0x000000;
constexpr std::uint32_t kWhite = 0xFFFFFF;

/// Stock object indexes of EMF records.
constexpr std::int32_t kNullBrush = static_cast<std::int32_t>(0x80000005);
constexpr std::int32_t kBlackPen = static_cast<std::int32_t>(0x80000007);
constexpr std::int32_t kNullPen = static_cast<std::int32_t>(0x80000008);
constexpr std::int32_t kBlackBrush = static_cast<std::int32_t>(0x80000004);

/// The EMF record types that tests use.
namespace Emr
{
enum : std::uint32_t {
    kPolyBezier = 2,
    kPolygon = 3,
    kPolyline = 4,
    kPolyBezierTo = 5,
    kPolylineTo = 6,
    kPolyPolyline = 7,
    kPolyPolygon = 8,
    kSetWindowExt = 9,
    kSetWindowOrg = 10,
    kSetViewportExt = 11,
    kSetViewportOrg = 12,
    kSetBrushOrg = 13,
    kEof = 14,
    kSetPixel = 15,
    kSetMapMode = 17,
    kSetBkMode = 18,
    kSetPolyFillMode = 19,
    kSetRop2 = 20,
    kSetStretchBltMode = 21,
    kSetTextAlign = 22,
    kSetTextColor = 24,
    kSetBkColor = 25,
    kOffsetClip = 26,
    kMoveTo = 27,
    kSetMetaRegion = 28,
    kExcludeClipRect = 29,
    kIntersectClipRect = 30,
    kScaleViewportExt = 31,
    kScaleWindowExt = 32,
    kSaveDc = 33,
    kRestoreDc = 34,
    kSetWorldTransform = 35,
    kModifyWorldTransform = 36,
    kSelectObject = 37,
    kCreatePen = 38,
    kCreateBrush = 39,
    kDeleteObject = 40,
    kAngleArc = 41,
    kEllipse = 42,
    kRectangle = 43,
    kRoundRect = 44,
    kArc = 45,
    kChord = 46,
    kPie = 47,
    kSelectPalette = 48,
    kCreatePalette = 49,
    kSetPaletteEntries = 50,
    kResizePalette = 51,
    kExtFloodFill = 53,
    kLineTo = 54,
    kArcTo = 55,
    kPolyDraw = 56,
    kSetArcDirection = 57,
    kSetMiterLimit = 58,
    kBeginPath = 59,
    kEndPath = 60,
    kCloseFigure = 61,
    kFillPath = 62,
    kStrokeAndFillPath = 63,
    kStrokePath = 64,
    kFlattenPath = 65,
    kWidenPath = 66,
    kSelectClipPath = 67,
    kAbortPath = 68,
    kComment = 70,
    kFillRegion = 71,
    kFrameRegion = 72,
    kInvertRegion = 73,
    kPaintRegion = 74,
    kExtSelectClipRegion = 75,
    kBitBlt = 76,
    kStretchBlt = 77,
    kMaskBlt = 78,
    kPlgBlt = 79,
    kSetDibitsToDevice = 80,
    kStretchDibits = 81,
    kCreateFont = 82,
    kExtTextOutA = 83,
    kExtTextOutW = 84,
    kPolyBezier16 = 85,
    kPolygon16 = 86,
    kPolyline16 = 87,
    kPolyBezierTo16 = 88,
    kPolylineTo16 = 89,
    kPolyPolyline16 = 90,
    kPolyPolygon16 = 91,
    kPolyDraw16 = 92,
    kCreateMonoBrush = 93,
    kCreateDibBrush = 94,
    kExtCreatePen = 95,
    kPolyTextOutW = 97,
    kSmallTextOut = 108,
    kAlphaBlend = 114,
    kTransparentBlt = 116,
    kGradientFill = 118,
    kSetTextJustification = 120,
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
    ByteMaker header;
    ByteMaker bits;
};
/// A 24-bit bottom-up bitmap from rows of colours (red in the low byte), top row first.
Dib Dib24(std::int32_t width, const std::vector<std::uint32_t>& colors);
/// The same with 32 bits; the high byte of each colour is its alpha.
Dib Dib32(std::int32_t width, const std::vector<std::uint32_t>& colors);
/// A 1-bit bitmap from equally long rows, top row first: '#' is the second colour, anything else the first.
Dib Dib1(const std::vector<std::string_view>& rows, std::uint32_t first, std::uint32_t second);

/// An EMF of the given size at 96 dpi, on a reference device with the same pixels.
class EmfMaker
{
public:
    EmfMaker(std::int32_t width, std::int32_t height);

    EmfMaker& Record(std::uint32_t type, const ByteMaker& data);
    EmfMaker& Record(std::uint32_t type, std::initializer_list<std::int32_t> fields = {});
    /// Adds a record that starts with its bounds.
    EmfMaker& Bounded(std::uint32_t type, std::initializer_list<std::int32_t> fields);

    EmfMaker& Select(std::int32_t object) { return Record(Emr::kSelectObject, {object}); }
    /// Creates and selects the object.
    EmfMaker& Pen(std::int32_t index, std::uint32_t style, std::int32_t width, std::uint32_t color);
    EmfMaker& Brush(std::int32_t index, std::uint32_t color, std::uint32_t style = 0,
                    std::uint32_t hatch = 0);
    EmfMaker& GeometricPen(std::int32_t index, std::uint32_t style, std::int32_t width, std::uint32_t color,
                           std::initializer_list<std::int32_t> dashes = {});
    EmfMaker& Font(std::int32_t index, std::int32_t height, std::u16string_view face,
                   std::int32_t escapement = 0, std::int32_t weight = 400, std::uint32_t styles = 0);
    EmfMaker& Text(std::int32_t x, std::int32_t y, std::u16string_view text,
                   const std::vector<std::int32_t>& steps = {}, std::uint32_t options = 0,
                   std::initializer_list<std::int32_t> box = {0, 0, 0, 0});
    EmfMaker& World(std::uint32_t mode, double d11, double d12, double d21, double d22, double x, double y);
    EmfMaker& Region(std::uint32_t type, std::initializer_list<std::int32_t> before,
                     const std::vector<std::array<std::int32_t, 4>>& rects);
    EmfMaker& StretchDib(const Dib& dib, std::array<std::int32_t, 4> dest, std::array<std::int32_t, 4> source,
                         std::uint32_t rop = kSrcCopy);
    /// Adds a record like BitBlt: target, fields between target and source corner, source corner, remaining
    /// fields.
    EmfMaker& Transfer(std::uint32_t type, std::array<std::int32_t, 4> dest, std::uint32_t how,
                       std::array<std::int32_t, 2> source, const std::optional<Dib>& dib,
                       std::initializer_list<std::int32_t> after = {});

    /// The file, closed by an end record.
    std::vector<std::uint8_t> File() const;

private:
    std::int32_t width_;
    std::int32_t height_;
    ByteMaker records_;
    std::uint32_t record_count_ = 1;
};

/// Builds a WMF.
class WmfMaker
{
public:
    /// Placeable, with the given window at 96 units per inch.
    WmfMaker(std::int16_t width, std::int16_t height) : width_(width), height_(height) {}
    /// Without a placeable header.
    WmfMaker() = default;
    WmfMaker& UnitsPerInch(std::uint16_t units)
    {
        units_per_inch_ = units;
        return *this;
    }

    WmfMaker& Record(std::uint16_t function, const ByteMaker& parameters);
    WmfMaker& Record(std::uint16_t function, std::initializer_list<std::int32_t> words = {});
    WmfMaker& Pen(std::uint16_t style, std::int16_t width, std::uint32_t color);
    WmfMaker& Brush(std::uint32_t color, std::uint16_t style = 0, std::uint16_t hatch = 0);
    WmfMaker& Select(std::int32_t object) { return Record(0x012D, {object}); }
    WmfMaker& Font(std::int16_t height, std::string_view face, std::uint8_t char_set = 0);

    std::vector<std::uint8_t> File() const;

private:
    std::int16_t width_ = 0;
    std::int16_t height_ = 0;
    std::uint16_t units_per_inch_ = 96;
    ByteMaker records_;
};

/// For records that mix 16 and 32 bits: a 32-bit value as two parameter words.
constexpr std::int32_t Low(std::uint32_t n)
{
    return static_cast<std::int32_t>(n & 0xFFFF);
}
constexpr std::int32_t High(std::uint32_t n)
{
    return static_cast<std::int32_t>(n >> 16);
}

/// Renders a metafile; if it is refused, fails the test and returns an empty picture.
ImageBuffer Render(const EmfMaker& maker);
ImageBuffer Render(const WmfMaker& maker);
/// The colour of a pixel, red in the low byte.
std::uint32_t ColorAt(const ImageBuffer& image, std::int32_t x, std::int32_t y);
/// The number of pixels of the colour in a box (left, top, right, bottom).
int CountOf(const ImageBuffer& image, std::uint32_t color, std::array<std::int32_t, 4> box);
/// The bounds (left, top, right, bottom) of all pixels that aren't white; all 0 if there are none.
std::array<std::int32_t, 4> InkBounds(const ImageBuffer& image);

// Builds EMF files that are drawn by EMF+ records.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string_view>
#include <vector>

#include "tests/platform/image/support/metafile_maker.h"

/// The EMF+ record types that tests use.
namespace Plus
{
enum : std::uint16_t {
    kHeader = 0x4001,
    kEndOfFile = 0x4002,
    kGetDc = 0x4004,
    kObject = 0x4008,
    kClear = 0x4009,
    kFillRects = 0x400A,
    kDrawRects = 0x400B,
    kFillPolygon = 0x400C,
    kDrawLines = 0x400D,
    kFillEllipse = 0x400E,
    kDrawEllipse = 0x400F,
    kFillPie = 0x4010,
    kDrawArc = 0x4012,
    kFillRegion = 0x4013,
    kFillPath = 0x4014,
    kDrawPath = 0x4015,
    kFillClosedCurve = 0x4016,
    kDrawCurve = 0x4018,
    kDrawBeziers = 0x4019,
    kDrawImage = 0x401A,
    kDrawImagePoints = 0x401B,
    kDrawString = 0x401C,
    kSave = 0x4025,
    kRestore = 0x4026,
    kBeginContainer = 0x4027,
    kEndContainer = 0x4029,
    kSetWorldTransform = 0x402A,
    kTranslateWorld = 0x402D,
    kScaleWorld = 0x402E,
    kRotateWorld = 0x402F,
    kSetPage = 0x4030,
    kResetClip = 0x4031,
    kSetClipRect = 0x4032,
    kSetClipPath = 0x4033,
    kSetClipRegion = 0x4034,
    kDrawDriverString = 0x4036,
};
enum : std::uint16_t { kBrush = 1, kPen, kPath, kRegion, kImage, kFont, kFormat };

constexpr std::uint32_t kVersion = 0xDBC01002;
constexpr std::uint16_t kColor = 0x8000;
}  // namespace Plus

/// Colours of EMF+ have alpha and red in their high bytes.
constexpr std::uint32_t kPlusRed = 0xFFFF0000;
constexpr std::uint32_t kPlusGreen = 0xFF00FF00;
constexpr std::uint32_t kPlusBlue = 0xFF0000FF;

/// Bytes of EMF+ structures. Calls return *this.
class PlusBytes : public ByteMaker
{
public:
    PlusBytes& U(std::initializer_list<std::uint32_t> values);
    PlusBytes& F(std::initializer_list<double> values);
    PlusBytes& Utf16(std::u16string_view text);
    PlusBytes& With(const ByteMaker& other);
};

/// Objects, from their version field on.
PlusBytes SolidBrush(std::uint32_t color);
PlusBytes SolidPen(std::uint32_t color, double width);
/// Types: 0 start, 1 line, 3 curve; 0x80 closes the figure.
PlusBytes PathOf(std::initializer_list<double> coordinates, std::initializer_list<int> types);

class EmfPlusMaker
{
public:
    EmfPlusMaker(std::int32_t width, std::int32_t height, bool dual = false);

    /// Adds a comment that holds an EMF+ record.
    EmfPlusMaker& Record(std::uint16_t type, std::uint16_t flags, const ByteMaker& data = {});
    EmfPlusMaker& Object(std::uint16_t kind, std::uint16_t id, const ByteMaker& data);
    /// Fills a rectangle with a colour.
    EmfPlusMaker& FillRect(std::uint32_t color, std::initializer_list<double> rect);
    /// The EMF records between.
    EmfMaker& Emf() { return emf_; }

    std::vector<std::uint8_t> File(bool with_end = true) const;

private:
    EmfMaker emf_;
};

/// Renders the file; if it is refused, fails the test and returns an empty picture.
ImageBuffer Render(const EmfPlusMaker& maker);

// Plays WMF records of lines, shapes, regions and flood fills.
#include "src/platform/image/metafile/device/device_fills.h"
#include "src/platform/image/metafile/device/device_regions.h"
#include "src/platform/image/metafile/records/shape_records.h"
#include "src/platform/image/metafile/wmf/wmf_player.h"

namespace
{
enum ShapeNumber : std::uint8_t {
    kLineTo = 0x13,
    kMoveTo = 0x14,
    kArc = 0x17,
    kEllipse = 0x18,
    kFloodFill = 0x19,
    kPie = 0x1A,
    kRectangle = 0x1B,
    kRoundRect = 0x1C,
    kSetPixel = 0x1F,
    kPolygon = 0x24,
    kPolyline = 0x25,
    kFillRegion = 0x28,
    kFrameRegion = 0x29,
    kInvertRegion = 0x2A,
    kPaintRegion = 0x2B,
    kChord = 0x30,
    kPolyPolygon = 0x38,
    kExtFloodFill = 0x48,
};
}  // namespace

static bool ReadPoints(ByteReader& reader, std::uint64_t count, std::vector<Point>& points)
{
    if (reader.Failed() || reader.Left() / 4 < count)
        return false;
    points.resize(count);
    for (Point& point : points) {
        point.x = reader.I16Le();
        point.y = reader.I16Le();
    }
    return true;
}

static Outcome DrawPolyPolygon(DeviceContext& dc, ByteReader& reader)
{
    const std::uint16_t figures = reader.U16Le();
    if (reader.Failed() || reader.Left() / 2 < figures)
        return Outcome::kBroken;
    std::vector<std::uint16_t> counts(figures);
    std::uint64_t sum = 0;
    for (std::uint16_t& count : counts)
        sum += count = reader.U16Le();
    std::vector<Point> points;
    if (!ReadPoints(reader, sum, points))
        return Outcome::kBroken;
    Outline shape;
    std::size_t point = 0;
    for (const std::uint16_t count : counts) {
        if (count == 0)
            continue;
        shape.MoveTo(points[point]);
        for (std::size_t n = 1; n < count; ++n)
            shape.LineTo(points[point + n]);
        shape.Close();
        point += count;
    }
    dc.Draw(shape, ShapeParts::kBoth);
    return Outcome::kDone;
}

static Outcome DrawPoints(DeviceContext& dc, ByteReader& reader, bool closed)
{
    std::vector<Point> points;
    const std::uint16_t count = reader.U16Le();
    if (!ReadPoints(reader, count, points))
        return Outcome::kBroken;
    if (closed)
        DrawPolygon(dc, points);
    else
        DrawPolyline(dc, points);
    return Outcome::kDone;
}

static Outcome DrawArcRecord(DeviceContext& dc, ByteReader& reader, ArcKind kind)
{
    const Point end = ReadPointYx(reader);
    const Point start = ReadPointYx(reader);
    const Rect rect = ReadReversedRect(reader);
    if (reader.Failed())
        return Outcome::kBroken;
    DrawArc(dc, rect, start, end, kind);
    return Outcome::kDone;
}

static Outcome DrawRegion(WmfPlay& play, const WmfRecord& record)
{
    DeviceContext& dc = play.dc;
    ByteReader reader = record.Data();
    const Object& region_object = ObjectAt(play, reader.U16Le());
    const bool names_brush = record.Number() == kFillRegion || record.Number() == kFrameRegion;
    const Object& brush_object = ObjectAt(play, names_brush ? reader.U16Le() : 0xFFFF);
    const Point frame = record.Number() == kFrameRegion ? ReadPointYx(reader) : Point{};
    if (reader.Failed())
        return Outcome::kBroken;
    const auto* region = std::get_if<std::shared_ptr<const Region>>(&region_object);
    const auto* brush =
        names_brush ? std::get_if<std::shared_ptr<const Brush>>(&brush_object) : &dc.state.brush;
    if (!region || !brush || (*region)->rects.empty())
        return Outcome::kDone;
    if (record.Number() == kInvertRegion)
        InvertRegion(dc, **region);
    else if (record.Number() == kFrameRegion)
        FrameRegion(dc, **region, *brush, frame.x, frame.y);
    else
        FillRegion(dc, **region, *brush);
    return Outcome::kDone;
}

static Outcome DrawBox(DeviceContext& dc, const WmfRecord& record)
{
    ByteReader reader = record.Data();
    const bool round = record.Number() == kRoundRect;
    const Point corner = round ? ReadPointYx(reader) : Point{};
    const Rect rect = ReadReversedRect(reader);
    if (reader.Failed())
        return Outcome::kBroken;
    if (round)
        DrawRoundRect(dc, rect, corner.x, corner.y);
    else if (record.Number() == kEllipse)
        DrawEllipse(dc, rect);
    else
        DrawRectangle(dc, rect);
    return Outcome::kDone;
}

Outcome PlayWmfShape(WmfPlay& play, const WmfRecord& record)
{
    DeviceContext& dc = play.dc;
    ByteReader reader = record.Data();
    switch (record.Number()) {
        case kMoveTo:
            dc.MoveTo(ReadPointYx(reader));
            return OutcomeOf(!reader.Failed());
        case kLineTo: {
            const Point point = ReadPointYx(reader);
            if (!reader.Failed())
                dc.LinesTo({&point, 1});
            return OutcomeOf(!reader.Failed());
        }
        case kEllipse:
        case kRectangle:
        case kRoundRect:
            return DrawBox(dc, record);
        case kArc:
            return DrawArcRecord(dc, reader, ArcKind::kArc);
        case kPie:
            return DrawArcRecord(dc, reader, ArcKind::kPie);
        case kChord:
            return DrawArcRecord(dc, reader, ArcKind::kChord);
        case kPolygon:
        case kPolyline:
            return DrawPoints(dc, reader, record.Number() == kPolygon);
        case kPolyPolygon:
            return DrawPolyPolygon(dc, reader);
        case kSetPixel: {
            const ColorRef color = reader.U32Le();
            const Point point = ReadPointYx(reader);
            if (!reader.Failed())
                SetPixel(dc, point, color);
            return OutcomeOf(!reader.Failed());
        }
        case kFloodFill:
        case kExtFloodFill: {
            const bool over_color = record.Number() == kExtFloodFill && reader.U16Le() == 1;
            const ColorRef color = reader.U32Le();
            const Point point = ReadPointYx(reader);
            if (!reader.Failed())
                FloodFill(dc, point, color, over_color);
            return OutcomeOf(!reader.Failed());
        }
        case kFillRegion:
        case kFrameRegion:
        case kInvertRegion:
        case kPaintRegion:
            return DrawRegion(play, record);
        default:
            return Outcome::kNotMine;
    }
}

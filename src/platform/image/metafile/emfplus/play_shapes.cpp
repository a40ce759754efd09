// Plays EMF+ records that fill and stroke shapes.
#include <numbers>

#include "src/platform/image/metafile/canvas/arcs.h"
#include "src/platform/image/metafile/emfplus/data_readers.h"
#include "src/platform/image/metafile/emfplus/emfplus_player.h"

namespace
{
enum ShapeRecord : std::uint16_t {
    kClear = 0x4009,
    kFillRects = 0x400A,
    kDrawRects = 0x400B,
    kFillPolygon = 0x400C,
    kDrawLines = 0x400D,
    kFillEllipse = 0x400E,
    kDrawEllipse = 0x400F,
    kFillPie = 0x4010,
    kDrawPie = 0x4011,
    kDrawArc = 0x4012,
    kFillRegion = 0x4013,
    kFillPath = 0x4014,
    kDrawPath = 0x4015,
    kFillClosedCurve = 0x4016,
    kDrawClosedCurve = 0x4017,
    kDrawCurve = 0x4018,
    kDrawBeziers = 0x4019,
};
}  // namespace

static constexpr std::uint16_t kShortFlag = 0x4000;
static constexpr std::uint16_t kClosedFlag = 0x2000;
static constexpr std::uint16_t kWindingFlag = 0x2000;
static constexpr std::uint16_t kRelativeFlag = 0x0800;

static PointFormat FormatOf(const PlusRecord& record)
{
    return record.Has(kRelativeFlag) ? PointFormat::kRelative
           : record.Has(kShortFlag)  ? PointFormat::kShort
                                     : PointFormat::kFloat;
}

static Outline LineThrough(const std::vector<Point>& points, bool closed)
{
    Outline result;
    for (const Point& point : points)
        result.LineTo(point);
    if (closed)
        result.Close();
    return result;
}

// A cardinal spline through segments of the points.
static Outline Curve(const std::vector<Point>& points, double tension, bool closed, std::size_t first,
                     std::size_t segments)
{
    Outline result;
    const std::size_t count = points.size();
    if (count < 2)
        return LineThrough(points, closed);
    const auto at = [&](std::size_t n, int step) {
        if (closed)
            return points[(n + count + static_cast<std::size_t>(step + 2) - 2) % count];
        const auto index = static_cast<std::int64_t>(n) + step;
        return points[static_cast<std::size_t>(
            std::clamp<std::int64_t>(index, 0, static_cast<std::int64_t>(count) - 1))];
    };
    const double pull = std::isfinite(tension) ? tension / 3 : 0.5 / 3;
    result.MoveTo(at(first, 0));
    for (std::size_t n = first; n < first + segments; ++n)
        result.CurveTo(at(n, 0) + pull * (at(n, 1) - at(n, -1)), at(n, 1) - pull * (at(n, 2) - at(n, 0)),
                       at(n, 1));
    if (closed)
        result.Close();
    return result;
}

// Pies and arcs: angles are in degrees, clockwise.
static std::optional<Outline> ReadArc(ByteReader& reader, bool compressed, bool is_pie)
{
    const double start = ReadFloat(reader) / 180 * std::numbers::pi;
    const double sweep = ReadFloat(reader) / 180 * std::numbers::pi;
    const Rect rect = ReadRectF(reader, compressed);
    if (reader.Failed() || !std::isfinite(start) || !std::isfinite(sweep))
        return std::nullopt;
    const Point centre{(rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2};
    // The angles are those of rays; an ellipse's parameter differs.
    const auto parameter = [&](double angle) {
        const Point ray{centre.x + std::cos(angle) * 1000, centre.y + std::sin(angle) * 1000};
        const double turns = std::floor((angle + std::numbers::pi) / (2 * std::numbers::pi));
        return ArcAngle(rect, ray) + turns * 2 * std::numbers::pi;
    };
    const double from = parameter(start);
    const double length = std::abs(sweep) >= 2 * std::numbers::pi - 1e-6
                              ? std::copysign(2 * std::numbers::pi, sweep)
                              : parameter(start + sweep) - from;
    Outline result;
    if (is_pie)
        result.MoveTo(centre);
    AddArc(result, rect, from, length, is_pie ? ArcStart::kLineFromLast : ArcStart::kNewFigure);
    if (is_pie)
        result.Close();
    return result;
}

static std::optional<Outline> ReadRects(ByteReader& reader, bool compressed)
{
    const std::uint32_t count = reader.U32Le();
    if (reader.Failed() || reader.Left() / (compressed ? 8 : 16) < count)
        return std::nullopt;
    Outline result;
    for (std::uint32_t n = 0; n < count; ++n)
        result.AddBox(ReadRectF(reader, compressed));
    return result;
}

static std::optional<std::vector<Point>> ReadPointList(ByteReader& reader, const PlusRecord& record)
{
    const std::uint32_t count = reader.U32Le();
    return ReadPlusPoints(reader, count, FormatOf(record));
}

// The shape of a record, which starts with its own fields; brush or pen have been read.
static std::optional<Outline> ReadShape(ByteReader& reader, const PlusRecord& record)
{
    const bool compressed = record.Has(kShortFlag);
    switch (record.type) {
        case kFillRects:
        case kDrawRects:
            return ReadRects(reader, compressed);
        case kFillEllipse:
        case kDrawEllipse: {
            Outline result;
            const Rect rect = ReadRectF(reader, compressed);
            if (reader.Failed())
                return std::nullopt;
            AddEllipse(result, rect);
            return result;
        }
        case kFillPie:
        case kDrawPie:
        case kDrawArc:
            return ReadArc(reader, compressed, record.type != kDrawArc);
        case kFillPolygon:
        case kDrawLines: {
            const auto points = ReadPointList(reader, record);
            if (!points)
                return std::nullopt;
            return LineThrough(*points, record.type == kFillPolygon || record.Has(kClosedFlag));
        }
        case kFillClosedCurve:
        case kDrawClosedCurve: {
            const double tension = ReadFloat(reader);
            const auto points = ReadPointList(reader, record);
            if (!points)
                return std::nullopt;
            return Curve(*points, tension, true, 0, points->size());
        }
        case kDrawCurve: {
            const double tension = ReadFloat(reader);
            const std::uint64_t first = reader.U32Le();
            const std::uint64_t segments = reader.U32Le();
            const auto points = ReadPointList(reader, record);
            if (!points || first + segments >= points->size())
                return std::nullopt;
            return Curve(*points, tension, false, first, segments);
        }
        default: {  // Béziers
            const auto points = ReadPointList(reader, record);
            if (!points || points->empty())
                return std::nullopt;
            Outline result;
            result.MoveTo((*points)[0]);
            for (std::size_t n = 1; n + 3 <= points->size(); n += 3)
                result.CurveTo((*points)[n], (*points)[n + 1], (*points)[n + 2]);
            return result;
        }
    }
}

static PlusOutcome Fill(PlusPlay& play, const PlusRecord& record)
{
    ByteReader reader = record.Data();
    const PlusBrush* brush = play.BrushOf(record, reader.U32Le());
    if (reader.Failed() || !brush)
        return PlusOutcome::kBroken;
    if (record.type == kFillRegion) {
        const auto* region = play.Find<PlusRegion>(record.Id());
        if (region)
            play.graphics.FillClip(play.graphics.ClipOf(*region), *brush);
        return PlusOutcomeOf(region != nullptr);
    }
    if (record.type == kFillPath) {
        const auto* path = play.Find<PlusPath>(record.Id());
        if (path)
            play.graphics.Fill(path->outline, path->winding, *brush);
        return PlusOutcomeOf(path != nullptr);
    }
    const auto shape = ReadShape(reader, record);
    if (!shape)
        return PlusOutcome::kBroken;
    // Rectangles of one record may overlap.
    const bool winding =
        record.type == kFillRects || (record.type == kFillClosedCurve && record.Has(kWindingFlag));
    play.graphics.Fill(*shape, winding, *brush);
    return PlusOutcome::kDone;
}

static PlusOutcome Draw(PlusPlay& play, const PlusRecord& record)
{
    ByteReader reader = record.Data();
    if (record.type == kDrawPath) {
        const auto* path = play.Find<PlusPath>(record.Id());
        const auto* pen = play.Find<PlusPen>(reader.U32Le());
        if (path && pen)
            play.graphics.Stroke(path->outline, *pen);
        return PlusOutcomeOf(path && pen);
    }
    const auto* pen = play.Find<PlusPen>(record.Id());
    const auto shape = pen ? ReadShape(reader, record) : std::nullopt;
    if (shape)
        play.graphics.Stroke(*shape, *pen);
    return PlusOutcomeOf(shape.has_value());
}

PlusOutcome PlayPlusShape(PlusPlay& play, const PlusRecord& record)
{
    switch (record.type) {
        case kClear: {
            ByteReader reader = record.Data();
            const ArgbColor color = reader.U32Le();
            if (!reader.Failed())
                play.graphics.Clear(color);
            return PlusOutcomeOf(!reader.Failed());
        }
        case kFillRects:
        case kFillPolygon:
        case kFillEllipse:
        case kFillPie:
        case kFillRegion:
        case kFillPath:
        case kFillClosedCurve:
            return Fill(play, record);
        case kDrawRects:
        case kDrawLines:
        case kDrawEllipse:
        case kDrawPie:
        case kDrawArc:
        case kDrawPath:
        case kDrawClosedCurve:
        case kDrawCurve:
        case kDrawBeziers:
            return Draw(play, record);
        default:
            return PlusOutcome::kNotMine;
    }
}

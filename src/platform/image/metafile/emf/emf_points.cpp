// Plays EMF records of lines, polygons and Béziers, with 32-bit and 16-bit points.
#include "src/platform/image/metafile/emf/emf_player.h"
#include "src/platform/image/metafile/records/shape_records.h"

namespace
{
enum PointsRecord : std::uint32_t {
    kPolyBezier = 2,
    kPolygon = 3,
    kPolyline = 4,
    kPolyBezierTo = 5,
    kPolylineTo = 6,
    kPolyPolyline = 7,
    kPolyPolygon = 8,
    kPolyDraw = 56,
    kPolyBezier16 = 85,
    kPolyPolygon16 = 91,
    kPolyDraw16 = 92,
};
}  // namespace

static constexpr std::uint32_t kFrom16 = kPolyBezier16 - kPolyBezier;

static bool ReadPoints(ByteReader& reader, std::uint64_t count, bool short_points, std::vector<Point>& points)
{
    if (reader.Failed() || reader.Left() / (short_points ? 4 : 8) < count)
        return false;
    points.resize(count);
    for (Point& point : points) {
        point.x = short_points ? reader.I16Le() : reader.I32Le();
        point.y = short_points ? reader.I16Le() : reader.I32Le();
    }
    return true;
}

static Outline Curves(const std::vector<Point>& points)
{
    Outline result;
    if (!points.empty())
        result.MoveTo(points[0]);
    for (std::size_t n = 1; n + 3 <= points.size(); n += 3)
        result.CurveTo(points[n], points[n + 1], points[n + 2]);
    return result;
}

// Draws several polylines or polygons from one record. Polygons form one shape: where they overlap, the fill
// mode applies.
static Outcome DrawManyFigures(DeviceContext& dc, ByteReader& reader, bool short_points, bool polygons)
{
    const std::uint32_t figures = reader.U32Le();
    reader.U32Le();  // total point count: the counts of the figures are used instead
    if (reader.Failed() || reader.Left() / 4 < figures)
        return Outcome::kBroken;
    std::vector<std::uint32_t> counts(figures);
    std::uint64_t sum = 0;
    for (std::uint32_t& count : counts)
        sum += count = reader.U32Le();
    std::vector<Point> points;
    if (!ReadPoints(reader, sum, short_points, points))
        return Outcome::kBroken;
    Outline shape;
    std::size_t point = 0;
    for (const std::uint32_t count : counts) {
        if (count == 0)
            continue;
        shape.MoveTo(points[point]);
        for (std::uint32_t n = 1; n < count; ++n)
            shape.LineTo(points[point + n]);
        if (polygons)
            shape.Close();
        point += count;
    }
    dc.Draw(shape, polygons ? ShapeParts::kBoth : ShapeParts::kLine);
    return Outcome::kDone;
}

static constexpr std::uint8_t kCloseBit = 1;
static constexpr std::uint8_t kLineType = 2;
static constexpr std::uint8_t kCurveType = 4;
static constexpr std::uint8_t kMoveType = 6;

static Outcome DrawTyped(DeviceContext& dc, ByteReader& reader, bool short_points)
{
    const std::uint32_t count = reader.U32Le();
    std::vector<Point> points;
    if (!ReadPoints(reader, count, short_points, points))
        return Outcome::kBroken;
    const Bytes types = reader.Take(count);
    if (reader.Failed())
        return Outcome::kBroken;
    // In a path, the open figure continues; elsewhere, everything is one polyline.
    const bool in_path = dc.InPath();
    Outline line;
    line.MoveTo(dc.state.position);
    for (std::size_t n = 0; n < count; ++n) {
        const std::uint8_t type = types[n] & 6;
        const std::size_t used = type == kCurveType ? 3 : 1;
        if (n + used > count)
            break;
        if (type == kMoveType) {
            dc.MoveTo(points[n]);
            line.MoveTo(points[n]);
        } else if (type == kLineType) {
            if (in_path)
                dc.LinesTo({&points[n], 1});
            line.LineTo(points[n]);
        } else if (type == kCurveType) {
            if (in_path)
                dc.CurvesTo({&points[n], 3});
            line.CurveTo(points[n], points[n + 1], points[n + 2]);
        }
        n += used - 1;
        if ((types[n] & kCloseBit) != 0 && type != kMoveType) {
            dc.CloseFigure();
            line.Close();
        }
        dc.state.position = points[n];
    }
    if (!in_path)
        dc.Draw(line, ShapeParts::kLine);
    return Outcome::kDone;
}

Outcome PlayPoints(EmfPlay& play, const EmfRecord& record)
{
    DeviceContext& dc = play.dc;
    const bool short_points =
        (record.type >= kPolyBezier16 && record.type <= kPolyPolygon16) || record.type == kPolyDraw16;
    const std::uint32_t kind = record.type == kPolyDraw16 ? std::uint32_t{kPolyDraw}
                               : short_points             ? record.type - kFrom16
                                                          : record.type;
    if (kind != kPolyDraw && (kind < kPolyBezier || kind > kPolyPolygon))
        return Outcome::kNotMine;
    ByteReader reader = record.Data();
    ReadRect(reader);  // bounds
    if (kind == kPolyPolyline || kind == kPolyPolygon)
        return DrawManyFigures(dc, reader, short_points, kind == kPolyPolygon);
    if (kind == kPolyDraw)
        return DrawTyped(dc, reader, short_points);
    std::vector<Point> points;
    const std::uint32_t count = reader.U32Le();
    if (!ReadPoints(reader, count, short_points, points))
        return Outcome::kBroken;
    switch (kind) {
        case kPolyBezier:
            dc.Draw(Curves(points), ShapeParts::kLine);
            break;
        case kPolygon:
            DrawPolygon(dc, points);
            break;
        case kPolyline:
            DrawPolyline(dc, points);
            break;
        case kPolyBezierTo:
            dc.CurvesTo(points);
            break;
        default:
            dc.LinesTo(points);
            break;
    }
    return Outcome::kDone;
}

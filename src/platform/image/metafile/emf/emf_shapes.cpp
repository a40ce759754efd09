// Plays EMF records of boxes, arcs, lines, gradients and flood fills.
#include <array>
#include <bit>
#include <numbers>

#include "src/platform/image/metafile/canvas/arcs.h"
#include "src/platform/image/metafile/device/device_fills.h"
#include "src/platform/image/metafile/emf/emf_player.h"
#include "src/platform/image/metafile/records/shape_records.h"

namespace
{
enum ShapeRecord : std::uint32_t {
    kSetPixel = 15,
    kMoveTo = 27,
    kAngleArc = 41,
    kEllipse = 42,
    kRectangle = 43,
    kRoundRect = 44,
    kArc = 45,
    kChord = 46,
    kPie = 47,
    kExtFloodFill = 53,
    kLineTo = 54,
    kArcTo = 55,
    kGradientFill = 118,
};
}  // namespace

static Outcome DrawAngleArc(DeviceContext& dc, ByteReader& reader)
{
    const Point centre = ReadPoint(reader);
    const double radius = reader.U32Le();
    const double start = static_cast<double>(std::bit_cast<float>(reader.U32Le())) / 180 * std::numbers::pi;
    const double sweep = static_cast<double>(std::bit_cast<float>(reader.U32Le())) / 180 * std::numbers::pi;
    if (reader.Failed())
        return Outcome::kBroken;
    // These angles are counter-clockwise, those of AddArc clockwise.
    const Rect rect{centre.x - radius, centre.y - radius, centre.x + radius, centre.y + radius};
    if (std::isfinite(start) && std::isfinite(sweep))
        dc.ArcTo(rect, -start, -sweep);
    return Outcome::kDone;
}

static Outcome DrawArcRecord(DeviceContext& dc, const EmfRecord& record)
{
    ByteReader reader = record.Data();
    const Rect rect = ReadRect(reader);
    const Point start = ReadPoint(reader);
    const Point end = ReadPoint(reader);
    if (reader.Failed())
        return Outcome::kBroken;
    if (record.type == kArcTo) {
        const ArcSpan span = ArcSpanOf(dc, rect.Normalised(), start, end);
        dc.ArcTo(rect.Normalised(), span.start, span.sweep);
        return Outcome::kDone;
    }
    const ArcKind kind = record.type == kArc     ? ArcKind::kArc
                         : record.type == kChord ? ArcKind::kChord
                                                 : ArcKind::kPie;
    DrawArc(dc, rect, start, end, kind);
    return Outcome::kDone;
}

static Outcome DrawGradient(DeviceContext& dc, ByteReader& reader)
{
    ReadRect(reader);  // bounds
    const std::uint32_t corner_count = reader.U32Le();
    const std::uint32_t shapes = reader.U32Le();
    const std::uint32_t mode = reader.U32Le();
    if (reader.Failed() || mode > 2 || reader.Left() / 16 < corner_count)
        return Outcome::kBroken;
    std::vector<GradientCorner> corners(corner_count);
    for (GradientCorner& corner : corners) {
        corner.point = ReadPoint(reader);
        for (double& d : corner.color)
            d = reader.U16Le();
        reader.U16Le();  // alpha is unused
    }
    const std::uint32_t each = mode == 2 ? 3 : 2;
    if (reader.Left() / (4 * each) < shapes)
        return Outcome::kBroken;
    for (std::uint32_t n = 0; n < shapes && !dc.Work().Spent(); ++n) {
        std::array<std::uint32_t, 3> index{};
        for (std::uint32_t i = 0; i < each; ++i) {
            index[i] = reader.U32Le();
            if (index[i] >= corner_count)
                return Outcome::kBroken;
        }
        if (mode == 2) {
            const std::array<GradientCorner, 3> triangle{corners[index[0]], corners[index[1]],
                                                         corners[index[2]]};
            FillGradientTriangle(dc, triangle);
        } else
            FillGradientRect(dc, corners[index[0]], corners[index[1]], mode == 1);
    }
    return Outcome::kDone;
}

Outcome PlayShape(EmfPlay& play, const EmfRecord& record)
{
    DeviceContext& dc = play.dc;
    ByteReader reader = record.Data();
    switch (record.type) {
        case kMoveTo:
            dc.MoveTo(ReadPoint(reader));
            return OutcomeOf(!reader.Failed());
        case kLineTo: {
            const Point point = ReadPoint(reader);
            if (!reader.Failed())
                dc.LinesTo({&point, 1});
            return OutcomeOf(!reader.Failed());
        }
        case kRectangle:
        case kEllipse: {
            const Rect rect = ReadRect(reader);
            if (reader.Failed())
                return Outcome::kBroken;
            if (record.type == kRectangle)
                DrawRectangle(dc, rect);
            else
                DrawEllipse(dc, rect);
            return Outcome::kDone;
        }
        case kRoundRect: {
            const Rect rect = ReadRect(reader);
            const Point corner = ReadPoint(reader);
            if (!reader.Failed())
                DrawRoundRect(dc, rect, corner.x, corner.y);
            return OutcomeOf(!reader.Failed());
        }
        case kArc:
        case kChord:
        case kPie:
        case kArcTo:
            return DrawArcRecord(dc, record);
        case kAngleArc:
            return DrawAngleArc(dc, reader);
        case kSetPixel: {
            const Point point = ReadPoint(reader);
            const ColorRef color = reader.U32Le();
            if (!reader.Failed())
                SetPixel(dc, point, color);
            return OutcomeOf(!reader.Failed());
        }
        case kExtFloodFill: {
            const Point point = ReadPoint(reader);
            const ColorRef color = reader.U32Le();
            const std::uint32_t mode = reader.U32Le();
            if (!reader.Failed())
                FloodFill(dc, point, color, mode == 1);
            return OutcomeOf(!reader.Failed());
        }
        case kGradientFill:
            return DrawGradient(dc, reader);
        default:
            return Outcome::kNotMine;
    }
}

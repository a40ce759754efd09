// Plays EMF records for clipping, path brackets and regions.
#include "src/platform/image/metafile/device/device_regions.h"
#include "src/platform/image/metafile/emf/emf_player.h"

namespace
{
enum ClipRecord : std::uint32_t {
    kOffsetClip = 26,
    kSetMetaRegion = 28,
    kExcludeClipRect = 29,
    kIntersectClipRect = 30,
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
    kFillRegion = 71,
    kFrameRegion = 72,
    kInvertRegion = 73,
    kPaintRegion = 74,
    kExtSelectClipRegion = 75,
};
}  // namespace

static bool IsClipMode(std::uint32_t mode)
{
    return mode >= 1 && mode <= 5;
}

static Outcome OffsetClip(DeviceContext& dc, ByteReader& reader)
{
    const Point move = dc.LogicalToPicture().ApplyToVector(ReadPoint(reader));
    const auto whole = [](double d) {
        return static_cast<std::int32_t>(std::floor(ClampToDrawable(d) + 0.5));
    };
    dc.state.clip = Translate(dc.state.clip, whole(move.x), whole(move.y), dc.Target().Area(), dc.Work());
    return OutcomeOf(!reader.Failed());
}

static Outcome ClipRect(DeviceContext& dc, ByteReader& reader, ClipMode mode)
{
    const Rect rect = ReadRect(reader);
    dc.CombineClip(dc.ClipOf({&rect, 1}, dc.LogicalToPicture()), mode);
    return OutcomeOf(!reader.Failed());
}

static Outcome SelectRegion(DeviceContext& dc, ByteReader& reader)
{
    const std::uint32_t size = reader.U32Le();
    const std::uint32_t mode = reader.U32Le();
    if (reader.Failed() || !IsClipMode(mode))
        return Outcome::kBroken;
    if (size == 0) {  // no region resets the clip
        dc.ResetClip();
        return Outcome::kDone;
    }
    const auto region = ReadRegion(reader);
    if (!region)
        return Outcome::kBroken;
    // These rectangles are in device units.
    const Clip clip = region->rects.empty() ? Clip{} : dc.ClipOf(region->rects, dc.DeviceToPicture());
    dc.CombineClip(clip, static_cast<ClipMode>(mode));
    return Outcome::kDone;
}

static Outcome PaintRegion(EmfPlay& play, const EmfRecord& record)
{
    DeviceContext& dc = play.dc;
    ByteReader reader = record.Data();
    ReadRect(reader);  // bounds
    reader.U32Le();    // size of the region
    const bool names_brush = record.type == kFillRegion || record.type == kFrameRegion;
    const std::uint32_t brush_index = names_brush ? reader.U32Le() : 0;
    const Point stroke = record.type == kFrameRegion ? ReadPoint(reader) : Point{};
    const auto region = ReadRegion(reader);
    if (!region)
        return Outcome::kBroken;
    if (region->rects.empty())
        return Outcome::kDone;
    if (record.type == kInvertRegion) {
        InvertRegion(dc, *region);
        return Outcome::kDone;
    }
    std::shared_ptr<const Brush> brush = dc.state.brush;
    if (names_brush) {
        const Object named = (brush_index & 0x80000000) != 0 ? StockObject(brush_index & 0x7FFFFFFF)
                                                             : ObjectAt(play, brush_index);
        const auto* selected = std::get_if<std::shared_ptr<const Brush>>(&named);
        if (!selected)
            return Outcome::kDone;
        brush = *selected;
    }
    if (record.type == kFrameRegion)
        FrameRegion(dc, *region, brush, stroke.x, stroke.y);
    else
        FillRegion(dc, *region, brush);
    return Outcome::kDone;
}

Outcome PlayClip(EmfPlay& play, const EmfRecord& record)
{
    DeviceContext& dc = play.dc;
    ByteReader reader = record.Data();
    switch (record.type) {
        case kOffsetClip:
            return OffsetClip(dc, reader);
        case kSetMetaRegion:
            dc.SetMetaClip();
            return Outcome::kDone;
        case kExcludeClipRect:
            return ClipRect(dc, reader, ClipMode::kDifference);
        case kIntersectClipRect:
            return ClipRect(dc, reader, ClipMode::kAnd);
        case kExtSelectClipRegion:
            return SelectRegion(dc, reader);
        case kBeginPath:
            dc.BeginPath();
            return Outcome::kDone;
        case kEndPath:
            dc.EndPath();
            return Outcome::kDone;
        case kCloseFigure:
            dc.CloseFigure();
            return Outcome::kDone;
        case kFillPath:
            dc.PaintPath(ShapeParts::kFill);
            return Outcome::kDone;
        case kStrokeAndFillPath:
            dc.PaintPath(ShapeParts::kBoth);
            return Outcome::kDone;
        case kStrokePath:
            dc.PaintPath(ShapeParts::kLine);
            return Outcome::kDone;
        case kFlattenPath:
            return Outcome::kDone;  // flattening wouldn't change the result
        case kWidenPath:
            dc.WidenPath();
            return Outcome::kDone;
        case kSelectClipPath: {
            const std::uint32_t mode = reader.U32Le();
            if (IsClipMode(mode))
                dc.SelectClipPath(static_cast<ClipMode>(mode));
            return OutcomeOf(!reader.Failed());
        }
        case kAbortPath:
            dc.AbortPath();
            return Outcome::kDone;
        case kFillRegion:
        case kFrameRegion:
        case kInvertRegion:
        case kPaintRegion:
            return PaintRegion(play, record);
        default:
            return Outcome::kNotMine;
    }
}

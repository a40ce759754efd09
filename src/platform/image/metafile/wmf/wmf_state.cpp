// Plays WMF records that change the state of the device context.
#include "src/platform/image/metafile/wmf/wmf_player.h"

namespace
{
enum StateNumber : std::uint8_t {
    kSetBkColor = 0x01,
    kSetBkMode = 0x02,
    kSetMapMode = 0x03,
    kSetRop2 = 0x04,
    kSetPolyFillMode = 0x06,
    kSetStretchBltMode = 0x07,
    kSetTextCharExtra = 0x08,
    kSetTextColor = 0x09,
    kSetTextJustification = 0x0A,
    kSetWindowOrg = 0x0B,
    kSetWindowExt = 0x0C,
    kSetViewportOrg = 0x0D,
    kSetViewportExt = 0x0E,
    kOffsetWindowOrg = 0x0F,
    kScaleWindowExt = 0x10,
    kOffsetViewportOrg = 0x11,
    kScaleViewportExt = 0x12,
    kExcludeClipRect = 0x15,
    kIntersectClipRect = 0x16,
    kSaveDc = 0x1E,
    kOffsetClip = 0x20,
    kRestoreDc = 0x27,
    kSetTextAlign = 0x2E,
};
}  // namespace

static Outcome ScaleExtent(DeviceContext& dc, ByteReader& reader, bool of_window)
{
    const double y_denominator = reader.I16Le();
    const double y_numerator = reader.I16Le();
    const double x_denominator = reader.I16Le();
    const double x_numerator = reader.I16Le();
    const bool usable = x_denominator != 0 && y_denominator != 0 && x_numerator != 0 && y_numerator != 0;
    if (usable && !dc.ExtentsAreFixed()) {
        Point& ext = of_window ? dc.state.window_ext : dc.state.viewport_ext;
        ext = {ext.x * x_numerator / x_denominator, ext.y * y_numerator / y_denominator};
        dc.MappingChanged();
    }
    return OutcomeOf(!reader.Failed());
}

static Outcome ClipRect(DeviceContext& dc, ByteReader& reader, ClipMode mode)
{
    const Rect rect = ReadReversedRect(reader);
    if (reader.Failed())
        return Outcome::kBroken;
    dc.CombineClip(dc.ClipOf({&rect, 1}, dc.LogicalToPicture()), mode);
    return Outcome::kDone;
}

static Outcome OffsetClip(DeviceContext& dc, ByteReader& reader)
{
    const Point move = dc.LogicalToPicture().ApplyToVector(ReadPointYx(reader));
    const auto whole = [](double d) {
        return static_cast<std::int32_t>(std::floor(ClampToDrawable(d) + 0.5));
    };
    dc.state.clip = Translate(dc.state.clip, whole(move.x), whole(move.y), dc.Target().Area(), dc.Work());
    return OutcomeOf(!reader.Failed());
}

static Outcome SetMapping(DeviceContext& dc, const WmfRecord& record, ByteReader& reader)
{
    DcState& state = dc.state;
    const Point point = ReadPointYx(reader);
    if (reader.Failed())
        return Outcome::kBroken;
    const bool scalable = point.x != 0 && point.y != 0 && !dc.ExtentsAreFixed();
    switch (record.Number()) {
        case kSetWindowOrg:
            state.window_org = point;
            break;
        case kSetWindowExt:
            if (scalable)
                state.window_ext = point;
            break;
        case kSetViewportOrg:
            state.viewport_org = point;
            break;
        case kSetViewportExt:
            if (scalable)
                dc.SetViewportExt(point);
            break;
        case kOffsetWindowOrg:
            state.window_org = state.window_org + point;
            break;
        default:
            state.viewport_org = state.viewport_org + point;
            break;
    }
    dc.MappingChanged();
    return Outcome::kDone;
}

Outcome PlayWmfState(WmfPlay& play, const WmfRecord& record)
{
    DeviceContext& dc = play.dc;
    DcState& state = dc.state;
    ByteReader reader = record.Data();
    // A truncated record is skipped: it must not set a state that the file doesn't give.
    const bool has_two_words = record.Number() == kSetBkColor || record.Number() == kSetTextColor ||
                               record.Number() == kSetTextJustification;
    if (record.Number() != kSaveDc && reader.Left() < (has_two_words ? 4 : 2))
        return Outcome::kNotMine;
    switch (record.Number()) {
        case kSetBkColor:
            state.back_color = reader.U32Le();
            break;
        case kSetBkMode:
            state.opaque_back = reader.U16Le() == 2;
            break;
        case kSetMapMode:
            dc.SetMapMode(reader.U16Le());
            break;
        case kSetRop2: {
            const std::uint16_t rop2 = reader.U16Le();
            if (rop2 >= 1 && rop2 <= 16)
                state.rop2 = rop2;
            break;
        }
        case kSetPolyFillMode:
            state.winding = reader.U16Le() == 2;
            break;
        case kSetStretchBltMode:
            state.stretch_mode = reader.U16Le();
            break;
        case kSetTextCharExtra:
            state.char_extra = reader.I16Le();
            break;
        case kSetTextColor:
            state.text_color = reader.U32Le();
            break;
        case kSetTextJustification: {
            const double count = reader.U16Le();
            const double extra = reader.I16Le();
            state.break_extra = count > 0 ? extra / count : 0;
            break;
        }
        case kSetTextAlign:
            state.text_align = reader.U16Le();
            break;
        case kSetWindowOrg:
        case kSetWindowExt:
        case kSetViewportOrg:
        case kSetViewportExt:
        case kOffsetWindowOrg:
        case kOffsetViewportOrg:
            return SetMapping(dc, record, reader);
        case kScaleWindowExt:
        case kScaleViewportExt:
            return ScaleExtent(dc, reader, record.Number() == kScaleWindowExt);
        case kExcludeClipRect:
            return ClipRect(dc, reader, ClipMode::kDifference);
        case kIntersectClipRect:
            return ClipRect(dc, reader, ClipMode::kAnd);
        case kOffsetClip:
            return OffsetClip(dc, reader);
        case kSaveDc:
            return dc.SaveState() ? Outcome::kDone : Outcome::kGivingUp;
        case kRestoreDc:
            dc.RestoreState(reader.I16Le());
            break;
        default:
            return Outcome::kNotMine;
    }
    return OutcomeOf(!reader.Failed());
}

// Plays EMF records that change the state of the device context.
#include <bit>

#include "src/platform/image/metafile/emf/emf_player.h"

namespace
{
enum StateRecord : std::uint32_t {
    kSetWindowExt = 9,
    kSetWindowOrg = 10,
    kSetViewportExt = 11,
    kSetViewportOrg = 12,
    kSetBrushOrg = 13,
    kSetMapMode = 17,
    kSetBkMode = 18,
    kSetPolyFillMode = 19,
    kSetRop2 = 20,
    kSetStretchBltMode = 21,
    kSetTextAlign = 22,
    kSetTextColor = 24,
    kSetBkColor = 25,
    kScaleViewportExt = 31,
    kScaleWindowExt = 32,
    kSaveDc = 33,
    kRestoreDc = 34,
    kSetWorldTransform = 35,
    kModifyWorldTransform = 36,
    kSetArcDirection = 57,
    kSetMiterLimit = 58,
    kSetTextJustification = 120,
};
}  // namespace

static void SetIfUsable(Point& target, Point new_value)
{
    if (new_value.x != 0 && new_value.y != 0)
        target = new_value;
}

static void Scale(DcState& state, ByteReader& reader, bool of_window)
{
    const double x_numerator = reader.I32Le();
    const double x_denominator = reader.I32Le();
    const double y_numerator = reader.I32Le();
    const double y_denominator = reader.I32Le();
    Point& ext = of_window ? state.window_ext : state.viewport_ext;
    if (x_denominator != 0 && y_denominator != 0)
        SetIfUsable(ext, {ext.x * x_numerator / x_denominator, ext.y * y_numerator / y_denominator});
}

static void ModifyWorld(DcState& state, ByteReader& reader)
{
    const Affine new_world = ReadTransform(reader);
    const std::uint32_t mode = reader.U32Le();
    Affine result = state.world;
    if (mode == 1)
        result = {};
    else if (mode == 2)
        result = Then(new_world, state.world);
    else if (mode == 3)
        result = Then(state.world, new_world);
    else if (mode == 4)
        result = new_world;
    if (result.Finite())
        state.world = result;
}

// The format says that the limit is an integer, but writers also store a float. Read as an integer, a float
// is larger than any sensible limit.
static double MiterLimit(std::uint32_t stored)
{
    const double d = stored <= 0xFFFF ? stored : static_cast<double>(std::bit_cast<float>(stored));
    return std::isfinite(d) && d >= 1 ? d : 10;
}

// The bytes that a record's fields take.
static std::size_t FieldBytes(std::uint32_t type)
{
    switch (type) {
        case kSetWindowExt:
        case kSetWindowOrg:
        case kSetViewportExt:
        case kSetViewportOrg:
        case kSetBrushOrg:
        case kSetTextJustification:
            return 8;
        case kScaleViewportExt:
        case kScaleWindowExt:
            return 16;
        case kSetWorldTransform:
            return 24;
        case kModifyWorldTransform:
            return 28;
        case kSaveDc:
            return 0;
        default:
            return 4;
    }
}

Outcome PlayState(EmfPlay& play, const EmfRecord& record)
{
    DeviceContext& dc = play.dc;
    DcState& state = dc.state;
    ByteReader reader = record.Data();
    // A truncated record is skipped: it must not leave half of its state behind. Other families check their
    // own.
    if (reader.Left() < FieldBytes(record.type))
        return Outcome::kNotMine;
    switch (record.type) {
        case kSetWindowExt:
            if (!dc.ExtentsAreFixed())
                SetIfUsable(state.window_ext, ReadPoint(reader));
            break;
        case kSetWindowOrg:
            state.window_org = ReadPoint(reader);
            break;
        case kSetViewportExt:
            if (!dc.ExtentsAreFixed())
                SetIfUsable(state.viewport_ext, ReadPoint(reader));
            break;
        case kSetViewportOrg:
            state.viewport_org = ReadPoint(reader);
            break;
        case kScaleViewportExt:
        case kScaleWindowExt:
            if (!dc.ExtentsAreFixed())
                Scale(state, reader, record.type == kScaleWindowExt);
            break;
        case kSetBrushOrg:
            state.brush_org = ReadPoint(reader);
            return OutcomeOf(!reader.Failed());
        case kSetMapMode:
            dc.SetMapMode(reader.I32Le());
            break;
        case kSetBkMode:
            state.opaque_back = reader.U32Le() == 2;
            return OutcomeOf(!reader.Failed());
        case kSetPolyFillMode:
            state.winding = reader.U32Le() == 2;
            return OutcomeOf(!reader.Failed());
        case kSetRop2: {
            const std::uint32_t rop2 = reader.U32Le();
            if (rop2 >= 1 && rop2 <= 16)
                state.rop2 = static_cast<int>(rop2);
            return OutcomeOf(!reader.Failed());
        }
        case kSetStretchBltMode:
            state.stretch_mode = reader.I32Le();
            return OutcomeOf(!reader.Failed());
        case kSetTextAlign:
            state.text_align = reader.U32Le();
            return OutcomeOf(!reader.Failed());
        case kSetTextColor:
            state.text_color = reader.U32Le();
            return OutcomeOf(!reader.Failed());
        case kSetBkColor:
            state.back_color = reader.U32Le();
            return OutcomeOf(!reader.Failed());
        case kSetTextJustification: {
            const double extra = reader.I32Le();
            const double count = reader.I32Le();
            state.break_extra = count > 0 ? extra / count : 0;
            return OutcomeOf(!reader.Failed());
        }
        case kSaveDc:
            return dc.SaveState() ? Outcome::kDone : Outcome::kGivingUp;
        case kRestoreDc:
            dc.RestoreState(reader.I32Le());
            break;
        case kSetWorldTransform: {
            const Affine new_world = ReadTransform(reader);
            if (new_world.Finite())
                state.world = new_world;
            break;
        }
        case kModifyWorldTransform:
            ModifyWorld(state, reader);
            break;
        case kSetArcDirection:
            state.clockwise = reader.U32Le() == 2;
            return OutcomeOf(!reader.Failed());
        case kSetMiterLimit:
            state.miter_limit = MiterLimit(reader.U32Le());
            return OutcomeOf(!reader.Failed());
        default:
            return Outcome::kNotMine;
    }
    dc.MappingChanged();
    return OutcomeOf(!reader.Failed());
}

// Plays EMF+ records of state: transforms, clips, saved states and rendering modes.
#include <numbers>

#include "src/platform/image/metafile/emfplus/data_readers.h"
#include "src/platform/image/metafile/emfplus/emfplus_player.h"

namespace
{
enum StateRecord : std::uint16_t {
    kSetRenderingOrigin = 0x401D,
    kSetAntiAliasMode = 0x401E,
    kSetTextRenderingHint = 0x401F,
    kSetTextContrast = 0x4020,
    kSetInterpolationMode = 0x4021,
    kSetPixelOffsetMode = 0x4022,
    kSetCompositingMode = 0x4023,
    kSetCompositingQuality = 0x4024,
    kSave = 0x4025,
    kRestore = 0x4026,
    kBeginContainer = 0x4027,
    kBeginContainerNoParams = 0x4028,
    kEndContainer = 0x4029,
    kSetWorldTransform = 0x402A,
    kResetWorldTransform = 0x402B,
    kMultiplyWorldTransform = 0x402C,
    kTranslateWorldTransform = 0x402D,
    kScaleWorldTransform = 0x402E,
    kRotateWorldTransform = 0x402F,
    kSetPageTransform = 0x4030,
    kResetClip = 0x4031,
    kSetClipRect = 0x4032,
    kSetClipPath = 0x4033,
    kSetClipRegion = 0x4034,
    kOffsetClip = 0x4035,
};
}  // namespace

static constexpr std::uint16_t kAppends = 0x2000;

static constexpr std::uint32_t kNearestNeighbour = 5;
static constexpr std::uint32_t kPixelOffsetHighQuality = 2;
static constexpr std::uint32_t kPixelOffsetHalf = 4;

// Changes the world transform before or after the old one.
static PlusOutcome Multiply(PlusPlay& play, const PlusRecord& record, const Affine& change)
{
    Affine& world = play.graphics.state.world;
    const Affine result = record.Has(kAppends) ? Then(world, change) : Then(change, world);
    if (!result.Finite())
        return PlusOutcome::kBroken;
    world = result;
    return PlusOutcome::kDone;
}

static PlusOutcome ChangeWorld(PlusPlay& play, const PlusRecord& record)
{
    ByteReader reader = record.Data();
    switch (record.type) {
        case kResetWorldTransform:
            play.graphics.state.world = {};
            return PlusOutcome::kDone;
        case kSetWorldTransform: {
            const Affine world = ReadMatrix(reader);
            if (!reader.Failed())
                play.graphics.state.world = world;
            return PlusOutcomeOf(!reader.Failed());
        }
        case kMultiplyWorldTransform: {
            const Affine change = ReadMatrix(reader);
            return reader.Failed() ? PlusOutcome::kBroken : Multiply(play, record, change);
        }
        case kTranslateWorldTransform: {
            const Point move = ReadPointF(reader);
            return reader.Failed() ? PlusOutcome::kBroken
                                   : Multiply(play, record, {1, 0, 0, 1, move.x, move.y});
        }
        case kScaleWorldTransform: {
            const Point scale = ReadPointF(reader);
            return reader.Failed() ? PlusOutcome::kBroken
                                   : Multiply(play, record, {scale.x, 0, 0, scale.y, 0, 0});
        }
        default: {
            const double angle = ReadFloat(reader) / 180 * std::numbers::pi;
            const double cos = std::cos(angle);
            const double sin = std::sin(angle);
            return reader.Failed() ? PlusOutcome::kBroken
                                   : Multiply(play, record, {cos, sin, -sin, cos, 0, 0});
        }
    }
}

static PlusOutcome BeginContainer(PlusPlay& play, const PlusRecord& record)
{
    ByteReader reader = record.Data();
    std::optional<Rect> dest;
    Rect source;
    if (record.type == kBeginContainer) {
        dest = ReadRectF(reader);
        source = ReadRectF(reader);
    }
    const std::uint32_t index = reader.U32Le();
    if (reader.Failed())
        return PlusOutcome::kBroken;
    play.exhausted =
        !play.graphics.BeginContainer(index, dest, source, static_cast<PlusUnit>(record.flags & 0xFF));
    return PlusOutcome::kDone;
}

static PlusOutcome ChangeClip(PlusPlay& play, const PlusRecord& record)
{
    PlusGraphics& graphics = play.graphics;
    ByteReader reader = record.Data();
    const std::uint32_t mode = record.flags >> 8 & 0xF;
    if (mode > static_cast<std::uint32_t>(PlusClipMode::kComplement))
        return PlusOutcome::kBroken;
    Clip area;
    if (record.type == kSetClipRect) {
        const Rect rect = ReadRectF(reader);
        if (reader.Failed())
            return PlusOutcome::kBroken;
        area = graphics.ClipOf(rect);
    } else if (record.type == kSetClipPath) {
        const auto* path = play.Find<PlusPath>(record.Id());
        if (!path)
            return PlusOutcome::kBroken;
        area = graphics.ClipOf(path->outline, path->winding);
    } else {
        const auto* region = play.Find<PlusRegion>(record.Id());
        if (!region)
            return PlusOutcome::kBroken;
        area = graphics.ClipOf(*region);
    }
    graphics.CombineClip(area, static_cast<PlusClipMode>(mode));
    return PlusOutcome::kDone;
}

static PlusOutcome SetPage(PlusPlay& play, const PlusRecord& record)
{
    ByteReader reader = record.Data();
    const double scale = ReadFloat(reader);
    const std::uint32_t unit = record.Id();
    if (reader.Failed() || !(scale > 0) || !std::isfinite(scale) ||
        unit > static_cast<std::uint32_t>(PlusUnit::kMillimetre))
        return PlusOutcome::kBroken;
    play.graphics.state.page_unit = static_cast<PlusUnit>(unit);
    play.graphics.state.page_scale = scale;
    return PlusOutcome::kDone;
}

PlusOutcome PlayPlusState(PlusPlay& play, const PlusRecord& record)
{
    PlusGraphics& graphics = play.graphics;
    ByteReader reader = record.Data();
    switch (record.type) {
        case kSetRenderingOrigin: {
            const double x = reader.I32Le();
            graphics.state.origin = {x, static_cast<double>(reader.I32Le())};
            return PlusOutcomeOf(!reader.Failed());
        }
        case kSetAntiAliasMode:
        case kSetTextRenderingHint:
        case kSetTextContrast:
        case kSetCompositingMode:
        case kSetCompositingQuality:
            return PlusOutcome::kDone;  // everything is antialiased and laid over what is there
        case kSetInterpolationMode:
            graphics.state.nearest = record.Id() == kNearestNeighbour;
            return PlusOutcome::kDone;
        case kSetPixelOffsetMode:
            graphics.state.half_pixel =
                record.Id() == kPixelOffsetHighQuality || record.Id() == kPixelOffsetHalf;
            return PlusOutcome::kDone;
        case kSave: {
            const std::uint32_t index = reader.U32Le();
            play.exhausted = !reader.Failed() && !graphics.Save(index);
            return PlusOutcomeOf(!reader.Failed());
        }
        case kRestore:
        case kEndContainer: {
            const std::uint32_t index = reader.U32Le();
            if (!reader.Failed())
                graphics.Restore(index);
            return PlusOutcomeOf(!reader.Failed());
        }
        case kBeginContainer:
        case kBeginContainerNoParams:
            return BeginContainer(play, record);
        case kSetWorldTransform:
        case kResetWorldTransform:
        case kMultiplyWorldTransform:
        case kTranslateWorldTransform:
        case kScaleWorldTransform:
        case kRotateWorldTransform:
            return ChangeWorld(play, record);
        case kSetPageTransform:
            return SetPage(play, record);
        case kResetClip:
            graphics.ResetClip();
            return PlusOutcome::kDone;
        case kSetClipRect:
        case kSetClipPath:
        case kSetClipRegion:
            return ChangeClip(play, record);
        case kOffsetClip: {
            const Point move = ReadPointF(reader);
            if (!reader.Failed())
                graphics.OffsetClip(move);
            return PlusOutcomeOf(!reader.Failed());
        }
        default:
            return PlusOutcome::kNotMine;
    }
}

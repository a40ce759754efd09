// Transforms, saved states, clips and fills.
#include "src/platform/image/metafile/emfplus/graphics.h"

#include "src/platform/image/metafile/canvas/raster_ops.h"
#include "src/platform/image/metafile/emfplus/brush_inks.h"

static constexpr std::size_t kMaxSavedStates = 4096;

PlusGraphics::PlusGraphics(DeviceContext& dc) : dc_(dc), canvas_(dc.Target()), limit_(dc.state.meta)
{
    ResetClip();
}

void PlusGraphics::SetResolution(double dots_x, double dots_y)
{
    if (dots_x >= 1 && dots_y >= 1)
        dots_ = {dots_x, dots_y};
}

double PlusGraphics::PixelsPer(PlusUnit unit) const
{
    switch (unit) {
        case PlusUnit::kPoint:
            return dots_.x / 72;
        case PlusUnit::kInch:
            return dots_.x;
        case PlusUnit::kDocument:
            return dots_.x / 300;
        case PlusUnit::kMillimetre:
            return dots_.x / 25.4;
        default:
            return 1;
    }
}

double PlusGraphics::PageUnitsPer(PlusUnit unit) const
{
    if (unit == PlusUnit::kWorld)
        return 1;
    const double page = PixelsPer(state.page_unit) * state.page_scale;
    return page > 0 ? PixelsPer(unit) / page : 1;
}

Affine PlusGraphics::WorldToDevice() const
{
    const double scale = PixelsPer(state.page_unit) * state.page_scale;
    // Vertical lengths differ if the device's pixels aren't square.
    const double scale_y = state.page_unit > PlusUnit::kPixel ? scale * dots_.y / dots_.x : scale;
    return Then(Then(state.world, {scale, 0, 0, scale_y, 0, 0}), state.container);
}

Affine PlusGraphics::WorldToPicture() const
{
    const Affine map = Then(WorldToDevice(), dc_.DeviceToPicture());
    return map.Finite() ? map : dc_.DeviceToPicture();
}

bool PlusGraphics::Save(std::uint32_t index)
{
    if (saved_.size() >= kMaxSavedStates)
        return false;
    saved_.push_back({index, state});
    return true;
}

void PlusGraphics::Restore(std::uint32_t index)
{
    for (std::size_t n = saved_.size(); n-- > 0;)
        if (saved_[n].index == index) {
            state = std::move(saved_[n].state);
            saved_.resize(n);
            return;
        }
}

bool PlusGraphics::BeginContainer(std::uint32_t index, const std::optional<Rect>& dest, const Rect& source,
                                  PlusUnit unit)
{
    if (!Save(index))
        return false;
    Affine map = WorldToDevice();
    if (dest) {
        const double scale_x = dest->Width() / source.Width();
        const double scale_y = dest->Height() / source.Height();
        const Affine into{
            scale_x, 0, 0, scale_y, dest->left - source.left * scale_x, dest->top - source.top * scale_y};
        if (into.Finite())
            map = Then(into, map);
        // The source counts in its own units, and so does the page within.
        const double pixels = PixelsPer(unit);
        map = Then({1 / pixels, 0, 0, 1 / pixels, 0, 0}, map);
    }
    state.container = map.Finite() ? map : Affine{};
    state.world = {};
    state.page_unit = PlusUnit::kDisplay;
    state.page_scale = 1;
    return true;
}

void PlusGraphics::CombineClip(const Clip& area, PlusClipMode mode)
{
    Budget& work = dc_.Work();
    switch (mode) {
        case PlusClipMode::kReplace:
            state.clip = Combine(limit_, area, ClipMode::kAnd, work);
            break;
        case PlusClipMode::kIntersect:
            state.clip = Combine(state.clip, area, ClipMode::kAnd, work);
            break;
        case PlusClipMode::kUnion:
            state.clip =
                Combine(limit_, Combine(state.clip, area, ClipMode::kOr, work), ClipMode::kAnd, work);
            break;
        case PlusClipMode::kXor:
            state.clip =
                Combine(limit_, Combine(state.clip, area, ClipMode::kXor, work), ClipMode::kAnd, work);
            break;
        case PlusClipMode::kExclude:
            state.clip = Combine(state.clip, area, ClipMode::kDifference, work);
            break;
        case PlusClipMode::kComplement:
            state.clip =
                Combine(limit_, Combine(area, state.clip, ClipMode::kDifference, work), ClipMode::kAnd, work);
            break;
    }
}

void PlusGraphics::ResetClip()
{
    state.clip = limit_;
}

void PlusGraphics::OffsetClip(Point move)
{
    const Point pixels = WorldToPicture().ApplyToVector(move);
    const auto whole = [](double d) {
        return static_cast<std::int32_t>(std::floor(ClampToDrawable(d) + 0.5));
    };
    const Clip moved = Translate(state.clip, whole(pixels.x), whole(pixels.y), canvas_.Area(), dc_.Work());
    state.clip = Combine(limit_, moved, ClipMode::kAnd, dc_.Work());
}

Clip PlusGraphics::ClipOf(const Rect& world)
{
    return dc_.ClipOf({&world, 1}, WorldToPicture());
}

Clip PlusGraphics::ClipOf(const Outline& world, bool winding)
{
    return canvas_.ClipOf(world.Transformed(WorldToPicture()), winding, canvas_.Area());
}

Clip PlusGraphics::ClipOf(const PlusRegion& region)
{
    using Kind = PlusRegion::Kind;
    switch (region.kind) {
        case Kind::kRect:
            return ClipOf(region.rect);
        case Kind::kPath:
            return ClipOf(region.path, false);
        case Kind::kEmpty:
            return {};
        case Kind::kInfinite:
            return {canvas_.Area(), nullptr};
        default:
            break;
    }
    const Clip left = ClipOf(*region.left);
    const Clip right = ClipOf(*region.right);
    Budget& work = dc_.Work();
    switch (region.kind) {
        case Kind::kAnd:
            return Combine(left, right, ClipMode::kAnd, work);
        case Kind::kOr:
            return Combine(left, right, ClipMode::kOr, work);
        case Kind::kXor:
            return Combine(left, right, ClipMode::kXor, work);
        case Kind::kExclude:
            return Combine(left, right, ClipMode::kDifference, work);
        default:
            return Combine(right, left, ClipMode::kDifference, work);
    }
}

std::optional<Ink> PlusGraphics::InkFor(const PlusBrush& brush)
{
    if (!dc_.Work().Spend(InkWork(brush)))
        return std::nullopt;
    return InkOf(brush, WorldToPicture(), dc_.DeviceToPicture().Apply(state.origin));
}

void PlusGraphics::Fill(const Outline& world, bool winding, const PlusBrush& brush)
{
    if (const auto ink = InkFor(brush))
        canvas_.Fill(world.Transformed(WorldToPicture()), winding, *ink, kRop2Copy, state.clip);
}

void PlusGraphics::FillPicture(const Outline& picture, const PlusBrush& brush)
{
    if (const auto ink = InkFor(brush))
        canvas_.Fill(picture, true, *ink, kRop2Copy, state.clip, true);
}

void PlusGraphics::FillClip(const Clip& clip, const PlusBrush& brush)
{
    const auto ink = InkFor(brush);
    if (!ink || clip.box.Empty())
        return;
    Outline box;
    box.AddBox({static_cast<double>(clip.box.left), static_cast<double>(clip.box.top),
                static_cast<double>(clip.box.right), static_cast<double>(clip.box.bottom)});
    canvas_.Fill(box, true, *ink, kRop2Copy, Combine(state.clip, clip, ClipMode::kAnd, dc_.Work()));
}

void PlusGraphics::Clear(ArgbColor color)
{
    // The page is white paper: clearing to transparency leaves it so.
    const std::uint32_t paper = BlendOver(0xFFFFFF, PremultipliedColor(color));
    FillClip(state.clip, PlusSolidBrush{0xFF000000 | paper});
}

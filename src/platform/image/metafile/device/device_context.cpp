// Mapping, saved states, colours and clipping of the device context.
#include "src/platform/image/metafile/device/device_context.h"

#include <utility>

#include "src/platform/image/metafile/device/brush_ink.h"

// A saved state takes some hundred bytes, its record only eight.
static constexpr std::size_t kMaxSavedStates = 4096;

static constexpr int kMapText = 1;
static constexpr int kMapTwips = 6;
static constexpr int kMapIsotropic = 7;

// WMF has no reference device; its metric map modes assume a 96 dpi screen.
static constexpr double kScreenDotsPerMillimetre = 96 / 25.4;

DeviceContext::DeviceContext(Canvas& canvas, const MetafileRequest& request)
    : canvas_(canvas), request_(request), fonts_(canvas.Work())
{
    for (const std::uint32_t stock : {0u, 7u, 13u})
        Select(StockObject(stock));
    state.palette = DefaultPalette();
    ResetClip();
    state.meta = state.clip;
    if (request.enhanced)
        device_to_picture_ = {request.scale_x, 0, 0, request.scale_y, request.offset_x, request.offset_y};
    else {
        state.window_org = {request.window_left, request.window_top};
        state.window_ext = {request.window_width, request.window_height};
        state.viewport_ext = canvas.Measuring() ? state.window_ext
                                                : Point{static_cast<double>(request.width),
                                                        static_cast<double>(request.height)};
    }
}

void DeviceContext::Nest(const Affine& device_to_picture, const Clip& limit)
{
    device_to_picture_ = device_to_picture;
    state.meta = limit;
    MappingChanged();
}

bool DeviceContext::SaveState()
{
    if (saved_.size() >= kMaxSavedStates)
        return false;
    saved_.push_back(state);
    return true;
}

void DeviceContext::RestoreState(std::int32_t which)
{
    const auto count = static_cast<std::int64_t>(saved_.size());
    const std::int64_t index = which < 0 ? count + which : std::int64_t{which} - 1;
    if (which == 0 || index < 0 || index >= count)
        return;
    state = std::move(saved_[static_cast<std::size_t>(index)]);
    saved_.resize(static_cast<std::size_t>(index));
    MappingChanged();
}

void DeviceContext::Select(const Object& object)
{
    if (const auto* pen = std::get_if<std::shared_ptr<const Pen>>(&object))
        state.pen = *pen;
    else if (const auto* brush = std::get_if<std::shared_ptr<const Brush>>(&object))
        state.brush = *brush;
    else if (const auto* font = std::get_if<std::shared_ptr<const Font>>(&object))
        state.font = *font;
    else if (const auto* palette = std::get_if<std::shared_ptr<const Palette>>(&object))
        state.palette = *palette;
    else if (const auto* region = std::get_if<std::shared_ptr<const Region>>(&object))
        // Selecting a region sets the clip; EMF regions are in device units.
        state.clip = ClipOf((*region)->rects, request_.enhanced ? device_to_picture_ : LogicalToPicture());
}

bool DeviceContext::ExtentsAreFixed() const
{
    return request_.enhanced ? state.map_mode < kMapIsotropic
                             : state.map_mode > kMapText && state.map_mode < kMapIsotropic;
}

void DeviceContext::SetMapMode(int mode)
{
    if (mode < kMapText || mode > 8 || mode == state.map_mode)
        return;
    state.map_mode = mode;
    MappingChanged();
    // WMF files with a placeable header often select the text mode and still set a window, so only metric
    // modes have a fixed scale.
    static constexpr double kUnitsPerMillimetre[] = {0, 0, 10, 100, 100 / 25.4, 1000 / 25.4, 1440 / 25.4};
    const bool is_wmf = !request_.enhanced;
    const Point dots = is_wmf ? Point{kScreenDotsPerMillimetre, kScreenDotsPerMillimetre}
                              : Point{request_.dots_per_millimetre_x, request_.dots_per_millimetre_y};
    if (mode >= 2 && mode <= kMapTwips) {
        state.window_ext = {kUnitsPerMillimetre[mode], kUnitsPerMillimetre[mode]};
        state.viewport_ext = {dots.x, -dots.y};
    } else if (mode == kMapText && !is_wmf)
        state.window_ext = state.viewport_ext = {1, 1};
    else if (mode == kMapIsotropic && !is_wmf) {
        state.window_ext = {10, 10};
        state.viewport_ext = {dots.x, -dots.y};
    }
}

void DeviceContext::SetViewportExt(Point ext)
{
    state.viewport_ext = ext;
    MappingChanged();
    if (request_.enhanced || viewport_seen_ || ext.x == 0 || ext.y == 0)
        return;
    // A WMF's viewport is in pixels of the screen it was made on: map the first one to the whole picture.
    viewport_seen_ = true;
    viewport_scale_ = {request_.width / std::abs(ext.x), request_.height / std::abs(ext.y)};
    if (canvas_.Measuring())
        viewport_scale_ = {1, 1};
    device_to_picture_ = {viewport_scale_.x, 0, 0, viewport_scale_.y, 0, 0};
}

// The scale of the map mode, with signs.
static Point PageScaleOf(const DcState& state)
{
    const auto ratio = [](double view, double window) {
        const double d = view / window;
        return std::isfinite(d) && d != 0 ? d : 1;
    };
    Point scale{ratio(state.viewport_ext.x, state.window_ext.x),
                ratio(state.viewport_ext.y, state.window_ext.y)};
    if (state.map_mode == kMapIsotropic) {
        const double less = std::min(std::abs(scale.x), std::abs(scale.y));
        scale = {std::copysign(less, scale.x), std::copysign(less, scale.y)};
    }
    return scale;
}

const Affine& DeviceContext::LogicalToPicture() const
{
    if (mapping_known_)
        return logical_to_picture_;
    const Point scale = PageScaleOf(state);
    const Affine page{scale.x,
                      0,
                      0,
                      scale.y,
                      state.viewport_org.x - state.window_org.x * scale.x,
                      state.viewport_org.y - state.window_org.y * scale.y};
    logical_to_picture_ = Then(Then(state.world, page), device_to_picture_);
    if (!logical_to_picture_.Finite())
        logical_to_picture_ = device_to_picture_;
    mapping_known_ = true;
    return logical_to_picture_;
}

Affine DeviceContext::PageScale() const
{
    const Point scale = PageScaleOf(state);
    return {std::abs(scale.x * device_to_picture_.xx), 0, 0, std::abs(scale.y * device_to_picture_.yy), 0, 0};
}

Point DeviceContext::DeviceUnit() const
{
    const Affine& map = LogicalToPicture();
    const auto unit = [](double picture, double logical) {
        const double d = picture / logical;
        return std::isfinite(d) ? d : 0;
    };
    // Without a device, as in WMF, lines are aligned to the smaller of a logical unit and a pixel.
    const double logical_x = LengthOf(map.ApplyToVector({1, 0}));
    const double logical_y = LengthOf(map.ApplyToVector({0, 1}));
    if (!request_.enhanced)
        return {std::min(1.0, unit(1, logical_x)), std::min(1.0, unit(1, logical_y))};
    return {unit(std::abs(device_to_picture_.xx), logical_x),
            unit(std::abs(device_to_picture_.yy), logical_y)};
}

Point DeviceContext::HalfPixel() const
{
    if (request_.enhanced)
        return {std::min(0.5, std::abs(device_to_picture_.xx) / 2),
                std::min(0.5, std::abs(device_to_picture_.yy) / 2)};
    const Affine& map = LogicalToPicture();
    return {std::min(0.5, LengthOf(map.ApplyToVector({1, 0})) / 2),
            std::min(0.5, LengthOf(map.ApplyToVector({0, 1})) / 2)};
}

double DeviceContext::Handedness() const
{
    const Point scale = PageScaleOf(state);
    return scale.x * scale.y < 0 ? -1 : 1;
}

std::uint32_t DeviceContext::ResolveColor(ColorRef color) const
{
    const auto swapped = [](std::uint32_t n) { return (n & 255) << 16 | (n & 0xFF00) | (n >> 16 & 255); };
    // High byte 1 marks a palette index; 0 and 2 mark colours.
    if (color >> 24 != 1)
        return swapped(color);
    const std::vector<std::uint32_t>& colors = state.palette->colors;
    const std::size_t index = color & 0xFFFF;
    return index < colors.size() ? colors[index] : 0;
}

std::optional<Ink> DeviceContext::InkFor(const Brush& brush) const
{
    std::optional<Ink> ink = BrushInk(brush, *this);
    if (ink && ink->tile) {
        const Point origin = device_to_picture_.Apply(state.brush_org);
        ink->origin_x = static_cast<std::int32_t>(std::floor(ClampToDrawable(origin.x) + 0.5));
        ink->origin_y = static_cast<std::int32_t>(std::floor(ClampToDrawable(origin.y) + 0.5));
    }
    return ink;
}

std::optional<Ink> DeviceContext::InkFor(const std::shared_ptr<const Brush>& brush)
{
    if (!brush || brush->kind == BrushKind::kNull)
        return std::nullopt;
    if (brush->kind == BrushKind::kSolid)
        return Ink::Solid(ResolveColor(brush->color));
    // Cache the decoded pattern until the brush or the colours it uses change.
    const ColorRef back = state.opaque_back ? state.back_color : 0xFF000000;
    if (brush != ink_brush_ || ink_text_ != state.text_color || ink_back_ != back) {
        ink_ = InkFor(*brush);
        ink_brush_ = brush;
        ink_text_ = state.text_color;
        ink_back_ = back;
    } else if (ink_ && ink_->tile) {
        const Point origin = device_to_picture_.Apply(state.brush_org);
        ink_->origin_x = static_cast<std::int32_t>(std::floor(ClampToDrawable(origin.x) + 0.5));
        ink_->origin_y = static_cast<std::int32_t>(std::floor(ClampToDrawable(origin.y) + 0.5));
    }
    return ink_;
}

Clip DeviceContext::CurrentClip() const
{
    // Both usually stay the same from one operation to the next, and combining two masks costs as much as
    // painting their pixels.
    if (!combined_ || !combined_->clip.IsSameAs(state.clip) || !combined_->meta.IsSameAs(state.meta))
        combined_ =
            CombinedClip{state.clip, state.meta, Combine(state.clip, state.meta, ClipMode::kAnd, Work())};
    return combined_->result;
}

void DeviceContext::CombineClip(const Clip& clip, ClipMode mode)
{
    state.clip = Combine(state.clip, clip, mode, Work());
}

void DeviceContext::SetMetaClip()
{
    state.meta = CurrentClip();
    ResetClip();
}

Clip DeviceContext::ClipOf(std::span<const Rect> rects, const Affine& map)
{
    const Box& area = canvas_.Area();
    if (rects.size() == 1 && map.KeepsAxes())
        return {Intersection(BoxOf(BoundsOf(map, rects[0]), true), area), nullptr};
    Outline outline;
    for (const Rect& rect : rects)
        outline.AddBox(rect.Normalised());
    return canvas_.ClipOf(outline.Transformed(map), true, area);
}

// Paints with Cairo, and with its own loops for operations that Cairo lacks.
#include "src/platform/image/metafile/canvas/canvas.h"

#include <new>

#include "src/platform/image/metafile/canvas/raster_ops.h"

static constexpr std::uint64_t kCostOfOperation = 200;
// Units per pixel: a layer is cleared, drawn and composited.
static constexpr std::uint64_t kCostOfLayer = 6;

std::unique_ptr<Canvas> Canvas::Create(const Box& area, Budget& budget)
{
    std::unique_ptr<Canvas> canvas(new Canvas(budget));
    canvas->area_ = area;
    canvas->surface_.reset(cairo_image_surface_create(CAIRO_FORMAT_RGB24, area.Width(), area.Height()));
    if (cairo_surface_status(canvas->surface_.get()) != CAIRO_STATUS_SUCCESS)
        return nullptr;
    cairo_surface_set_device_offset(canvas->surface_.get(), -area.left, -area.top);
    canvas->cairo_.reset(cairo_create(canvas->surface_.get()));
    cairo_set_source_rgb(canvas->cairo_.get(), 1, 1, 1);
    cairo_paint(canvas->cairo_.get());
    return canvas->Failed() ? nullptr : std::move(canvas);
}

std::unique_ptr<Canvas> Canvas::CreateMeasuring(Budget& budget)
{
    std::unique_ptr<Canvas> canvas(new Canvas(budget));
    constexpr auto kFar = static_cast<std::int32_t>(kMaxCoordinate);
    canvas->area_ = {-kFar, -kFar, kFar, kFar};
    return canvas;
}

bool Canvas::Failed() const
{
    return status_ != CAIRO_STATUS_SUCCESS || (cairo_ && cairo_status(cairo_.get()) != CAIRO_STATUS_SUCCESS);
}

std::uint32_t* Canvas::Row(std::int32_t y)
{
    unsigned char* bytes = cairo_image_surface_get_data(surface_.get());
    const int stride = cairo_image_surface_get_stride(surface_.get());
    return reinterpret_cast<std::uint32_t*>(bytes + static_cast<std::ptrdiff_t>(y - area_.top) * stride);
}

void Canvas::Compose(const Box& box, const Clip& clip, const Draw& draw, const Mix& mix)
{
    const Box layer_box = Intersection(Intersection(box, clip.box), area_);
    if (layer_box.Empty())
        return;
    Touch(layer_box);
    if (Measuring() || Failed() || !budget_.Spend(layer_box.Area() * kCostOfLayer + kCostOfOperation))
        return;
    layer_.assign(layer_box.Area(), 0);
    const SurfacePtr layer(cairo_image_surface_create_for_data(
        reinterpret_cast<unsigned char*>(layer_.data()), CAIRO_FORMAT_ARGB32, layer_box.Width(),
        layer_box.Height(), layer_box.Width() * 4));
    cairo_surface_set_device_offset(layer.get(), -layer_box.left, -layer_box.top);
    {
        const CairoPtr cairo(cairo_create(layer.get()));
        draw(cairo.get());
        status_ = cairo_status(cairo.get());
    }
    cairo_surface_finish(layer.get());
    if (Failed())
        return;
    cairo_surface_flush(surface_.get());
    const std::uint32_t* from = layer_.data();
    for (std::int32_t y = layer_box.top; y < layer_box.bottom; ++y) {
        std::uint32_t* to = Row(y) + (layer_box.left - area_.left);
        const std::uint8_t* levels =
            clip.coverage ? clip.coverage->Row(y) + (layer_box.left - clip.box.left) : nullptr;
        for (std::int32_t x = layer_box.left; x < layer_box.right; ++x, ++from, ++to) {
            const std::uint32_t level = levels ? *levels++ : 255;
            if (level != 0)
                *to = mix(x, y, *to & 0xFFFFFF, *from, level);
        }
    }
    cairo_surface_mark_dirty_rectangle(surface_.get(), layer_box.left - area_.left, layer_box.top - area_.top,
                                       layer_box.Width(), layer_box.Height());
}

void Canvas::Paint(const Box& ink_box, std::uint64_t work, const Ink& ink, int rop2_asked, const Clip& clip,
                   const Draw& draw)
{
    const Box box = Intersection(Intersection(ink_box, clip.box), area_);
    if (box.Empty() || rop2_asked == kRop2Nop)
        return;
    Touch(box);
    if (Measuring() || Failed() || !budget_.Spend(box.Area() + work + kCostOfOperation))
        return;
    // kRop2Black and kRop2White are plain painting in another colour.
    Ink plain = ink;
    if (rop2_asked == kRop2Black || rop2_asked == kRop2White) {
        plain = Ink{rop2_asked == kRop2Black ? 0u : 0xFFFFFFu, nullptr, 0, 0};
        rop2_asked = kRop2Copy;
    }
    if (rop2_asked == kRop2Copy && !clip.coverage) {
        cairo_t* cairo = cairo_.get();
        cairo_reset_clip(cairo);
        cairo_rectangle(cairo, box.left, box.top, box.Width(), box.Height());
        cairo_clip(cairo);
        plain.ApplyTo(cairo);
        draw(cairo);
        return;
    }
    const bool bitwise = rop2_asked != kRop2Copy;
    const auto draw_ink = [&](cairo_t* cairo) {
        // Antialiased edges have no bitwise meaning.
        cairo_set_antialias(cairo, bitwise ? CAIRO_ANTIALIAS_NONE : CAIRO_ANTIALIAS_DEFAULT);
        plain.ApplyTo(cairo);
        draw(cairo);
    };
    if (bitwise)
        Compose(box, clip, draw_ink,
                [rop2_asked](std::int32_t, std::int32_t, std::uint32_t old, std::uint32_t pixel,
                             std::uint32_t level) {
                    return pixel >> 24 >= 128 && level >= 128 ? Rop2(rop2_asked, old, pixel) : old;
                });
    else
        Compose(box, clip, draw_ink,
                [](std::int32_t, std::int32_t, std::uint32_t old, std::uint32_t pixel, std::uint32_t level) {
                    return BlendOver(old, ScalePixel(pixel, level));
                });
}

// A bound on the pixels that stroking the outline touches.
static Box BoxOfStroke(const Outline& outline, const StrokeStyle& style)
{
    const double largest =
        std::max(LengthOf({style.pen.xx, style.pen.yx}), LengthOf({style.pen.xy, style.pen.yy}));
    const double spread = style.join == CAIRO_LINE_JOIN_MITER ? std::max(1.5, style.miter_limit) : 1.5;
    const double margin = ClampToDrawable(style.width * largest * spread + 1);
    const Rect rect = outline.Extents();
    return BoxOf({rect.left - margin, rect.top - margin, rect.right + margin, rect.bottom + margin});
}

static void DrawAlong(cairo_t* cairo, const Outline& outline, const StrokeStyle& style)
{
    outline.AddTo(cairo);
    const cairo_matrix_t pen{style.pen.xx, style.pen.yx, style.pen.xy, style.pen.yy, 0, 0};
    cairo_transform(cairo, &pen);
    cairo_set_line_width(cairo, style.width);
    cairo_set_line_cap(cairo, style.cap);
    cairo_set_line_join(cairo, style.join);
    cairo_set_miter_limit(cairo, style.miter_limit);
    cairo_set_dash(cairo, style.dashes.data(), static_cast<int>(style.dashes.size()), 0);
    cairo_stroke(cairo);
    cairo_identity_matrix(cairo);
}

static void DrawInside(cairo_t* cairo, const Outline& outline, bool winding)
{
    outline.AddTo(cairo);
    cairo_set_fill_rule(cairo, winding ? CAIRO_FILL_RULE_WINDING : CAIRO_FILL_RULE_EVEN_ODD);
    cairo_fill(cairo);
}

std::uint64_t Canvas::WorkOf(const Outline& outline, const StrokeStyle& style) const
{
    // Each line has two sides and two ends or joins.
    std::uint64_t work = outline.Work(area_.top, area_.bottom) * 3;
    double period = 0;
    for (const double dash : style.dashes)
        period += dash;
    const double pen = style.pen.Scale();
    if (period * pen > 0)
        work += static_cast<std::uint64_t>(ClampToDrawable(outline.Length() / (period * pen))) * 200 *
                style.dashes.size();
    return work;
}

void Canvas::Fill(const Outline& outline, bool winding, const Ink& ink, int rop2_asked, const Clip& clip,
                  bool exact)
{
    if (outline.Empty())
        return;
    const Outline neat = !exact && outline.IsRectilinear() ? outline.SnapToPixelCorners() : outline;
    Paint(BoxOf(neat.Extents()), neat.Work(area_.top, area_.bottom), ink, rop2_asked, clip,
          [&](cairo_t* cairo) { DrawInside(cairo, neat, winding); });
}

void Canvas::Stroke(const Outline& outline, const StrokeStyle& style, const Ink& ink, int rop2_asked,
                    const Clip& clip)
{
    if (outline.Empty())
        return;
    Paint(BoxOfStroke(outline, style), WorkOf(outline, style), ink, rop2_asked, clip,
          [&](cairo_t* cairo) { DrawAlong(cairo, outline, style); });
}

Clip Canvas::CoverageOf(const Box& ink, std::uint64_t work, const Draw& draw)
{
    const Box box = Intersection(ink, area_);
    if (box.Empty())
        return {};
    if (Measuring())
        return {box, nullptr};
    if (!budget_.Spend(box.Area() * 8 + work + kCostOfOperation))
        return {};
    const SurfacePtr mask(cairo_image_surface_create(CAIRO_FORMAT_A8, box.Width(), box.Height()));
    cairo_surface_set_device_offset(mask.get(), -box.left, -box.top);
    {
        const CairoPtr cairo(cairo_create(mask.get()));
        draw(cairo.get());
        status_ = cairo_status(cairo.get());
    }
    if (Failed())
        return {};
    cairo_surface_flush(mask.get());
    auto coverage = std::make_shared<Coverage>(box);
    const unsigned char* bytes = cairo_image_surface_get_data(mask.get());
    const int stride = cairo_image_surface_get_stride(mask.get());
    for (std::int32_t y = box.top; y < box.bottom; ++y, bytes += stride)
        std::copy(bytes, bytes + box.Width(), coverage->Row(y));
    return {box, std::move(coverage)};
}

Clip Canvas::ClipOf(const Outline& outline, bool winding, const Box& limit)
{
    if (outline.Empty())
        return {};
    const Outline neat = outline.IsRectilinear() ? outline.SnapToPixelCorners() : outline;
    return CoverageOf(Intersection(BoxOf(neat.Extents()), limit), neat.Work(area_.top, area_.bottom),
                      [&](cairo_t* cairo) { DrawInside(cairo, neat, winding); });
}

Clip Canvas::ClipOf(const Outline& outline, const StrokeStyle& style, const Box& limit)
{
    if (outline.Empty())
        return {};
    return CoverageOf(Intersection(BoxOfStroke(outline, style), limit), WorkOf(outline, style),
                      [&](cairo_t* cairo) { DrawAlong(cairo, outline, style); });
}

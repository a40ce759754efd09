// Paints scan-converted shapes, and composes what Cairo draws on a layer.
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
    canvas->pixels_.assign(area.Area(), 0xFFFFFF);
    return canvas;
}

std::unique_ptr<Canvas> Canvas::CreateMeasuring(Budget& budget)
{
    std::unique_ptr<Canvas> canvas(new Canvas(budget));
    constexpr auto kFar = static_cast<std::int32_t>(kMaxCoordinate);
    canvas->area_ = {-kFar, -kFar, kFar, kFar};
    return canvas;
}

void Canvas::Reset()
{
    std::fill(pixels_.begin(), pixels_.end(), 0xFFFFFF);
    touched_ = {};
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
}

// Sends an outline's figures to be filled.
static PolygonSource Inside(const Outline& outline)
{
    return [&outline](const PolygonSink& sink) {
        outline.ForEachFigure([&sink](std::span<const Point> points, bool) { sink(points); });
    };
}

static PolygonSource Along(const Outline& outline, const StrokeStyle& style)
{
    return [&outline, &style](const PolygonSink& sink) { Stroke(outline, style, sink); };
}

// Paints a run of pixels in the copy operation. levels are those of the shape within the clip.
static void PaintRun(std::uint32_t* to, std::span<const std::uint8_t> levels, const std::uint32_t* ink,
                     std::uint32_t color)
{
    for (std::size_t n = 0; n < levels.size(); ++n) {
        const std::uint32_t level = levels[n];
        const std::uint32_t pixel = ink ? ink[n] : color;
        if (level == 255 && pixel >> 24 == 255)
            to[n] = pixel & 0xFFFFFF;
        else if (level != 0)
            to[n] = BlendOver(to[n], ScalePixel(pixel, level));
    }
}

void Canvas::Paint(const Box& ink_box, std::uint64_t work, bool winding, const PolygonSource& shape,
                   const Ink& ink, int rop2, const Clip& clip)
{
    const Box box = Intersection(Intersection(ink_box, clip.box), area_);
    if (box.Empty() || rop2 == kRop2Nop)
        return;
    Touch(box);
    if (Measuring() || Failed() ||
        !budget_.Spend(box.Area() * (1 + ink.CostOfPixel()) + work + kCostOfOperation))
        return;
    // kRop2Black and kRop2White are plain painting in another colour.
    const Ink plain = rop2 == kRop2Black ? Ink::Solid(0) : rop2 == kRop2White ? Ink::Solid(0xFFFFFF) : ink;
    // Antialiased edges have no bitwise meaning.
    const bool bitwise = rop2 != kRop2Copy && rop2 != kRop2Black && rop2 != kRop2White;
    std::vector<std::uint8_t> clipped;
    std::vector<std::uint32_t> colors;
    Rasterise(box, winding, shape, [&](std::int32_t y, std::int32_t x, std::span<const std::uint8_t> levels) {
        if (clip.coverage) {
            const std::uint8_t* const mask = clip.coverage->Row(y) + (x - clip.box.left);
            clipped.resize(levels.size());
            for (std::size_t n = 0; n < levels.size(); ++n)
                clipped[n] = static_cast<std::uint8_t>(DivideBy255(std::uint32_t{levels[n]} * mask[n]));
            levels = clipped;
        }
        if (!plain.IsSolid()) {
            colors.resize(levels.size());
            plain.Row(x, y, colors);
        }
        const std::uint32_t* const row_of_ink = plain.IsSolid() ? nullptr : colors.data();
        std::uint32_t* const to = Row(y) + (x - area_.left);
        if (!bitwise)
            return PaintRun(to, levels, row_of_ink, plain.color);
        for (std::size_t n = 0; n < levels.size(); ++n) {
            const std::uint32_t pixel = row_of_ink ? row_of_ink[n] : plain.color;
            if (levels[n] >= 128 && pixel >> 24 >= 128)
                to[n] = Rop2(rop2, to[n], pixel);
        }
    });
}

// A bound on the pixels that stroking the outline touches.
static Box BoxOfStroke(const Outline& outline, const StrokeStyle& style)
{
    const double largest =
        std::max(LengthOf({style.pen.xx, style.pen.yx}), LengthOf({style.pen.xy, style.pen.yy}));
    const double spread = style.join == LineJoin::kMiter ? std::max(1.5, style.miter_limit) : 1.5;
    const double margin = ClampToDrawable(style.width * largest * spread + 1);
    const Rect rect = outline.Extents();
    return BoxOf({rect.left - margin, rect.top - margin, rect.right + margin, rect.bottom + margin});
}

void Canvas::Fill(const Outline& outline, bool winding, const Ink& ink, int rop2, const Clip& clip,
                  bool exact)
{
    if (outline.Empty())
        return;
    const bool snap = !exact && outline.IsRectilinear();
    const Outline snapped = snap ? outline.SnapToPixelCorners() : Outline{};
    const Outline& neat = snap ? snapped : outline;
    Paint(BoxOf(neat.Extents()), neat.Work(Intersection(clip.box, area_)), winding, Inside(neat), ink, rop2,
          clip);
}

void Canvas::Stroke(const Outline& outline, const StrokeStyle& style, const Ink& ink, int rop2,
                    const Clip& clip)
{
    if (!outline.Empty())
        Paint(BoxOfStroke(outline, style), StrokeWork(outline, style, Intersection(clip.box, area_)), true,
              Along(outline, style), ink, rop2, clip);
}

Clip Canvas::CoverageOf(const Box& ink_box, std::uint64_t work, bool winding, const PolygonSource& shape)
{
    const Box box = Intersection(ink_box, area_);
    if (box.Empty())
        return {};
    if (Measuring())
        return {box, nullptr};
    if (!budget_.Spend(box.Area() * 8 + work + kCostOfOperation))
        return {};
    auto coverage = std::make_shared<Coverage>(box);
    Rasterise(box, winding, shape, [&](std::int32_t y, std::int32_t x, std::span<const std::uint8_t> levels) {
        std::copy(levels.begin(), levels.end(), coverage->Row(y) + (x - box.left));
    });
    return {box, std::move(coverage)};
}

Clip Canvas::ClipOf(const Outline& outline, bool winding, const Box& limit)
{
    if (outline.Empty())
        return {};
    const bool snap = outline.IsRectilinear();
    const Outline snapped = snap ? outline.SnapToPixelCorners() : Outline{};
    const Outline& neat = snap ? snapped : outline;
    const Box box = Intersection(BoxOf(neat.Extents()), limit);
    if (snap && neat.IsBox())
        return {Intersection(box, area_), nullptr};
    return CoverageOf(box, neat.Work(Intersection(box, area_)), winding, Inside(neat));
}

Clip Canvas::ClipOf(const Outline& outline, const StrokeStyle& style, const Box& limit)
{
    if (outline.Empty())
        return {};
    const Box box = Intersection(BoxOfStroke(outline, style), limit);
    return CoverageOf(box, StrokeWork(outline, style, Intersection(box, area_)), true, Along(outline, style));
}

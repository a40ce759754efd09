// Scales bitmaps and composites them with the picture.
#include "src/platform/image/metafile/device/device_bitmaps.h"

#include "src/platform/image/metafile/canvas/raster_ops.h"
#include "src/platform/image/metafile/device/bitmaps.h"

static constexpr int kHalftone = 4;

Corners CornersOf(const Rect& rect, const Affine& map)
{
    return {ClampToDrawable(map.Apply({rect.left, rect.top})),
            ClampToDrawable(map.Apply({rect.right, rect.top})),
            ClampToDrawable(map.Apply({rect.left, rect.bottom}))};
}

namespace
{
enum class Sampling { kNearest, kSmooth };

/// Where a bitmap is drawn, and how to sample it.
struct Placement {
    Outline shape;             ///< on the picture
    Affine source_to_picture;  ///< from bitmap pixels to picture pixels
    bool upright = false;
    Rect valid;  ///< the part of the source that exists
};
}  // namespace

// Snaps both edges to pixel corners; distinct edges stay at least a pixel apart.
static void RoundEdges(double& a, double& b)
{
    const double round_a = std::floor(a + 0.5);
    double round_b = std::floor(b + 0.5);
    if (round_a == round_b && a != b)
        round_b += b > a ? 1 : -1;
    a = round_a;
    b = round_b;
}

static std::optional<Placement> PlaceBitmap(const BitmapPart& part, Corners corners)
{
    const Rect& rect = part.source;
    const Rect all{0, 0, static_cast<double>(part.image.width), static_cast<double>(part.image.height)};
    if (rect.Width() == 0 || rect.Height() == 0 || !std::isfinite(rect.Width()) ||
        !std::isfinite(rect.Height()))
        return std::nullopt;
    Placement result;
    const Point x = corners.top_right - corners.top_left;
    const Point y = corners.bottom_left - corners.top_left;
    result.upright = std::abs(x.y) < 0.01 && std::abs(y.x) < 0.01;
    if (result.upright) {
        // Strips of one image must join without a seam, and an unscaled bitmap must keep its pixels.
        RoundEdges(corners.top_left.x, corners.top_right.x);
        RoundEdges(corners.top_left.y, corners.bottom_left.y);
        corners.bottom_left.x = corners.top_left.x;
        corners.top_right.y = corners.top_left.y;
    }
    const Point step_x = (1 / rect.Width()) * (corners.top_right - corners.top_left);
    const Point step_y = (1 / rect.Height()) * (corners.bottom_left - corners.top_left);
    Affine& map = result.source_to_picture;
    map = {step_x.x, step_x.y, step_y.x, step_y.y, 0, 0};
    const Point moved = map.ApplyToVector({rect.left, rect.top});
    map.x0 = corners.top_left.x - moved.x;
    map.y0 = corners.top_left.y - moved.y;
    if (!map.Finite() || !std::isfinite(1 / map.Determinant()))
        return std::nullopt;
    const Rect good = rect.Normalised();
    result.valid = {std::max(good.left, all.left), std::max(good.top, all.top),
                    std::min(good.right, all.right), std::min(good.bottom, all.bottom)};
    if (!(result.valid.Width() > 0) || !(result.valid.Height() > 0))
        return std::nullopt;
    result.shape.AddBox(result.valid);
    result.shape = result.shape.Transformed(map);
    if (result.upright)
        result.shape = result.shape.SnapToPixelCorners();
    return result;
}

namespace
{
/// The source pixels needed for an area of the picture, and their position.
struct SampledPixels {
    Pixels pixels;
    Affine to_picture;
};
}  // namespace

static std::optional<SampledPixels> Sample(const DeviceContext& dc, const BitmapPart& part,
                                           const Placement& place, const Box& needed, Sampling sampling,
                                           bool has_alpha)
{
    const Affine back = place.source_to_picture.Inverse();
    const Rect needed_rect =
        BoundsOf(back, {static_cast<double>(needed.left), static_cast<double>(needed.top),
                        static_cast<double>(needed.right), static_cast<double>(needed.bottom)});
    // Source pixels per picture pixel along each axis of the source.
    const double shrink_x = 1 / std::max(1e-9, LengthOf(place.source_to_picture.ApplyToVector({1, 0})));
    const double shrink_y = 1 / std::max(1e-9, LengthOf(place.source_to_picture.ApplyToVector({0, 1})));
    const double margin_x = std::min(2 + 2 * shrink_x, kMaxCoordinate);
    const double margin_y = std::min(2 + 2 * shrink_y, kMaxCoordinate);
    const Box part_box = Intersection(BoxOf(place.valid),
                                      BoxOf({needed_rect.left - margin_x, needed_rect.top - margin_y,
                                             needed_rect.right + margin_x, needed_rect.bottom + margin_y}));
    if (part_box.Empty() || !dc.Work().Spend(part_box.Area() * 4))
        return std::nullopt;
    // Cairo averages well down to about a tenth. For smaller scales and images beyond its size limit, average
    // blocks of pixels first.
    const auto step = [&](double shrink, std::int32_t extent) {
        const double wanted = sampling == Sampling::kSmooth ? std::floor(shrink / 6) : 1;
        const std::int32_t min = (extent + kMaxSurfaceSide - 1) / kMaxSurfaceSide;
        return std::max({1, min, static_cast<std::int32_t>(std::clamp(wanted, 1.0, 65536.0))});
    };
    const std::int32_t step_x = step(shrink_x, part_box.Width());
    const std::int32_t step_y = step(shrink_y, part_box.Height());
    const Affine scale{static_cast<double>(step_x),
                       0,
                       0,
                       static_cast<double>(step_y),
                       static_cast<double>(part_box.left),
                       static_cast<double>(part_box.top)};
    return SampledPixels{PixelsOf(part.image, part_box, step_x, step_y, has_alpha),
                         Then(scale, place.source_to_picture)};
}

static void DrawSampled(cairo_t* cairo, const SampledPixels& source, const Placement& place,
                        Sampling sampling, bool soft_edges)
{
    const SurfacePtr surface = SurfaceOn(source.pixels);
    const PatternPtr pattern(cairo_pattern_create_for_surface(surface.get()));
    const Affine back = source.to_picture.Inverse();
    const cairo_matrix_t matrix{back.xx, back.yx, back.xy, back.yy, back.x0, back.y0};
    cairo_pattern_set_matrix(pattern.get(), &matrix);
    cairo_pattern_set_extend(pattern.get(), CAIRO_EXTEND_PAD);
    cairo_pattern_set_filter(pattern.get(),
                             sampling == Sampling::kSmooth ? CAIRO_FILTER_GOOD : CAIRO_FILTER_NEAREST);
    cairo_set_source(cairo, pattern.get());
    cairo_set_antialias(cairo, soft_edges ? CAIRO_ANTIALIAS_DEFAULT : CAIRO_ANTIALIAS_NONE);
    cairo_set_operator(cairo, soft_edges ? CAIRO_OPERATOR_OVER : CAIRO_OPERATOR_SOURCE);
    place.shape.AddTo(cairo);
    cairo_fill(cairo);
}

// Smooth bitmaps that are shrunk or about unscaled. Large magnifications keep sharp blocks unless the file
// asks for halftone.
static Sampling SamplingFor(const DeviceContext& dc, const Placement& place)
{
    const Affine& map = place.source_to_picture;
    const double x = LengthOf(map.ApplyToVector({1, 0}));
    const double y = LengthOf(map.ApplyToVector({0, 1}));
    const bool same_size = place.upright && std::abs(x - 1) < 1e-9 && std::abs(y - 1) < 1e-9;
    if (same_size)
        return Sampling::kNearest;
    const bool enlarged = std::min(x, y) >= 2;
    return enlarged && dc.state.stretch_mode != kHalftone ? Sampling::kNearest : Sampling::kSmooth;
}

static void Composite(DeviceContext& dc, const BitmapPart& part, const Placement& place, Sampling sampling,
                      bool has_alpha, bool soft_edges, const std::function<void(Pixels&)>& prepare,
                      const Canvas::Mix& mix)
{
    const Clip clip = dc.CurrentClip();
    const Box box = BoxOf(place.shape.Extents());
    const Box needed = Intersection(Intersection(box, clip.box), dc.Target().Area());
    if (needed.Empty())
        return;
    if (dc.Target().Measuring())
        return dc.Target().Touch(needed);
    std::optional<SampledPixels> source = Sample(dc, part, place, needed, sampling, has_alpha);
    if (!source)
        return;
    prepare(source->pixels);
    dc.Target().Compose(
        needed, clip,
        [&](cairo_t* cairo) { DrawSampled(cairo, *source, place, sampling, soft_edges && !place.upright); },
        mix);
}

static void KeepPixels(Pixels&) {}

static bool IsMaskSet(const BitmapMask& mask, const BitmapPart& part, const Affine& back, std::int32_t x,
                      std::int32_t y)
{
    const Point point = back.Apply({x + 0.5, y + 0.5});
    const auto u =
        static_cast<std::int64_t>(std::floor(ClampToDrawable(point.x - part.source.left))) + mask.x;
    const auto v = static_cast<std::int64_t>(std::floor(ClampToDrawable(point.y - part.source.top))) + mask.y;
    if (u < 0 || v < 0 || u >= mask.image.width || v >= mask.image.height)
        return false;
    const std::int64_t index = (v * mask.image.width + u) * mask.image.channels;
    return mask.image.bytes[static_cast<std::size_t>(index)] >= 128;
}

void DrawBitmap(DeviceContext& dc, const BitmapPart& part, const Corners& corners, std::uint8_t rop,
                const BitmapMask* mask, std::uint8_t rop_outside)
{
    const auto place = PlaceBitmap(part, corners);
    if (!place)
        return;
    if (rop == kRopSourceCopy && !mask) {
        return Composite(dc, part, *place, SamplingFor(dc, *place), false, true, KeepPixels,
                         [](std::int32_t, std::int32_t, std::uint32_t old, std::uint32_t source,
                            std::uint32_t level) { return BlendOver(old, ScalePixel(source, level)); });
    }
    const Ink ink = dc.InkFor(dc.state.brush).value_or(Ink::Solid(0xFFFFFF));
    const Affine back = place->source_to_picture.Inverse();
    // The mean of two colours has no bitwise meaning, so don't smooth.
    Composite(
        dc, part, *place, Sampling::kNearest, false, false, KeepPixels,
        [&](std::int32_t x, std::int32_t y, std::uint32_t old, std::uint32_t source, std::uint32_t level) {
            if (source >> 24 < 128 || level < 128)
                return old;
            const bool inside = !mask || IsMaskSet(*mask, part, back, x, y);
            return Rop3(inside ? rop : rop_outside, old, source, ink.At(x, y));
        });
}

void BlendBitmap(DeviceContext& dc, const BitmapPart& part, const Corners& corners, std::uint32_t alpha,
                 bool own_alpha)
{
    const auto place = PlaceBitmap(part, corners);
    if (!place)
        return;
    Composite(
        dc, part, *place, SamplingFor(dc, *place), own_alpha, true, KeepPixels,
        [alpha](std::int32_t, std::int32_t, std::uint32_t old, std::uint32_t source, std::uint32_t level) {
            return BlendOver(old, ScalePixel(source, DivideBy255(level * alpha)));
        });
}

void DrawBitmapExceptColor(DeviceContext& dc, const BitmapPart& part, const Corners& corners,
                           std::uint32_t left_out)
{
    const auto place = PlaceBitmap(part, corners);
    if (!place)
        return;
    const auto clear = [left_out](Pixels& pixels) {
        std::replace(pixels.pixels.begin(), pixels.pixels.end(), left_out | 0xFF000000, 0u);
    };
    Composite(dc, part, *place, Sampling::kNearest, false, true, clear,
              [](std::int32_t, std::int32_t, std::uint32_t old, std::uint32_t source, std::uint32_t level) {
                  return BlendOver(old, ScalePixel(source, level));
              });
}

void PaintRect(DeviceContext& dc, const Rect& rect, std::uint8_t rop)
{
    Outline shape;
    shape.AddBox(rect);
    shape = shape.Transformed(dc.LogicalToPicture());
    if (shape.IsRectilinear())
        shape = shape.SnapToPixelCorners();
    const std::optional<Ink> ink = dc.InkFor(dc.state.brush);
    if (rop == kRopNothing || (UsesPattern(rop) && !ink))
        return;
    if (rop == kRopPatternCopy)
        return dc.Fill(shape, *ink, kRop2Copy);
    if (rop == 0x00 || rop == 0xFF)
        return dc.Fill(shape, Ink::Solid(rop == 0 ? 0u : 0xFFFFFFu), kRop2Copy);
    const Ink pattern = ink.value_or(Ink{});
    dc.Target().Compose(
        BoxOf(shape.Extents()), dc.CurrentClip(),
        [&](cairo_t* cairo) {
            cairo_set_antialias(cairo, CAIRO_ANTIALIAS_NONE);
            shape.AddTo(cairo);
            cairo_fill(cairo);
        },
        [&](std::int32_t x, std::int32_t y, std::uint32_t old, std::uint32_t source, std::uint32_t level) {
            return source >> 24 >= 128 && level >= 128 ? Rop3(rop, old, old, pattern.At(x, y)) : old;
        });
}

bool CopyPicture(DeviceContext& dc, const Rect& rect, ImageBuffer& image)
{
    Canvas& canvas = dc.Target();
    const Box box = Intersection(BoxOf(BoundsOf(dc.LogicalToPicture(), rect), true), canvas.Area());
    if (box.Empty() || canvas.Measuring() || !dc.Work().Spend(box.Area()))
        return false;
    ImageBuffer result;
    result.width = box.Width();
    result.height = box.Height();
    result.channels = 3;
    result.bytes.resize(box.Area() * 3);
    std::uint8_t* out = result.bytes.data();
    for (std::int32_t y = box.top; y < box.bottom; ++y) {
        const std::uint32_t* row = canvas.Row(y) + (box.left - canvas.Area().left);
        for (std::int32_t x = 0; x < box.Width(); ++x)
            for (unsigned c = 0; c < 3; ++c)
                *out++ = static_cast<std::uint8_t>(row[x] >> 8 * c);
    }
    image = std::move(result);
    return true;
}

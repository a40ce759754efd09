// Gradients, flood fills and single pixels.
#include "src/platform/image/metafile/device/device_fills.h"

#include "src/platform/image/metafile/canvas/raster_ops.h"

static std::uint32_t Mix(const std::array<double, 3>& color)
{
    std::uint32_t result = 0;
    for (const double d : color)
        result = result << 8 | static_cast<std::uint32_t>(std::clamp(std::floor(d / 257 + 0.5), 0.0, 255.0));
    return result;
}

void FillGradientRect(DeviceContext& dc, const GradientCorner& corner_a, const GradientCorner& corner_b,
                      bool downwards)
{
    const Affine& map = dc.LogicalToPicture();
    Outline shape;
    shape.AddBox(Rect{corner_a.point.x, corner_a.point.y, corner_b.point.x, corner_b.point.y}.Normalised());
    shape = shape.Transformed(map);
    if (shape.IsRectilinear())
        shape = shape.SnapToPixelCorners();
    const Point a = ClampToDrawable(map.Apply(corner_a.point));
    const Point b = ClampToDrawable(map.Apply(downwards ? Point{corner_a.point.x, corner_b.point.y}
                                                        : Point{corner_b.point.x, corner_a.point.y}));
    const Point run = b - a;
    const double square = run.x * run.x + run.y * run.y;
    if (!(square > 1e-9))
        return;
    dc.Target().Compose(
        BoxOf(shape.Extents()), dc.CurrentClip(),
        [&](cairo_t* cairo) {
            shape.AddTo(cairo);
            cairo_fill(cairo);
        },
        [&](std::int32_t x, std::int32_t y, std::uint32_t old, std::uint32_t source, std::uint32_t level) {
            const Point point = Point{x + 0.5, y + 0.5} - a;
            const double part = std::clamp((point.x * run.x + point.y * run.y) / square, 0.0, 1.0);
            std::array<double, 3> color{};
            for (std::size_t c = 0; c < 3; ++c)
                color[c] = corner_a.color[c] + part * (corner_b.color[c] - corner_a.color[c]);
            return BlendOver(old, ScalePixel(Mix(color) | 0xFF000000, DivideBy255((source >> 24) * level)));
        });
}

void FillGradientTriangle(DeviceContext& dc, std::span<const GradientCorner, 3> corners)
{
    const Affine& map = dc.LogicalToPicture();
    std::array<Point, 3> points;
    Outline shape;
    for (std::size_t n = 0; n < 3; ++n) {
        points[n] = ClampToDrawable(map.Apply(corners[n].point));
        shape.LineTo(points[n]);
    }
    shape.Close();
    const Point edge_u = points[1] - points[0];
    const Point edge_v = points[2] - points[0];
    const double area = edge_u.x * edge_v.y - edge_u.y * edge_v.x;
    if (std::abs(area) < 1e-6)
        return;
    dc.Target().Compose(
        BoxOf(shape.Extents()), dc.CurrentClip(),
        [&](cairo_t* cairo) {
            // Adjacent triangles share edges: antialiasing would let the background show through.
            cairo_set_antialias(cairo, CAIRO_ANTIALIAS_NONE);
            shape.AddTo(cairo);
            cairo_fill(cairo);
        },
        [&](std::int32_t x, std::int32_t y, std::uint32_t old, std::uint32_t source, std::uint32_t level) {
            const Point point = Point{x + 0.5, y + 0.5} - points[0];
            const double u = (point.x * edge_v.y - point.y * edge_v.x) / area;
            const double v = (edge_u.x * point.y - edge_u.y * point.x) / area;
            std::array<double, 3> color{};
            for (std::size_t c = 0; c < 3; ++c)
                color[c] =
                    (1 - u - v) * corners[0].color[c] + u * corners[1].color[c] + v * corners[2].color[c];
            return BlendOver(old, ScalePixel(Mix(color) | 0xFF000000, DivideBy255((source >> 24) * level)));
        });
}

static Point PixelOf(const DeviceContext& dc, Point point)
{
    const Point picture = ClampToDrawable(dc.LogicalToPicture().Apply(point));
    // Tolerate rounding errors of the mapping just below a pixel corner.
    return {std::floor(picture.x + 1e-6), std::floor(picture.y + 1e-6)};
}

void FloodFill(DeviceContext& dc, Point from, ColorRef color_asked, bool over_color)
{
    Canvas& canvas = dc.Target();
    const Clip clip = dc.CurrentClip();
    const Box box = Intersection(clip.box, canvas.Area());
    const Point pixel_point = PixelOf(dc, from);
    const auto ink = dc.InkFor(dc.state.brush);
    const auto x0 = static_cast<std::int32_t>(pixel_point.x);
    const auto y0 = static_cast<std::int32_t>(pixel_point.y);
    if (canvas.Measuring() || !ink || !box.Holds(x0, y0) || !dc.Work().Spend(box.Area() * 2))
        return;
    const std::uint32_t color = dc.ResolveColor(color_asked);
    const auto stride = static_cast<std::size_t>(box.Width());
    std::vector<bool> done(box.Area());
    const auto index = [&](std::int32_t x, std::int32_t y) {
        return static_cast<std::size_t>(y - box.top) * stride + static_cast<std::size_t>(x - box.left);
    };
    const auto open = [&](std::int32_t x, std::int32_t y) {
        const std::uint32_t pixel = canvas.Row(y)[x - canvas.Area().left] & 0xFFFFFF;
        return !done[index(x, y)] && clip.Level(x, y) >= 128 && (pixel == color) == over_color;
    };
    // Pending spans: the leftmost pixel of each open run next to a filled one.
    struct Seed {
        std::int32_t x;
        std::int32_t y;
    };
    std::vector<Seed> seeds;
    if (open(x0, y0))
        seeds.push_back({x0, y0});
    canvas.Touch({x0, y0, x0 + 1, y0 + 1});
    while (!seeds.empty()) {
        const Seed seed = seeds.back();
        seeds.pop_back();
        if (!open(seed.x, seed.y))
            continue;
        std::int32_t left = seed.x;
        std::int32_t right = seed.x + 1;
        while (left > box.left && open(left - 1, seed.y))
            --left;
        while (right < box.right && open(right, seed.y))
            ++right;
        for (std::int32_t x = left; x < right; ++x)
            done[index(x, seed.y)] = true;
        for (const std::int32_t y : {seed.y - 1, seed.y + 1}) {
            if (y < box.top || y >= box.bottom)
                continue;
            bool in_run = false;
            for (std::int32_t x = left; x < right; ++x) {
                const bool now = open(x, y);
                if (now && !in_run)
                    seeds.push_back({x, y});
                in_run = now;
            }
        }
    }
    Box painted;
    for (std::int32_t y = box.top; y < box.bottom; ++y) {
        std::uint32_t* row = canvas.Row(y);
        for (std::int32_t x = box.left; x < box.right; ++x) {
            if (!done[index(x, y)])
                continue;
            std::uint32_t& pixel = row[x - canvas.Area().left];
            pixel = BlendOver(pixel, ink->At(x, y));
            painted = Union(painted, {x, y, x + 1, y + 1});
        }
    }
    canvas.Touch(painted);
}

void SetPixel(DeviceContext& dc, Point point, ColorRef color)
{
    // Fill the whole device pixel, which may be larger than a picture pixel.
    const Point unit = dc.DeviceUnit();
    Outline box;
    box.AddBox({point.x, point.y, point.x + unit.x, point.y + unit.y});
    dc.Fill(box.Transformed(dc.LogicalToPicture()), Ink::Solid(dc.ResolveColor(color)), kRop2Copy);
}

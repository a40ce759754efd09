// Colours of gradients and textures, pixel by pixel.
#include "src/platform/image/metafile/emfplus/gradients.h"

#include <array>
#include <numbers>

#include "src/platform/image/metafile/emfplus/brush_inks.h"

static constexpr std::size_t kSteps = 1024;
static constexpr std::size_t kDirections = 4096;

static ArgbColor MixColors(ArgbColor a, ArgbColor b, double part)
{
    ArgbColor result = 0;
    for (unsigned shift = 0; shift < 32; shift += 8) {
        const double from = a >> shift & 255;
        const double to = b >> shift & 255;
        result |= static_cast<std::uint32_t>(std::clamp(from + part * (to - from) + 0.5, 0.0, 255.0))
                  << shift;
    }
    return result;
}

// The share of the way from one position to the next; 0 if they coincide.
static double Between(double position, double from, double to)
{
    return to > from ? std::clamp((position - from) / (to - from), 0.0, 1.0) : 0;
}

static double BlendAt(const std::vector<BlendStop>& blends, double position)
{
    for (std::size_t n = 1; n < blends.size(); ++n)
        if (position <= blends[n].position || n + 1 == blends.size()) {
            const double part = Between(position, blends[n - 1].position, blends[n].position);
            return blends[n - 1].factor + part * (blends[n].factor - blends[n - 1].factor);
        }
    return blends.empty() ? position : blends[0].factor;
}

static ArgbColor StopAt(const std::vector<ColorStop>& stops, double position)
{
    for (std::size_t n = 1; n < stops.size(); ++n)
        if (position <= stops[n].position || n + 1 == stops.size())
            return MixColors(stops[n - 1].color, stops[n].color,
                             Between(position, stops[n - 1].position, stops[n].position));
    return stops[0].color;
}

// The colours at evenly spaced positions, premultiplied.
static std::vector<std::uint32_t> ColorsOf(const GradientRun& run, ArgbColor first, ArgbColor second)
{
    std::vector<std::uint32_t> colors(kSteps + 1);
    for (std::size_t n = 0; n <= kSteps; ++n) {
        const double position = static_cast<double>(n) / kSteps;
        colors[n] =
            PremultipliedColor(run.stops.empty() ? MixColors(first, second, BlendAt(run.blends, position))
                                                 : StopAt(run.stops, position));
    }
    return colors;
}

static std::size_t StepOf(double position)
{
    return static_cast<std::size_t>(std::clamp(position, 0.0, 1.0) * kSteps + 0.5);
}

namespace
{
class LinearShader final : public Shader
{
public:
    LinearShader(std::vector<std::uint32_t> colors, Affine to_brush, double left, double width, bool mirrors,
                 bool repeats)
        : colors_(std::move(colors)), mirrors_(mirrors), repeats_(repeats)
    {
        step_x_ = to_brush.xx / width;
        step_y_ = to_brush.xy / width;
        start_ = (to_brush.x0 - left) / width;
        pixel_ = std::abs(step_x_) + std::abs(step_y_);
    }

    void Row(std::int32_t x, std::int32_t y, std::span<std::uint32_t> out) const override
    {
        double position = start_ + step_x_ * (x + 0.5) + step_y_ * (y + 0.5);
        for (std::uint32_t& pixel : out) {
            pixel = colors_[StepOf(Wrapped(position))];
            position += step_x_;
        }
    }
    std::uint64_t CostOfPixel() const override { return 5; }

private:
    double Wrapped(double position) const
    {
        // Rounding of edges to pixels must not show the colour of the other end.
        if (!repeats_ || (position > -pixel_ && position < 1 + pixel_))
            return position;
        const double whole = std::floor(position);
        const double part = position - whole;
        return mirrors_ && std::fmod(whole, 2) != 0 ? 1 - part : part;
    }

    std::vector<std::uint32_t> colors_;
    double start_ = 0;
    double step_x_ = 0;
    double step_y_ = 0;
    double pixel_ = 0;  ///< the most that the position changes from one pixel to the next
    bool mirrors_;
    bool repeats_;
};

/// Colours run along rays from the centre to the boundary. The boundary's distance and colour are
/// looked up by direction.
class PathShader final : public Shader
{
public:
    PathShader(const PlusPathBrush& brush, const Affine& to_brush);

    void Row(std::int32_t x, std::int32_t y, std::span<std::uint32_t> out) const override;
    std::uint64_t CostOfPixel() const override { return 30; }

private:
    struct Direction {
        double distance = 0;  ///< from the centre to the boundary
        ArgbColor color = 0;  ///< of the boundary
    };
    void AddSide(Point a, Point b, ArgbColor color_a, ArgbColor color_b);

    Affine to_brush_;
    Point center_;
    double focus_;
    double pixel_;  ///< the size of a pixel in the brush's units
    bool even_;     ///< all of the boundary has the same colour
    std::vector<std::uint32_t> colors_;
    ArgbColor center_color_;
    std::vector<double> blends_;  ///< the share of the centre's colour, from the boundary to the centre
    std::vector<Direction> directions_;
};

class TextureShader final : public Shader
{
public:
    TextureShader(const PlusTextureBrush& brush, const Affine& to_brush) : brush_(brush), to_brush_(to_brush)
    {
        // A texture that is neither scaled nor rotated keeps its pixels.
        const auto near_one = [](double d) { return std::abs(d - 1) < 1e-3; };
        exact_ = near_one(to_brush.xx) && near_one(to_brush.yy) && std::abs(to_brush.xy) < 1e-3 &&
                 std::abs(to_brush.yx) < 1e-3;
    }

    void Row(std::int32_t x, std::int32_t y, std::span<std::uint32_t> out) const override;
    std::uint64_t CostOfPixel() const override { return exact_ ? 10 : 40; }

private:
    std::uint32_t At(std::int64_t x, std::int64_t y) const;
    std::uint32_t Smooth(Point point) const;

    PlusTextureBrush brush_;
    Affine to_brush_;
    bool exact_;
};
}  // namespace

PathShader::PathShader(const PlusPathBrush& brush, const Affine& to_brush)
    : to_brush_(to_brush),
      center_(brush.center),
      focus_(std::clamp(std::max(brush.focus.x, brush.focus.y), 0.0, 0.999)),
      pixel_(to_brush.Scale()),
      center_color_(brush.center_color),
      directions_(kDirections)
{
    const auto color_of = [&brush](std::size_t n) {
        return brush.boundary_colors.empty()
                   ? 0
                   : brush.boundary_colors[std::min(n, brush.boundary_colors.size() - 1)];
    };
    even_ = brush.boundary_colors.size() <= 1 || !brush.run.stops.empty();
    for (std::size_t n = 0; n < brush.boundary.size(); ++n) {
        const std::size_t next = n + 1 < brush.boundary.size() ? n + 1 : 0;
        AddSide(brush.boundary[n] - center_, brush.boundary[next] - center_, color_of(n), color_of(next));
    }
    if (even_)
        colors_ = ColorsOf(brush.run, color_of(0), center_color_);
    else
        for (std::size_t n = 0; n <= kSteps; ++n)
            blends_.push_back(BlendAt(brush.run.blends, static_cast<double>(n) / kSteps));
}

// Enters a side of the boundary in all directions in which it can be seen from the centre.
void PathShader::AddSide(Point a, Point b, ArgbColor color_a, ArgbColor color_b)
{
    constexpr double kTurn = 2 * std::numbers::pi;
    const double cross = a.x * b.y - a.y * b.x;
    const double start = std::atan2(a.y, a.x);
    const double sweep = std::atan2(cross, a.x * b.x + a.y * b.y);
    if (!std::isfinite(start) || !std::isfinite(sweep) || std::abs(cross) < 1e-12)
        return;
    const double from = std::min(start, start + sweep) / kTurn * kDirections;
    const double to = std::max(start, start + sweep) / kTurn * kDirections;
    const Point side = b - a;
    for (auto n = static_cast<std::int64_t>(std::floor(from)); n <= static_cast<std::int64_t>(std::ceil(to));
         ++n) {
        const double angle = static_cast<double>(n) / kDirections * kTurn;
        const Point ray{std::cos(angle), std::sin(angle)};
        const double across = ray.x * side.y - ray.y * side.x;
        if (across == 0)
            continue;
        const double part = std::clamp((a.x * ray.y - a.y * ray.x) / across, 0.0, 1.0);
        const double distance = LengthOf(a + part * side);
        Direction& direction = directions_[static_cast<std::size_t>(
            (n % std::int64_t{kDirections} + kDirections) % kDirections)];
        if (distance > direction.distance)
            direction = {distance, MixColors(color_a, color_b, part)};
    }
}

void PathShader::Row(std::int32_t x, std::int32_t y, std::span<std::uint32_t> out) const
{
    Point point = to_brush_.Apply({x + 0.5, y + 0.5}) - center_;
    for (std::uint32_t& pixel : out) {
        const double distance = LengthOf(point);
        double turns = std::atan2(point.y, point.x) / (2 * std::numbers::pi);
        turns = turns < 0 ? turns + 1 : turns;
        const auto index = static_cast<std::size_t>(turns * kDirections + 0.5) % kDirections;
        const Direction& direction = directions_[index];
        // The edge of the filled shape may be a pixel off the boundary.
        if (distance > direction.distance + 2 * pixel_)
            pixel = 0;
        else {
            const double inner = direction.distance * focus_;
            const double part =
                std::clamp((distance - inner) / std::max(direction.distance - inner, 1e-12), 0.0, 1.0);
            pixel = even_ ? colors_[StepOf(1 - part)]
                          : PremultipliedColor(
                                MixColors(direction.color, center_color_, blends_[StepOf(1 - part)]));
        }
        point = point + Point{to_brush_.xx, to_brush_.yx};
    }
}

// The pixel of the repeated texture; 0 outside of one that isn't repeated.
std::uint32_t TextureShader::At(std::int64_t x, std::int64_t y) const
{
    const auto wrap = [this](std::int64_t n, std::int64_t size, bool mirrors) {
        if (brush_.wrap == WrapMode::kClamp)
            return n < 0 || n >= size ? -1 : n;
        const std::int64_t period = mirrors ? 2 * size : size;
        n = (n % period + period) % period;
        return n < size ? n : period - 1 - n;
    };
    const bool flips_x = brush_.wrap == WrapMode::kTileFlipX || brush_.wrap == WrapMode::kTileFlipXY;
    const bool flips_y = brush_.wrap == WrapMode::kTileFlipY || brush_.wrap == WrapMode::kTileFlipXY;
    const std::int64_t u = wrap(x, brush_.pixels->width, flips_x);
    const std::int64_t v = wrap(y, brush_.pixels->height, flips_y);
    return u < 0 || v < 0 ? 0 : brush_.pixels->Row(static_cast<std::int32_t>(v))[u];
}

std::uint32_t TextureShader::Smooth(Point point) const
{
    const double left = std::floor(point.x - 0.5);
    const double top = std::floor(point.y - 0.5);
    const double part_x = point.x - 0.5 - left;
    const double part_y = point.y - 0.5 - top;
    const auto x = static_cast<std::int64_t>(left);
    const auto y = static_cast<std::int64_t>(top);
    return MixColors(MixColors(At(x, y), At(x + 1, y), part_x),
                     MixColors(At(x, y + 1), At(x + 1, y + 1), part_x), part_y);
}

void TextureShader::Row(std::int32_t x, std::int32_t y, std::span<std::uint32_t> out) const
{
    for (std::uint32_t& pixel : out) {
        const Point point = ClampToDrawable(to_brush_.Apply({x + 0.5, y + 0.5}));
        pixel = exact_ ? At(static_cast<std::int64_t>(std::floor(point.x)),
                            static_cast<std::int64_t>(std::floor(point.y)))
                       : Smooth(point);
        ++x;
    }
}

// Maps pixels to the brush's units; nothing for a singular map.
static std::optional<Affine> BackFrom(const Affine& transform, const Affine& to_picture)
{
    const Affine map = Then(transform, to_picture);
    if (!map.Finite() || !std::isfinite(1 / map.Determinant()))
        return std::nullopt;
    return map.Inverse();
}

std::shared_ptr<const Shader> MakeLinearShader(const PlusLinearBrush& brush, const Affine& to_picture)
{
    const auto back = BackFrom(brush.transform, to_picture);
    const double width = brush.rect.Width();
    if (!back || !(std::abs(width) > 1e-9) || !std::isfinite(width) || !std::isfinite(brush.rect.left))
        return nullptr;
    const bool mirrors = brush.wrap == WrapMode::kTileFlipX || brush.wrap == WrapMode::kTileFlipXY;
    return std::make_shared<LinearShader>(ColorsOf(brush.run, brush.first, brush.second), *back,
                                          brush.rect.left, width, mirrors, brush.wrap != WrapMode::kClamp);
}

std::uint64_t GradientWork(const GradientRun& run, const std::vector<Point>& boundary, Point center)
{
    double directions = 0;
    for (std::size_t n = 0; n < boundary.size(); ++n) {
        const Point a = boundary[n] - center;
        const Point b = boundary[n + 1 < boundary.size() ? n + 1 : 0] - center;
        const double sweep = std::atan2(a.x * b.y - a.y * b.x, a.x * b.x + a.y * b.y);
        directions += std::isfinite(sweep) ? 3 + std::abs(sweep) / (2 * std::numbers::pi) * kDirections : 0;
    }
    return kSteps * (10 + run.stops.size() + run.blends.size()) + static_cast<std::uint64_t>(directions * 50);
}

std::shared_ptr<const Shader> MakePathShader(const PlusPathBrush& brush, const Affine& to_picture)
{
    const auto back = BackFrom(brush.transform, to_picture);
    if (!back || brush.boundary.size() < 3)
        return nullptr;
    return std::make_shared<PathShader>(brush, *back);
}

std::shared_ptr<const Shader> MakeTextureShader(const PlusTextureBrush& brush, const Affine& to_picture)
{
    const auto back = BackFrom(brush.transform, to_picture);
    if (!back || !brush.pixels)
        return nullptr;
    return std::make_shared<TextureShader>(brush, *back);
}

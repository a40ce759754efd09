// Strokes lines with the pens of a metafile.
#include <array>

#include "src/platform/image/metafile/device/device_context.h"

static bool IsGeometric(const Pen& pen)
{
    return pen.extended ? (pen.style & PenStyle::kGeometric) != 0 : pen.width > 1;
}

// The dash patterns of the predefined styles: in pixels for thin pens, in pen widths for wide ones.
static std::vector<double> NamedDashes(std::uint32_t dash, bool geometric)
{
    static const std::array<std::vector<double>, 5> kThin = {
        {{}, {18, 6}, {3, 3}, {9, 6, 3, 6}, {9, 3, 3, 3, 3, 3}}};
    static const std::array<std::vector<double>, 5> kWide = {
        {{}, {3, 1}, {1, 1}, {3, 1, 1, 1}, {3, 1, 1, 1, 1, 1}}};
    if (dash == PenStyle::kAlternate)
        return {1, 1};
    if (dash >= kThin.size())
        return {};
    return geometric ? kWide[dash] : kThin[dash];
}

// Negative lengths and all-zero patterns have no meaning; stroking with non-finite or tiny ones would never
// finish.
static bool AreDashesUsable(const std::vector<double>& dashes, double pixels_per_unit)
{
    double sum = 0;
    for (const double d : dashes) {
        if (!(d >= 0) || !std::isfinite(d))
            return false;
        sum += d;
    }
    return sum * pixels_per_unit > 0.1;
}

StrokeStyle DeviceContext::StyleOf(const Pen& pen, bool rectilinear) const
{
    StrokeStyle style;
    const bool geometric = IsGeometric(pen);
    Affine linear = LogicalToPicture();
    linear.x0 = linear.y0 = 0;
    double scale = linear.Scale();
    const double longest =
        std::max(LengthOf(linear.ApplyToVector({1, 0})), LengthOf(linear.ApplyToVector({0, 1})));
    // A singular map has no pen shape.
    if (!(scale > longest * 1e-3) || !std::isfinite(scale)) {
        scale = std::isfinite(longest) && longest > 0 ? longest : 1;
        linear = {scale, 0, 0, scale, 0, 0};
    }
    const double pixels = pen.width * scale;
    // A one-pixel pen stays one pixel if the picture is slightly larger than the device.
    const bool hairline = !(pixels > 1.2) || (pen.extended && !geometric);
    if (hairline || rectilinear) {
        // Round the width of rectilinear lines so that all lines of a grid look alike.
        style.width = hairline ? 1 : std::floor(ClampToDrawable(pixels) + 0.5);
        style.pen = {};
    } else {
        style.width = ClampToDrawable(pen.width);
        style.pen = linear;
    }

    if (pen.extended && geometric) {
        const std::uint32_t cap = pen.style & PenStyle::kCapMask;
        style.cap = cap == PenStyle::kCapSquare ? LineCap::kSquare
                    : cap == PenStyle::kCapFlat ? LineCap::kButt
                                                : LineCap::kRound;
        const std::uint32_t join = pen.style & PenStyle::kJoinMask;
        style.join = join == PenStyle::kJoinBevel   ? LineJoin::kBevel
                     : join == PenStyle::kJoinMiter ? LineJoin::kMiter
                                                    : LineJoin::kRound;
    } else if (hairline) {
        // A thin line extends one pixel past its ends.
        style.cap = LineCap::kSquare;
        style.join = LineJoin::kMiter;
    }
    style.miter_limit = std::clamp(state.miter_limit, 1.0, 100.0);
    if (hairline)
        style.miter_limit = 2;

    const std::uint32_t dash = pen.style & PenStyle::kDashMask;
    double unit = 1;  // length of a dash unit in pen units
    if (dash == PenStyle::kUserStyle) {
        style.dashes = pen.dashes;
        unit = geometric && (hairline || rectilinear) ? scale : 1;
    } else {
        style.dashes = NamedDashes(dash, geometric);
        unit = geometric ? style.width : 1;
    }
    for (double& d : style.dashes)
        d *= unit;
    if (!AreDashesUsable(style.dashes, style.pen.Scale()))
        style.dashes.clear();
    // Other caps would close the gaps; only geometric extended pens choose their cap.
    if (!style.dashes.empty() && (!pen.extended || !geometric))
        style.cap = LineCap::kButt;
    style.end_cap = style.dash_cap = style.cap;
    return style;
}

void DeviceContext::DrawLine(Outline picture)
{
    if (!state.pen || (state.pen->style & PenStyle::kDashMask) == PenStyle::kNull || picture.Empty())
        return;
    const std::shared_ptr<const Pen> pen = state.pen;
    const std::optional<Ink> ink = InkFor(pen->brush);
    if (!ink)
        return;
    // Coordinates name pixels, and lines run through pixel centres.
    const Point half = HalfPixel();
    picture = picture.Transformed({1, 0, 0, 1, half.x, half.y});
    const StrokeStyle style = StyleOf(*pen, picture.IsRectilinear());
    picture = picture.SnapStrokesToPixels(style.width * style.pen.Scale());
    const Clip clip = CurrentClip();
    if (!style.dashes.empty() && state.opaque_back && !pen->extended) {
        StrokeStyle gaps = style;
        gaps.dashes.clear();
        canvas_.Stroke(picture, gaps, Ink::Solid(ResolveColor(state.back_color)), state.rop2, clip);
    }
    canvas_.Stroke(picture, style, *ink, state.rop2, clip);
}

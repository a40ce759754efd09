// Computes the source coordinates of perspective, skew and twirl.
#include "src/platform/image/transforms/geometry/distort.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>
#include <vector>

#include "src/platform/image/base/limits.h"
#include "src/platform/image/transforms/geometry/warp.h"
#include "src/platform/image/transforms/rows/background.h"
#include "src/platform/image/transforms/rows/clamping.h"
#include "src/platform/image/transforms/rows/row_loop.h"
#include "src/platform/image/transforms/rows/target.h"

namespace transforms
{

static constexpr PixelValue kNothing{0, 0, 0, 0};

static std::int32_t ToPlace(double place)
{
    return static_cast<std::int32_t>(std::floor(Clamped(place, -3.0, 70000.0) * kPlaceUnit + 0.5));
}

namespace
{
// A row (or column) of the tilted plane: its relative length, and the source row that it shows.
struct PlaneLine {
    double length;
    std::int32_t source;
};
}  // namespace
static std::vector<PlaneLine> PlaneLines(std::int32_t line_count, double short_side, bool short_first)
{
    std::vector<PlaneLine> lines(static_cast<std::size_t>(line_count));
    for (std::int32_t i = 0; i < line_count; ++i) {
        const double from_short = ((short_first ? i : line_count - 1 - i) + 0.5) / line_count;
        const double length = short_side + (1 - short_side) * from_short;
        const double at = line_count * (1 / short_side - 1 / length) / (1 / short_side - 1);
        // Clamped, since the row next to the full-length edge would otherwise blend with the outside.
        const double place = Clamped((short_first ? at : line_count - at) - 0.5, 0, line_count - 1);
        lines[static_cast<std::size_t>(i)] = {length, ToPlace(place)};
    }
    return lines;
}

OperationResult Perspective(const ImageBuffer& source, ImageBuffer& result, bool vertical, double angle)
{
    if (std::isnan(angle) || angle == 0)
        return OperationResult::Unchanged;
    const double short_side = std::max(0.01, std::cos(Clamped(angle, -90, 90) * std::numbers::pi / 180));
    if (short_side >= 1)
        return OperationResult::Unchanged;  // the angle is too small to matter
    ImageBuffer drawn = EmptyLike(source);
    const std::int32_t width = source.width;
    const double mid_x = (width - 1) / 2.0, mid_y = (source.height - 1) / 2.0;
    const std::vector<PlaneLine> lines = vertical ? PlaneLines(source.height, short_side, angle > 0)
                                                  : PlaneLines(width, short_side, angle < 0);
    const auto row = [&](std::int32_t y, std::int32_t* xs, std::int32_t* ys) {
        const PlaneLine line = lines[static_cast<std::size_t>(y)];
        for (std::int32_t x = 0; x < width; ++x) {
            xs[x] = ToPlace(mid_x + (x - mid_x) / line.length);
            ys[x] = line.source;
        }
    };
    const auto column = [&](std::int32_t y, std::int32_t* xs, std::int32_t* ys) {
        for (std::int32_t x = 0; x < width; ++x) {
            const PlaneLine& line = lines[static_cast<std::size_t>(x)];
            xs[x] = line.source;
            ys[x] = ToPlace(mid_y + (y - mid_y) / line.length);
        }
    };
    if (vertical)
        DrawWarped(source, drawn, row, &kNothing);
    else
        DrawWarped(source, drawn, column, &kNothing);
    TakePixels(source, result, std::move(drawn));
    return OperationResult::Changed;
}

// How many pixels one side can grow by within the size limits.
static double RoomToGrow(std::int32_t side, std::int32_t other)
{
    std::uint64_t low = static_cast<std::uint64_t>(side), high = kMaxSide;
    while (low < high) {
        const std::uint64_t middle = (low + high + 1) / 2;
        if (IsSizeAllowed(middle, static_cast<std::uint64_t>(other)))
            low = middle;
        else
            high = middle - 1;
    }
    return static_cast<double>(low) - side;
}

OperationResult Skew(const ImageBuffer& source, ImageBuffer& result, bool vertical, double angle)
{
    if (std::isnan(angle) || angle == 0)
        return OperationResult::Unchanged;
    const std::int32_t along = vertical ? source.height : source.width;
    const std::int32_t across = vertical ? source.width : source.height;
    const double tan = std::tan(Clamped(angle, -80, 80) * std::numbers::pi / 180);
    const double move = std::min(std::fabs(tan) * across, RoomToGrow(along, across));
    const double slope = std::copysign(move / across, angle);
    const auto grown = static_cast<std::uint64_t>(along) + static_cast<std::uint64_t>(std::ceil(move - 1e-6));
    ImageBuffer drawn;
    if (!Allocate(drawn, vertical ? static_cast<std::uint64_t>(source.width) : grown,
                  vertical ? grown : static_cast<std::uint64_t>(source.height), source.channels))
        return OperationResult::Failed;

    // Distances are measured from the middle of a row. A skew to the negative side starts at the far end
    // of the grown frame.
    const double start = slope < 0 ? move : 0;
    StraightMap map;
    if (vertical) {
        map.yx = -slope;
        map.y0 = -start - slope * 0.5;
    } else {
        map.xy = slope;
        map.x0 = -start - slope * (across - 0.5);
    }
    DrawWarped(
        source, drawn,
        [&](std::int32_t y, std::int32_t* xs, std::int32_t* ys) {
            StraightPlaces(map, y, drawn.width, xs, ys);
        },
        &kNothing);
    TakePixels(source, result, std::move(drawn));
    return OperationResult::Changed;
}

// sin(2 pi d) for -0.25 <= d <= 0.25 to 7 digits, by Taylor series.
static inline float SineOfQuarter(float d)
{
    const float x = 6.28318531F * d, x2 = x * x;
    const float tail = 1.F / 362880 - x2 * (1.F / 39916800);
    return x * (1 + x2 * (-1.F / 6 + x2 * (1.F / 120 + x2 * (-1.F / 5040 + x2 * tail))));
}
static inline float Sine(float turns)
{
    const float d = turns - static_cast<float>(static_cast<std::int32_t>(turns + 8.5F) - 8);  // -0.5..0.5
    return SineOfQuarter(d > 0.25F ? 0.5F - d : d < -0.25F ? -0.5F - d : d);
}

namespace
{
struct Twist {
    float mid_x, mid_y;  // the picture's centre, relative to the centre of the first pixel
    float unit_x, unit_y;
    float turns;
};
}  // namespace

ROW_LOOP static void TwistedPlaces(const Twist twist, float unit_y, std::int32_t count,
                                   std::int32_t* __restrict xs, std::int32_t* __restrict ys)
{
    for (std::int32_t i = 0; i < count; ++i) {
        const float unit_x = (static_cast<float>(i) - twist.mid_x) / twist.unit_x;
        const float distance2 = unit_x * unit_x + unit_y * unit_y;
        const float distance = std::sqrt(distance2 < 1 ? distance2 : 1);
        const float turns = twist.turns * (1 - distance) * (1 - distance);
        const float sin = Sine(turns), cos = Sine(turns + 0.25F);
        const float from_x = twist.mid_x + twist.unit_x * (unit_x * cos + unit_y * sin);
        const float from_y = twist.mid_y + twist.unit_y * (unit_y * cos - unit_x * sin);
        xs[i] = static_cast<std::int32_t>(from_x * 256 + 256.5F) - 256;
        ys[i] = static_cast<std::int32_t>(from_y * 256 + 256.5F) - 256;
    }
}

OperationResult Twirl(const ImageBuffer& source, ImageBuffer& result, double angle)
{
    if (std::isnan(angle) || angle == 0)
        return OperationResult::Unchanged;
    ImageBuffer drawn = EmptyLike(source);
    const auto width = static_cast<float>(source.width), height = static_cast<float>(source.height);
    const Twist twist{(width - 1) / 2, (height - 1) / 2, width / 2, height / 2,
                      static_cast<float>(Clamped(angle, -360, 360) / 360)};
    DrawWarped(
        source, drawn,
        [&](std::int32_t y, std::int32_t* xs, std::int32_t* ys) {
            const float unit_y = (static_cast<float>(y) - twist.mid_y) / twist.unit_y;
            TwistedPlaces(twist, unit_y, drawn.width, xs, ys);
        },
        nullptr);
    TakePixels(source, result, std::move(drawn));
    return OperationResult::Changed;
}

}  // namespace transforms

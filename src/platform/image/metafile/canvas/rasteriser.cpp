// Sums up the signed areas of edges in an accumulation buffer.
#include "src/platform/image/metafile/canvas/rasteriser.h"

#include <utility>
#include <vector>

// Coordinates have 8 fractional bits.
static constexpr std::int64_t kOne = 256;
// The accumulated value of a fully covered pixel: height times twice the width.
static constexpr std::uint32_t kFull = 256 * 512;

// Cells of the accumulation buffer: larger shapes are converted in bands.
static constexpr std::int64_t kMaxCells = 4'000'000;

namespace
{
/// A point in fixed point, relative to the band's top left corner.
struct FixedPoint {
    std::int64_t x = 0;
    std::int64_t y = 0;
};

/// A band of rows. The prefix sums of a row's cells are the coverage of its pixels.
class Band
{
public:
    Band(const Box& box, std::vector<std::int32_t>& cells)
        : box_(box),
          width_(box.Width()),
          stride_(static_cast<std::size_t>(width_) + 2),
          cells_(cells),
          extents_(static_cast<std::size_t>(box.Height()))
    {
    }

    void AddPolygon(std::span<const Point> points)
    {
        if (points.size() < 2)
            return;
        FixedPoint before = Fixed(points.back());
        for (const Point& point : points) {
            const FixedPoint next = Fixed(point);
            AddEdge(before, next);
            before = next;
        }
    }

    void Paint(bool winding, std::vector<std::uint8_t>& levels, const CoverageRun& paint);

private:
    struct Extent {
        std::int32_t first = INT32_MAX;
        std::int32_t last = -1;
    };

    FixedPoint Fixed(Point point) const
    {
        return {static_cast<std::int64_t>(std::floor((point.x - box_.left) * kOne + 0.5)),
                static_cast<std::int64_t>(std::floor((point.y - box_.top) * kOne + 0.5))};
    }
    void AddEdge(FixedPoint a, FixedPoint b);
    void AddInside(FixedPoint a, FixedPoint b);
    void AddInRow(std::int64_t row, FixedPoint a, FixedPoint b);
    void Put(std::int64_t row, std::int64_t column, std::int64_t height, std::int64_t twice_x);

    Box box_;
    std::int64_t width_;
    std::size_t stride_;
    std::vector<std::int32_t>& cells_;  ///< zero before and after use
    std::vector<Extent> extents_;       ///< the cells in use, per row
};
}  // namespace

// The value at position of a line through (from, value_from) and (to, value_to).
static std::int64_t Interpolate(std::int64_t position, std::int64_t from, std::int64_t to,
                                std::int64_t value_from, std::int64_t value_to)
{
    const double part = static_cast<double>(position - from) / static_cast<double>(to - from);
    return value_from +
           static_cast<std::int64_t>(std::floor(part * static_cast<double>(value_to - value_from) + 0.5));
}

// Cuts the edge to the band's rows. The parts left of the band act on its first column, those to the right
// have no effect.
void Band::AddEdge(FixedPoint a, FixedPoint b)
{
    const std::int64_t height = box_.Height() * kOne;
    const std::int64_t width = width_ * kOne;
    if (a.y == b.y || (a.y <= 0 && b.y <= 0) || (a.y >= height && b.y >= height) ||
        (a.x >= width && b.x >= width))
        return;
    const FixedPoint from = a;
    const FixedPoint to = b;
    const auto cut_rows = [&](FixedPoint& point) {
        const std::int64_t y = std::clamp<std::int64_t>(point.y, 0, height);
        if (y != point.y)
            point = {Interpolate(y, from.y, to.y, from.x, to.x), y};
    };
    cut_rows(a);
    cut_rows(b);
    if (a.x <= 0 && b.x <= 0)
        return AddInside({0, a.y}, {0, b.y});
    if (a.x >= 0 && b.x >= 0 && a.x <= width && b.x <= width)
        return AddInside(a, b);
    // Cut at both sides, in the edge's direction.
    const auto row_at = [&](std::int64_t x) {
        return std::clamp(Interpolate(x, a.x, b.x, a.y, b.y), std::min(a.y, b.y), std::max(a.y, b.y));
    };
    const bool to_right = a.x < b.x;
    FixedPoint before = a;
    for (const std::int64_t side : {to_right ? 0 : width, to_right ? width : 0}) {
        const bool crosses = std::min(a.x, b.x) < side && side < std::max(a.x, b.x);
        if (!crosses)
            continue;
        const FixedPoint cut{side, row_at(side)};
        if (before.x <= 0 && cut.x <= 0)
            AddInside({0, before.y}, {0, cut.y});
        else if (before.x < width || cut.x < width)
            AddInside(before, cut);
        before = cut;
    }
    if (before.x <= 0 && b.x <= 0)
        AddInside({0, before.y}, {0, b.y});
    else if (before.x < width || b.x < width)
        AddInside(before, b);
}

// Splits an edge within the band into rows.
void Band::AddInside(FixedPoint a, FixedPoint b)
{
    if (a.y == b.y)
        return;
    const bool down = a.y < b.y;
    const double slope = static_cast<double>(b.x - a.x) / static_cast<double>(b.y - a.y);
    const std::int64_t least = std::min(a.x, b.x);
    const std::int64_t most = std::max(a.x, b.x);
    FixedPoint before = a;
    while (before.y != b.y) {
        const std::int64_t row = down ? before.y / kOne : (before.y - 1) / kOne;
        FixedPoint next = b;
        const std::int64_t border = down ? (row + 1) * kOne : row * kOne;
        if (down ? border < b.y : border > b.y) {
            const double x = static_cast<double>(a.x) + slope * static_cast<double>(border - a.y);
            next = {std::clamp(static_cast<std::int64_t>(std::floor(x + 0.5)), least, most), border};
        }
        AddInRow(row, {before.x, before.y - row * kOne}, {next.x, next.y - row * kOne});
        before = next;
    }
}

// Splits an edge within a row into pixels.
void Band::AddInRow(std::int64_t row, FixedPoint a, FixedPoint b)
{
    const bool to_right = a.x <= b.x;
    const std::int64_t first = to_right ? a.x / kOne : b.x / kOne;
    const std::int64_t last = to_right ? b.x / kOne : a.x / kOne;
    if (first == last)
        return Put(row, first, b.y - a.y, a.x + b.x - 2 * first * kOne);
    const double slope = static_cast<double>(b.y - a.y) / static_cast<double>(b.x - a.x);
    const std::int64_t least = std::min(a.y, b.y);
    const std::int64_t most = std::max(a.y, b.y);
    const FixedPoint start = to_right ? a : b;
    const FixedPoint end = to_right ? b : a;
    const std::int64_t sign = to_right ? 1 : -1;
    FixedPoint before = start;
    for (std::int64_t column = first; column <= last; ++column) {
        FixedPoint next = end;
        if (column < last) {
            const std::int64_t x = (column + 1) * kOne;
            const double y = static_cast<double>(start.y) + slope * static_cast<double>(x - start.x);
            next = {x, std::clamp(static_cast<std::int64_t>(std::floor(y + 0.5)), least, most)};
        }
        Put(row, column, sign * (next.y - before.y), before.x + next.x - 2 * column * kOne);
        before = next;
    }
}

// Adds an edge of one pixel: its height, and the sum of its ends' distances from the pixel's left side. The
// area to its right belongs to this pixel, the rest of the row gets the whole height.
void Band::Put(std::int64_t row, std::int64_t column, std::int64_t height, std::int64_t twice_x)
{
    if (height == 0)
        return;
    std::int32_t* cell =
        cells_.data() + static_cast<std::size_t>(row) * stride_ + static_cast<std::size_t>(column);
    // Thousands of layers may wrap around, which only makes their coverage arbitrary.
    const auto add = [](std::int32_t& value, std::int64_t more) {
        value =
            static_cast<std::int32_t>(static_cast<std::uint32_t>(value) + static_cast<std::uint32_t>(more));
    };
    add(cell[0], height * (2 * kOne - twice_x));
    add(cell[1], height * twice_x);
    Extent& extent = extents_[static_cast<std::size_t>(row)];
    extent.first = std::min(extent.first, static_cast<std::int32_t>(column));
    extent.last = std::max(extent.last, static_cast<std::int32_t>(column) + 1);
}

static std::uint8_t LevelOf(std::int32_t sum, bool winding)
{
    std::uint32_t covered = static_cast<std::uint32_t>(sum < 0 ? -std::int64_t{sum} : std::int64_t{sum});
    if (winding)
        covered = std::min(covered, kFull);
    else {
        covered &= 2 * kFull - 1;
        covered = covered > kFull ? 2 * kFull - covered : covered;
    }
    return static_cast<std::uint8_t>((covered * 255 + kFull / 2) / kFull);
}

void Band::Paint(bool winding, std::vector<std::uint8_t>& levels, const CoverageRun& paint)
{
    levels.resize(static_cast<std::size_t>(width_));
    const auto columns = static_cast<std::int32_t>(width_);
    for (std::int32_t row = 0; row < box_.Height(); ++row) {
        const Extent& extent = extents_[static_cast<std::size_t>(row)];
        if (extent.last < 0)
            continue;
        std::int32_t* cell = cells_.data() + static_cast<std::size_t>(row) * stride_;
        std::uint32_t sum = 0;
        std::uint32_t sum_of_level = 0;
        std::uint8_t level = 0;
        const std::int32_t stop = std::min(extent.last + 1, columns);
        for (std::int32_t x = extent.first; x < stop; ++x) {
            sum += static_cast<std::uint32_t>(cell[x]);
            if (sum != sum_of_level) {
                level = LevelOf(static_cast<std::int32_t>(sum), winding);
                sum_of_level = sum;
            }
            levels[static_cast<std::size_t>(x)] = level;
        }
        std::fill(cell + extent.first, cell + extent.last + 1, 0);
        // To the right of all edges, the level is that of the shape's part beyond the box.
        std::int32_t end = stop;
        if (level != 0 && stop < columns) {
            std::fill(levels.begin() + stop, levels.end(), level);
            end = columns;
        }
        std::int32_t begin = extent.first;
        while (begin < end && levels[static_cast<std::size_t>(begin)] == 0)
            ++begin;
        while (end > begin && levels[static_cast<std::size_t>(end) - 1] == 0)
            --end;
        if (begin < end)
            paint(box_.top + row, box_.left + begin,
                  std::span(levels).subspan(static_cast<std::size_t>(begin),
                                            static_cast<std::size_t>(end - begin)));
    }
}

void Rasterise(const Box& box, bool winding, const PolygonSource& shape, const CoverageRun& paint)
{
    if (box.Empty())
        return;
    const std::int64_t stride = std::int64_t{box.Width()} + 2;
    const std::int64_t band_rows = std::clamp<std::int64_t>(kMaxCells / stride, 1, box.Height());
    std::vector<std::int32_t> cells(static_cast<std::size_t>(stride * band_rows));
    std::vector<std::uint8_t> levels;
    for (std::int64_t top = box.top; top < box.bottom; top += band_rows) {
        const auto bottom = static_cast<std::int32_t>(std::min<std::int64_t>(top + band_rows, box.bottom));
        Band band({box.left, static_cast<std::int32_t>(top), box.right, bottom}, cells);
        shape([&band](std::span<const Point> points) { band.AddPolygon(points); });
        band.Paint(winding, levels, paint);
    }
}

// Fills the nearest-colour table cube by cube.
#include "src/platform/image/quantiser/quantiser_table.h"

#include <algorithm>
#include <array>
#include <limits>

// Cube sides in levels. A table cell has 4 per side; most colours are ruled out for cubes of 64 and then 16
// at once.
static constexpr std::int32_t kCell = 256 >> kTableBits;
static constexpr std::int32_t kSmallCube = 4 * kCell;
static constexpr std::int32_t kLargeCube = 4 * kSmallCube;

namespace
{
using Point = std::array<std::int32_t, 3>;
using FourCells = std::int32_t __attribute__((vector_size(16)));
}  // namespace

// The colours in `from` that can be nearest to the centre of any cell in the cube: those whose minimum
// distance to the cube doesn't exceed the smallest maximum distance of all colours.
static std::vector<std::uint8_t> Candidates(std::span<const PaletteColour> palette,
                                            const std::vector<std::uint8_t>& from, const Point& first,
                                            std::int32_t side)
{
    std::array<std::int32_t, 256> min{};
    std::int32_t limit = std::numeric_limits<std::int32_t>::max();
    for (std::size_t i = 0; i < from.size(); ++i) {
        std::int32_t greatest = 0;
        for (std::size_t c = 0; c < 3; ++c) {
            const std::int32_t low = first[c] + kCell / 2, high = first[c] + side - kCell / 2;
            const std::int32_t colour = palette[from[i]][c];
            const std::int32_t inside = colour - std::clamp(colour, low, high);
            const std::int32_t far = std::max(colour - low, high - colour);
            min[i] += inside * inside;
            greatest += far * far;
        }
        limit = std::min(limit, greatest);
    }
    std::vector<std::uint8_t> found;
    for (std::size_t i = 0; i < from.size(); ++i)
        if (min[i] <= limit)
            found.push_back(from[i]);
    return found;
}

static FourCells SquaredDistances(std::int32_t colour, std::int32_t first)
{
    const std::int32_t n = first + kCell / 2 - colour;
    const FourCells v = {n, n + kCell, n + 2 * kCell, n + 3 * kCell};
    return v * v;
}

// Fills the 64 cells of a small cube. Distance and index form one number, so the nearest colour is a plain
// minimum.
static void FillSmallCube(std::span<const PaletteColour> palette, const std::vector<std::uint8_t>& found,
                          const Point& first, std::vector<std::uint8_t>& table)
{
    std::array<FourCells, 16> nearest;
    nearest.fill(FourCells{} + std::numeric_limits<std::int32_t>::max());
    for (const std::uint8_t i : found) {
        const FourCells b = SquaredDistances(palette[i][0], first[0]),
                        g = SquaredDistances(palette[i][1], first[1]);
        const FourCells r = SquaredDistances(palette[i][2], first[2]);
        for (std::size_t row = 0; row < 16; ++row) {
            const FourCells here = (r + (b[row / 4] + g[row % 4])) * 256 + i;
            nearest[row] = here < nearest[row] ? here : nearest[row];
        }
    }
    for (std::size_t row = 0; row < 16; ++row) {
        const std::size_t b = static_cast<std::size_t>(first[0] / kCell) + row / 4;
        const std::size_t g = static_cast<std::size_t>(first[1] / kCell) + row % 4;
        const std::size_t r = static_cast<std::size_t>(first[2] / kCell);
        for (std::size_t i = 0; i < 4; ++i)
            table[(b << kTableBits | g) << kTableBits | (r + i)] = static_cast<std::uint8_t>(nearest[row][i]);
    }
}

template <typename Visit>
static void ForEachCube(const Point& first, std::int32_t side, std::int32_t step, const Visit& visit)
{
    for (std::int32_t b = first[0]; b < first[0] + side; b += step)
        for (std::int32_t g = first[1]; g < first[1] + side; g += step)
            for (std::int32_t r = first[2]; r < first[2] + side; r += step)
                visit(Point{b, g, r});
}

std::vector<std::uint8_t> BuildNearestTable(std::span<const PaletteColour> palette)
{
    std::vector<std::uint8_t> table(std::size_t{1} << 3 * kTableBits);
    std::vector<std::uint8_t> all(palette.size());
    for (std::size_t i = 0; i < all.size(); ++i)
        all[i] = static_cast<std::uint8_t>(i);
    ForEachCube({0, 0, 0}, 256, kLargeCube, [&](const Point& large) {
        const auto few = Candidates(palette, all, large, kLargeCube);
        ForEachCube(large, kLargeCube, kSmallCube, [&](const Point& small) {
            FillSmallCube(palette, Candidates(palette, few, small, kSmallCube), small, table);
        });
    });
    return table;
}

// Builds a palette by cutting the colour cube where that reduces the variance most.
#include "src/platform/image/quantiser/quantiser_palette.h"

#include <algorithm>
#include <array>
#include <cstring>

// The histogram's cells have 8 levels per side.
static constexpr std::size_t kSide = 32;
static constexpr std::size_t kCells = kSide * kSide * kSide;
static constexpr int kRounds = 4;

static constexpr std::int32_t kFarAway = 1000;  // levels; fills unused palette slots

namespace
{
using Colour = std::array<std::int32_t, 3>;  ///< BGR

struct CellSums {
    std::uint64_t count = 0;
    std::array<std::uint64_t, 3> sums{};  ///< of the pixels' B, G and R
};

struct Cell {
    double count;
    Colour mean;
};
}  // namespace

static std::size_t CellOf(std::uint32_t colour)
{
    return (colour >> 9 & 0x7C00) | (colour >> 6 & 0x3E0) | (colour >> 3 & 0x1F);
}

// A cell's count and the sums of its pixels' three low bits per channel are accumulated in four 16-bit fields
// of one number. This flushes them to the wide sums before a field overflows.
static void EmptyPacked(std::uint64_t& packed, std::size_t cell, CellSums& sums)
{
    const std::uint64_t count = packed >> 48;
    sums.count += count;
    for (std::size_t c = 0; c < 3; ++c) {
        const std::uint64_t base = (cell >> (5 * c) & 31) * 8;
        sums.sums[c] += count * base + (packed >> (16 * c) & 0xFFFF);
    }
    packed = 0;
}

template <std::size_t kChannels>
static std::vector<CellSums> ColourHistogram(const PixelBytes& bytes)
{
    std::vector<std::uint64_t> packed(kCells);
    std::vector<CellSums> sums(kCells);
    const std::uint8_t* end = bytes.data() + bytes.size();
    for (const std::uint8_t* p = bytes.data(); p != end; p += kChannels) {
        if (kChannels == 4 && p[3] < 128)
            continue;
        const std::uint32_t colour =
            p[0] | static_cast<std::uint32_t>(p[1]) << 8 | static_cast<std::uint32_t>(p[2]) << 16;
        const std::size_t cell = CellOf(colour);
        const std::uint64_t low = colour & 0x070707;
        packed[cell] += std::uint64_t{1} << 48 | (low & 7) | (low & 0x700) << 8 | (low & 0x70000) << 16;
        if (packed[cell] >> 61 != 0)
            EmptyPacked(packed[cell], cell, sums[cell]);
    }
    for (std::size_t i = 0; i < kCells; ++i)
        if (packed[i] != 0)
            EmptyPacked(packed[i], i, sums[i]);
    return sums;
}

namespace
{
// Cumulative sums from the cube's origin to each cell; the sum over any box follows from its eight corners.
struct Moments {
    double count = 0;
    std::array<double, 3> sums{};
    double squares = 0;

    Moments& Add(const Moments& other, double sign)
    {
        count += sign * other.count;
        for (std::size_t c = 0; c < 3; ++c)
            sums[c] += sign * other.sums[c];
        squares += sign * other.squares;
        return *this;
    }
    double SumsSquaredPerCount() const
    {
        if (count <= 0)
            return 0;
        return (sums[0] * sums[0] + sums[1] * sums[1] + sums[2] * sums[2]) / count;
    }
    double Variance() const { return std::max(0.0, squares - SumsSquaredPerCount()); }
};

// Cells with low < cell <= high along each axis, counted from 1.
struct Box {
    std::array<std::size_t, 3> low{};
    std::array<std::size_t, 3> high{};
    double variance = 0;
};

class Cube
{
public:
    explicit Cube(const std::vector<CellSums>& sums);
    Moments Of(const Box& box) const;
    /// Cuts box in two where that reduces the variance most; false if it can't be cut.
    bool Cut(Box& box, Box& other) const;

private:
    static std::size_t At(std::size_t b, std::size_t g, std::size_t r)
    {
        return (r * (kSide + 1) + g) * (kSide + 1) + b;
    }
    std::vector<Moments> up_to_;
};
}  // namespace

Cube::Cube(const std::vector<CellSums>& sums) : up_to_((kSide + 1) * (kSide + 1) * (kSide + 1))
{
    for (std::size_t r = 1; r <= kSide; ++r)
        for (std::size_t g = 1; g <= kSide; ++g)
            for (std::size_t b = 1; b <= kSide; ++b) {
                const CellSums& cell = sums[((r - 1) * kSide + g - 1) * kSide + b - 1];
                Moments& m = up_to_[At(b, g, r)];
                if (cell.count > 0) {
                    m.count = static_cast<double>(cell.count);
                    for (std::size_t c = 0; c < 3; ++c)
                        m.sums[c] = static_cast<double>(cell.sums[c]);
                    m.squares = m.SumsSquaredPerCount();
                }
            }
    for (std::size_t r = 1; r <= kSide; ++r)
        for (std::size_t g = 1; g <= kSide; ++g)
            for (std::size_t b = 1; b <= kSide; ++b)
                up_to_[At(b, g, r)].Add(up_to_[At(b - 1, g, r)], 1);
    for (std::size_t r = 1; r <= kSide; ++r)
        for (std::size_t g = 1; g <= kSide; ++g)
            for (std::size_t b = 1; b <= kSide; ++b)
                up_to_[At(b, g, r)].Add(up_to_[At(b, g - 1, r)], 1);
    for (std::size_t r = 1; r <= kSide; ++r)
        for (std::size_t g = 1; g <= kSide; ++g)
            for (std::size_t b = 1; b <= kSide; ++b)
                up_to_[At(b, g, r)].Add(up_to_[At(b, g, r - 1)], 1);
}

Moments Cube::Of(const Box& box) const
{
    Moments sum;
    for (unsigned corner = 0; corner < 8; ++corner) {
        const auto at = [&](std::size_t c) { return (corner >> c & 1) != 0 ? box.high[c] : box.low[c]; };
        const bool plus = ((corner ^ corner >> 1 ^ corner >> 2) & 1) != 0;
        sum.Add(up_to_[At(at(0), at(1), at(2))], plus ? 1 : -1);
    }
    return sum;
}

bool Cube::Cut(Box& box, Box& other) const
{
    const Moments whole = Of(box);
    double best = 0;
    std::size_t best_axis = 3;
    std::size_t best_at = 0;
    for (std::size_t axis = 0; axis < 3; ++axis) {
        Box half = box;
        for (std::size_t at = box.low[axis] + 1; at < box.high[axis]; ++at) {
            half.high[axis] = at;
            const Moments low = Of(half);
            Moments high = whole;
            high.Add(low, -1);
            if (low.count < 0.5 || high.count < 0.5)
                continue;
            const double gain = low.SumsSquaredPerCount() + high.SumsSquaredPerCount();
            if (gain > best) {
                best = gain;
                best_axis = axis;
                best_at = at;
            }
        }
    }
    if (best_axis == 3)
        return false;
    other = box;
    box.high[best_axis] = best_at;
    other.low[best_axis] = best_at;
    box.variance = Of(box).Variance();
    other.variance = Of(other).Variance();
    return true;
}

static std::vector<Colour> CutColours(const std::vector<CellSums>& sums, std::size_t colour_count)
{
    const Cube cube(sums);
    std::vector<Box> boxes(1);
    boxes[0].high.fill(kSide);
    boxes[0].variance = cube.Of(boxes[0]).Variance();
    while (boxes.size() < colour_count) {
        const auto widest = std::max_element(
            boxes.begin(), boxes.end(), [](const Box& a, const Box& b) { return a.variance < b.variance; });
        if (widest->variance <= 0)
            break;
        Box other;
        if (cube.Cut(*widest, other))
            boxes.push_back(other);
        else
            widest->variance = 0;
    }
    std::vector<Colour> colours;
    for (const Box& box : boxes) {
        const Moments m = cube.Of(box);
        if (m.count < 0.5)
            continue;
        Colour mean{};
        for (std::size_t c = 0; c < 3; ++c)
            mean[c] = static_cast<std::int32_t>(m.sums[c] / m.count + 0.5);
        colours.push_back(mean);
    }
    return colours;
}

// Distance and index form one number, so the nearest colour is a plain minimum, which compilers vectorise.
__attribute__((target_clones("avx2", "default"))) static std::int32_t Nearest(
    const std::int32_t* blues, const std::int32_t* greens, const std::int32_t* reds, std::int32_t blue,
    std::int32_t green, std::int32_t red)
{
    std::int32_t best = INT32_MAX;
    for (std::int32_t i = 0; i < 256; ++i) {
        const std::int32_t b = blues[i] - blue, g = greens[i] - green, r = reds[i] - red;
        best = std::min(best, (b * b + g * g + r * r) << 8 | i);
    }
    return best & 255;
}

// A k-means round: assigns each cell to its nearest colour and moves each colour from `fixed` on to the mean
// of its cells.
static void Refine(const std::vector<Cell>& cells, std::vector<Colour>& colours, std::size_t fixed)
{
    std::array<std::array<std::int32_t, 256>, 3> planes;
    for (int round = 0; round < kRounds; ++round) {
        for (std::size_t c = 0; c < 3; ++c)
            for (std::size_t i = 0; i < 256; ++i)
                planes[c][i] = i < colours.size() ? colours[i][c] : kFarAway;
        std::array<std::array<double, 4>, 256> sums{};
        for (const Cell& cell : cells) {
            const std::int32_t colour = Nearest(planes[0].data(), planes[1].data(), planes[2].data(),
                                                cell.mean[0], cell.mean[1], cell.mean[2]);
            std::array<double, 4>& sum = sums[static_cast<std::size_t>(colour)];
            for (std::size_t c = 0; c < 3; ++c)
                sum[c] += cell.count * cell.mean[c];
            sum[3] += cell.count;
        }
        for (std::size_t i = fixed; i < colours.size(); ++i)
            for (std::size_t c = 0; c < 3 && sums[i][3] > 0; ++c)
                colours[i][c] = static_cast<std::int32_t>(sums[i][c] / sums[i][3] + 0.5);
    }
}

std::vector<PaletteColour> FitPalette(const ImageBuffer& image, const std::vector<FlatColour>& flats,
                                      std::size_t colour_count)
{
    std::vector<CellSums> cell_sums =
        image.channels == 4 ? ColourHistogram<4>(image.bytes) : ColourHistogram<3>(image.bytes);
    std::vector<Colour> colours;
    for (const FlatColour& flat : flats) {
        const PaletteColour& colour = flat.colour;
        colours.push_back({colour[0], colour[1], colour[2]});
        CellSums& sums = cell_sums[CellOf(colour[0] | static_cast<std::uint32_t>(colour[1]) << 8 |
                                          static_cast<std::uint32_t>(colour[2]) << 16)];
        sums.count -= flat.pixels;
        for (std::size_t c = 0; c < 3; ++c)
            sums.sums[c] -= flat.pixels * colour[c];
    }
    std::vector<Cell> cells;
    for (const CellSums& sums : cell_sums)
        if (sums.count > 0) {
            Cell cell{static_cast<double>(sums.count), {}};
            for (std::size_t c = 0; c < 3; ++c)
                cell.mean[c] = static_cast<std::int32_t>((sums.sums[c] + sums.count / 2) / sums.count);
            cells.push_back(cell);
        }
    if (!cells.empty()) {
        const std::vector<Colour> cut = CutColours(cell_sums, colour_count - flats.size());
        colours.insert(colours.end(), cut.begin(), cut.end());
        Refine(cells, colours, flats.size());
    }
    std::vector<PaletteColour> palette;
    for (const Colour& colour : colours)
        palette.push_back({static_cast<std::uint8_t>(colour[0]), static_cast<std::uint8_t>(colour[1]),
                           static_cast<std::uint8_t>(colour[2])});
    return palette;
}

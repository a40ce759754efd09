// Error diffusion in four bands of the picture at once.
#include "src/platform/image/quantiser/quantiser_dither.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <vector>

#include "src/platform/image/quantiser/quantiser_table.h"

// Each pixel depends on the error of the one before, which leaves the CPU idle. So the picture is split into
// independent bands: two in the halves of one vector, and two such vectors in turn. Each band starts a few
// rows early without writing, so that its errors have settled at the seam.
static constexpr std::int32_t kBands = 4;
static constexpr std::int32_t kLeadRows = 8;

// Clamp, in levels, for the error that a pixel takes over. Two colours of a 256-colour palette are seldom
// more than twice this apart, so it hardly matters within the palette's gamut.
static constexpr std::int16_t kMaxError = 12;

using Lanes = std::int16_t __attribute__((vector_size(16)));  ///< BGRA of one pixel in each of two bands
using Halves = std::uint64_t __attribute__((vector_size(16)));

static Lanes Clamp(Lanes lanes, std::int16_t low, std::int16_t high)
{
    const Lanes lows = Lanes{} + low, highs = Lanes{} + high;
    lanes = lanes < lows ? lows : lanes;
    return lanes > highs ? highs : lanes;
}

static Lanes LoadPixels(const std::uint8_t* first, const std::uint8_t* second)
{
    using Loaded = std::uint8_t __attribute__((vector_size(8)));
    std::array<std::uint32_t, 2> pixels{};
    std::memcpy(&pixels[0], first, 4);
    std::memcpy(&pixels[1], second, 4);
    Loaded bytes;
    std::memcpy(&bytes, pixels.data(), 8);
    return __builtin_convertvector(bytes, Lanes);
}

namespace
{
/// A row in each of two bands: its pixels, its indices, and the errors from the row above, which are replaced
/// with those for the row below. errors has one element before the first pixel and one after the last.
struct RowPair {
    std::array<const std::uint8_t*, 2> pixels;
    std::array<std::uint8_t*, 2> indexes;
    Lanes* errors;
};

struct Quantiser {
    std::vector<std::uint8_t> nearest;
    std::array<std::uint64_t, 256> colours{};  ///< B, G, R, 0 with 16 bits each
    std::uint8_t transparent = 0;
};

struct Running {
    Lanes right{}, below{},
        ahead{};  ///< errors in 1/16 level for the pixels to the right, below, and below ahead
};
}  // namespace

template <std::int32_t kChannels>
static inline void TakePixel(const RowPair& row, std::int32_t x, std::int32_t step,
                             const Quantiser& quantiser, Running& running)
{
    constexpr std::uint64_t kUpper = (std::uint64_t{1} << kTableBits) - 1;
    constexpr std::uint64_t kLane = kUpper << 32 | kUpper << 16 | kUpper;
    constexpr std::uint64_t kGather =
        std::uint64_t{1} << (32 + 2 * kTableBits) | std::uint64_t{1} << (16 + kTableBits) | 1;
    constexpr std::uint64_t kMask = (std::uint64_t{1} << 3 * kTableBits) - 1;
    const std::uint8_t* first = row.pixels[0] + std::ptrdiff_t{x} * kChannels;
    const std::uint8_t* second = row.pixels[1] + std::ptrdiff_t{x} * kChannels;
    Lanes* carried = row.errors + x;

    const Lanes taken = Clamp((*carried + running.right + std::int16_t{8}) >> 4, -kMaxError, kMaxError);
    const Lanes wanted = Clamp(LoadPixels(first, second) + taken, 0, 255);
    // One multiplication gathers the top bits of R, G and B from bit 32 up.
    const Halves cells = reinterpret_cast<Halves>(wanted >> (8 - kTableBits)) & kLane;
    std::uint8_t first_index = quantiser.nearest[cells[0] * kGather >> 32 & kMask];
    std::uint8_t second_index = quantiser.nearest[cells[1] * kGather >> 32 & kMask];
    const Halves colours = {quantiser.colours[first_index], quantiser.colours[second_index]};
    Lanes error = wanted - reinterpret_cast<Lanes>(colours);
    if constexpr (kChannels == 4) {
        const bool first_visible = first[3] >= 128, second_visible = second[3] >= 128;
        const Halves opaque = {first_visible ? ~std::uint64_t{0} : 0, second_visible ? ~std::uint64_t{0} : 0};
        error &= reinterpret_cast<Lanes>(opaque);
        first_index = first_visible ? first_index : quantiser.transparent;
        second_index = second_visible ? second_index : quantiser.transparent;
    }
    row.indexes[0][x] = first_index;
    row.indexes[1][x] = second_index;

    running.right = error * std::int16_t{7};
    carried[-step] = running.below + error * std::int16_t{3};
    running.below = running.ahead + error * std::int16_t{5};
    running.ahead = error;
}

template <std::int32_t kChannels>
static void TakeRow(const std::array<RowPair, 2>& rows, std::int32_t width, bool backwards,
                    const Quantiser& quantiser)
{
    const RowPair first = rows[0], second = rows[1];
    const std::int32_t step = backwards ? -1 : 1;
    std::int32_t x = backwards ? width - 1 : 0;
    Running running_first, running_second;
    for (std::int32_t i = 0; i < width; ++i, x += step) {
        TakePixel<kChannels>(first, x, step, quantiser, running_first);
        TakePixel<kChannels>(second, x, step, quantiser, running_second);
    }
    first.errors[x - step] = running_first.below;
    second.errors[x - step] = running_second.below;
}

PixelBytes Dither(const ImageBuffer& image, std::span<const PaletteColour> palette, std::int32_t transparent)
{
    Quantiser quantiser;
    quantiser.nearest = BuildNearestTable(palette);
    quantiser.transparent = static_cast<std::uint8_t>(transparent);
    for (std::size_t i = 0; i < palette.size(); ++i)
        for (std::size_t c = 0; c < 3; ++c)
            quantiser.colours[i] |= std::uint64_t{palette[i][c]} << (16 * c);

    const auto width = static_cast<std::size_t>(image.width);
    const std::size_t row_bytes = width * static_cast<std::size_t>(image.channels);
    // Pixels are loaded as four bytes, which would read past the end for the last three-byte pixel.
    PixelBytes last_row(image.bytes.end() - static_cast<std::ptrdiff_t>(row_bytes), image.bytes.end());
    last_row.push_back(0);
    PixelBytes nowhere(width);
    PixelBytes indexes(width * static_cast<std::size_t>(image.height));
    std::vector<Lanes> errors(2 * (width + 2));

    const std::int32_t band_rows = (image.height + kBands - 1) / kBands;
    for (std::int32_t row_index = -kLeadRows; row_index < band_rows; ++row_index) {
        std::array<RowPair, 2> rows{};
        for (std::int32_t band = 0; band < kBands; ++band) {
            RowPair& row = rows[static_cast<std::size_t>(band / 2)];
            const std::int32_t y = std::clamp(band * band_rows + row_index, 0, image.height - 1);
            const bool wanted = row_index >= 0 && band * band_rows + row_index < image.height;
            const auto half = static_cast<std::size_t>(band % 2);
            const auto row_start = static_cast<std::size_t>(y);
            row.pixels[half] =
                y == image.height - 1 ? last_row.data() : image.bytes.data() + row_start * row_bytes;
            row.indexes[half] = wanted ? indexes.data() + row_start * width : nowhere.data();
            row.errors = errors.data() + static_cast<std::size_t>(band / 2) * (width + 2) + 1;
        }
        const bool backwards = (row_index & 1) != 0;
        if (image.channels == 4)
            TakeRow<4>(rows, image.width, backwards, quantiser);
        else
            TakeRow<3>(rows, image.width, backwards, quantiser);
    }
    return indexes;
}

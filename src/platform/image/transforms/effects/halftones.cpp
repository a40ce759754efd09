// Halftoning by a threshold matrix.
#include "src/platform/image/transforms/effects/halftones.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <numbers>
#include <numeric>

#include "src/platform/image/transforms/rows/bands.h"
#include "src/platform/image/transforms/rows/picture_rows.h"
#include "src/platform/image/transforms/rows/row_loop.h"
#include "src/platform/image/transforms/rows/target.h"

namespace transforms
{

// The order in which the pixels of a cell turn white.
static std::vector<std::uint32_t> Ranks(std::size_t cell)
{
    // Rounded, so that rounding errors of the cosine don't order symmetric pixels.
    std::vector<std::int64_t> wave(cell);
    for (std::size_t i = 0; i < cell; ++i)
        wave[i] = std::llround(1e9 * std::cos(2 * std::numbers::pi * (static_cast<double>(i) + 0.5) /
                                              static_cast<double>(cell)));
    std::vector<std::uint32_t> order(cell * cell), result(order.size());
    std::iota(order.begin(), order.end(), 0U);
    const auto height = [&](std::uint32_t n) { return wave[n % cell] + wave[n / cell]; };
    std::stable_sort(order.begin(), order.end(),
                     [&](std::uint32_t one, std::uint32_t other) { return height(one) < height(other); });
    for (std::uint32_t n = 0; n < order.size(); ++n)
        result[order[n]] = n;
    return result;
}

std::vector<std::uint8_t> HalftoneScreen(std::int32_t cell_size)
{
    constexpr std::size_t kBayer[4][4] = {{0, 8, 2, 10}, {12, 4, 14, 6}, {3, 11, 1, 9}, {15, 7, 13, 5}};
    const auto cell_index = static_cast<std::size_t>(cell_size), side = 4 * cell_index;
    const std::vector<std::uint32_t> cell = Ranks(cell_index);
    std::vector<std::uint8_t> screen(side * side);
    for (std::size_t y = 0; y < side; ++y) {
        for (std::size_t x = 0; x < side; ++x) {
            const std::size_t order = 32 * cell[y % cell_index * cell_index + x % cell_index] +
                                      2 * kBayer[y / cell_index][x / cell_index] + 1;
            screen[y * side + x] = static_cast<std::uint8_t>(255 * order / (32 * cell_index * cell_index));
        }
    }
    return screen;
}

// There is one threshold per byte of the row.
ROW_LOOP static void Screen(const std::uint8_t* __restrict thresholds, std::size_t count, std::int32_t share,
                            std::uint8_t* __restrict values)
{
    for (std::size_t i = 0; i < count; ++i) {
        const std::int32_t dot = values[i] > thresholds[i] ? 255 : 0;
        values[i] = static_cast<std::uint8_t>((values[i] * (256 - share) + dot * share + 128) >> 8);
    }
}

OperationResult Halftones(const ImageBuffer& source, ImageBuffer& result, std::int32_t cell_size,
                          double contrast)
{
    const auto share = static_cast<std::int32_t>(256 * (contrast > 0 ? std::min(contrast, 1.0) : 0) + 0.5);
    if (share == 0)
        return OperationResult::Unchanged;
    Target target(source, result);
    const std::int32_t cell = std::clamp(cell_size, 1, 255);
    const std::vector<std::uint8_t> screen = HalftoneScreen(cell);
    const std::size_t side = 4 * static_cast<std::size_t>(cell), row = Stride(source);
    const auto channels = static_cast<std::size_t>(source.channels);
    // Each band has a row of thresholds and one of alpha.
    std::vector<std::vector<std::uint8_t>> rows(BandCount(source), std::vector<std::uint8_t>(row));
    std::vector<std::vector<std::uint8_t>> alphas(rows.size(),
                                                  std::vector<std::uint8_t>(channels == 4 ? row / 4 : 0));
    const auto band = [&](std::size_t band_index, std::int32_t first, std::int32_t end) {
        std::vector<std::uint8_t>&thresholds = rows[band_index], &alpha = alphas[band_index];
        for (std::int32_t y = first; y < end; ++y) {
            const std::uint8_t* screen_row = screen.data() + static_cast<std::size_t>(y) % side * side;
            for (std::size_t i = 0, x = 0; i < row; i += channels) {
                for (std::size_t c = 0; c < channels; ++c)
                    thresholds[i + c] = screen_row[x];
                x = x + 1 == side ? 0 : x + 1;
            }
            std::uint8_t* pixels = target.LoadRow(y);
            for (std::size_t i = 0; i < alpha.size(); ++i)
                alpha[i] = pixels[4 * i + 3];
            Screen(thresholds.data(), row, share, pixels);
            for (std::size_t i = 0; i < alpha.size(); ++i)
                pixels[4 * i + 3] = alpha[i];
        }
    };
    RunBands(source, rows.size(), std::ref(band));
    return target.Finish();
}

}  // namespace transforms

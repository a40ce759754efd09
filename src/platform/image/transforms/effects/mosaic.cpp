// Computes tile means and draws rows from them.
#include "src/platform/image/transforms/effects/mosaic.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <utility>
#include <vector>

#include "src/platform/image/transforms/rows/bands.h"
#include "src/platform/image/transforms/rows/hidden.h"
#include "src/platform/image/transforms/rows/picture_rows.h"
#include "src/platform/image/transforms/rows/row_loop.h"
#include "src/platform/image/transforms/rows/target.h"

namespace transforms
{

namespace
{

constexpr std::int32_t kWhole = 256;

// The two tiles that a row or column of pixels is mixed from, and the weight of the second in 1/256.
struct Mix {
    std::int32_t one, other, weight;
};

std::vector<Mix> Mixes(std::int32_t side, std::int32_t tile, bool plain)
{
    const std::int32_t tiles = (side + tile - 1) / tile;
    std::vector<Mix> result(static_cast<std::size_t>(side));
    for (std::int32_t i = 0; i < side; ++i) {
        const std::int32_t own = i / tile;
        // From -0.5 at the start of the tile to 0.5 at its end.
        const double at = (i % tile + 0.5) / tile - 0.5;
        const double share = plain ? 0 : std::max(0.0, std::fabs(at) - 0.25) * 2;
        const std::int32_t neighbour = std::clamp(own + (at < 0 ? -1 : 1), 0, tiles - 1);
        result[static_cast<std::size_t>(i)] = {own, neighbour,
                                               static_cast<std::int32_t>(std::lround(share * kWhole))};
    }
    return result;
}

ROW_LOOP void AddBytes(const std::uint8_t* __restrict bytes, std::size_t count,
                       std::uint16_t* __restrict sums)
{
    for (std::size_t i = 0; i < count; ++i)
        sums[i] = static_cast<std::uint16_t>(sums[i] + bytes[i]);
}
ROW_LOOP void AddSums(const std::uint16_t* __restrict few, std::size_t count, std::uint32_t* __restrict sums)
{
    for (std::size_t i = 0; i < count; ++i)
        sums[i] += few[i];
}

// Column sums of a row of tiles, accumulated in 16 bits as long as they fit and then added up in 32.
struct Columns {
    std::vector<std::uint16_t> few;
    std::vector<std::uint32_t> sums;
};

void AddColumns(const ImageBuffer& image, std::int32_t top, std::int32_t bottom, Columns& columns)
{
    constexpr std::int32_t kFew = 256;
    std::fill(columns.sums.begin(), columns.sums.end(), 0U);
    for (std::int32_t first = top; first < bottom; first += kFew) {
        std::fill(columns.few.begin(), columns.few.end(), std::uint16_t{0});
        for (std::int32_t y = first; y < std::min(first + kFew, bottom); ++y)
            AddBytes(Row(image, y), columns.few.size(), columns.few.data());
        AddSums(columns.few.data(), columns.few.size(), columns.sums.data());
    }
}

// The means of one row of tiles, all channels.
void MeansOfTiles(const ImageBuffer& image, std::int32_t top, std::int32_t tile, Columns& columns,
                  std::uint8_t* means)
{
    const std::int32_t bottom = std::min(top + tile, image.height);
    const std::int32_t channels = image.channels;
    AddColumns(image, top, bottom, columns);
    const std::uint32_t* sums = columns.sums.data();
    for (std::int32_t left = 0; left < image.width; left += tile) {
        const std::int32_t right = std::min(left + tile, image.width);
        const auto pixels =
            static_cast<std::uint64_t>(right - left) * static_cast<std::uint64_t>(bottom - top);
        for (std::int32_t c = 0; c < channels; ++c) {
            std::uint64_t sum = pixels / 2;
            for (std::int64_t x = left; x < right; ++x)
                sum += sums[x * channels + c];
            *means++ = static_cast<std::uint8_t>(sum / pixels);
        }
    }
}

// Draws a row of tiles as a row of pixels, in 1/256 level.
void DrawTiles(const std::uint8_t* means, const std::vector<Mix>& across, std::int32_t channels,
               std::uint16_t* values)
{
    for (const Mix& mix : across) {
        const std::uint8_t* one = means + static_cast<std::ptrdiff_t>(mix.one) * channels;
        const std::uint8_t* other = means + static_cast<std::ptrdiff_t>(mix.other) * channels;
        for (std::int32_t c = 0; c < channels; ++c)
            *values++ = static_cast<std::uint16_t>(one[c] * (kWhole - mix.weight) + other[c] * mix.weight);
    }
}

ROW_LOOP void MixRows(const std::uint16_t* __restrict one, const std::uint16_t* __restrict other,
                      std::uint32_t other_share, std::size_t count, std::uint8_t* __restrict target)
{
    const std::uint32_t one_share = kWhole - other_share;
    for (std::size_t i = 0; i < count; ++i)
        target[i] =
            static_cast<std::uint8_t>((one[i] * one_share + other[i] * other_share + (1U << 15)) >> 16);
}

// A band's buffers: two rows of tiles drawn horizontally, and the row of pixels mixed from them.
struct Drawing {
    std::vector<std::uint16_t> drawn[2];
    std::int32_t tile[2] = {-1, -1};  // which rows of tiles the buffers hold
    std::vector<std::uint8_t> pixels;
};

}  // namespace

OperationResult Mosaic(const ImageBuffer& source, ImageBuffer& result, std::int32_t tile_size,
                       bool plain_colour)
{
    if (tile_size <= 1)
        return OperationResult::Unchanged;
    return WithVisibleColours(source, result, [&](const ImageBuffer& image, ImageBuffer& tiled) {
        Target target(image, tiled);
        const std::int32_t tile = std::min(tile_size, std::max(image.width, image.height));
        const std::vector<Mix> across = Mixes(image.width, tile, plain_colour);
        const std::vector<Mix> down = Mixes(image.height, tile, plain_colour);
        const std::size_t row_cells =
            static_cast<std::size_t>(across.back().one + 1) * static_cast<std::size_t>(image.channels);
        const std::int32_t tile_rows = down.back().one + 1;
        std::vector<std::uint8_t> means(row_cells * static_cast<std::size_t>(tile_rows));
        EachRows(tile_rows, Stride(image) * static_cast<std::size_t>(tile),
                 [&](std::int32_t first, std::int32_t last) {
                     Columns columns{std::vector<std::uint16_t>(Stride(image)),
                                     std::vector<std::uint32_t>(Stride(image))};
                     for (std::int32_t i = first; i < last; ++i)
                         MeansOfTiles(image, i * tile, tile, columns,
                                      means.data() + static_cast<std::size_t>(i) * row_cells);
                 });
        const std::size_t row_index = Stride(image);
        std::vector<Drawing> drawings(BandCount(image));
        for (Drawing& obj : drawings) {
            obj.pixels.resize(row_index);
            for (auto& row : obj.drawn)
                row.resize(row_index);
        }
        const auto draw = [&](std::size_t band, std::int32_t first, std::int32_t end) {
            Drawing& obj = drawings[band];
            // Even and odd rows of tiles use different buffers, so that two neighbours don't evict each
            // other.
            const auto drawn = [&](std::int32_t tile_row) {
                const std::size_t n = tile_row & 1;
                if (obj.tile[n] != tile_row)
                    DrawTiles(means.data() + static_cast<std::size_t>(tile_row) * row_cells, across,
                              image.channels, obj.drawn[n].data());
                obj.tile[n] = tile_row;
                return obj.drawn[n].data();
            };
            const Mix* last = nullptr;
            for (std::int32_t y = first; y < end; ++y) {
                const Mix& mix = down[static_cast<std::size_t>(y)];
                if (!last || last->one != mix.one || last->weight != 0 || mix.weight != 0) {
                    const std::uint16_t* one = drawn(mix.one);
                    MixRows(one, drawn(mix.other), static_cast<std::uint32_t>(mix.weight), row_index,
                            obj.pixels.data());
                }
                last = &mix;
                const std::uint8_t* alpha = Row(image, y);
                for (std::size_t i = 3; image.channels == 4 && i < row_index; i += 4)
                    obj.pixels[i] = alpha[i];
                std::copy(obj.pixels.begin(), obj.pixels.end(), Row(target.Image(), y));
            }
        };
        RunBands(image, drawings.size(), std::ref(draw));
        return target.Finish();
    });
}

}  // namespace transforms

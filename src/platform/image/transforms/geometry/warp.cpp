// Samples a picture through a map: vectorised inside, pixel by pixel at the edges and where it is
// transparent.
#include "src/platform/image/transforms/geometry/warp.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <vector>

#include "src/platform/image/transforms/geometry/warp_fours.h"
#include "src/platform/image/transforms/rows/bands.h"
#include "src/platform/image/transforms/rows/picture_rows.h"
#include "src/platform/image/transforms/rows/row_loop.h"

namespace transforms
{

namespace
{

const std::uint8_t* TapAt(const ImageBuffer& source, std::int32_t x, std::int32_t y,
                          const PixelValue* outside)
{
    if (x < 0 || y < 0 || x >= source.width || y >= source.height) {
        if (outside)
            return outside->data();
        x = std::clamp(x, 0, source.width - 1);
        y = std::clamp(y, 0, source.height - 1);
    }
    return Row(source, y) + static_cast<std::ptrdiff_t>(x) * source.channels;
}

// True if none of the four taps from x, y on is inside the picture.
bool IsWhollyOutside(const ImageBuffer& source, std::int32_t x, std::int32_t y)
{
    return x < -1 || y < -1 || x >= source.width || y >= source.height;
}

// Handles any coordinates and any alpha.
template <int kChannels>
void DrawCarefully(const ImageBuffer& source, std::int32_t fixed_x, std::int32_t fixed_y,
                   const PixelValue* outside, std::uint8_t* target)
{
    const std::int32_t x = fixed_x >> 8, y = fixed_y >> 8;
    if (outside && IsWhollyOutside(source, x, y)) {
        std::memcpy(target, outside->data(), kChannels);
        return;
    }
    const std::uint32_t share_x = fixed_x & 255, share_y = fixed_y & 255;
    const std::uint8_t* taps[4] = {TapAt(source, x, y, outside), TapAt(source, x + 1, y, outside),
                                   TapAt(source, x, y + 1, outside), TapAt(source, x + 1, y + 1, outside)};
    std::uint32_t weights[4] = {(256 - share_x) * (256 - share_y), share_x * (256 - share_y),
                                (256 - share_x) * share_y, share_x * share_y};
    std::uint64_t whole = 1 << 16;
    if constexpr (kChannels == 4) {
        whole = 0;
        for (int i = 0; i < 4; ++i) {
            weights[i] *= taps[i][3];
            whole += weights[i];
        }
        target[3] = static_cast<std::uint8_t>((whole + (1 << 15)) >> 16);
        if (whole == 0) {
            std::memcpy(target, taps[0], 3);  // fully transparent: just carry the hidden colour
            return;
        }
    }
    for (int c = 0; c < (kChannels == 1 ? 1 : 3); ++c) {
        std::uint64_t sum = whole / 2;
        for (int i = 0; i < 4; ++i)
            sum += static_cast<std::uint64_t>(weights[i]) * taps[i][c];
        target[c] = static_cast<std::uint8_t>(sum / whole);
    }
}

void DrawGreyRow(const ImageBuffer& source, const std::int32_t* __restrict xs,
                 const std::int32_t* __restrict ys, std::int32_t count, const PixelValue* outside,
                 std::uint8_t* __restrict target)
{
    const auto right = static_cast<std::uint32_t>(source.width - 1);
    const auto bottom = static_cast<std::uint32_t>(source.height - 1);
    for (std::int32_t i = 0; i < count; ++i, ++target) {
        const std::int32_t x = xs[i] >> 8, y = ys[i] >> 8;
        if (static_cast<std::uint32_t>(x) >= right || static_cast<std::uint32_t>(y) >= bottom) {
            DrawCarefully<1>(source, xs[i], ys[i], outside, target);
            continue;
        }
        const std::int32_t share_x = xs[i] & 255, share_y = ys[i] & 255;
        const std::uint8_t* upper = Row(source, y) + x;
        const std::uint8_t* lower = upper + source.width;
        const std::int32_t upper_mix = upper[0] * (256 - share_x) + upper[1] * share_x;
        const std::int32_t lower_mix = lower[0] * (256 - share_x) + lower[1] * share_x;
        target[0] =
            static_cast<std::uint8_t>((upper_mix * (256 - share_y) + lower_mix * share_y + (1 << 15)) >> 16);
    }
}

template <int kChannels>
void DrawRow(const ImageBuffer& source, const std::int32_t* xs, const std::int32_t* ys, std::int32_t count,
             const PixelValue* outside, std::uint8_t* target)
{
    for (std::int32_t i = 0; i < count;) {
        for (; outside && i < count && IsWhollyOutside(source, xs[i] >> 8, ys[i] >> 8); ++i)
            std::memcpy(target + static_cast<std::ptrdiff_t>(i) * kChannels, outside->data(), kChannels);
        i += DrawFours(source, xs + i, ys + i, nullptr, count - i,
                       target + static_cast<std::ptrdiff_t>(i) * kChannels);
        for (const std::int32_t end = std::min(i + 4, count); i < end; ++i)
            DrawCarefully<kChannels>(source, xs[i], ys[i], outside,
                                     target + static_cast<std::ptrdiff_t>(i) * kChannels);
    }
}

}  // namespace

void DrawWarped(const ImageBuffer& source, ImageBuffer& target, const RowOfPlaces& places,
                const PixelValue* outside)
{
    const auto draw = target.channels == 1 ? DrawGreyRow : target.channels == 3 ? DrawRow<3> : DrawRow<4>;
    EachRows(target.height, Stride(target), [&](std::int32_t first, std::int32_t last) {
        std::vector<std::int32_t> xs(static_cast<std::size_t>(target.width)), ys(xs.size());
        for (std::int32_t y = first; y < last; ++y) {
            places(y, xs.data(), ys.data());
            draw(source, xs.data(), ys.data(), target.width, outside, Row(target, y));
        }
    });
}

// 32.32 fixed point: the error over the longest row is below 1/60000 pixel.
ROW_LOOP static void Progress(std::uint64_t place, std::uint64_t step, std::int32_t count,
                              std::int32_t* __restrict places)
{
    for (std::int32_t i = 0; i < count; ++i, place += step)
        places[i] = static_cast<std::int32_t>(static_cast<std::uint32_t>(place >> 24));
}

void StraightPlaces(const StraightMap& map, std::int32_t y, std::int32_t count, std::int32_t* xs,
                    std::int32_t* ys)
{
    constexpr double kOne = 4294967296.0;
    constexpr std::int64_t kHalfUnit = 1 << 23;
    const auto fixed = [](double place, std::int64_t add) {
        return static_cast<std::uint64_t>(std::llround(place * kOne) + add);
    };
    Progress(fixed(map.xy * y + map.x0, kHalfUnit), fixed(map.xx, 0), count, xs);
    Progress(fixed(map.yy * y + map.y0, kHalfUnit), fixed(map.yx, 0), count, ys);
}

}  // namespace transforms

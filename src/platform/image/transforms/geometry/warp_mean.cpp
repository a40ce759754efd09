// The mean of a picture drawn through two affine maps.
#include <algorithm>
#include <cstring>
#include <vector>

#include "src/platform/image/transforms/geometry/warp.h"
#include "src/platform/image/transforms/geometry/warp_fours.h"
#include "src/platform/image/transforms/rows/bands.h"
#include "src/platform/image/transforms/rows/picture_rows.h"

namespace transforms
{

namespace
{

// Draws one pixel with edge clamping and, if unmoved is given, takes its mean with that.
template <int kChannels>
void DrawPixel(const ImageBuffer& source, std::int32_t fixed_x, std::int32_t fixed_y,
               const std::uint8_t* unmoved, std::uint8_t* target)
{
    const std::int32_t x = std::clamp(fixed_x, 0, (source.width - 1) * kPlaceUnit);
    const std::int32_t y = std::clamp(fixed_y, 0, (source.height - 1) * kPlaceUnit);
    const std::int32_t right = x & 255, down = y & 255;
    const std::uint8_t* upper = Row(source, y >> 8) + static_cast<std::ptrdiff_t>(x >> 8) * kChannels;
    const std::uint8_t* lower = down ? upper + Stride(source) : upper;
    const std::ptrdiff_t next = right ? kChannels : 0;
    for (int c = 0; c < (kChannels == 1 ? 1 : 3); ++c) {
        const std::int32_t upper_mix = upper[c] * (256 - right) + upper[c + next] * right;
        const std::int32_t lower_mix = lower[c] * (256 - right) + lower[c + next] * right;
        const std::int32_t drawn = upper_mix * (256 - down) + lower_mix * down;  // 65536 a level
        target[c] = static_cast<std::uint8_t>(unmoved ? (drawn / 2 + (unmoved[c] << 15) + (1 << 15)) >> 16
                                                      : (drawn + (1 << 15)) >> 16);
    }
}

template <int kChannels>
void DrawRow(const ImageBuffer& source, const std::int32_t* xs, const std::int32_t* ys,
             const std::uint8_t* unmoved, std::uint8_t* target)
{
    const auto at = [](auto* p, std::int32_t i) {
        return p ? p + static_cast<std::ptrdiff_t>(i) * kChannels : nullptr;
    };
    for (std::int32_t i = 0; i < source.width;) {
        if constexpr (kChannels > 1)
            i += DrawFours(source, xs + i, ys + i, at(unmoved, i), source.width - i, at(target, i));
        for (const std::int32_t end = std::min(i + 4, source.width); i < end; ++i)
            DrawPixel<kChannels>(source, xs[i], ys[i], at(unmoved, i), at(target, i));
    }
}

bool IsIdentity(const StraightMap& map)
{
    return map.xx == 1 && map.xy == 0 && map.x0 == 0 && map.yx == 0 && map.yy == 1 && map.y0 == 0;
}

}  // namespace

void DrawWarpedMean(const ImageBuffer& source, ImageBuffer& target, const StraightMap& one,
                    const StraightMap& other)
{
    const auto draw = source.channels == 1 ? DrawRow<1> : source.channels == 3 ? DrawRow<3> : DrawRow<4>;
    EachRows(target.height, 4 * Stride(source), [&](std::int32_t first_row, std::int32_t last_row) {
        std::vector<std::int32_t> xs(static_cast<std::size_t>(source.width)), ys(xs.size());
        std::vector<std::uint8_t> first(Stride(source));
        for (std::int32_t y = first_row; y < last_row; ++y) {
            const std::uint8_t* first_pass = Row(source, y);
            if (!IsIdentity(one)) {
                StraightPlaces(one, y, source.width, xs.data(), ys.data());
                draw(source, xs.data(), ys.data(), nullptr, first.data());
                first_pass = first.data();
            }
            StraightPlaces(other, y, source.width, xs.data(), ys.data());
            std::uint8_t* target_row = Row(target, y);
            draw(source, xs.data(), ys.data(), first_pass, target_row);
            for (std::size_t i = 3; source.channels == 4 && i < Stride(source); i += 4)
                target_row[i] = Row(source, y)[i];
        }
    });
}

}  // namespace transforms

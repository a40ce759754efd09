// Six textures, made from random numbers and sines, and their slopes added to a picture.
#include "src/platform/image/transforms/effects/texture.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

#include "src/platform/image/transforms/rows/bands.h"
#include "src/platform/image/transforms/rows/clamping.h"
#include "src/platform/image/transforms/rows/picture_rows.h"
#include "src/platform/image/transforms/rows/seeded_random.h"
#include "src/platform/image/transforms/rows/target.h"

namespace transforms
{

static constexpr std::size_t kWrap = kTextureSide - 1;
static_assert((kTextureSide & kWrap) == 0, "textures repeat by a mask");

// Random heights smoothed by a Gaussian that wraps around the edges.
static std::vector<float> NoiseHeights(double deviation)
{
    std::vector<float> heights(kTextureSide * kTextureSide), across(heights.size());
    std::uint64_t state = 1;
    for (float& height : heights)
        height = static_cast<float>(Random(state) >> 40) / static_cast<float>(1 << 24) - 0.5F;

    const auto reach = static_cast<std::size_t>(std::ceil(3 * deviation));
    std::vector<float> curve(2 * reach + 1);
    for (std::size_t i = 0; i < curve.size(); ++i) {
        const double d = static_cast<double>(i) - static_cast<double>(reach);
        curve[i] = static_cast<float>(std::exp(-d * d / (2 * deviation * deviation)));
    }
    // Each pass also transposes, so that two passes cover both directions.
    for (int pass = 0; pass < 2; ++pass) {
        for (std::size_t y = 0; y < kTextureSide; ++y) {
            for (std::size_t x = 0; x < kTextureSide; ++x) {
                float sum = 0;
                for (std::size_t i = 0; i < curve.size(); ++i)
                    sum += curve[i] * heights[y * kTextureSide + ((x + i - reach) & kWrap)];
                across[x * kTextureSide + y] = sum;
            }
        }
        heights.swap(across);
    }
    return heights;
}

// Slightly winding diagonal waves, which show under light from nearly any angle. A whole number of them fits
// the side, so the texture tiles.
static std::vector<float> WaveHeights(std::size_t wave_count)
{
    constexpr double kTurn = 2 * std::numbers::pi / static_cast<double>(kTextureSide);
    std::vector<float> heights(kTextureSide * kTextureSide);
    for (std::size_t y = 0; y < kTextureSide; ++y) {
        for (std::size_t x = 0; x < kTextureSide; ++x) {
            const auto angle_x = static_cast<double>(x) * kTurn, angle_y = static_cast<double>(y) * kTurn;
            const auto waves = static_cast<double>(wave_count);
            const double winding =
                0.9 * std::sin(3 * angle_x - 2 * angle_y) + 0.6 * std::sin(5 * angle_y - 4 * angle_x + 1);
            heights[y * kTextureSide + x] =
                static_cast<float>(std::sin((angle_x + angle_y) * waves + winding));
        }
    }
    return heights;
}

std::vector<float> TextureHeights(std::int32_t texture)
{
    constexpr double kDeviations[3] = {1.5, 3, 0.8};
    constexpr std::size_t kWaves[3] = {11, 6, 23};
    return texture < 3 ? NoiseHeights(kDeviations[texture]) : WaveHeights(kWaves[texture - 3]);
}

// The slopes towards the light, normalised to the same mean square for all textures, times the brightness.
static std::vector<std::int32_t> Slopes(double angle, double brightness, std::int32_t texture)
{
    constexpr double kMeanSquare = 5;
    const std::vector<float> heights = TextureHeights(texture);
    const double turn = std::fmod(angle, 360) * std::numbers::pi / 180;
    const double cos = std::cos(turn), sin = std::sin(turn);
    std::vector<double> exact(heights.size());
    double squares = 0;
    for (std::size_t y = 0; y < kTextureSide; ++y) {
        for (std::size_t x = 0; x < kTextureSide; ++x) {
            const auto height = [&](std::size_t column, std::size_t row) {
                return static_cast<double>(heights[(row & kWrap) * kTextureSide + (column & kWrap)]);
            };
            const double across = height(x - 1, y) - height(x + 1, y);
            const double up = height(x, y + 1) - height(x, y - 1);
            squares += (across * across + up * up) / 2;
            exact[y * kTextureSide + x] = cos * across + sin * up;
        }
    }
    const double scale = brightness * std::sqrt(kMeanSquare / (squares / static_cast<double>(exact.size())));
    std::vector<std::int32_t> result(exact.size());
    std::transform(exact.begin(), exact.end(), result.begin(),
                   [scale](double d) { return static_cast<std::int32_t>(std::lround(d * scale)); });
    return result;
}

template <std::int32_t kChannels>
static void AddSlopes(std::uint8_t* __restrict pixel, std::size_t width,
                      const std::int32_t* __restrict slopes)
{
    for (std::size_t x = 0; x < width; ++x, pixel += kChannels) {
        for (std::int32_t c = 0; c < (kChannels == 1 ? 1 : 3); ++c)
            pixel[c] = ClampToLevel(pixel[c] + slopes[x & kWrap]);
    }
}

OperationResult Texturize(const ImageBuffer& source, ImageBuffer& result, double angle, double brightness,
                          std::int32_t texture)
{
    if (!(brightness > 0) || !std::isfinite(angle))
        return OperationResult::Unchanged;
    const std::vector<std::int32_t> lit =
        Slopes(angle, std::min(brightness, 100.0), std::clamp(texture, 0, 5));
    const auto add = source.channels == 1 ? AddSlopes<1> : source.channels == 3 ? AddSlopes<3> : AddSlopes<4>;
    Target target(source, result);
    EachRows(source.height, Stride(source), [&](std::int32_t first, std::int32_t last) {
        for (std::int32_t y = first; y < last; ++y)
            add(target.LoadRow(y), static_cast<std::size_t>(source.width),
                lit.data() + (static_cast<std::size_t>(y) & kWrap) * kTextureSide);
    });
    return target.Finish();
}

}  // namespace transforms

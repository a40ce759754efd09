// Noise and diffusion, with one random sequence per row so that rows are independent.
#include "src/platform/image/transforms/effects/noise.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <numbers>
#include <utility>

#include "src/platform/image/transforms/rows/background.h"
#include "src/platform/image/transforms/rows/bands.h"
#include "src/platform/image/transforms/rows/clamping.h"
#include "src/platform/image/transforms/rows/hidden.h"
#include "src/platform/image/transforms/rows/picture_rows.h"
#include "src/platform/image/transforms/rows/seeded_random.h"
#include "src/platform/image/transforms/rows/target.h"

namespace transforms
{

namespace
{

constexpr std::size_t kBits = 12;
constexpr std::size_t kQuantiles = 1 << kBits;
using NoiseTable = std::array<std::int16_t, kQuantiles>;

// The Gaussian quantile of 1 / 2 <= d < 1 by Newton's method. Starting from the middle, steps never
// overshoot.
double Quantile(double d)
{
    double x = 0;
    for (int i = 0; i < 60; ++i) {
        const double error = 0.5 * std::erfc(-x / std::sqrt(2.0)) - d;
        x -= error / (std::exp(-x * x / 2) / std::sqrt(2 * std::numbers::pi));
        if (std::fabs(error) < 1e-12)
            break;
    }
    return x;
}

NoiseTable NoiseOf(std::int32_t deviation)
{
    NoiseTable table;
    for (std::size_t i = 0; i < kQuantiles / 2; ++i) {
        const double noise =
            Quantile((static_cast<double>(kQuantiles / 2 + i) + 0.5) / static_cast<double>(kQuantiles));
        const auto level = static_cast<std::int16_t>(std::lround(noise * deviation));
        table[kQuantiles / 2 + i] = level;
        table[kQuantiles / 2 - 1 - i] = static_cast<std::int16_t>(-level);
    }
    return table;
}

// Random numbers of kBits bits, several from each 64-bit one.
class Dice
{
public:
    explicit Dice(std::uint64_t state) : state_(state) {}
    std::size_t Next()
    {
        if (left_ == 0) {
            bits_ = Random(state_);
            left_ = 64 / kBits;
        }
        --left_;
        const std::size_t n = bits_ & (kQuantiles - 1);
        bits_ >>= kBits;
        return n;
    }

private:
    std::uint64_t state_;
    std::uint64_t bits_ = 0;
    std::size_t left_ = 0;
};

void AddNoiseToRow(std::uint8_t* pixel, std::int32_t width, std::int32_t channels, bool one_for_all,
                   const NoiseTable& noise, std::uint64_t state)
{
    Dice dice(state);
    const std::int32_t colours = channels == 1 ? 1 : 3;
    for (std::int32_t x = 0; x < width; ++x, pixel += channels) {
        std::int32_t added = noise[dice.Next()];
        pixel[0] = ClampToLevel(pixel[0] + added);
        for (std::int32_t c = 1; c < colours; ++c) {
            if (!one_for_all)
                added = noise[dice.Next()];
            pixel[c] = ClampToLevel(pixel[c] + added);
        }
    }
}

}  // namespace

OperationResult AddNoise(const ImageBuffer& source, ImageBuffer& result, std::int32_t level, bool monochrome)
{
    if (level <= 0)
        return OperationResult::Unchanged;
    if (source.channels == 1 && !monochrome)
        return InColour(source, result, [&](const ImageBuffer& image, ImageBuffer& noisy) {
            return AddNoise(image, noisy, level, false);
        });
    const NoiseTable noise = NoiseOf(std::min(level, 1000));
    const std::uint64_t start = SeedOf(source);
    Target target(source, result);
    EachRows(source.height, 4 * Stride(source), [&](std::int32_t first, std::int32_t last) {
        for (std::int32_t y = first; y < last; ++y) {
            std::uint64_t state = start + static_cast<std::uint64_t>(y);
            state = Random(state);
            AddNoiseToRow(target.LoadRow(y), source.width, source.channels, monochrome, noise, state);
        }
    });
    return target.Finish();
}

// An offset from 24 random bits, uniform over -distance to distance.
static std::int64_t MoveFrom(std::uint64_t bits, std::uint64_t distance)
{
    return static_cast<std::int64_t>(((bits & 0xFFFFFF) * (2 * distance + 1)) >> 24) -
           static_cast<std::int64_t>(distance);
}

namespace
{
struct Shuffling {
    std::uint64_t distance;
    std::uint64_t moving;  // how many out of 65536 pixels move
};
}  // namespace

template <std::size_t kChannels>
static void ShuffleRow(const ImageBuffer& image, std::int32_t y, const Shuffling& shuffling,
                       std::uint64_t state, std::uint8_t* target)
{
    const std::int64_t right = image.width - 1, bottom = image.height - 1;
    const auto row = static_cast<std::int64_t>(Stride(image));
    const std::uint8_t* bytes = image.bytes.data();
    for (std::int64_t x = 0; x <= right; ++x, target += kChannels) {
        // One random number per pixel: 16 bits decide whether to move, 24 bits each give the distances.
        // Multiply instead of branching; the branch would be mispredicted half the time.
        const std::uint64_t bits = Random(state);
        const std::int64_t moves = (bits >> 48) < shuffling.moving ? 1 : 0;
        const std::int64_t from_x =
            std::clamp<std::int64_t>(x + moves * MoveFrom(bits, shuffling.distance), 0, right);
        const std::int64_t from_y =
            std::clamp<std::int64_t>(y + moves * MoveFrom(bits >> 24, shuffling.distance), 0, bottom);
        const std::uint8_t* from = bytes + from_y * row + from_x * static_cast<std::int64_t>(kChannels);
        for (std::size_t c = 0; c < (kChannels == 1 ? 1 : 3); ++c)
            target[c] = from[c];
    }
}

OperationResult Diffuse(const ImageBuffer& source, ImageBuffer& result, std::int32_t distance,
                        double penetration)
{
    if (distance <= 0 || !(penetration > 0))
        return OperationResult::Unchanged;
    return WithVisibleColours(source, result, [&](const ImageBuffer& image, ImageBuffer& out) {
        const Shuffling shuffling{
            static_cast<std::uint64_t>(std::min(distance, std::max(image.width, image.height))),
            static_cast<std::uint64_t>(std::lround((1 - std::exp(-penetration / 10)) * 65536))};
        const std::uint64_t start = SeedOf(image) ^ 0xD1FF05E;
        const auto shuffle = image.channels == 1   ? ShuffleRow<1>
                             : image.channels == 3 ? ShuffleRow<3>
                                                   : ShuffleRow<4>;
        ImageBuffer shuffled = EmptyLike(image);
        EachRows(image.height, 4 * Stride(image), [&](std::int32_t first, std::int32_t last) {
            for (std::int32_t y = first; y < last; ++y) {
                std::uint64_t state = start + static_cast<std::uint64_t>(y);
                state = Random(state);
                std::uint8_t* target = Row(shuffled, y);
                for (std::size_t i = 3; image.channels == 4 && i < Stride(image); i += 4)
                    target[i] = Row(image, y)[i];
                shuffle(image, y, shuffling, state, target);
            }
        });
        TakePixels(image, out, std::move(shuffled));
        return OperationResult::Changed;
    });
}

}  // namespace transforms

// Scales row by row: first vertically into a row of floats, then along that row.
#include "src/platform/image/transforms/geometry/resize.h"

#include <algorithm>
#include <cstring>
#include <utility>
#include <vector>

#include "src/platform/image/base/limits.h"
#include "src/platform/image/transforms/geometry/resize_rows.h"
#include "src/platform/image/transforms/geometry/resize_weights.h"
#include "src/platform/image/transforms/rows/bands.h"
#include "src/platform/image/transforms/rows/clamping.h"
#include "src/platform/image/transforms/rows/picture_rows.h"
#include "src/platform/image/transforms/rows/row_loop.h"
#include "src/platform/image/transforms/rows/target.h"

namespace transforms
{

// False if any pixel is at all transparent.
static bool IsOpaque(const ImageBuffer& image)
{
    if (image.channels != 4)
        return true;
    for (std::int32_t y = 0; y < image.height; ++y) {
        const std::uint8_t* pixel = Row(image, y);
        std::uint8_t all = 255;
        for (std::int32_t x = 0; x < image.width; ++x)
            all &= pixel[4 * static_cast<std::size_t>(x) + 3];
        if (all != 255)
            return false;
    }
    return true;
}

namespace
{

using Four = float __attribute__((vector_size(16)));

void ResizeNearest(const ImageBuffer& image, ImageBuffer& result)
{
    const auto channels = static_cast<std::size_t>(image.channels);
    std::vector<std::size_t> offsets(static_cast<std::size_t>(result.width));
    for (std::size_t x = 0; x < offsets.size(); ++x)
        offsets[x] = (2 * x + 1) * static_cast<std::size_t>(image.width) / (2 * offsets.size()) * channels;
    EachRows(result.height, Stride(result), [&](std::int32_t first, std::int32_t last) {
        for (std::int32_t y = first; y < last; ++y) {
            const std::uint8_t* source =
                Row(image, static_cast<std::int32_t>((2 * static_cast<std::int64_t>(y) + 1) * image.height /
                                                     (2 * static_cast<std::int64_t>(result.height))));
            std::uint8_t* target = Row(result, y);
            for (const std::size_t offset : offsets) {
                for (std::size_t c = 0; c < channels; ++c)
                    *target++ = source[offset + c];
            }
        }
    });
}

// Adds a row with its colours premultiplied by alpha.
ROW_LOOP void AddWeighedRow(const std::uint8_t* __restrict pixel, float weight, std::size_t pixels,
                            float* __restrict sums)
{
    for (std::size_t i = 0; i < pixels; ++i) {
        const float alpha = weight * static_cast<float>(pixel[4 * i + 3]);
        sums[4 * i] += alpha * static_cast<float>(pixel[4 * i]);
        sums[4 * i + 1] += alpha * static_cast<float>(pixel[4 * i + 1]);
        sums[4 * i + 2] += alpha * static_cast<float>(pixel[4 * i + 2]);
        sums[4 * i + 3] += alpha;
    }
}

// Pads pixels from three floats to four, one vector register each.
void Spread(const float* __restrict pixels, std::size_t pixel_count, Four* __restrict target)
{
    for (std::size_t i = 0; i < pixel_count; ++i, pixels += 3)
        target[i] = Four{pixels[0], pixels[1], pixels[2], 0};
}

// Scales one row of sums horizontally.
template <int kChannels, bool kWeighed>
void AlongRow(const float* sums, const ResizeWeights& weights, std::uint8_t* target)
{
    const std::size_t taps = weights.taps;
    const float* weight = weights.weights.data();
    for (const std::int32_t first : weights.first) {
        if constexpr (kChannels == 1) {
            const float* source = sums + first;
            float sum = 0;
            for (std::size_t k = 0; k < taps; ++k)
                sum += weight[k] * source[k];
            *target++ = ClampToLevel(sum);
        } else {
            // Two accumulators, to shorten the dependency chain.
            Four sum{0, 0, 0, 0}, next{0, 0, 0, 0};
            const float* source = sums + 4 * static_cast<std::size_t>(first);
            std::size_t k = 0;
            for (; k + 2 <= taps; k += 2, source += 8) {
                Four pixel, next_pixel;
                std::memcpy(&pixel, source, sizeof pixel);
                std::memcpy(&next_pixel, source + 4, sizeof next_pixel);
                sum += pixel * weight[k];
                next += next_pixel * weight[k + 1];
            }
            if (k < taps) {
                Four pixel;
                std::memcpy(&pixel, source, sizeof pixel);
                sum += pixel * weight[k];
            }
            sum += next;
            if constexpr (kWeighed) {
                const float alpha = sum[3];
                target[3] = ClampToLevel(alpha);
                for (int c = 0; c < 3; ++c)
                    target[c] = alpha > 1e-3F ? ClampToLevel(sum[c] / alpha) : std::uint8_t{0};
            } else {
                for (int c = 0; c < kChannels; ++c)
                    target[c] = ClampToLevel(sum[c]);
            }
            target += kChannels;
        }
        weight += taps;
    }
}

// Of a reduced picture, only what is inside the full one is scaled.
ResizeWeights WeightsAcross(const ImageBuffer& image, std::int32_t width, bool cubic)
{
    const Reduction& reduction = image.reduction;
    if (reduction.factor <= 1)
        return ComputeResizeWeights(image.width, width, cubic);
    const double extent = static_cast<double>(reduction.full_width) / reduction.factor;
    return ComputeResizeWeights(image.width, reduction.beyond_left ? image.width - extent : 0, extent, width,
                                cubic);
}
ResizeWeights WeightsDown(const ImageBuffer& image, std::int32_t height, bool cubic)
{
    const Reduction& reduction = image.reduction;
    if (reduction.factor <= 1)
        return ComputeResizeWeights(image.height, height, cubic);
    const double extent = static_cast<double>(reduction.full_height) / reduction.factor;
    return ComputeResizeWeights(image.height, reduction.beyond_top ? image.height - extent : 0, extent,
                                height, cubic);
}

void ResizeSmoothly(const ImageBuffer& image, ImageBuffer& result, bool cubic)
{
    const ResizeWeights across = WeightsAcross(image, result.width, cubic);
    const ResizeWeights down = WeightsDown(image, result.height, cubic);
    const bool weighed = !IsOpaque(image);
    const std::size_t row = Stride(image), pixels = static_cast<std::size_t>(image.width);
    const auto along = image.channels == 1   ? AlongRow<1, false>
                       : image.channels == 3 ? AlongRow<3, false>
                       : weighed             ? AlongRow<4, true>
                                             : AlongRow<4, false>;

    EachRows(result.height, Stride(result) + row, [&](std::int32_t first, std::int32_t last) {
        std::vector<float> sums(row);
        std::vector<std::int16_t> weights(down.taps + 1);
        std::vector<float> spread(image.channels == 3 ? 4 * pixels : 0);
        for (std::int32_t y = first; y < last; ++y) {
            const std::int32_t from = down.first[static_cast<std::size_t>(y)];
            const float* weight = down.weights.data() + static_cast<std::size_t>(y) * down.taps;
            if (weighed) {
                std::fill(sums.begin(), sums.end(), 0.F);
                for (std::size_t k = 0; k < down.taps; ++k)
                    AddWeighedRow(Row(image, from + static_cast<std::int32_t>(k)), weight[k], pixels,
                                  sums.data());
            } else {
                SumRows({Row(image, from), row, weight, down.taps}, row, weights.data(), sums.data());
            }
            if (image.channels == 3)
                Spread(sums.data(), pixels, reinterpret_cast<Four*>(spread.data()));
            along(image.channels == 3 ? spread.data() : sums.data(), across, Row(result, y));
        }
    });
}

}  // namespace

OperationResult Resize(const ImageBuffer& source, ImageBuffer& result, std::int32_t width,
                       std::int32_t height, std::int32_t interpolation, Colour /*background*/)
{
    width = std::max(width, 1);
    height = std::max(height, 1);
    if (width == source.width && height == source.height && source.reduction.factor == 1)
        return OperationResult::Unchanged;
    ImageBuffer scaled;
    if (!Allocate(scaled, static_cast<std::uint64_t>(width), static_cast<std::uint64_t>(height),
                  source.channels))
        return OperationResult::Failed;
    if (interpolation <= 0)
        ResizeNearest(source, scaled);
    else
        ResizeSmoothly(source, scaled, interpolation >= 2);
    TakePixels(source, result, std::move(scaled));
    result.reduction = {};
    return OperationResult::Changed;
}

OperationResult Reproduce(const ImageBuffer& source, ImageBuffer& result, std::int32_t copies)
{
    const std::int32_t count = std::clamp(copies, 1, 32);
    if (count == 1)
        return OperationResult::Unchanged;
    ImageBuffer copy;
    if (!Allocate(copy, static_cast<std::uint64_t>((source.width + count - 1) / count),
                  static_cast<std::uint64_t>((source.height + count - 1) / count), source.channels))
        return OperationResult::Failed;
    ResizeSmoothly(source, copy, false);

    Target target(source, result);
    const auto start = [count](std::int32_t side, std::int32_t i) {
        return static_cast<std::int32_t>(static_cast<std::int64_t>(side) * i / count);
    };
    const auto channels = static_cast<std::size_t>(source.channels);
    for (std::int32_t j = 0; j < count; ++j) {
        const std::int32_t top = start(source.height, j), bottom = start(source.height, j + 1);
        for (std::int32_t y = top; y < bottom; ++y) {
            for (std::int32_t i = 0; i < count; ++i) {
                const auto left = static_cast<std::size_t>(start(source.width, i));
                const auto right = static_cast<std::size_t>(start(source.width, i + 1));
                std::memcpy(Row(target.Image(), y) + left * channels, Row(copy, y - top),
                            (right - left) * channels);
            }
        }
    }
    return target.Finish();
}

}  // namespace transforms

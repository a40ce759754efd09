// Reduces a picture, blurs it and enlarges it again.
#include "src/platform/image/transforms/filters/small_picture.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "src/platform/image/transforms/filters/gaussian_curve.h"
#include "src/platform/image/transforms/rows/bands.h"
#include "src/platform/image/transforms/rows/picture_rows.h"
#include "src/platform/image/transforms/rows/row_loop.h"

namespace transforms
{

using Four = float __attribute__((vector_size(16)));

static std::size_t CellCount(std::int32_t side, std::int32_t step)
{
    return static_cast<std::size_t>((side + step - 1) / step + 2);
}

SmallPicture::SmallPicture(const ImageBuffer& image, std::int32_t step)
    : step_(step),
      channels_(static_cast<std::size_t>(image.channels)),
      columns_(CellCount(image.width, step)),
      rows_(CellCount(image.height, step)),
      means_(rows_ * RowSize())
{
    EachRows(static_cast<std::int32_t>(rows_), Stride(image) * static_cast<std::size_t>(step),
             [&](std::int32_t first, std::int32_t last) {
                 std::vector<std::uint32_t> sums(Stride(image));
                 for (std::int32_t y = first; y < last; ++y)
                     ReduceRows(image, (y - 1) * step_, sums,
                                means_.data() + static_cast<std::size_t>(y) * RowSize());
             });
}

ROW_LOOP static void AddBytes(const std::uint8_t* __restrict bytes, std::size_t count,
                              std::uint32_t* __restrict sums)
{
    for (std::size_t i = 0; i < count; ++i)
        sums[i] += bytes[i];
}

// Reduces the row of squares starting at y, which may be outside the picture.
void SmallPicture::ReduceRows(const ImageBuffer& image, std::int32_t y, std::vector<std::uint32_t>& sums,
                              std::int16_t* means) const
{
    std::fill(sums.begin(), sums.end(), 0U);
    for (std::int32_t i = 0; i < step_; ++i)
        AddBytes(Row(image, std::clamp(y + i, 0, image.height - 1)), sums.size(), sums.data());
    const auto pixels = static_cast<std::uint32_t>(step_) * static_cast<std::uint32_t>(step_);
    const std::int64_t last = image.width - 1, channels = image.channels;
    for (std::size_t cell = 0; cell < columns_; ++cell) {
        const std::int64_t left = (static_cast<std::int64_t>(cell) - 1) * step_;
        for (std::int64_t c = 0; c < channels; ++c) {
            std::uint64_t sum = 0;
            for (std::int64_t x = left; x < left + step_; ++x)
                sum += sums[static_cast<std::size_t>(std::clamp<std::int64_t>(x, 0, last) * channels + c)];
            *means++ = static_cast<std::int16_t>((sum * kSteps + pixels / 2) / pixels);
        }
    }
}

void SmallPicture::Blur(double deviation)
{
    const GaussianCurve curve(deviation);
    const std::size_t padding = curve.Reach() * channels_;
    std::vector<std::int16_t> result(means_.size());
    EachRows(static_cast<std::int32_t>(rows_), 4 * RowSize(), [&](std::int32_t first, std::int32_t last) {
        std::vector<std::int16_t> down(RowSize() + 2 * padding);
        std::vector<const std::int16_t*> rows(2 * curve.Reach() + 1);
        for (std::int32_t y = first; y < last; ++y) {
            for (std::size_t i = 0; i < rows.size(); ++i) {
                const auto row = y + static_cast<std::int32_t>(i) - static_cast<std::int32_t>(curve.Reach());
                rows[i] = means_.data() +
                          static_cast<std::size_t>(std::clamp(row, 0, static_cast<std::int32_t>(rows_) - 1)) *
                              RowSize();
            }
            std::int16_t* padded_down = down.data() + padding;
            curve.Down(rows.data(), RowSize(), padded_down);
            RepeatEnds(padded_down, RowSize(), channels_, curve.Reach());
            curve.Along(padded_down, RowSize(), channels_,
                        result.data() + static_cast<std::size_t>(y) * RowSize());
        }
    });
    means_ = std::move(result);
}

std::vector<SmallPicture::Tap> SmallPicture::Taps(std::int32_t side) const
{
    std::vector<Tap> result(static_cast<std::size_t>(side));
    for (std::int32_t i = 0; i < side; ++i) {
        const std::int32_t halves =
            2 * i + 1 + step_;  // distance from the middle of the first square, in half pixels
        result[static_cast<std::size_t>(i)] = {
            halves / (2 * step_), static_cast<float>(halves % (2 * step_)) / static_cast<float>(2 * step_)};
    }
    return result;
}

// Interpolates between two rows of squares, in levels.
ROW_LOOP static void MixRows(const std::int16_t* __restrict one, const std::int16_t* __restrict other,
                             std::size_t count, float other_share, float* __restrict mixed)
{
    for (std::size_t i = 0; i < count; ++i) {
        const auto share_of_one = static_cast<float>(one[i]);
        mixed[i] = (share_of_one + (static_cast<float>(other[i]) - share_of_one) * other_share) / kSteps;
    }
}

template <int kChannels>
void SmallPicture::EnlargeRow(const float* mixed, const std::vector<Tap>& across, std::uint8_t* target)
{
    constexpr Four kHalf{0.5F, 0.5F, 0.5F, 0.5F};
    for (const Tap& tap : across) {
        // Reads past a pixel of less than four channels; rows are padded for that.
        const float* left_cell = mixed + static_cast<std::ptrdiff_t>(tap.cell) * kChannels;
        Four left, right;
        std::memcpy(&left, left_cell, sizeof left);
        std::memcpy(&right, left_cell + kChannels, sizeof right);
        const Four value = left + (right - left) * tap.weight + kHalf;
        for (int c = 0; c < kChannels; ++c)
            *target++ = static_cast<std::uint8_t>(static_cast<std::int32_t>(value[c]));
    }
}

void SmallPicture::Enlarge(ImageBuffer& target) const
{
    const std::vector<Tap> across = Taps(target.width), down = Taps(target.height);
    const auto row = target.channels == 1   ? EnlargeRow<1>
                     : target.channels == 3 ? EnlargeRow<3>
                                            : EnlargeRow<4>;
    EachRows(target.height, Stride(target), [&](std::int32_t first, std::int32_t last) {
        std::vector<float> mixed(RowSize() + 4);
        for (std::int32_t y = first; y < last; ++y) {
            const Tap& tap = down[static_cast<std::size_t>(y)];
            const std::int16_t* upper = means_.data() + static_cast<std::size_t>(tap.cell) * RowSize();
            MixRows(upper, upper + RowSize(), RowSize(), tap.weight, mixed.data());
            row(mixed.data(), across, Row(target, y));
        }
    });
}

}  // namespace transforms

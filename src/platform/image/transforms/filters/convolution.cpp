// In-place filters over 3 x 3 neighbourhoods.
#include "src/platform/image/transforms/filters/convolution.h"

#include <algorithm>
#include <cstring>

#include "src/platform/image/transforms/rows/bands.h"
#include "src/platform/image/transforms/rows/hidden.h"
#include "src/platform/image/transforms/rows/picture_rows.h"
#include "src/platform/image/transforms/rows/row_loop.h"
#include "src/platform/image/transforms/rows/target.h"

namespace transforms
{

namespace
{
// A band works in place. It keeps copies of the last three original rows and, taken before any band starts,
// of the rows just above and below the band, which other bands will overwrite.
class BandRows
{
public:
    static constexpr std::size_t kRows = 5;
    static std::size_t PaddedSize(const ImageBuffer& image)
    {
        return (static_cast<std::size_t>(image.width) + 2) * static_cast<std::size_t>(image.channels);
    }

    BandRows(const ImageBuffer& image, std::uint8_t* memory)
        : image_(image), memory_(memory), padded_(PaddedSize(image))
    {
    }
    // Call this before the picture is changed.
    void KeepBorders(std::int32_t first, std::int32_t end)
    {
        Load(3, std::max(first - 1, 0));
        Load(4, std::min(end, image_.height - 1));
    }
    void Begin(std::int32_t first, std::int32_t end)
    {
        end_ = end;
        std::memcpy(SlotRow(SlotOf(first - 1)), SlotRow(3), padded_);
        Load(SlotOf(first), first);
    }
    // Rows y - 1 to y + 1. Call it in ascending order, before row y is written.
    std::array<const std::uint8_t*, 3> NeighbourRows(std::int32_t y)
    {
        if (y + 1 < end_)
            Load(SlotOf(y + 1), y + 1);
        else
            std::memcpy(SlotRow(SlotOf(y + 1)), SlotRow(4), padded_);
        const auto channels = static_cast<std::size_t>(image_.channels);
        return {SlotRow(SlotOf(y - 1)) + channels, SlotRow(SlotOf(y)) + channels,
                SlotRow(SlotOf(y + 1)) + channels};
    }

private:
    static std::size_t SlotOf(std::int32_t y) { return static_cast<std::size_t>((y + 3) % 3); }
    std::uint8_t* SlotRow(std::size_t row) { return memory_ + row * padded_; }
    void Load(std::size_t row_index, std::int32_t y)
    {
        const auto channels = static_cast<std::size_t>(image_.channels);
        const std::size_t bytes = padded_ - 2 * channels;
        const std::uint8_t* row = image_.bytes.data() + bytes * static_cast<std::size_t>(y);
        std::memcpy(SlotRow(row_index), row, channels);
        std::memcpy(SlotRow(row_index) + channels, row, bytes);
        std::memcpy(SlotRow(row_index) + channels + bytes, row + bytes - channels, channels);
    }

    const ImageBuffer& image_;
    std::uint8_t* memory_;
    std::size_t padded_;
    std::int32_t end_ = 0;
};
}  // namespace

OperationResult FilterNeighbourhoods(const ImageBuffer& source, ImageBuffer& result,
                                     const NeighbourhoodRow& row)
{
    return WithVisibleColours(source, result, [&](const ImageBuffer& image, ImageBuffer& filtered) {
        const std::size_t count = BandCount(image);
        const std::size_t band_bytes = BandRows::kRows * BandRows::PaddedSize(image);
        const auto channels = static_cast<std::size_t>(image.channels);
        PixelBytes memory(count * band_bytes);
        Target target(image, filtered);
        const auto work = [&](std::size_t band, std::int32_t first, std::int32_t end) {
            BandRows band_rows(image, memory.data() + band * band_bytes);
            band_rows.Begin(first, end);
            for (std::int32_t y = first; y < end; ++y) {
                const auto rows = band_rows.NeighbourRows(y);
                std::uint8_t* bytes = Row(target.Image(), y);
                row(rows, Stride(image), channels, bytes);
                for (std::size_t i = 3; channels == 4 && i < Stride(image); i += 4)
                    bytes[i] = rows[1][i];
            }
        };
        // All bands must have kept their borders before any of them starts.
        for (std::size_t band = 0; band < count; ++band)
            BandRows(image, memory.data() + band * band_bytes)
                .KeepBorders(BandRow(image, count, band), BandRow(image, count, band + 1));
        RunBands(image, count, std::ref(work));
        return target.Finish();
    });
}

namespace
{
struct Neighbours {
    const std::uint8_t *above, *own, *below;
    std::size_t count, channels;
};
}  // namespace

template <Shown kShown>
ROW_LOOP_PART static void ConvolveRow(const Neighbours& neighbours, const Weights& w, std::uint32_t half,
                                      std::uint32_t reciprocal, std::uint8_t* __restrict target)
{
    const std::uint8_t* __restrict a = neighbours.above - neighbours.channels;
    const std::uint8_t* __restrict m = neighbours.own - neighbours.channels;
    const std::uint8_t* __restrict b = neighbours.below - neighbours.channels;
    const std::size_t c = neighbours.channels, count = neighbours.count;
    const std::int16_t w0 = w[0], w1 = w[1], w2 = w[2], w3 = w[3], w4 = w[4], w5 = w[5], w6 = w[6], w7 = w[7],
                       w8 = w[8];
    for (std::size_t i = 0; i < count; ++i) {
        const auto sum = static_cast<std::int16_t>(w0 * a[i] + w1 * a[i + c] + w2 * a[i + 2 * c] + w3 * m[i] +
                                                   w4 * m[i + c] + w5 * m[i + 2 * c] + w6 * b[i] +
                                                   w7 * b[i + c] + w8 * b[i + 2 * c]);
        if constexpr (kShown == Shown::kClipped) {
            const std::int16_t low = sum < 0 ? std::int16_t{0} : sum;
            target[i] = static_cast<std::uint8_t>(low > 255 ? std::int16_t{255} : low);
        } else {
            const auto amount = static_cast<std::uint16_t>(sum < 0 ? -sum : sum);
            const auto share =
                static_cast<std::uint16_t>(reciprocal == 0 ? amount : ((amount + half) * reciprocal) >> 16);
            target[i] = static_cast<std::uint8_t>(share > 255 ? std::uint16_t{255} : share);
        }
    }
}

ROW_LOOP static void ClippedRow(const Neighbours& neighbours, const Weights& w,
                                std::uint8_t* __restrict target)
{
    ConvolveRow<Shown::kClipped>(neighbours, w, 0, 0, target);
}

ROW_LOOP static void MagnitudeRow(const Neighbours& neighbours, const Weights& w,
                                  std::uint8_t* __restrict target)
{
    ConvolveRow<Shown::kMagnitude>(neighbours, w, 0, 0, target);
}

ROW_LOOP static void DividedRow(const Neighbours& neighbours, const Weights& w, std::uint16_t divisor,
                                std::uint8_t* __restrict target)
{
    // Exact for quotients below 256, since (sum + half) / 65536 stays below 1 / divisor.
    const std::uint32_t reciprocal = (65535U + divisor) / divisor;
    ConvolveRow<Shown::kMagnitude>(neighbours, w, divisor / 2U, reciprocal, target);
}

OperationResult Convolve(const ImageBuffer& source, ImageBuffer& result, const Weights& weights, Shown shown,
                         std::uint16_t divisor)
{
    const auto row = [&](const std::array<const std::uint8_t*, 3>& rows, std::size_t count,
                         std::size_t channels, std::uint8_t* target) {
        const Neighbours neighbours{rows[0], rows[1], rows[2], count, channels};
        if (shown == Shown::kClipped)
            ClippedRow(neighbours, weights, target);
        else if (divisor == 1)
            MagnitudeRow(neighbours, weights, target);
        else
            DividedRow(neighbours, weights, divisor, target);
    };
    return FilterNeighbourhoods(source, result, std::ref(row));
}

ROW_LOOP static void FineRow(const Neighbours& neighbours, std::int32_t centre, std::int32_t side,
                             std::int32_t corner, std::uint8_t* __restrict target)
{
    const std::uint8_t* __restrict a = neighbours.above - neighbours.channels;
    const std::uint8_t* __restrict m = neighbours.own - neighbours.channels;
    const std::uint8_t* __restrict b = neighbours.below - neighbours.channels;
    const std::size_t c = neighbours.channels, count = neighbours.count;
    for (std::size_t i = 0; i < count; ++i) {
        const std::int32_t sides = a[i + c] + m[i] + m[i + 2 * c] + b[i + c];
        const std::int32_t corners = a[i] + a[i + 2 * c] + b[i] + b[i + 2 * c];
        const std::int32_t sum = (centre * m[i + c] + side * sides + corner * corners + 32768) >> 16;
        const std::int32_t low = sum < 0 ? 0 : sum;
        target[i] = static_cast<std::uint8_t>(low > 255 ? 255 : low);
    }
}

OperationResult ConvolveFine(const ImageBuffer& source, ImageBuffer& result, std::int32_t centre,
                             std::int32_t side, std::int32_t corner)
{
    const auto row = [=](const std::array<const std::uint8_t*, 3>& rows, std::size_t count,
                         std::size_t channels, std::uint8_t* target) {
        FineRow({rows[0], rows[1], rows[2], count, channels}, centre, side, corner, target);
    };
    return FilterNeighbourhoods(source, result, std::ref(row));
}

}  // namespace transforms

// Dilation and erosion: the maximum or minimum around each pixel, limited by level and threshold.
#include "src/platform/image/transforms/filters/dilation.h"

#include <array>
#include <cstddef>
#include <functional>

#include "src/platform/image/transforms/filters/convolution.h"
#include "src/platform/image/transforms/rows/row_loop.h"

namespace transforms
{

namespace
{

struct Limits {
    std::uint8_t level, threshold;
};

// A row and those above and below, starting one pixel to the left.
struct Around {
    const std::uint8_t *above, *own, *below;
    std::size_t channels;
};

ROW_LOOP_PART std::uint8_t Greater(std::uint8_t one, std::uint8_t other)
{
    return one < other ? other : one;
}
ROW_LOOP_PART std::uint8_t Lesser(std::uint8_t one, std::uint8_t other)
{
    return one < other ? one : other;
}

template <bool kSquare, bool kGrow>
ROW_LOOP_PART void ChangeRow(const Around& obj, std::size_t count, Limits limits,
                             std::uint8_t* __restrict target)
{
    const std::uint8_t* __restrict a = obj.above;
    const std::uint8_t* __restrict m = obj.own;
    const std::uint8_t* __restrict b = obj.below;
    const std::size_t c = obj.channels;
    const std::uint8_t level = limits.level, threshold = limits.threshold;
    for (std::size_t i = 0; i < count; ++i) {
        const std::uint8_t value = m[i + c];
        if constexpr (kGrow) {
            std::uint8_t max =
                Greater(Greater(Greater(m[i], value), m[i + 2 * c]), Greater(a[i + c], b[i + c]));
            if constexpr (kSquare)
                max = Greater(max, Greater(Greater(a[i], a[i + 2 * c]), Greater(b[i], b[i + 2 * c])));
            const auto growth = Lesser(static_cast<std::uint8_t>(max - value), level);
            target[i] = max > threshold ? static_cast<std::uint8_t>(value + growth) : value;
        } else {
            std::uint8_t min = Lesser(Lesser(Lesser(m[i], value), m[i + 2 * c]), Lesser(a[i + c], b[i + c]));
            if constexpr (kSquare)
                min = Lesser(min, Lesser(Lesser(a[i], a[i + 2 * c]), Lesser(b[i], b[i + 2 * c])));
            const auto loss = Lesser(static_cast<std::uint8_t>(value - min), level);
            target[i] = value > threshold ? static_cast<std::uint8_t>(value - loss) : value;
        }
    }
}

ROW_LOOP void GrowSquare(const Around& obj, std::size_t count, Limits limits, std::uint8_t* target)
{
    ChangeRow<true, true>(obj, count, limits, target);
}
ROW_LOOP void GrowCross(const Around& obj, std::size_t count, Limits limits, std::uint8_t* target)
{
    ChangeRow<false, true>(obj, count, limits, target);
}
ROW_LOOP void WearSquare(const Around& obj, std::size_t count, Limits limits, std::uint8_t* target)
{
    ChangeRow<true, false>(obj, count, limits, target);
}
ROW_LOOP void WearCross(const Around& obj, std::size_t count, Limits limits, std::uint8_t* target)
{
    ChangeRow<false, false>(obj, count, limits, target);
}

using RowChange = void (*)(const Around&, std::size_t, Limits, std::uint8_t*);

// The border is extended by replication, which doesn't affect the extremes.
OperationResult Change(const ImageBuffer& source, ImageBuffer& result, Limits limits, RowChange change)
{
    if (limits.level == 0)
        return OperationResult::Unchanged;
    const auto row = [&](const std::array<const std::uint8_t*, 3>& rows, std::size_t count,
                         std::size_t channels, std::uint8_t* target) {
        change({rows[0] - channels, rows[1] - channels, rows[2] - channels, channels}, count, limits, target);
    };
    return FilterNeighbourhoods(source, result, std::ref(row));
}

}  // namespace

OperationResult Dilation(const ImageBuffer& source, ImageBuffer& result, std::uint8_t level,
                         std::uint8_t threshold, bool square)
{
    return Change(source, result, {level, threshold}, square ? GrowSquare : GrowCross);
}

OperationResult Erosion(const ImageBuffer& source, ImageBuffer& result, std::uint8_t level,
                        std::uint8_t threshold, bool square)
{
    return Change(source, result, {level, threshold}, square ? WearSquare : WearCross);
}

}  // namespace transforms

// Portable PNG filter selection and filtering, and the choice of the fastest kernels.
#include "src/platform/image/codecs/png/filters/png_filter.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdlib>
#include <cstring>

#include "src/platform/image/codecs/png/filters/png_kernels.h"

static constexpr std::array<std::uint8_t, 256> MakeCosts()
{
    std::array<std::uint8_t, 256> costs{};
    for (std::size_t i = 0; i < 256; ++i) {
        const std::size_t magnitude = i < 128 ? i : 256 - i;
        costs[i] = magnitude < 16 ? kPngSmallCosts[magnitude] : kPngLargeCosts[magnitude / 16];
    }
    return costs;
}

static constexpr std::array<std::uint8_t, 256> kCosts = MakeCosts();

static inline int PredictPaeth(int left, int above, int above_left)
{
    const int to_left = std::abs(above - above_left);
    const int to_above = std::abs(left - above_left);
    const int to_above_left = std::abs(left + above - 2 * above_left);
    if (to_left <= to_above && to_left <= to_above_left)
        return left;
    return to_above <= to_above_left ? above : above_left;
}

// Filters `count` samples starting at `first`. The zeros in front of a row spare its first pixel a special
// case.
static void Differences(PngFilter filter, const PngFilterRow& row, std::size_t first, std::size_t count,
                        std::uint8_t* __restrict out)
{
    const std::uint8_t* __restrict at = row.row + first;
    const std::uint8_t* __restrict above = row.above + first;
    const std::uint8_t* __restrict left = at - row.pixel_bytes;
    const std::uint8_t* __restrict above_left = above - row.pixel_bytes;
    switch (filter) {
        case PngFilter::kNone:
            std::copy_n(at, count, out);
            break;
        case PngFilter::kSub:
            for (std::size_t i = 0; i < count; ++i)
                out[i] = static_cast<std::uint8_t>(at[i] - left[i]);
            break;
        case PngFilter::kUp:
            for (std::size_t i = 0; i < count; ++i)
                out[i] = static_cast<std::uint8_t>(at[i] - above[i]);
            break;
        case PngFilter::kAverage:
            for (std::size_t i = 0; i < count; ++i)
                out[i] = static_cast<std::uint8_t>(at[i] - (left[i] + above[i]) / 2);
            break;
        case PngFilter::kPaeth:
            for (std::size_t i = 0; i < count; ++i)
                out[i] = static_cast<std::uint8_t>(at[i] - PredictPaeth(left[i], above[i], above_left[i]));
            break;
    }
}

static std::int64_t CostOf(PngFilter filter, const PngFilterRow& row)
{
    std::int64_t cost = 0;
    std::uint8_t before = 0;
    std::array<std::uint8_t, kPngFilterGroup> group{};
    for (std::size_t first = 0; first < row.bytes; first += kPngFilterGroup) {
        const std::size_t count = std::min(kPngFilterGroup, row.bytes - first);
        Differences(filter, row, first, count, group.data());
        std::uint32_t same = 0;
        for (std::size_t i = 0; i < count; ++i) {
            cost += kCosts[group[i]];
            same |= static_cast<std::uint32_t>(group[i] == before) << i;
            before = group[i];
        }
        cost -= std::popcount(same & same >> 1 & same >> 2) * static_cast<std::int64_t>(kPngRunBonus);
    }
    return cost;
}

static PngFilter ChooseAnywhere(const PngFilterRow& row)
{
    PngFilter best = PngFilter::kNone;
    std::int64_t best_cost = CostOf(best, row);
    for (std::uint32_t i = 1; i < kPngFilters; ++i) {
        const auto filter = static_cast<PngFilter>(i);
        const std::int64_t cost = CostOf(filter, row);
        if (cost < best_cost) {
            best_cost = cost;
            best = filter;
        }
    }
    return best;
}

static void ApplyAnywhere(PngFilter filter, const PngFilterRow& row, std::uint8_t* out)
{
    out[0] = static_cast<std::uint8_t>(filter);
    Differences(filter, row, 0, row.bytes, out + 1);
}

const PngFilters& PngFiltersFor(bool portable)
{
    static constexpr PngFilters kEverywhere = {ChooseAnywhere, ApplyAnywhere};
#ifdef VARNEL_PNG_AVX2
    if (!portable && HasAvx2ForPng())
        return kPngFiltersAvx2;
#endif
    static_cast<void>(portable);
    return kEverywhere;
}

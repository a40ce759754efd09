// Clips and set operations on them.
#include "src/platform/image/metafile/canvas/clip.h"

#include <cstdlib>

#include "src/platform/image/metafile/canvas/raster_ops.h"

// Units per pixel. Saved states keep coverage in memory, so it costs more than a painted pixel.
static constexpr std::uint64_t kCostOfCoverage = 8;

static std::uint8_t CombinedLevel(unsigned old, unsigned added, ClipMode mode)
{
    switch (mode) {
        case ClipMode::kAnd:
            return static_cast<std::uint8_t>(DivideBy255(old * added));
        case ClipMode::kOr:
            return static_cast<std::uint8_t>(old + added - DivideBy255(old * added));
        case ClipMode::kXor:
            return static_cast<std::uint8_t>(old > added ? old - added : added - old);
        case ClipMode::kDifference:
            return static_cast<std::uint8_t>(DivideBy255(old * (255 - added)));
        case ClipMode::kCopy:
            break;
    }
    return static_cast<std::uint8_t>(added);
}

Clip Combine(const Clip& old, const Clip& added, ClipMode mode, Budget& budget)
{
    const Box both = Intersection(old.box, added.box);
    switch (mode) {
        case ClipMode::kCopy:
            return added;
        case ClipMode::kAnd:
            if (both.Empty() || (!old.coverage && !added.coverage))
                return {both, nullptr};
            // A box around the other clip changes nothing: keep its mask instead of copying it.
            if (!old.coverage && both == added.box)
                return added;
            if (!added.coverage && both == old.box)
                return old;
            break;
        case ClipMode::kDifference:
            if (both.Empty())
                return old;
            if (!added.coverage && both == old.box)
                return {};
            break;
        case ClipMode::kOr:
        case ClipMode::kXor:
            if (old.box.Empty())
                return added;
            if (added.box.Empty())
                return old;
            break;
        default:
            return old;
    }
    const Box result = mode == ClipMode::kAnd          ? both
                       : mode == ClipMode::kDifference ? old.box
                                                       : Union(old.box, added.box);
    if (!budget.Spend(result.Area() * kCostOfCoverage))
        return old;
    auto coverage = std::make_shared<Coverage>(result);
    for (std::int32_t y = result.top; y < result.bottom; ++y) {
        std::uint8_t* row = coverage->Row(y);
        for (std::int32_t x = result.left; x < result.right; ++x)
            *row++ = CombinedLevel(old.Level(x, y), added.Level(x, y), mode);
    }
    return {result, std::move(coverage)};
}

Clip Translate(const Clip& clip, std::int32_t right, std::int32_t down, const Box& limit, Budget& budget)
{
    const Box moved{clip.box.left + right, clip.box.top + down, clip.box.right + right,
                    clip.box.bottom + down};
    const Box result = Intersection(moved, limit);
    if (result.Empty())
        return {};
    if (!clip.coverage || !budget.Spend(result.Area() * kCostOfCoverage))
        return {result, nullptr};
    auto coverage = std::make_shared<Coverage>(result);
    for (std::int32_t y = result.top; y < result.bottom; ++y) {
        const std::uint8_t* from = clip.coverage->Row(y - down) + (result.left - right - clip.box.left);
        std::copy(from, from + result.Width(), coverage->Row(y));
    }
    return {result, std::move(coverage)};
}

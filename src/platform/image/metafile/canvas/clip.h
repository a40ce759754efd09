// The area that a metafile may draw on.
// Room: platform/image/metafile/canvas.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "src/platform/image/metafile/canvas/budget.h"
#include "src/platform/image/metafile/canvas/geometry.h"

/// An antialiased mask of a box: coverage of each pixel, 0 to 255.
struct Coverage {
    explicit Coverage(const Box& area) : box(area), levels(area.Area()) {}

    std::uint8_t* Row(std::int32_t y)
    {
        return levels.data() + static_cast<std::size_t>(y - box.top) * static_cast<std::size_t>(box.Width());
    }
    const std::uint8_t* Row(std::int32_t y) const { return const_cast<Coverage*>(this)->Row(y); }

    Box box;
    std::vector<std::uint8_t> levels;
};

/// A box, or the part of it given by a coverage mask. Copies share the mask, which is immutable.
struct Clip {
    Box box;
    std::shared_ptr<const Coverage> coverage;  ///< null for the whole box; otherwise its box equals this box

    /// True if both are equal without looking into masks: two equal masks may count as different.
    bool IsSameAs(const Clip& other) const { return box == other.box && coverage == other.coverage; }
    std::uint8_t Level(std::int32_t x, std::int32_t y) const
    {
        if (!box.Holds(x, y))
            return 0;
        return coverage ? coverage->Row(y)[x - box.left] : 255;
    }
};

/// The values are those stored in records.
enum class ClipMode { kAnd = 1, kOr = 2, kXor = 3, kDifference = 4, kCopy = 5 };

/// Combines old with added; the result is within their union. Returns old for an unknown mode or a spent
/// budget.
Clip Combine(const Clip& old, const Clip& added, ClipMode mode, Budget& budget);

/// The clip moved by whole pixels and cropped to limit.
Clip Translate(const Clip& clip, std::int32_t right, std::int32_t down, const Box& limit, Budget& budget);

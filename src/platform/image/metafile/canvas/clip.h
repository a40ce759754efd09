// Where a metafile may draw.
// Room: platform/image/metafile/canvas.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "src/platform/image/metafile/canvas/budget.h"
#include "src/platform/image/metafile/canvas/geometry.h"

/// How much of each pixel of a box counts, 0 to 255.
struct Coverage {
    explicit Coverage(const Box& boxArea) : box(boxArea), aLevels(boxArea.Area()) {}

    std::uint8_t* Row(std::int32_t y)
    {
        return aLevels.data() +
               static_cast<std::size_t>(y - box.lTop) * static_cast<std::size_t>(box.Width());
    }
    const std::uint8_t* Row(std::int32_t y) const { return const_cast<Coverage*>(this)->Row(y); }

    Box box;
    std::vector<std::uint8_t> aLevels;
};

/// A box, or a part of one that is given by coverage. Copies share their coverage, which never changes.
struct Clip {
    Box box;
    std::shared_ptr<const Coverage> pCoverage;  ///< null: the whole box; else its box is this box

    std::uint8_t Level(std::int32_t x, std::int32_t y) const
    {
        if (!box.Holds(x, y))
            return 0;
        return pCoverage ? pCoverage->Row(y)[x - box.lLeft] : 255;
    }
};

/// The numbers are those of the records.
enum class ClipMode { And = 1, Or = 2, Xor = 3, Difference = 4, Copy = 5 };

/// clipOld changed by clipNew; nothing of it lies beyond both. With the budget spent, or an unknown mode,
/// clipOld.
Clip Combined(const Clip& clipOld, const Clip& clipNew, ClipMode eMode, Budget& objBudget);

/// The clip moved by whole pixels, and cut to boxLimit.
Clip Moved(const Clip& clip, std::int32_t lRight, std::int32_t lDown, const Box& boxLimit, Budget& objBudget);

// Cuts a picture into bands of rows for the machine's cores.
// Room: platform/image/transforms/rows.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>

#include "src/platform/image_buffer.h"

namespace transforms
{

/// Works on rows lFirst to lEnd - 1, the band with that number.
using BandWork = std::function<void(std::size_t nBand, std::int32_t lFirst, std::int32_t lEnd)>;

/// How many bands aImage is worth: one for a small picture, since a thread costs more than that saves.
std::size_t nBands(const ImageBuffer& aImage);

/// The row with which band nBand of nCount begins; for nBand = nCount the height.
std::int32_t lBandRow(const ImageBuffer& aImage, std::size_t nCount, std::size_t nBand);

/// Calls fnWork for each of nCount bands, several at a time; returns when all are done. fnWork must not
/// allocate: what a failure half way would leave behind is no picture. Hand a large closure in by std::ref.
void RunBands(const ImageBuffer& aImage, std::size_t nCount, const BandWork& fnWork);

/// The same with nBands(aImage) bands, for work(first row, row after the last) that needs nothing of its own.
/// Allocates nothing that it can't do without, and so never fails.
template <typename Work>
void RunBands(const ImageBuffer& aImage, const Work& fnRows)
{
    const auto fnWork = [&fnRows](std::size_t, std::int32_t lFirst, std::int32_t lEnd) {
        fnRows(lFirst, lEnd);
    };
    RunBands(aImage, nBands(aImage), std::ref(fnWork));
}

/// Calls fnRows(first, last) for parts of the rows 0 to lRows - 1 that together are all of them, on all cores
/// when lRows rows of nRowBytes bytes are worth it. The parts must not depend on each other. Throws what they
/// throw, after all of them, and nothing else.
void EachRows(std::int32_t lRows, std::size_t nRowBytes,
              const std::function<void(std::int32_t, std::int32_t)>& fnRows);

}  // namespace transforms

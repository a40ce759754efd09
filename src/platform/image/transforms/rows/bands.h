// Cuts a picture into bands of rows for the machine's cores.
// Room: platform/image/transforms/rows.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>

#include "src/platform/image_buffer.h"

namespace transforms
{

/// Works on rows first to end - 1, the band with that number.
using BandWork = std::function<void(std::size_t band, std::int32_t first, std::int32_t end)>;

/// How many bands image is worth: one for a small picture, since a thread costs more than that saves.
std::size_t BandCount(const ImageBuffer& image);

/// The row with which band band of count begins; for band = count the height.
std::int32_t BandRow(const ImageBuffer& image, std::size_t count, std::size_t band);

/// Calls work for each of count bands, several at a time; returns when all are done. work must not
/// allocate: what a failure half way would leave behind is no picture. Hand a large closure in by std::ref.
void RunBands(const ImageBuffer& image, std::size_t count, const BandWork& work);

/// The same with BandCount(image) bands, for work(first row, row after the last) that needs nothing of its
/// own. Allocates nothing that it can't do without, and so never fails.
template <typename Work>
void RunBands(const ImageBuffer& image, const Work& rows)
{
    const auto work = [&rows](std::size_t, std::int32_t first, std::int32_t end) { rows(first, end); };
    RunBands(image, BandCount(image), std::ref(work));
}

/// Calls work(first, last) for parts of the rows 0 to row_count - 1 that together are all of them, on all
/// cores when row_count rows of row_bytes bytes are worth it. The parts must not depend on each other. Throws
/// what they throw, after all of them, and nothing else.
void EachRows(std::int32_t row_count, std::size_t row_bytes,
              const std::function<void(std::int32_t, std::int32_t)>& work);

}  // namespace transforms

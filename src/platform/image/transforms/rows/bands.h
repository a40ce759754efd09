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

/// How many bands to cut image into: one for a small picture, where a thread costs more than it saves.
std::size_t BandCount(const ImageBuffer& image);

/// The first row of a band out of count bands; the height for band == count.
std::int32_t BandRow(const ImageBuffer& image, std::size_t count, std::size_t band);

/// Calls work for each of count bands, concurrently, and returns when all are done. work must not allocate: a
/// failure half way would leave a half-changed picture. Pass large closures by std::ref.
void RunBands(const ImageBuffer& image, std::size_t count, const BandWork& work);

/// The same with BandCount(image) bands, for work(first, end) without per-band memory. Never fails.
template <typename Work>
void RunBands(const ImageBuffer& image, const Work& rows)
{
    const auto work = [&rows](std::size_t, std::int32_t first, std::int32_t end) { rows(first, end); };
    RunBands(image, BandCount(image), std::ref(work));
}

/// Splits the rows 0 to row_count - 1 into parts and calls work(first, end) for each, on all cores if
/// row_count rows of row_bytes bytes are worth it. The parts must be independent. Throws only what they
/// throw, after all have finished.
void EachRows(std::int32_t row_count, std::size_t row_bytes,
              const std::function<void(std::int32_t, std::int32_t)>& work);

}  // namespace transforms

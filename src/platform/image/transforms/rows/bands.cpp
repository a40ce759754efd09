// Cuts a picture into bands of rows for the machine's cores.
#include "src/platform/image/transforms/rows/bands.h"

#include <algorithm>

#include "src/platform/image/base/parallel.h"

namespace transforms
{

constexpr std::size_t kWorthAThread = 1 << 18;  // bytes: about a tenth of a millisecond of the simplest work

std::size_t BandCount(const ImageBuffer& image)
{
    const std::size_t max = std::min(CoreCount(), static_cast<std::size_t>(std::max(image.height, 1)));
    return std::clamp<std::size_t>(image.bytes.size() / kWorthAThread, 1, max);
}

std::int32_t BandRow(const ImageBuffer& image, std::size_t count, std::size_t band)
{
    return static_cast<std::int32_t>(static_cast<std::uint64_t>(image.height) * band / count);
}

void RunBands(const ImageBuffer& image, std::size_t count, const BandWork& work)
{
    const auto band = [&](std::size_t band_index) {
        work(band_index, BandRow(image, count, band_index), BandRow(image, count, band_index + 1));
    };
    if (count == 1)
        band(0);
    else
        RunParts(count, std::ref(band));
}

void EachRows(std::int32_t row_count, std::size_t row_bytes,
              const std::function<void(std::int32_t, std::int32_t)>& work)
{
    if (row_count < 2 || row_bytes * static_cast<std::size_t>(row_count) < kWorthAThread || CoreCount() < 2) {
        work(0, row_count);
        return;
    }
    // More parts than cores, since some rows take longer than others.
    const auto rows_per_band = static_cast<std::size_t>(row_count),
               parts = std::min(rows_per_band, 4 * CoreCount());
    const auto part = [&](std::size_t n) {
        work(static_cast<std::int32_t>(rows_per_band * n / parts),
             static_cast<std::int32_t>(rows_per_band * (n + 1) / parts));
    };
    RunParts(parts, std::ref(part));
}

}  // namespace transforms

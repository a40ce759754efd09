// Cuts a picture into bands of rows for the machine's cores.
#include "src/platform/image/transforms/rows/bands.h"

#include <algorithm>

#include "src/platform/image/base/parallel.h"

namespace transforms
{

constexpr std::size_t kWorthAThread = 1 << 18;  // bytes: about a tenth of a millisecond of the plainest work

std::size_t nBands(const ImageBuffer& aImage)
{
    const std::size_t nMost = std::min(CoreCount(), static_cast<std::size_t>(std::max(aImage.height, 1)));
    return std::clamp<std::size_t>(aImage.bytes.size() / kWorthAThread, 1, nMost);
}

std::int32_t lBandRow(const ImageBuffer& aImage, std::size_t nCount, std::size_t nBand)
{
    return static_cast<std::int32_t>(static_cast<std::uint64_t>(aImage.height) * nBand / nCount);
}

void RunBands(const ImageBuffer& aImage, std::size_t nCount, const BandWork& fnWork)
{
    const auto fnBand = [&](std::size_t nBand) {
        fnWork(nBand, lBandRow(aImage, nCount, nBand), lBandRow(aImage, nCount, nBand + 1));
    };
    if (nCount == 1)
        fnBand(0);
    else
        RunParts(nCount, std::ref(fnBand));
}

void EachRows(std::int32_t lRows, std::size_t nRowBytes,
              const std::function<void(std::int32_t, std::int32_t)>& fnRows)
{
    if (lRows < 2 || nRowBytes * static_cast<std::size_t>(lRows) < kWorthAThread || CoreCount() < 2) {
        fnRows(0, lRows);
        return;
    }
    // More parts than cores, since some rows take longer than others.
    const auto nRows = static_cast<std::size_t>(lRows), nParts = std::min(nRows, 4 * CoreCount());
    const auto fnPart = [&](std::size_t n) {
        fnRows(static_cast<std::int32_t>(nRows * n / nParts),
               static_cast<std::int32_t>(nRows * (n + 1) / nParts));
    };
    RunParts(nParts, std::ref(fnPart));
}

}  // namespace transforms

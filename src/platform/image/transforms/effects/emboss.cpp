// Embosses in place: each band keeps copies of the original rows that it still needs.
#include "src/platform/image/transforms/effects/emboss.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <functional>
#include <vector>

#include "src/platform/image/transforms/filters/slopes.h"
#include "src/platform/image/transforms/rows/bands.h"
#include "src/platform/image/transforms/rows/clamping.h"
#include "src/platform/image/transforms/rows/hidden.h"
#include "src/platform/image/transforms/rows/picture_rows.h"
#include "src/platform/image/transforms/rows/target.h"

namespace transforms
{

namespace
{

// The rows of a band and those around it, padded by replicating the first and last pixel.
class EmbossBand
{
public:
    EmbossBand(const ImageBuffer& image, std::int32_t distance)
        : image_(image),
          distance_(distance),
          reach_(static_cast<std::size_t>(distance) * static_cast<std::size_t>(image.channels)),
          rows_((2 * static_cast<std::size_t>(distance) + 1) * PaddedWidth()),
          slopes_(Stride(image))
    {
    }
    // Call this for every band before any of them is changed.
    void KeepBorders(std::int32_t first, std::int32_t end)
    {
        first_ = first;
        end_ = end;
        for (std::int32_t i = 0; i < distance_; ++i) {
            Keep(Kept(first - distance_ + i), std::max(first - distance_ + i, 0));
            Keep(Below(i), std::min(end + i, image_.height - 1));
        }
    }
    // Writes row y; rows must come in order.
    void Make(std::int32_t y, Light from, std::uint8_t* target)
    {
        std::uint8_t* own = Kept(y);
        Keep(own, y);
        const std::int32_t lower = y + distance_;
        const RowsAround rows{own - reach_, own + reach_, Kept(y - distance_),
                              lower < end_ ? Row(image_, lower) : Below(lower - end_)};
        SlopesAroundGrey(rows, from, slopes_.size(), slopes_.data(), target);
        for (std::size_t i = 3; image_.channels == 4 && i < slopes_.size(); i += 4)
            target[i] = own[i];
    }

private:
    std::size_t PaddedWidth() const { return Stride(image_) + 2 * reach_; }
    std::uint8_t* SlotRow(std::int32_t slot)
    {
        return rows_.data() + static_cast<std::size_t>(slot) * PaddedWidth() + reach_;
    }
    // A ring of distance + 1 rows: a new row replaces the one that is no longer needed.
    std::uint8_t* Kept(std::int32_t y) { return SlotRow((y - first_ + distance_) % (distance_ + 1)); }
    std::uint8_t* Below(std::int32_t i) { return SlotRow(distance_ + 1 + i); }
    void Keep(std::uint8_t* to, std::int32_t y)
    {
        const auto channels = static_cast<std::size_t>(image_.channels);
        const std::size_t row = Stride(image_);
        const std::uint8_t* from = Row(image_, y);
        std::memcpy(to, from, row);
        for (std::size_t i = 0; i < reach_; ++i) {
            to[row + i] = from[row - channels + i % channels];
            *(to - reach_ + i) = from[i % channels];
        }
    }

    const ImageBuffer& image_;
    std::int32_t distance_;
    std::size_t reach_;
    std::vector<std::uint8_t> rows_;
    std::vector<std::int32_t> slopes_;
    std::int32_t first_ = 0, end_ = 0;
};

}  // namespace

OperationResult Emboss(const ImageBuffer& source, ImageBuffer& result, double angle, std::int32_t height,
                       double brightness)
{
    if (height <= 0 || !std::isfinite(angle) || std::isnan(brightness))
        return OperationResult::Unchanged;
    return WithVisibleColours(source, result, [&](const ImageBuffer& image, ImageBuffer& embossed) {
        Target target(image, embossed);
        const Light from = LightFrom(angle, Clamped(brightness, 0, 1000) / 10);
        std::vector<EmbossBand> bands(BandCount(image), EmbossBand(image, std::min(height, 16)));
        for (std::size_t n = 0; n < bands.size(); ++n)
            bands[n].KeepBorders(BandRow(image, bands.size(), n), BandRow(image, bands.size(), n + 1));
        const auto band = [&](std::size_t band_index, std::int32_t first, std::int32_t end) {
            for (std::int32_t y = first; y < end; ++y)
                bands[band_index].Make(y, from, Row(target.Image(), y));
        };
        RunBands(image, bands.size(), std::ref(band));
        return target.Finish();
    });
}

}  // namespace transforms

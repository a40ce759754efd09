// Adds the slopes of a picture's intensity to its colours.
#include <algorithm>
#include <cmath>
#include <cstring>
#include <functional>
#include <vector>

#include "src/platform/image/transforms/effects/emboss.h"
#include "src/platform/image/transforms/filters/gaussian.h"
#include "src/platform/image/transforms/filters/slopes.h"
#include "src/platform/image/transforms/rows/bands.h"
#include "src/platform/image/transforms/rows/clamping.h"
#include "src/platform/image/transforms/rows/hidden.h"
#include "src/platform/image/transforms/rows/intensity.h"
#include "src/platform/image/transforms/rows/picture_rows.h"
#include "src/platform/image/transforms/rows/target.h"

namespace transforms
{

namespace
{
// Computes the slopes of single rows of a grey picture.
class SlopeRows
{
public:
    SlopeRows(const ImageBuffer& grey, Light from)
        : grey_(grey), from_(from), wide_(Stride(grey) + 2), slopes_(Stride(grey))
    {
    }
    const std::vector<std::int32_t>& SlopeRow(std::int32_t y)
    {
        const std::uint8_t* own = Row(grey_, y);
        std::memcpy(wide_.data() + 1, own, slopes_.size());
        wide_.front() = own[0];
        wide_.back() = own[slopes_.size() - 1];
        Slopes({wide_.data(), wide_.data() + 2, Row(grey_, std::max(y - 1, 0)),
                Row(grey_, std::min(y + 1, grey_.height - 1))},
               from_, slopes_.size(), slopes_.data());
        return slopes_;
    }

private:
    const ImageBuffer& grey_;
    Light from_;
    std::vector<std::uint8_t> wide_;  // the row with its ends replicated
    std::vector<std::int32_t> slopes_;
};
}  // namespace

OperationResult Relief(const ImageBuffer& source, ImageBuffer& result, double angle, double brightness,
                       double smoothness)
{
    if (!(brightness > 0) || !std::isfinite(angle) || std::isnan(smoothness))
        return OperationResult::Unchanged;
    return WithVisibleColours(source, result, [&](const ImageBuffer& image, ImageBuffer& lit) {
        Target target(image, lit);
        ImageBuffer map = IntensityPlane(image);
        if (smoothness > 0)
            map = Blurred(map, std::max(0.1, std::min(smoothness, 16.0) / 4));
        const Light from = LightFrom(angle, std::min(brightness, 100.0));
        std::vector<SlopeRows> slopes(BandCount(image), SlopeRows(map, from));
        const std::int32_t colours = image.channels == 1 ? 1 : 3;
        const auto band = [&](std::size_t band_index, std::int32_t first, std::int32_t end) {
            for (std::int32_t y = first; y < end; ++y) {
                std::uint8_t* pixel = target.LoadRow(y);
                for (const std::int32_t slope : slopes[band_index].SlopeRow(y)) {
                    for (std::int32_t c = 0; c < colours; ++c)
                        pixel[c] = ClampToLevel(pixel[c] + slope);
                    pixel += image.channels;
                }
            }
        };
        RunBands(image, slopes.size(), std::ref(band));
        return target.Finish();
    });
}

}  // namespace transforms

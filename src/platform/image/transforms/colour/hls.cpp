// Colour operations on hue, lightness and saturation.
#include "src/platform/image/transforms/colour/hls.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>

#include "src/platform/image/transforms/colour/hls_rows.h"
#include "src/platform/image/transforms/rows/bands.h"
#include "src/platform/image/transforms/rows/clamping.h"
#include "src/platform/image/transforms/rows/planes.h"
#include "src/platform/image/transforms/rows/tables.h"
#include "src/platform/image/transforms/rows/target.h"

namespace transforms
{

static OperationResult ChangeGrey(const ImageBuffer& source, ImageBuffer& result, const HlsChange& change)
{
    Table table;
    for (std::size_t n = 0; n < table.size(); ++n)
        table[n] = ClampToLevel((static_cast<double>(2 * n) * change.light_scale + change.light_add) / 2);
    return ApplyTable(source, result, table);
}

OperationResult BalanceHLS(const ImageBuffer& source, ImageBuffer& result, double hue, double lightness,
                           double saturation)
{
    HlsChange change;
    if (std::isfinite(hue)) {
        const double turn = std::fmod(hue, 360.0);
        change.turn = static_cast<float>((turn < 0 ? turn + 360 : turn) / 60);
    }
    if (!std::isnan(lightness)) {
        const double share = std::clamp(lightness, -1.0, 1.0);
        change.light_scale = static_cast<float>(1 - std::fabs(share));
        change.light_add = static_cast<float>(share > 0 ? 510 * share : 0);
    }
    if (!std::isnan(saturation)) {
        const double share = std::clamp(saturation, -1.0, 1.0);
        // 256 times is enough to take a chroma of one level to any room.
        change.saturation =
            static_cast<float>(share < 0 ? 1 + share : std::min(256.0, 1 / std::max(1 - share, 1.0 / 256)));
    }

    const HlsRow change_row = ChooseHlsRow(change);
    if (!change_row)
        return OperationResult::Unchanged;
    if (source.channels == 1)
        return ChangeGrey(source, result, change);
    const auto channels = static_cast<std::size_t>(source.channels);
    const auto width = static_cast<std::size_t>(source.width);
    Target target(source, result);
    RunBands(source, [&](std::int32_t first, std::int32_t end) {
        Planes planes;
        FloatPlanes values;
        const std::size_t last = width * static_cast<std::size_t>(end);
        for (std::size_t i = width * static_cast<std::size_t>(first); i < last; i += kPlaneBlock) {
            const std::size_t pixel_count = std::min(kPlaneBlock, last - i);
            std::uint8_t* pixels = target.Load(i * channels, pixel_count * channels);
            SplitPixels(pixels, pixel_count, channels, planes);
            Widen(planes, pixel_count, values);
            change_row(values, pixel_count, change);
            Round(values, pixel_count, planes);
            JoinPixels(planes, pixel_count, channels, pixels);
        }
    });
    return target.Finish();
}

OperationResult Hue(const ImageBuffer& source, ImageBuffer& result, double angle)
{
    return BalanceHLS(source, result, angle, 0, 0);
}

OperationResult Lightness(const ImageBuffer& source, ImageBuffer& result, double lightness)
{
    return BalanceHLS(source, result, 0, lightness, 0);
}

OperationResult Saturation(const ImageBuffer& source, ImageBuffer& result, double saturation)
{
    return BalanceHLS(source, result, 0, 0, saturation);
}

OperationResult Desaturate(const ImageBuffer& source, ImageBuffer& result)
{
    return BalanceHLS(source, result, 0, 0, -1);
}

}  // namespace transforms

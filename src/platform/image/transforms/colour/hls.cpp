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

namespace transforms
{

static void ChangeGrey(ImageBuffer& aImage, const HlsChange& objChange)
{
    Table aTable;
    for (std::size_t n = 0; n < aTable.size(); ++n)
        aTable[n] = nLevel((static_cast<double>(2 * n) * objChange.fLightScale + objChange.fLightAdd) / 2);
    ApplyTable(aImage, aTable);
}

bool BalanceHLS(ImageBuffer& aImage, double dHue, double dLightness, double dSaturation)
{
    HlsChange objChange;
    if (std::isfinite(dHue)) {
        const double dTurn = std::fmod(dHue, 360.0);
        objChange.fTurn = static_cast<float>((dTurn < 0 ? dTurn + 360 : dTurn) / 60);
    }
    if (!std::isnan(dLightness)) {
        const double dShare = std::clamp(dLightness, -1.0, 1.0);
        objChange.fLightScale = static_cast<float>(1 - std::fabs(dShare));
        objChange.fLightAdd = static_cast<float>(dShare > 0 ? 510 * dShare : 0);
    }
    if (!std::isnan(dSaturation)) {
        const double dShare = std::clamp(dSaturation, -1.0, 1.0);
        // 256 times is enough to take a chroma of one level to any room.
        objChange.fSaturation = static_cast<float>(
            dShare < 0 ? 1 + dShare : std::min(256.0, 1 / std::max(1 - dShare, 1.0 / 256)));
    }

    const HlsRow fnChange = fnHlsRow(objChange);
    if (!fnChange)
        return true;
    if (aImage.channels == 1) {
        ChangeGrey(aImage, objChange);
        return true;
    }
    const auto nChannels = static_cast<std::size_t>(aImage.channels);
    const auto nWidth = static_cast<std::size_t>(aImage.width);
    RunBands(aImage, [&](std::int32_t lFirst, std::int32_t lEnd) {
        Planes objPlanes;
        FloatPlanes objValues;
        const std::size_t nLast = nWidth * static_cast<std::size_t>(lEnd);
        for (std::size_t i = nWidth * static_cast<std::size_t>(lFirst); i < nLast; i += kPlaneBlock) {
            const std::size_t nPixels = std::min(kPlaneBlock, nLast - i);
            std::uint8_t* pPixels = aImage.bytes.data() + i * nChannels;
            SplitPixels(pPixels, nPixels, nChannels, objPlanes);
            Widen(objPlanes, nPixels, objValues);
            fnChange(objValues, nPixels, objChange);
            Round(objValues, nPixels, objPlanes);
            JoinPixels(objPlanes, nPixels, nChannels, pPixels);
        }
    });
    return true;
}

bool Hue(ImageBuffer& aImage, double dAngle)
{
    return BalanceHLS(aImage, dAngle, 0, 0);
}

bool Lightness(ImageBuffer& aImage, double dLightness)
{
    return BalanceHLS(aImage, 0, dLightness, 0);
}

bool Saturation(ImageBuffer& aImage, double dSaturation)
{
    return BalanceHLS(aImage, 0, 0, dSaturation);
}

bool Desaturate(ImageBuffer& aImage)
{
    return BalanceHLS(aImage, 0, 0, -1);
}

}  // namespace transforms

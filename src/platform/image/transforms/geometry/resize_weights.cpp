// Samples the interpolation filters for every target pixel.
#include "src/platform/image/transforms/geometry/resize_weights.h"

#include <algorithm>
#include <cmath>

namespace transforms
{

static double dTriangle(double dDistance)
{
    return std::max(0.0, 1 - std::fabs(dDistance));
}

static double dCubic(double dDistance)
{
    const double d = std::fabs(dDistance);
    if (d < 1)
        return (1.5 * d - 2.5) * d * d + 1;
    return d < 2 ? ((-0.5 * d + 2.5) * d - 4) * d + 2 : 0;
}

ResizeWeights objResizeWeights(std::int32_t lSource, std::int32_t lTarget, bool bCubic)
{
    const double dStep = static_cast<double>(lSource) / lTarget;
    const double dWiden = std::max(1.0, dStep);
    const double dReach = (bCubic ? 2 : 1) * dWiden;

    ResizeWeights objResult;
    objResult.nTaps =
        static_cast<std::size_t>(std::min(lSource, 2 * static_cast<std::int32_t>(std::ceil(dReach)) + 1));
    objResult.aFirst.resize(static_cast<std::size_t>(lTarget));
    objResult.aWeights.assign(static_cast<std::size_t>(lTarget) * objResult.nTaps, 0.F);
    std::vector<double> aExact(objResult.nTaps);
    for (std::size_t i = 0; i < objResult.aFirst.size(); ++i) {
        const double dMiddle = (static_cast<double>(i) + 0.5) * dStep;
        const auto lFirst = std::clamp(static_cast<std::int32_t>(std::floor(dMiddle - dReach)), 0,
                                       lSource - static_cast<std::int32_t>(objResult.nTaps));
        double dSum = 0;
        for (std::size_t k = 0; k < objResult.nTaps; ++k) {
            const double dDistance = (lFirst + static_cast<double>(k) + 0.5 - dMiddle) / dWiden;
            aExact[k] = bCubic ? dCubic(dDistance) : dTriangle(dDistance);
            dSum += aExact[k];
        }
        objResult.aFirst[i] = lFirst;
        for (std::size_t k = 0; k < objResult.nTaps; ++k)
            objResult.aWeights[i * objResult.nTaps + k] = static_cast<float>(aExact[k] / dSum);
    }
    return objResult;
}

}  // namespace transforms

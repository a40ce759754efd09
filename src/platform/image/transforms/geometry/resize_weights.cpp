// Samples the interpolation filters for every target pixel.
#include "src/platform/image/transforms/geometry/resize_weights.h"

#include <algorithm>
#include <cmath>

namespace transforms
{

static double Triangle(double distance)
{
    return std::max(0.0, 1 - std::fabs(distance));
}

static double Cubic(double distance)
{
    const double d = std::fabs(distance);
    if (d < 1)
        return (1.5 * d - 2.5) * d * d + 1;
    return d < 2 ? ((-0.5 * d + 2.5) * d - 4) * d + 2 : 0;
}

ResizeWeights ComputeResizeWeights(std::int32_t source, std::int32_t target, bool cubic)
{
    return ComputeResizeWeights(source, 0, source, target, cubic);
}

ResizeWeights ComputeResizeWeights(std::int32_t source, double begin, double extent, std::int32_t target,
                                   bool cubic)
{
    const double step = extent / target;
    const double widen = std::max(1.0, step);
    const double reach = (cubic ? 2 : 1) * widen;

    ResizeWeights result;
    result.taps =
        static_cast<std::size_t>(std::min(source, 2 * static_cast<std::int32_t>(std::ceil(reach)) + 1));
    result.first.resize(static_cast<std::size_t>(target));
    result.weights.assign(static_cast<std::size_t>(target) * result.taps, 0.F);
    std::vector<double> exact(result.taps);
    for (std::size_t i = 0; i < result.first.size(); ++i) {
        const double middle = begin + (static_cast<double>(i) + 0.5) * step;
        const auto first = std::clamp(static_cast<std::int32_t>(std::floor(middle - reach)), 0,
                                      source - static_cast<std::int32_t>(result.taps));
        double sum = 0;
        for (std::size_t k = 0; k < result.taps; ++k) {
            const double distance = (first + static_cast<double>(k) + 0.5 - middle) / widen;
            exact[k] = cubic ? Cubic(distance) : Triangle(distance);
            sum += exact[k];
        }
        result.first[i] = first;
        for (std::size_t k = 0; k < result.taps; ++k)
            result.weights[i * result.taps + k] = static_cast<float>(exact[k] / sum);
    }
    return result;
}

}  // namespace transforms

// Filters with 3 x 3 kernels.
#include "src/platform/image/transforms/filters/filters.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdlib>

#include "src/platform/image/transforms/filters/convolution.h"

namespace transforms
{

template <std::size_t kCount>
static const Weights& Choose(const std::array<Weights, kCount>& choices, std::int32_t choice)
{
    return choices[static_cast<std::size_t>(std::clamp<std::int32_t>(choice, 0, kCount - 1))];
}

OperationResult FilterDifference(const ImageBuffer& source, ImageBuffer& result, std::int32_t direction)
{
    // The kernel's outer positions, counterclockwise from the top.
    constexpr std::array<std::size_t, 8> kRing{1, 0, 3, 6, 7, 8, 5, 2};
    const int step = std::clamp(direction, 0, 7);
    Weights weights{};
    weights[4] = -2;
    for (int n = 0; n < 8; ++n) {
        const int apart = std::abs(n - step);
        weights[kRing[static_cast<std::size_t>(n)]] = std::min(apart, 8 - apart) <= 2 ? 1 : -1;
    }
    return Convolve(source, result, weights, Shown::kClipped);
}

OperationResult FilterHighPass(const ImageBuffer& source, ImageBuffer& result, std::int32_t kind)
{
    if (kind >= 2)
        return FilterSharpen(source, result, 0.5);
    static constexpr std::array<Weights, 2> kMasks{
        {{0, -1, 0, -1, 5, -1, 0, -1, 0}, {-1, -1, -1, -1, 9, -1, -1, -1, -1}}};
    return Convolve(source, result, Choose(kMasks, kind), Shown::kClipped);
}

OperationResult FilterLowPass(const ImageBuffer& source, ImageBuffer& result, std::int32_t kind)
{
    static constexpr std::array<Weights, 3> kMasks{
        {{1, 1, 1, 1, 1, 1, 1, 1, 1}, {1, 1, 1, 1, 2, 1, 1, 1, 1}, {1, 2, 1, 2, 4, 2, 1, 2, 1}}};
    static constexpr std::array<std::uint16_t, 3> kDivisors{9, 10, 16};
    const auto index = static_cast<std::size_t>(std::clamp(kind, 0, 2));
    return Convolve(source, result, kMasks[index], Shown::kMagnitude, kDivisors[index]);
}

OperationResult FilterLaplas(const ImageBuffer& source, ImageBuffer& result, std::int32_t kind)
{
    static constexpr std::array<Weights, 2> kMasks{
        {{-1, -1, -1, -1, 8, -1, -1, -1, -1}, {0, -1, 0, -1, 4, -1, 0, -1, 0}}};
    return Convolve(source, result, Choose(kMasks, kind), Shown::kMagnitude);
}

OperationResult FilterSobel(const ImageBuffer& source, ImageBuffer& result, std::int32_t direction)
{
    static constexpr std::array<Weights, 2> kMasks{
        {{-1, 0, 1, -2, 0, 2, -1, 0, 1}, {-1, -2, -1, 0, 0, 0, 1, 2, 1}}};
    return Convolve(source, result, Choose(kMasks, direction), Shown::kMagnitude);
}

OperationResult FilterPrewitt(const ImageBuffer& source, ImageBuffer& result, std::int32_t direction)
{
    static constexpr std::array<Weights, 2> kMasks{
        {{-1, 0, 1, -1, 0, 1, -1, 0, 1}, {-1, -1, -1, 0, 0, 0, 1, 1, 1}}};
    return Convolve(source, result, Choose(kMasks, direction), Shown::kMagnitude);
}

OperationResult FilterRoberts(const ImageBuffer& source, ImageBuffer& result, std::int32_t direction)
{
    static constexpr std::array<Weights, 2> kMasks{
        {{0, 0, 0, 0, 0, 1, 0, -1, 0}, {0, 0, 0, 0, 1, 0, 0, 0, -1}}};
    return Convolve(source, result, Choose(kMasks, direction), Shown::kMagnitude);
}

OperationResult FilterIsotropic(const ImageBuffer& source, ImageBuffer& result, std::int32_t direction)
{
    static constexpr std::array<Weights, 2> kMasks{
        {{-29, 0, 29, -41, 0, 41, -29, 0, 29}, {-29, -41, -29, 0, 0, 0, 29, 41, 29}}};
    return Convolve(source, result, Choose(kMasks, direction), Shown::kMagnitude, 29);
}

OperationResult FilterLineDetection(const ImageBuffer& source, ImageBuffer& result, std::int32_t direction)
{
    static constexpr std::array<Weights, 4> kMasks{{{-1, 2, -1, -1, 2, -1, -1, 2, -1},
                                                    {-1, -1, -1, 2, 2, 2, -1, -1, -1},
                                                    {2, -1, -1, -1, 2, -1, -1, -1, 2},
                                                    {-1, -1, 2, -1, 2, -1, 2, -1, -1}}};
    return Convolve(source, result, Choose(kMasks, direction), Shown::kMagnitude);
}

OperationResult FilterReserved(const ImageBuffer&, ImageBuffer&, std::int32_t)
{
    return OperationResult::Unchanged;
}

// An amount of 0 to 1 in 1/65536.
static std::int32_t ToShare(double amount)
{
    return amount > 0 ? static_cast<std::int32_t>(std::lround(std::min(amount, 1.0) * 65536)) : 0;
}

OperationResult FilterBlur(const ImageBuffer& source, ImageBuffer& result, double amount)
{
    const std::int32_t ninth = (ToShare(amount) + 4) / 9;
    if (ninth == 0)
        return OperationResult::Unchanged;
    return ConvolveFine(source, result, 65536 - 8 * ninth, ninth, ninth);
}

OperationResult FilterSharpen(const ImageBuffer& source, ImageBuffer& result, double amount)
{
    const std::int32_t gain = ToShare(amount);
    if (gain == 0)
        return OperationResult::Unchanged;
    return ConvolveFine(source, result, 65536 + 4 * gain, -gain, 0);
}

}  // namespace transforms

// The filters of 3 x 3 neighbours.
#include "src/platform/image/transforms/filters/filters.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdlib>

#include "src/platform/image/transforms/filters/convolution.h"

namespace transforms
{

template <std::size_t nCount>
static const Weights& aChosen(const std::array<Weights, nCount>& aChoices, std::int32_t lChoice)
{
    return aChoices[static_cast<std::size_t>(std::clamp<std::int32_t>(lChoice, 0, nCount - 1))];
}

bool FilterDifference(ImageBuffer& aImage, std::int32_t lDirection)
{
    // The places of the mask around its middle, counter-clockwise from the one above.
    constexpr std::array<std::size_t, 8> kRing{1, 0, 3, 6, 7, 8, 5, 2};
    const int nDirection = std::clamp(lDirection, 0, 7);
    Weights aWeights{};
    aWeights[4] = -2;
    for (int n = 0; n < 8; ++n) {
        const int nApart = std::abs(n - nDirection);
        aWeights[kRing[static_cast<std::size_t>(n)]] = std::min(nApart, 8 - nApart) <= 2 ? 1 : -1;
    }
    return Convolve(aImage, aWeights, Shown::Clipped);
}

bool FilterHighPass(ImageBuffer& aImage, std::int32_t lKind)
{
    static constexpr std::array<Weights, 3> kMasks{{{0, -1, 0, -1, 5, -1, 0, -1, 0},
                                                    {-1, -1, -1, -1, 9, -1, -1, -1, -1},
                                                    {1, -2, 1, -2, 5, -2, 1, -2, 1}}};
    return Convolve(aImage, aChosen(kMasks, lKind), Shown::Clipped);
}

bool FilterLowPass(ImageBuffer& aImage, std::int32_t lKind)
{
    static constexpr std::array<Weights, 3> kMasks{
        {{1, 1, 1, 1, 1, 1, 1, 1, 1}, {1, 1, 1, 1, 2, 1, 1, 1, 1}, {1, 2, 1, 2, 4, 2, 1, 2, 1}}};
    static constexpr std::array<std::uint16_t, 3> kDivisors{9, 10, 16};
    const auto nKind = static_cast<std::size_t>(std::clamp(lKind, 0, 2));
    return Convolve(aImage, kMasks[nKind], Shown::Magnitude, kDivisors[nKind]);
}

bool FilterLaplas(ImageBuffer& aImage, std::int32_t lKind)
{
    static constexpr std::array<Weights, 2> kMasks{
        {{-1, -1, -1, -1, 8, -1, -1, -1, -1}, {0, -1, 0, -1, 4, -1, 0, -1, 0}}};
    return Convolve(aImage, aChosen(kMasks, lKind), Shown::Magnitude);
}

bool FilterSobel(ImageBuffer& aImage, std::int32_t lDirection)
{
    static constexpr std::array<Weights, 2> kMasks{
        {{-1, 0, 1, -2, 0, 2, -1, 0, 1}, {-1, -2, -1, 0, 0, 0, 1, 2, 1}}};
    return Convolve(aImage, aChosen(kMasks, lDirection), Shown::Magnitude);
}

bool FilterPrewitt(ImageBuffer& aImage, std::int32_t lDirection)
{
    static constexpr std::array<Weights, 2> kMasks{
        {{-1, 0, 1, -1, 0, 1, -1, 0, 1}, {-1, -1, -1, 0, 0, 0, 1, 1, 1}}};
    return Convolve(aImage, aChosen(kMasks, lDirection), Shown::Magnitude);
}

bool FilterRoberts(ImageBuffer& aImage, std::int32_t lDirection)
{
    static constexpr std::array<Weights, 2> kMasks{
        {{0, 0, 0, 0, 1, 0, 0, 0, -1}, {0, 0, 0, 0, 0, 1, 0, -1, 0}}};
    return Convolve(aImage, aChosen(kMasks, lDirection), Shown::Magnitude);
}

bool FilterIsotropic(ImageBuffer& aImage, std::int32_t lDirection)
{
    static constexpr std::array<Weights, 2> kMasks{
        {{-29, 0, 29, -41, 0, 41, -29, 0, 29}, {-29, -41, -29, 0, 0, 0, 29, 41, 29}}};
    return Convolve(aImage, aChosen(kMasks, lDirection), Shown::Magnitude, 29);
}

bool FilterLineDetection(ImageBuffer& aImage, std::int32_t lDirection)
{
    static constexpr std::array<Weights, 4> kMasks{{{-1, 2, -1, -1, 2, -1, -1, 2, -1},
                                                    {-1, -1, -1, 2, 2, 2, -1, -1, -1},
                                                    {2, -1, -1, -1, 2, -1, -1, -1, 2},
                                                    {-1, -1, 2, -1, 2, -1, 2, -1, -1}}};
    return Convolve(aImage, aChosen(kMasks, lDirection), Shown::Magnitude);
}

bool FilterReserved(ImageBuffer&, std::int32_t)
{
    return true;
}

// The amount of 0 to 1 in 65536ths.
static std::int32_t lShare(double dAmount)
{
    return dAmount > 0 ? static_cast<std::int32_t>(std::lround(std::min(dAmount, 1.0) * 65536)) : 0;
}

bool FilterBlur(ImageBuffer& aImage, double dAmount)
{
    const std::int32_t lNinth = (lShare(dAmount) + 4) / 9;
    return lNinth == 0 || ConvolveFine(aImage, 65536 - 8 * lNinth, lNinth, lNinth);
}

bool FilterSharpen(ImageBuffer& aImage, double dAmount)
{
    const std::int32_t lGain = lShare(dAmount);
    return lGain == 0 || ConvolveFine(aImage, 65536 + 4 * lGain, -lGain, 0);
}

}  // namespace transforms

// Six surfaces, made from random numbers and sines, and their slopes laid over a picture.
#include "src/platform/image/transforms/texture.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "src/platform/image/transforms/kernel_support.h"

namespace transforms
{

static constexpr std::size_t kWrap = kTextureSide - 1;
static_assert((kTextureSide & kWrap) == 0, "textures repeat by a mask");

static float dSmoothStep(float d)
{
    return d * d * (3 - 2 * d);
}

static std::vector<float> aNoiseHeights(std::size_t nGrid)
{
    const std::size_t nNodes = kTextureSide / nGrid;
    std::vector<float> aNodes(nNodes * nNodes);
    std::uint64_t nState = nGrid;
    for (float& dNode : aNodes)
        dNode = static_cast<float>(nRandom(nState) >> 40) / static_cast<float>(1 << 24);

    std::vector<float> aHeights(kTextureSide * kTextureSide);
    for (std::size_t y = 0; y < kTextureSide; ++y) {
        const std::size_t nUpper = y / nGrid * nNodes, nLower = (y / nGrid + 1) % nNodes * nNodes;
        const float dDown = dSmoothStep(static_cast<float>(y % nGrid) / static_cast<float>(nGrid));
        for (std::size_t x = 0; x < kTextureSide; ++x) {
            const std::size_t nLeft = x / nGrid, nRight = (nLeft + 1) % nNodes;
            const float dAcross = dSmoothStep(static_cast<float>(x % nGrid) / static_cast<float>(nGrid));
            const float dUpper = aNodes[nUpper + nLeft] * (1 - dAcross) + aNodes[nUpper + nRight] * dAcross;
            const float dLower = aNodes[nLower + nLeft] * (1 - dAcross) + aNodes[nLower + nRight] * dAcross;
            aHeights[y * kTextureSide + x] = dUpper * (1 - dDown) + dLower * dDown;
        }
    }
    return aHeights;
}

// Waves that run to the lower right, so that light from any side falls on them, and wind by an eighth of a
// turn. Whole numbers of waves fit the side.
static std::vector<float> aWaveHeights(std::size_t nLength)
{
    constexpr double kTurn = 2 * kPi / static_cast<double>(kTextureSide);
    const double dWaves = static_cast<double>(kTextureSide / nLength);
    std::vector<float> aHeights(kTextureSide * kTextureSide);
    for (std::size_t y = 0; y < kTextureSide; ++y) {
        for (std::size_t x = 0; x < kTextureSide; ++x) {
            const auto dX = static_cast<double>(x) * kTurn, dY = static_cast<double>(y) * kTurn;
            const double dWinding =
                0.9 * std::sin(dX * dWaves / 4) + 0.6 * std::sin(dY * dWaves / 8 - dX * 2);
            aHeights[y * kTextureSide + x] =
                static_cast<float>(std::sin(dY * dWaves + dX * dWaves / 4 + dWinding));
        }
    }
    return aHeights;
}

std::vector<float> aTextureHeights(std::int32_t lTexture)
{
    constexpr std::size_t kGrids[3] = {4, 8, 2};
    constexpr std::size_t kLengths[3] = {16, 32, 8};
    return lTexture < 3 ? aNoiseHeights(kGrids[lTexture]) : aWaveHeights(kLengths[lTexture - 3]);
}

// The slopes towards the light, brought to the mean square that all textures share, times the brightness.
static std::vector<std::int32_t> aSlopes(double dAngle, double dBrightness, std::int32_t lTexture)
{
    constexpr double kMeanSquare = 5;
    const std::vector<float> aHeights = aTextureHeights(lTexture);
    const double dTurn = std::fmod(dAngle, 360) * kPi / 180;
    const double dCos = std::cos(dTurn), dSin = std::sin(dTurn);
    std::vector<double> aExact(aHeights.size());
    double dSquares = 0;
    for (std::size_t y = 0; y < kTextureSide; ++y) {
        for (std::size_t x = 0; x < kTextureSide; ++x) {
            const auto fnHeight = [&](std::size_t nX, std::size_t nY) {
                return static_cast<double>(aHeights[(nY & kWrap) * kTextureSide + (nX & kWrap)]);
            };
            const double dAcross = fnHeight(x - 1, y) - fnHeight(x + 1, y);
            const double dUp = fnHeight(x, y + 1) - fnHeight(x, y - 1);
            dSquares += (dAcross * dAcross + dUp * dUp) / 2;
            aExact[y * kTextureSide + x] = dCos * dAcross + dSin * dUp;
        }
    }
    const double dScale =
        dBrightness * std::sqrt(kMeanSquare / (dSquares / static_cast<double>(aExact.size())));
    std::vector<std::int32_t> aResult(aExact.size());
    std::transform(aExact.begin(), aExact.end(), aResult.begin(),
                   [dScale](double d) { return static_cast<std::int32_t>(std::lround(d * dScale)); });
    return aResult;
}

template <std::int32_t lChannels>
static void AddSlopes(std::uint8_t* __restrict pPixel, std::size_t nWidth,
                      const std::int32_t* __restrict pSlopes)
{
    for (std::size_t x = 0; x < nWidth; ++x, pPixel += lChannels) {
        for (std::int32_t c = 0; c < (lChannels == 1 ? 1 : 3); ++c)
            pPixel[c] = nLevel(pPixel[c] + pSlopes[x & kWrap]);
    }
}

bool Texturize(ImageBuffer& aImage, double dAngle, double dBrightness, std::int32_t lTexture)
{
    if (!(dBrightness > 0) || !std::isfinite(dAngle))
        return true;
    return bGuarded([&] {
        const std::vector<std::int32_t> aLit =
            aSlopes(dAngle, std::min(dBrightness, 100.0), std::clamp(lTexture, 0, 5));
        const auto fnAdd = aImage.lChannels == 1   ? AddSlopes<1>
                           : aImage.lChannels == 3 ? AddSlopes<3>
                                                   : AddSlopes<4>;
        EachRows(aImage.lHeight, nStride(aImage), [&](std::int32_t lFirst, std::int32_t lLast) {
            for (std::int32_t y = lFirst; y < lLast; ++y)
                fnAdd(pRow(aImage, y), static_cast<std::size_t>(aImage.lWidth),
                      aLit.data() + (static_cast<std::size_t>(y) & kWrap) * kTextureSide);
        });
        return true;
    });
}

}  // namespace transforms

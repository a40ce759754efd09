// Six surfaces, made from random numbers and sines, and their slopes laid over a picture.
#include "src/platform/image/transforms/effects/texture.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

#include "src/platform/image/transforms/rows/bands.h"
#include "src/platform/image/transforms/rows/clamping.h"
#include "src/platform/image/transforms/rows/new_pixels.h"
#include "src/platform/image/transforms/rows/picture_rows.h"
#include "src/platform/image/transforms/rows/seeded_random.h"

namespace transforms
{

static constexpr std::size_t kWrap = kTextureSide - 1;
static_assert((kTextureSide & kWrap) == 0, "textures repeat by a mask");

// Random heights, evened out by a Gaussian both ways, around the edges too.
static std::vector<float> aNoiseHeights(double dDeviation)
{
    std::vector<float> aHeights(kTextureSide * kTextureSide), aAcross(aHeights.size());
    std::uint64_t nState = 1;
    for (float& dHeight : aHeights)
        dHeight = static_cast<float>(nRandom(nState) >> 40) / static_cast<float>(1 << 24) - 0.5F;

    const auto nReach = static_cast<std::size_t>(std::ceil(3 * dDeviation));
    std::vector<float> aCurve(2 * nReach + 1);
    for (std::size_t i = 0; i < aCurve.size(); ++i) {
        const double d = static_cast<double>(i) - static_cast<double>(nReach);
        aCurve[i] = static_cast<float>(std::exp(-d * d / (2 * dDeviation * dDeviation)));
    }
    // Each pass exchanges rows and columns, so that two of them do both directions.
    for (int nPass = 0; nPass < 2; ++nPass) {
        for (std::size_t y = 0; y < kTextureSide; ++y) {
            for (std::size_t x = 0; x < kTextureSide; ++x) {
                float dSum = 0;
                for (std::size_t i = 0; i < aCurve.size(); ++i)
                    dSum += aCurve[i] * aHeights[y * kTextureSide + ((x + i - nReach) & kWrap)];
                aAcross[x * kTextureSide + y] = dSum;
            }
        }
        aHeights.swap(aAcross);
    }
    return aHeights;
}

// Waves that run to the lower right, so that light from any side but along them falls on their slopes, and
// wind a little. Whole numbers of waves fit the side.
static std::vector<float> aWaveHeights(std::size_t nWaves)
{
    constexpr double kTurn = 2 * std::numbers::pi / static_cast<double>(kTextureSide);
    std::vector<float> aHeights(kTextureSide * kTextureSide);
    for (std::size_t y = 0; y < kTextureSide; ++y) {
        for (std::size_t x = 0; x < kTextureSide; ++x) {
            const auto dX = static_cast<double>(x) * kTurn, dY = static_cast<double>(y) * kTurn;
            const auto dWaves = static_cast<double>(nWaves);
            const double dWinding = 0.9 * std::sin(3 * dX - 2 * dY) + 0.6 * std::sin(5 * dY - 4 * dX + 1);
            aHeights[y * kTextureSide + x] = static_cast<float>(std::sin((dX + dY) * dWaves + dWinding));
        }
    }
    return aHeights;
}

std::vector<float> aTextureHeights(std::int32_t lTexture)
{
    constexpr double kDeviations[3] = {1.5, 3, 0.8};
    constexpr std::size_t kWaves[3] = {11, 6, 23};
    return lTexture < 3 ? aNoiseHeights(kDeviations[lTexture]) : aWaveHeights(kWaves[lTexture - 3]);
}

// The slopes towards the light, brought to the mean square that all textures share, times the brightness.
static std::vector<std::int32_t> aSlopes(double dAngle, double dBrightness, std::int32_t lTexture)
{
    constexpr double kMeanSquare = 5;
    const std::vector<float> aHeights = aTextureHeights(lTexture);
    const double dTurn = std::fmod(dAngle, 360) * std::numbers::pi / 180;
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
        const auto fnAdd = aImage.channels == 1   ? AddSlopes<1>
                           : aImage.channels == 3 ? AddSlopes<3>
                                                  : AddSlopes<4>;
        EachRows(aImage.height, nStride(aImage), [&](std::int32_t lFirst, std::int32_t lLast) {
            for (std::int32_t y = lFirst; y < lLast; ++y)
                fnAdd(pRow(aImage, y), static_cast<std::size_t>(aImage.width),
                      aLit.data() + (static_cast<std::size_t>(y) & kWrap) * kTextureSide);
        });
        return true;
    });
}

}  // namespace transforms

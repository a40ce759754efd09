// Says how good a JPEG 2000 picture of a quality is to be.
#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "src/platform/image/codecs/j2k/j2k.h"

static constexpr std::size_t kBlock = 8;  // pixels a side
static constexpr std::size_t kApart =
    16;                                  // pixels from block to block: a quarter of the picture is looked at
static constexpr double kStepAt50 = 24;  // levels
static constexpr double kHalfRoot = 0.70710678118654752;

using BlockOfLevels = std::array<std::array<double, kBlock>, kBlock>;

// How coarse the coefficients get, in levels: with the factor by which IJG's library scales its tables.
static double dStep(std::int32_t lQuality)
{
    const double dQuality = std::clamp(lQuality, 1, 99);
    return kStepAt50 * (dQuality < 50 ? 50 / dQuality : 2 - dQuality / 50);
}

static double dLightness(const std::uint8_t* pPixel, std::int32_t lChannels)
{
    return lChannels == 1 ? pPixel[0] : 0.114 * pPixel[0] + 0.587 * pPixel[1] + 0.299 * pPixel[2];
}

// Haar's transform, orthonormal, so that errors of coefficients are errors of pixels.
static void Transform(BlockOfLevels& aBlock)
{
    for (std::size_t n = kBlock; n > 1; n /= 2) {
        BlockOfLevels aHalf{};
        for (std::size_t y = 0; y < n; ++y)
            for (std::size_t x = 0; x < n / 2; ++x) {
                aHalf[y][x] = (aBlock[y][2 * x] + aBlock[y][2 * x + 1]) * kHalfRoot;
                aHalf[y][x + n / 2] = (aBlock[y][2 * x] - aBlock[y][2 * x + 1]) * kHalfRoot;
            }
        for (std::size_t y = 0; y < n / 2; ++y)
            for (std::size_t x = 0; x < n; ++x) {
                aBlock[y][x] = (aHalf[2 * y][x] + aHalf[2 * y + 1][x]) * kHalfRoot;
                aBlock[y + n / 2][x] = (aHalf[2 * y][x] - aHalf[2 * y + 1][x]) * kHalfRoot;
            }
    }
}

double dTargetPsnr(const ImageBuffer& aImage, std::int32_t lQuality)
{
    // A coefficient that is rounded is off by a twelfth of the squared step in the mean, or, if it is smaller
    // than that, by itself.
    const double dMost = dStep(lQuality) * dStep(lQuality) / 12;
    const auto nWidth = static_cast<std::size_t>(aImage.width),
               nHeight = static_cast<std::size_t>(aImage.height);
    double dSum = 0, dCount = 0;
    for (std::size_t y = 0; y < nHeight; y += kApart)
        for (std::size_t x = 0; x < nWidth; x += kApart) {
            BlockOfLevels aBlock;
            for (std::size_t i = 0; i < kBlock; ++i)
                for (std::size_t j = 0; j < kBlock; ++j) {
                    const std::size_t nPixel =
                        std::min(y + i, nHeight - 1) * nWidth + std::min(x + j, nWidth - 1);
                    aBlock[i][j] = dLightness(
                        &aImage.bytes[nPixel * static_cast<std::size_t>(aImage.channels)], aImage.channels);
                }
            Transform(aBlock);
            for (const auto& aRow : aBlock)
                for (const double dCoefficient : aRow)
                    dSum += std::min(dCoefficient * dCoefficient, dMost);
            dCount += kBlock * kBlock;
        }
    constexpr double kLeastError = 0.01;  // 68 dB: beyond what 8 bits can show
    return 10 * std::log10(255 * 255 / std::max(dSum / dCount, kLeastError));
}

// Noise and shuffling by sequences of random numbers, one a row, so that rows don't depend on each other.
#include "src/platform/image/transforms/noise.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <utility>

#include "src/platform/image/transforms/hidden.h"
#include "src/platform/image/transforms/kernel_support.h"

namespace transforms
{

namespace
{

constexpr std::size_t kBits = 12;
constexpr std::size_t kQuantiles = 1 << kBits;
using NoiseTable = std::array<std::int16_t, kQuantiles>;

// The value below which a Gaussian's share of 1 / 2 <= d < 1 lies: by Newton's method from the middle, where
// the steps only ever grow too short, never too long.
double dQuantile(double d)
{
    double x = 0;
    for (int i = 0; i < 60; ++i) {
        const double dError = 0.5 * std::erfc(-x / std::sqrt(2.0)) - d;
        x -= dError / (std::exp(-x * x / 2) / std::sqrt(2 * kPi));
        if (std::fabs(dError) < 1e-12)
            break;
    }
    return x;
}

NoiseTable aNoiseOf(std::int32_t lDeviation)
{
    NoiseTable aTable;
    for (std::size_t i = 0; i < kQuantiles / 2; ++i) {
        const double dNoise =
            dQuantile((static_cast<double>(kQuantiles / 2 + i) + 0.5) / static_cast<double>(kQuantiles));
        const auto nNoise = static_cast<std::int16_t>(std::lround(dNoise * lDeviation));
        aTable[kQuantiles / 2 + i] = nNoise;
        aTable[kQuantiles / 2 - 1 - i] = static_cast<std::int16_t>(-nNoise);
    }
    return aTable;
}

// Random numbers of a few bits, several out of each 64 bits.
class Dice
{
public:
    explicit Dice(std::uint64_t nState) : m_nState(nState) {}
    std::size_t nNext()
    {
        if (m_nLeft == 0) {
            m_nBits = nRandom(m_nState);
            m_nLeft = 64 / kBits;
        }
        --m_nLeft;
        const std::size_t n = m_nBits & (kQuantiles - 1);
        m_nBits >>= kBits;
        return n;
    }

private:
    std::uint64_t m_nState;
    std::uint64_t m_nBits = 0;
    std::size_t m_nLeft = 0;
};

void AddNoiseToRow(std::uint8_t* pPixel, std::int32_t lWidth, std::int32_t lChannels, bool bOneForAll,
                   const NoiseTable& aNoise, std::uint64_t nState)
{
    Dice objDice(nState);
    const std::int32_t lColours = lChannels == 1 ? 1 : 3;
    for (std::int32_t x = 0; x < lWidth; ++x, pPixel += lChannels) {
        std::int32_t lNoise = aNoise[objDice.nNext()];
        pPixel[0] = nLevel(pPixel[0] + lNoise);
        for (std::int32_t c = 1; c < lColours; ++c) {
            if (!bOneForAll)
                lNoise = aNoise[objDice.nNext()];
            pPixel[c] = nLevel(pPixel[c] + lNoise);
        }
    }
}

}  // namespace

bool AddNoise(ImageBuffer& aImage, std::int32_t lLevel, bool bMonochrome)
{
    if (lLevel <= 0)
        return true;
    return bGuarded([&] {
        const NoiseTable aNoise = aNoiseOf(std::min(lLevel, 1000));
        std::uint64_t nStart = nSeed(aImage);
        EachRows(aImage.lHeight, 4 * nStride(aImage), [&](std::int32_t lFirst, std::int32_t lLast) {
            for (std::int32_t y = lFirst; y < lLast; ++y) {
                std::uint64_t nState = nStart + static_cast<std::uint64_t>(y);
                nState = nRandom(nState);
                AddNoiseToRow(pRow(aImage, y), aImage.lWidth, aImage.lChannels, bMonochrome, aNoise, nState);
            }
        });
        return true;
    });
}

// Where a pixel is taken from, from 32 random bits: equally likely from -lDistance to lDistance.
static std::int32_t lMoved(std::uint64_t nBits, std::int32_t lDistance)
{
    return static_cast<std::int32_t>(
               ((nBits & 0xFFFFFFFFU) * (2 * static_cast<std::uint64_t>(lDistance) + 1)) >> 32) -
           lDistance;
}

bool Diffuse(ImageBuffer& aImage, std::int32_t lDistance, double dPenetration)
{
    if (lDistance <= 0 || !(dPenetration > 0))
        return true;
    return bAmongVisible(aImage, [&] {
        // The numbers that decide whether a pixel moves have 16 bits.
        const auto nMoving =
            static_cast<std::uint64_t>(std::lround((1 - std::exp(-dPenetration / 10)) * 65536));
        const std::int32_t lFar = std::min(lDistance, std::max(aImage.lWidth, aImage.lHeight));
        const std::uint64_t nStart = nSeed(aImage) ^ 0xD1FF05E;
        const auto nChannels = static_cast<std::size_t>(aImage.lChannels);
        ImageBuffer aResult = aLike(aImage);
        EachRows(aImage.lHeight, 4 * nStride(aImage), [&](std::int32_t lFirst, std::int32_t lLast) {
            for (std::int32_t y = lFirst; y < lLast; ++y) {
                std::uint64_t nState = nStart + static_cast<std::uint64_t>(y);
                nState = nRandom(nState);
                std::uint8_t* pTarget = pRow(aResult, y);
                std::memcpy(pTarget, pRow(aImage, y), nStride(aImage));
                for (std::int32_t x = 0; x < aImage.lWidth; ++x, pTarget += nChannels) {
                    const std::uint64_t nWhether = nRandom(nState);
                    if ((nWhether & 0xFFFF) >= nMoving)
                        continue;
                    const std::uint64_t nWhere = nRandom(nState);
                    const std::int32_t lX = std::clamp(x + lMoved(nWhere, lFar), 0, aImage.lWidth - 1);
                    const std::int32_t lY = std::clamp(y + lMoved(nWhere >> 32, lFar), 0, aImage.lHeight - 1);
                    const std::uint8_t* pFrom = pRow(aImage, lY) + static_cast<std::size_t>(lX) * nChannels;
                    for (std::size_t c = 0; c < (nChannels == 1 ? 1 : 3); ++c)
                        pTarget[c] = pFrom[c];
                }
            }
        });
        TakePixels(aImage, std::move(aResult));
        return true;
    });
}

}  // namespace transforms

// Noise and shuffling by sequences of random numbers, one a row, so that rows don't depend on each other.
#include "src/platform/image/transforms/effects/noise.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <numbers>
#include <utility>

#include "src/platform/image/transforms/rows/bands.h"
#include "src/platform/image/transforms/rows/clamping.h"
#include "src/platform/image/transforms/rows/hidden.h"
#include "src/platform/image/transforms/rows/new_pixels.h"
#include "src/platform/image/transforms/rows/picture_rows.h"
#include "src/platform/image/transforms/rows/seeded_random.h"

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
        x -= dError / (std::exp(-x * x / 2) / std::sqrt(2 * std::numbers::pi));
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
        EachRows(aImage.height, 4 * nStride(aImage), [&](std::int32_t lFirst, std::int32_t lLast) {
            for (std::int32_t y = lFirst; y < lLast; ++y) {
                std::uint64_t nState = nStart + static_cast<std::uint64_t>(y);
                nState = nRandom(nState);
                AddNoiseToRow(pRow(aImage, y), aImage.width, aImage.channels, bMonochrome, aNoise, nState);
            }
        });
        return true;
    });
}

// Where a pixel is taken from, from 24 random bits: equally likely from -lDistance to lDistance.
static std::int64_t nMoved(std::uint64_t nBits, std::uint64_t nDistance)
{
    return static_cast<std::int64_t>(((nBits & 0xFFFFFF) * (2 * nDistance + 1)) >> 24) -
           static_cast<std::int64_t>(nDistance);
}

struct Shuffling {
    std::uint64_t nDistance;
    std::uint64_t nMoving;  // how many of 65536 pixels move
};

template <std::size_t nChannels>
static void ShuffleRow(const ImageBuffer& aImage, std::int32_t y, const Shuffling& obj, std::uint64_t nState,
                       std::uint8_t* pTarget)
{
    const std::int64_t nRight = aImage.width - 1, nBottom = aImage.height - 1;
    const auto nRow = static_cast<std::int64_t>(nStride(aImage));
    const std::uint8_t* pBytes = aImage.bytes.data();
    for (std::int64_t x = 0; x <= nRight; ++x, pTarget += nChannels) {
        // One number for all: 16 bits say whether, 24 and 24 where. A factor takes the place of a jump, which
        // nobody could foresee.
        const std::uint64_t nBits = nRandom(nState);
        const std::int64_t nMoves = (nBits >> 48) < obj.nMoving ? 1 : 0;
        const std::int64_t nX =
            std::clamp<std::int64_t>(x + nMoves * nMoved(nBits, obj.nDistance), 0, nRight);
        const std::int64_t nY =
            std::clamp<std::int64_t>(y + nMoves * nMoved(nBits >> 24, obj.nDistance), 0, nBottom);
        const std::uint8_t* pFrom = pBytes + nY * nRow + nX * static_cast<std::int64_t>(nChannels);
        for (std::size_t c = 0; c < (nChannels == 1 ? 1 : 3); ++c)
            pTarget[c] = pFrom[c];
    }
}

bool Diffuse(ImageBuffer& aImage, std::int32_t lDistance, double dPenetration)
{
    if (lDistance <= 0 || !(dPenetration > 0))
        return true;
    return bAmongVisible(aImage, [&] {
        const Shuffling obj{
            static_cast<std::uint64_t>(std::min(lDistance, std::max(aImage.width, aImage.height))),
            static_cast<std::uint64_t>(std::lround((1 - std::exp(-dPenetration / 10)) * 65536))};
        const std::uint64_t nStart = nSeed(aImage) ^ 0xD1FF05E;
        const auto fnShuffle = aImage.channels == 1   ? ShuffleRow<1>
                               : aImage.channels == 3 ? ShuffleRow<3>
                                                      : ShuffleRow<4>;
        ImageBuffer aResult = aLike(aImage);
        EachRows(aImage.height, 4 * nStride(aImage), [&](std::int32_t lFirst, std::int32_t lLast) {
            for (std::int32_t y = lFirst; y < lLast; ++y) {
                std::uint64_t nState = nStart + static_cast<std::uint64_t>(y);
                nState = nRandom(nState);
                std::uint8_t* pTarget = pRow(aResult, y);
                for (std::size_t i = 3; aImage.channels == 4 && i < nStride(aImage); i += 4)
                    pTarget[i] = pRow(aImage, y)[i];
                fnShuffle(aImage, y, obj, nState, pTarget);
            }
        });
        TakePixels(aImage, std::move(aResult));
        return true;
    });
}

}  // namespace transforms

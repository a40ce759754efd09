// Error diffusion, four bands of the picture at a time.
#include "src/platform/image/quantiser/quantiser_dither.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <vector>

#include "src/platform/image/quantiser/quantiser_table.h"

// A pixel has to wait for the error of the one before, and the processor would idle meanwhile. So the picture
// is worked on in bands that know nothing of each other, two in the halves of one vector, and two such
// vectors in turn. Each band begins some rows above its first, without writing there, so that at the seam the
// errors are already what they are in the middle of a picture.
static constexpr std::int32_t kBands = 4;
static constexpr std::int32_t kLeadRows = 8;

// The most levels of error that a pixel takes over. Two colours of a palette of 256 are seldom farther apart
// than twice this, so that it hardly ever binds within the palette's reach.
static constexpr std::int16_t kMostError = 12;

using Lanes = std::int16_t __attribute__((vector_size(16)));  ///< B, G, R, A of a pixel of two bands
using Halves = std::uint64_t __attribute__((vector_size(16)));

static Lanes lnClamped(Lanes ln, std::int16_t nLow, std::int16_t nHigh)
{
    const Lanes lnLow = Lanes{} + nLow, lnHigh = Lanes{} + nHigh;
    ln = ln < lnLow ? lnLow : ln;
    return ln > lnHigh ? lnHigh : ln;
}

static Lanes lnPixels(const std::uint8_t* pFirst, const std::uint8_t* pSecond)
{
    using Loaded = std::uint8_t __attribute__((vector_size(8)));
    std::array<std::uint32_t, 2> aPixels{};
    std::memcpy(&aPixels[0], pFirst, 4);
    std::memcpy(&aPixels[1], pSecond, 4);
    Loaded vBytes;
    std::memcpy(&vBytes, aPixels.data(), 8);
    return __builtin_convertvector(vBytes, Lanes);
}

/// A row of two bands: where its pixels come from and its indexes go to, and the errors that the row above
/// left, which are replaced by those for the row below. aErrors has one element before the first pixel's and
/// one after the last.
struct RowPair {
    std::array<const std::uint8_t*, 2> aPixels;
    std::array<std::uint8_t*, 2> aIndexes;
    Lanes* aErrors;
};

struct Quantiser {
    std::vector<std::uint8_t> aNearest;
    std::array<std::uint64_t, 256> aColours{};  ///< B, G, R, 0 in 16 bits each
    std::uint8_t nTransparent = 0;
};

struct Running {
    Lanes lnRight{}, lnBelow{},
        lnAhead{};  ///< sixteenths of a level for the next pixel, for the one below, and ahead
};

template <std::int32_t nChannels>
static inline void TakePixel(const RowPair& objRow, std::int32_t x, std::int32_t nStep,
                             const Quantiser& objQuantiser, Running& objRunning)
{
    constexpr std::uint64_t kUpper = (std::uint64_t{1} << kTableBits) - 1;
    constexpr std::uint64_t kLane = kUpper << 32 | kUpper << 16 | kUpper;
    constexpr std::uint64_t kGather =
        std::uint64_t{1} << (32 + 2 * kTableBits) | std::uint64_t{1} << (16 + kTableBits) | 1;
    constexpr std::uint64_t kMask = (std::uint64_t{1} << 3 * kTableBits) - 1;
    const std::uint8_t* pFirst = objRow.aPixels[0] + std::ptrdiff_t{x} * nChannels;
    const std::uint8_t* pSecond = objRow.aPixels[1] + std::ptrdiff_t{x} * nChannels;
    Lanes* pError = objRow.aErrors + x;

    const Lanes lnTaken =
        lnClamped((*pError + objRunning.lnRight + std::int16_t{8}) >> 4, -kMostError, kMostError);
    const Lanes lnWanted = lnClamped(lnPixels(pFirst, pSecond) + lnTaken, 0, 255);
    // One product brings the upper bits of R, G and B together from bit 32 on.
    const Halves aCells = reinterpret_cast<Halves>(lnWanted >> (8 - kTableBits)) & kLane;
    std::uint8_t nFirst = objQuantiser.aNearest[aCells[0] * kGather >> 32 & kMask];
    std::uint8_t nSecond = objQuantiser.aNearest[aCells[1] * kGather >> 32 & kMask];
    const Halves aColours = {objQuantiser.aColours[nFirst], objQuantiser.aColours[nSecond]};
    Lanes lnError = lnWanted - reinterpret_cast<Lanes>(aColours);
    if constexpr (nChannels == 4) {
        const bool bFirst = pFirst[3] >= 128, bSecond = pSecond[3] >= 128;
        const Halves aOpaque = {bFirst ? ~std::uint64_t{0} : 0, bSecond ? ~std::uint64_t{0} : 0};
        lnError &= reinterpret_cast<Lanes>(aOpaque);
        nFirst = bFirst ? nFirst : objQuantiser.nTransparent;
        nSecond = bSecond ? nSecond : objQuantiser.nTransparent;
    }
    objRow.aIndexes[0][x] = nFirst;
    objRow.aIndexes[1][x] = nSecond;

    objRunning.lnRight = lnError * std::int16_t{7};
    pError[-nStep] = objRunning.lnBelow + lnError * std::int16_t{3};
    objRunning.lnBelow = objRunning.lnAhead + lnError * std::int16_t{5};
    objRunning.lnAhead = lnError;
}

template <std::int32_t nChannels>
static void TakeRow(const std::array<RowPair, 2>& aRows, std::int32_t nWidth, bool bBackwards,
                    const Quantiser& objQuantiser)
{
    const RowPair objFirst = aRows[0], objSecond = aRows[1];
    const std::int32_t nStep = bBackwards ? -1 : 1;
    std::int32_t x = bBackwards ? nWidth - 1 : 0;
    Running objRunningFirst, objRunningSecond;
    for (std::int32_t i = 0; i < nWidth; ++i, x += nStep) {
        TakePixel<nChannels>(objFirst, x, nStep, objQuantiser, objRunningFirst);
        TakePixel<nChannels>(objSecond, x, nStep, objQuantiser, objRunningSecond);
    }
    objFirst.aErrors[x - nStep] = objRunningFirst.lnBelow;
    objSecond.aErrors[x - nStep] = objRunningSecond.lnBelow;
}

PixelBytes aDithered(const ImageBuffer& aImage, std::span<const PaletteColour> aPalette,
                     std::int32_t nTransparent)
{
    Quantiser objQuantiser;
    objQuantiser.aNearest = aNearestTable(aPalette);
    objQuantiser.nTransparent = static_cast<std::uint8_t>(nTransparent);
    for (std::size_t i = 0; i < aPalette.size(); ++i)
        for (std::size_t c = 0; c < 3; ++c)
            objQuantiser.aColours[i] |= std::uint64_t{aPalette[i][c]} << (16 * c);

    const auto nWidth = static_cast<std::size_t>(aImage.width);
    const std::size_t nRowBytes = nWidth * static_cast<std::size_t>(aImage.channels);
    // A pixel is loaded as four bytes, which for the last one of three would be beyond the picture's end.
    PixelBytes aLastRow(aImage.bytes.end() - static_cast<std::ptrdiff_t>(nRowBytes), aImage.bytes.end());
    aLastRow.push_back(0);
    PixelBytes aNowhere(nWidth);
    PixelBytes aIndexes(nWidth * static_cast<std::size_t>(aImage.height));
    std::vector<Lanes> aErrors(2 * (nWidth + 2));

    const std::int32_t lBandRows = (aImage.height + kBands - 1) / kBands;
    for (std::int32_t lRow = -kLeadRows; lRow < lBandRows; ++lRow) {
        std::array<RowPair, 2> aRows{};
        for (std::int32_t lBand = 0; lBand < kBands; ++lBand) {
            RowPair& objRow = aRows[static_cast<std::size_t>(lBand / 2)];
            const std::int32_t y = std::clamp(lBand * lBandRows + lRow, 0, aImage.height - 1);
            const bool bWanted = lRow >= 0 && lBand * lBandRows + lRow < aImage.height;
            const auto nHalf = static_cast<std::size_t>(lBand % 2);
            const auto nRow = static_cast<std::size_t>(y);
            objRow.aPixels[nHalf] =
                y == aImage.height - 1 ? aLastRow.data() : aImage.bytes.data() + nRow * nRowBytes;
            objRow.aIndexes[nHalf] = bWanted ? aIndexes.data() + nRow * nWidth : aNowhere.data();
            objRow.aErrors = aErrors.data() + static_cast<std::size_t>(lBand / 2) * (nWidth + 2) + 1;
        }
        const bool bBackwards = (lRow & 1) != 0;
        if (aImage.channels == 4)
            TakeRow<4>(aRows, aImage.width, bBackwards, objQuantiser);
        else
            TakeRow<3>(aRows, aImage.width, bBackwards, objQuantiser);
    }
    return aIndexes;
}

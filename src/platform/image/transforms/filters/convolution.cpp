// Working on a picture by each pixel's 3 x 3 neighbourhood.
#include "src/platform/image/transforms/filters/convolution.h"

#include <algorithm>
#include <cstring>

#include "src/platform/image/transforms/rows/bands.h"
#include "src/platform/image/transforms/rows/hidden.h"
#include "src/platform/image/transforms/rows/row_loop.h"

namespace transforms
{

// A band works in place: it holds the last three rows as they were, and, from before any band began, the row
// above its first and the one below its last, which belong to other bands.
class BandRows
{
public:
    static constexpr std::size_t kRows = 5;
    static std::size_t nPadded(const ImageBuffer& aImage)
    {
        return (static_cast<std::size_t>(aImage.width) + 2) * static_cast<std::size_t>(aImage.channels);
    }

    BandRows(const ImageBuffer& aImage, std::uint8_t* pMemory)
        : m_aImage(aImage), m_pMemory(pMemory), m_nPadded(nPadded(aImage))
    {
    }
    // To be called before the picture is changed.
    void KeepBorders(std::int32_t lFirst, std::int32_t lEnd)
    {
        Load(3, std::max(lFirst - 1, 0));
        Load(4, std::min(lEnd, m_aImage.height - 1));
    }
    void Begin(std::int32_t lFirst, std::int32_t lEnd)
    {
        m_lEnd = lEnd;
        std::memcpy(pSlot(nSlot(lFirst - 1)), pSlot(3), m_nPadded);
        Load(nSlot(lFirst), lFirst);
    }
    // The rows y - 1 to y + 1; in ascending order of y only, and before row y is written.
    std::array<const std::uint8_t*, 3> aAround(std::int32_t y)
    {
        if (y + 1 < m_lEnd)
            Load(nSlot(y + 1), y + 1);
        else
            std::memcpy(pSlot(nSlot(y + 1)), pSlot(4), m_nPadded);
        const auto nChannels = static_cast<std::size_t>(m_aImage.channels);
        return {pSlot(nSlot(y - 1)) + nChannels, pSlot(nSlot(y)) + nChannels,
                pSlot(nSlot(y + 1)) + nChannels};
    }

private:
    static std::size_t nSlot(std::int32_t y) { return static_cast<std::size_t>((y + 3) % 3); }
    std::uint8_t* pSlot(std::size_t nRow) { return m_pMemory + nRow * m_nPadded; }
    void Load(std::size_t nRow, std::int32_t y)
    {
        const auto nChannels = static_cast<std::size_t>(m_aImage.channels);
        const std::size_t nBytes = m_nPadded - 2 * nChannels;
        const std::uint8_t* pRow = m_aImage.bytes.data() + nBytes * static_cast<std::size_t>(y);
        std::memcpy(pSlot(nRow), pRow, nChannels);
        std::memcpy(pSlot(nRow) + nChannels, pRow, nBytes);
        std::memcpy(pSlot(nRow) + nChannels + nBytes, pRow + nBytes - nChannels, nChannels);
    }

    const ImageBuffer& m_aImage;
    std::uint8_t* m_pMemory;
    std::size_t m_nPadded;
    std::int32_t m_lEnd = 0;
};

bool FilterNeighbourhoods(ImageBuffer& aImage, const NeighbourhoodRow& fnRow)
{
    const std::size_t nCount = nBands(aImage);
    const std::size_t nBandBytes = BandRows::kRows * BandRows::nPadded(aImage);
    const auto nChannels = static_cast<std::size_t>(aImage.channels);
    const std::size_t nRowBytes = static_cast<std::size_t>(aImage.width) * nChannels;
    PixelBytes aMemory;
    const auto fnWork = [&](std::size_t nBand, std::int32_t lFirst, std::int32_t lEnd) {
        BandRows objRows(aImage, aMemory.data() + nBand * nBandBytes);
        objRows.Begin(lFirst, lEnd);
        for (std::int32_t y = lFirst; y < lEnd; ++y) {
            const auto aRows = objRows.aAround(y);
            std::uint8_t* pTarget = aImage.bytes.data() + nRowBytes * static_cast<std::size_t>(y);
            fnRow(aRows, nRowBytes, nChannels, pTarget);
            for (std::size_t i = 3; nChannels == 4 && i < nRowBytes; i += 4)
                pTarget[i] = aRows[1][i];
        }
    };
    return bAmongVisible(aImage, [&] {
        aMemory.resize(nCount * nBandBytes);
        // No band begins before the borders of all are kept, and these come one after the other.
        for (std::size_t nBand = 0; nBand < nCount; ++nBand)
            BandRows(aImage, aMemory.data() + nBand * nBandBytes)
                .KeepBorders(lBandRow(aImage, nCount, nBand), lBandRow(aImage, nCount, nBand + 1));
        RunBands(aImage, nCount, std::ref(fnWork));
        return true;
    });
}

struct Neighbours {
    const std::uint8_t *pAbove, *pOwn, *pBelow;
    std::size_t nCount, nChannels;
};

template <Shown enShown>
ROW_LOOP_PART static void ConvolveRow(const Neighbours& obj, const Weights& w, std::uint32_t nHalf,
                                      std::uint32_t nReciprocal, std::uint8_t* __restrict pTarget)
{
    const std::uint8_t* __restrict a = obj.pAbove - obj.nChannels;
    const std::uint8_t* __restrict m = obj.pOwn - obj.nChannels;
    const std::uint8_t* __restrict b = obj.pBelow - obj.nChannels;
    const std::size_t c = obj.nChannels, nCount = obj.nCount;
    const std::int16_t w0 = w[0], w1 = w[1], w2 = w[2], w3 = w[3], w4 = w[4], w5 = w[5], w6 = w[6], w7 = w[7],
                       w8 = w[8];
    for (std::size_t i = 0; i < nCount; ++i) {
        const auto nSum = static_cast<std::int16_t>(w0 * a[i] + w1 * a[i + c] + w2 * a[i + 2 * c] +
                                                    w3 * m[i] + w4 * m[i + c] + w5 * m[i + 2 * c] +
                                                    w6 * b[i] + w7 * b[i + c] + w8 * b[i + 2 * c]);
        if constexpr (enShown == Shown::Clipped) {
            const std::int16_t nLow = nSum < 0 ? std::int16_t{0} : nSum;
            pTarget[i] = static_cast<std::uint8_t>(nLow > 255 ? std::int16_t{255} : nLow);
        } else {
            const auto nAmount = static_cast<std::uint16_t>(nSum < 0 ? -nSum : nSum);
            const auto nShare = static_cast<std::uint16_t>(
                nReciprocal == 0 ? nAmount : ((nAmount + nHalf) * nReciprocal) >> 16);
            pTarget[i] = static_cast<std::uint8_t>(nShare > 255 ? std::uint16_t{255} : nShare);
        }
    }
}

ROW_LOOP static void ClippedRow(const Neighbours& obj, const Weights& w, std::uint8_t* __restrict pTarget)
{
    ConvolveRow<Shown::Clipped>(obj, w, 0, 0, pTarget);
}

ROW_LOOP static void MagnitudeRow(const Neighbours& obj, const Weights& w, std::uint8_t* __restrict pTarget)
{
    ConvolveRow<Shown::Magnitude>(obj, w, 0, 0, pTarget);
}

ROW_LOOP static void DividedRow(const Neighbours& obj, const Weights& w, std::uint16_t nDivisor,
                                std::uint8_t* __restrict pTarget)
{
    // Exact as long as the quotient is below 256: (sum + half) / 65536 stays below 1 / divisor.
    const std::uint32_t nReciprocal = (65535U + nDivisor) / nDivisor;
    ConvolveRow<Shown::Magnitude>(obj, w, nDivisor / 2U, nReciprocal, pTarget);
}

bool Convolve(ImageBuffer& aImage, const Weights& aWeights, Shown enShown, std::uint16_t nDivisor)
{
    const auto fnRow = [&](const std::array<const std::uint8_t*, 3>& aRows, std::size_t nCount,
                           std::size_t nChannels, std::uint8_t* pTarget) {
        const Neighbours obj{aRows[0], aRows[1], aRows[2], nCount, nChannels};
        if (enShown == Shown::Clipped)
            ClippedRow(obj, aWeights, pTarget);
        else if (nDivisor == 1)
            MagnitudeRow(obj, aWeights, pTarget);
        else
            DividedRow(obj, aWeights, nDivisor, pTarget);
    };
    return FilterNeighbourhoods(aImage, std::ref(fnRow));
}

ROW_LOOP static void FineRow(const Neighbours& obj, std::int32_t nCentre, std::int32_t nSide,
                             std::int32_t nCorner, std::uint8_t* __restrict pTarget)
{
    const std::uint8_t* __restrict a = obj.pAbove - obj.nChannels;
    const std::uint8_t* __restrict m = obj.pOwn - obj.nChannels;
    const std::uint8_t* __restrict b = obj.pBelow - obj.nChannels;
    const std::size_t c = obj.nChannels, nCount = obj.nCount;
    for (std::size_t i = 0; i < nCount; ++i) {
        const std::int32_t nSides = a[i + c] + m[i] + m[i + 2 * c] + b[i + c];
        const std::int32_t nCorners = a[i] + a[i + 2 * c] + b[i] + b[i + 2 * c];
        const std::int32_t nSum = (nCentre * m[i + c] + nSide * nSides + nCorner * nCorners + 32768) >> 16;
        const std::int32_t nLow = nSum < 0 ? 0 : nSum;
        pTarget[i] = static_cast<std::uint8_t>(nLow > 255 ? 255 : nLow);
    }
}

bool ConvolveFine(ImageBuffer& aImage, std::int32_t nCentre, std::int32_t nSide, std::int32_t nCorner)
{
    const auto fnRow = [=](const std::array<const std::uint8_t*, 3>& aRows, std::size_t nCount,
                           std::size_t nChannels, std::uint8_t* pTarget) {
        FineRow({aRows[0], aRows[1], aRows[2], nCount, nChannels}, nCentre, nSide, nCorner, pTarget);
    };
    return FilterNeighbourhoods(aImage, std::ref(fnRow));
}

}  // namespace transforms

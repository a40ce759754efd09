// Finds a palette by cutting the colour cube where that lowers the variance most.
#include "src/platform/image/quantiser/quantiser_palette.h"

#include <algorithm>
#include <array>
#include <cstring>

// The cube is counted in cells of 8 levels a side.
static constexpr std::size_t kSide = 32;
static constexpr std::size_t kCells = kSide * kSide * kSide;
static constexpr int kRounds = 4;

static constexpr std::int32_t kFarAway = 1000;  // levels: what fills the places of colours that there aren't

using Colour = std::array<std::int32_t, 3>;  ///< B, G, R

struct CellSums {
    std::uint64_t nCount = 0;
    std::array<std::uint64_t, 3> aSums{};  ///< of the pixels' B, G and R
};

struct Cell {
    double dCount;
    Colour aMean;
};

static std::size_t CellOf(std::uint32_t nColour)
{
    return (nColour >> 9 & 0x7C00) | (nColour >> 6 & 0x3E0) | (nColour >> 3 & 0x1F);
}

// A cell's count and the sums of the three low bits of its pixels are added up in one number of four 16-bit
// fields, which is emptied into the wide sums before a field can overflow.
static void EmptyPacked(std::uint64_t& nPacked, std::size_t nCell, CellSums& objSums)
{
    const std::uint64_t nCount = nPacked >> 48;
    objSums.nCount += nCount;
    for (std::size_t c = 0; c < 3; ++c) {
        const std::uint64_t nBase = (nCell >> (5 * c) & 31) * 8;
        objSums.aSums[c] += nCount * nBase + (nPacked >> (16 * c) & 0xFFFF);
    }
    nPacked = 0;
}

template <std::size_t nChannels>
static std::vector<CellSums> aHistogram(const PixelBytes& aBytes)
{
    std::vector<std::uint64_t> aPacked(kCells);
    std::vector<CellSums> aSums(kCells);
    const std::uint8_t* pEnd = aBytes.data() + aBytes.size();
    for (const std::uint8_t* p = aBytes.data(); p != pEnd; p += nChannels) {
        if (nChannels == 4 && p[3] < 128)
            continue;
        const std::uint32_t nColour =
            p[0] | static_cast<std::uint32_t>(p[1]) << 8 | static_cast<std::uint32_t>(p[2]) << 16;
        const std::size_t nCell = CellOf(nColour);
        const std::uint64_t nLow = nColour & 0x070707;
        aPacked[nCell] += std::uint64_t{1} << 48 | (nLow & 7) | (nLow & 0x700) << 8 | (nLow & 0x70000) << 16;
        if (aPacked[nCell] >> 61 != 0)
            EmptyPacked(aPacked[nCell], nCell, aSums[nCell]);
    }
    for (std::size_t i = 0; i < kCells; ++i)
        if (aPacked[i] != 0)
            EmptyPacked(aPacked[i], i, aSums[i]);
    return aSums;
}

// Sums over all cells from the cube's corner up to a cell, so that those of any box come from its eight
// corners.
struct Moments {
    double dCount = 0;
    std::array<double, 3> aSums{};
    double dSquares = 0;

    Moments& Add(const Moments& o, double dSign)
    {
        dCount += dSign * o.dCount;
        for (std::size_t c = 0; c < 3; ++c)
            aSums[c] += dSign * o.aSums[c];
        dSquares += dSign * o.dSquares;
        return *this;
    }
    double SumsSquaredPerCount() const
    {
        if (dCount <= 0)
            return 0;
        return (aSums[0] * aSums[0] + aSums[1] * aSums[1] + aSums[2] * aSums[2]) / dCount;
    }
    double Variance() const { return std::max(0.0, dSquares - SumsSquaredPerCount()); }
};

// The cells with aLow < cell <= aHigh along each axis, counted from 1.
struct Box {
    std::array<std::size_t, 3> aLow{};
    std::array<std::size_t, 3> aHigh{};
    double dVariance = 0;
};

class Cube
{
public:
    explicit Cube(const std::vector<CellSums>& aSums);
    Moments Of(const Box& objBox) const;
    /// Cuts objBox in two where the variance within falls most; False if it can't be cut.
    bool Cut(Box& objBox, Box& objOther) const;

private:
    static std::size_t At(std::size_t b, std::size_t g, std::size_t r)
    {
        return (r * (kSide + 1) + g) * (kSide + 1) + b;
    }
    std::vector<Moments> m_aUpTo;
};

Cube::Cube(const std::vector<CellSums>& aSums) : m_aUpTo((kSide + 1) * (kSide + 1) * (kSide + 1))
{
    for (std::size_t r = 1; r <= kSide; ++r)
        for (std::size_t g = 1; g <= kSide; ++g)
            for (std::size_t b = 1; b <= kSide; ++b) {
                const CellSums& objCell = aSums[((r - 1) * kSide + g - 1) * kSide + b - 1];
                Moments& m = m_aUpTo[At(b, g, r)];
                if (objCell.nCount > 0) {
                    m.dCount = static_cast<double>(objCell.nCount);
                    for (std::size_t c = 0; c < 3; ++c)
                        m.aSums[c] = static_cast<double>(objCell.aSums[c]);
                    m.dSquares = m.SumsSquaredPerCount();
                }
            }
    for (std::size_t r = 1; r <= kSide; ++r)
        for (std::size_t g = 1; g <= kSide; ++g)
            for (std::size_t b = 1; b <= kSide; ++b)
                m_aUpTo[At(b, g, r)].Add(m_aUpTo[At(b - 1, g, r)], 1);
    for (std::size_t r = 1; r <= kSide; ++r)
        for (std::size_t g = 1; g <= kSide; ++g)
            for (std::size_t b = 1; b <= kSide; ++b)
                m_aUpTo[At(b, g, r)].Add(m_aUpTo[At(b, g - 1, r)], 1);
    for (std::size_t r = 1; r <= kSide; ++r)
        for (std::size_t g = 1; g <= kSide; ++g)
            for (std::size_t b = 1; b <= kSide; ++b)
                m_aUpTo[At(b, g, r)].Add(m_aUpTo[At(b, g, r - 1)], 1);
}

Moments Cube::Of(const Box& objBox) const
{
    Moments objSum;
    for (unsigned nCorner = 0; nCorner < 8; ++nCorner) {
        const auto nAt = [&](std::size_t c) {
            return (nCorner >> c & 1) != 0 ? objBox.aHigh[c] : objBox.aLow[c];
        };
        const bool bPlus = ((nCorner ^ nCorner >> 1 ^ nCorner >> 2) & 1) != 0;
        objSum.Add(m_aUpTo[At(nAt(0), nAt(1), nAt(2))], bPlus ? 1 : -1);
    }
    return objSum;
}

bool Cube::Cut(Box& objBox, Box& objOther) const
{
    const Moments objWhole = Of(objBox);
    double dBest = 0;
    std::size_t nBestAxis = 3;
    std::size_t nBestAt = 0;
    for (std::size_t nAxis = 0; nAxis < 3; ++nAxis) {
        Box objHalf = objBox;
        for (std::size_t nAt = objBox.aLow[nAxis] + 1; nAt < objBox.aHigh[nAxis]; ++nAt) {
            objHalf.aHigh[nAxis] = nAt;
            const Moments objLow = Of(objHalf);
            Moments objHigh = objWhole;
            objHigh.Add(objLow, -1);
            if (objLow.dCount < 0.5 || objHigh.dCount < 0.5)
                continue;
            const double dGain = objLow.SumsSquaredPerCount() + objHigh.SumsSquaredPerCount();
            if (dGain > dBest) {
                dBest = dGain;
                nBestAxis = nAxis;
                nBestAt = nAt;
            }
        }
    }
    if (nBestAxis == 3)
        return false;
    objOther = objBox;
    objBox.aHigh[nBestAxis] = nBestAt;
    objOther.aLow[nBestAxis] = nBestAt;
    objBox.dVariance = Of(objBox).Variance();
    objOther.dVariance = Of(objOther).Variance();
    return true;
}

static std::vector<Colour> aCutColours(const std::vector<CellSums>& aSums, std::size_t nColours)
{
    const Cube objCube(aSums);
    std::vector<Box> aBoxes(1);
    aBoxes[0].aHigh.fill(kSide);
    aBoxes[0].dVariance = objCube.Of(aBoxes[0]).Variance();
    while (aBoxes.size() < nColours) {
        const auto itWidest = std::max_element(aBoxes.begin(), aBoxes.end(), [](const Box& a, const Box& b) {
            return a.dVariance < b.dVariance;
        });
        if (itWidest->dVariance <= 0)
            break;
        Box objOther;
        if (objCube.Cut(*itWidest, objOther))
            aBoxes.push_back(objOther);
        else
            itWidest->dVariance = 0;
    }
    std::vector<Colour> aColours;
    for (const Box& objBox : aBoxes) {
        const Moments m = objCube.Of(objBox);
        if (m.dCount < 0.5)
            continue;
        Colour aMean{};
        for (std::size_t c = 0; c < 3; ++c)
            aMean[c] = static_cast<std::int32_t>(m.aSums[c] / m.dCount + 0.5);
        aColours.push_back(aMean);
    }
    return aColours;
}

// Distance and index in one number, so that the nearest colour is a plain minimum, which compilers turn into
// vectors.
__attribute__((target_clones("avx2", "default"))) static std::int32_t nNearest(
    const std::int32_t* pB, const std::int32_t* pG, const std::int32_t* pR, std::int32_t nB, std::int32_t nG,
    std::int32_t nR)
{
    std::int32_t nBest = INT32_MAX;
    for (std::int32_t i = 0; i < 256; ++i) {
        const std::int32_t b = pB[i] - nB, g = pG[i] - nG, r = pR[i] - nR;
        nBest = std::min(nBest, (b * b + g * g + r * r) << 8 | i);
    }
    return nBest & 255;
}

// k-means: each cell goes to its nearest colour, each colour from nFixed on to the mean of its cells.
static void Refine(const std::vector<Cell>& aCells, std::vector<Colour>& aColours, std::size_t nFixed)
{
    std::array<std::array<std::int32_t, 256>, 3> aPlanes;
    for (int nRound = 0; nRound < kRounds; ++nRound) {
        for (std::size_t c = 0; c < 3; ++c)
            for (std::size_t i = 0; i < 256; ++i)
                aPlanes[c][i] = i < aColours.size() ? aColours[i][c] : kFarAway;
        std::array<std::array<double, 4>, 256> aSums{};
        for (const Cell& objCell : aCells) {
            const std::int32_t nColour = nNearest(aPlanes[0].data(), aPlanes[1].data(), aPlanes[2].data(),
                                                  objCell.aMean[0], objCell.aMean[1], objCell.aMean[2]);
            std::array<double, 4>& aSum = aSums[static_cast<std::size_t>(nColour)];
            for (std::size_t c = 0; c < 3; ++c)
                aSum[c] += objCell.dCount * objCell.aMean[c];
            aSum[3] += objCell.dCount;
        }
        for (std::size_t i = nFixed; i < aColours.size(); ++i)
            for (std::size_t c = 0; c < 3 && aSums[i][3] > 0; ++c)
                aColours[i][c] = static_cast<std::int32_t>(aSums[i][c] / aSums[i][3] + 0.5);
    }
}

std::vector<PaletteColour> aFittedPalette(const ImageBuffer& aImage, const std::vector<FlatColour>& aFlats,
                                          std::size_t nColours)
{
    std::vector<CellSums> aSums =
        aImage.channels == 4 ? aHistogram<4>(aImage.bytes) : aHistogram<3>(aImage.bytes);
    std::vector<Colour> aColours;
    for (const FlatColour& objFlat : aFlats) {
        const PaletteColour& aColour = objFlat.aColour;
        aColours.push_back({aColour[0], aColour[1], aColour[2]});
        CellSums& objSums = aSums[CellOf(aColour[0] | static_cast<std::uint32_t>(aColour[1]) << 8 |
                                         static_cast<std::uint32_t>(aColour[2]) << 16)];
        objSums.nCount -= objFlat.nPixels;
        for (std::size_t c = 0; c < 3; ++c)
            objSums.aSums[c] -= objFlat.nPixels * aColour[c];
    }
    std::vector<Cell> aCells;
    for (const CellSums& objSums : aSums)
        if (objSums.nCount > 0) {
            Cell objCell{static_cast<double>(objSums.nCount), {}};
            for (std::size_t c = 0; c < 3; ++c)
                objCell.aMean[c] =
                    static_cast<std::int32_t>((objSums.aSums[c] + objSums.nCount / 2) / objSums.nCount);
            aCells.push_back(objCell);
        }
    if (!aCells.empty()) {
        const std::vector<Colour> aCut = aCutColours(aSums, nColours - aFlats.size());
        aColours.insert(aColours.end(), aCut.begin(), aCut.end());
        Refine(aCells, aColours, aFlats.size());
    }
    std::vector<PaletteColour> aPalette;
    for (const Colour& aColour : aColours)
        aPalette.push_back({static_cast<std::uint8_t>(aColour[0]), static_cast<std::uint8_t>(aColour[1]),
                            static_cast<std::uint8_t>(aColour[2])});
    return aPalette;
}

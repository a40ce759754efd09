// Fills the table of nearest palette colours cube by cube.
#include "src/platform/image/quantiser/quantiser_table.h"

#include <algorithm>
#include <array>
#include <limits>

// All in levels. A table cell has 4 a side; most colours are ruled out for cubes of 64 and then of 16 at
// once.
static constexpr std::int32_t kCell = 256 >> kTableBits;
static constexpr std::int32_t kSmallCube = 4 * kCell;
static constexpr std::int32_t kLargeCube = 4 * kSmallCube;

using Point = std::array<std::int32_t, 3>;
using FourCells = std::int32_t __attribute__((vector_size(16)));

// Of the colours aFrom, those that can be nearest to the middle of some cell of the cube at aFirst: their
// least distance to the cube is not above the smallest of the greatest distances.
static std::vector<std::uint8_t> aCandidates(std::span<const PaletteColour> aPalette,
                                             const std::vector<std::uint8_t>& aFrom, const Point& aFirst,
                                             std::int32_t nSide)
{
    std::array<std::int32_t, 256> aLeast{};
    std::int32_t nLimit = std::numeric_limits<std::int32_t>::max();
    for (std::size_t i = 0; i < aFrom.size(); ++i) {
        std::int32_t nGreatest = 0;
        for (std::size_t c = 0; c < 3; ++c) {
            const std::int32_t nLow = aFirst[c] + kCell / 2, nHigh = aFirst[c] + nSide - kCell / 2;
            const std::int32_t nColour = aPalette[aFrom[i]][c];
            const std::int32_t nInside = nColour - std::clamp(nColour, nLow, nHigh);
            const std::int32_t nFar = std::max(nColour - nLow, nHigh - nColour);
            aLeast[i] += nInside * nInside;
            nGreatest += nFar * nFar;
        }
        nLimit = std::min(nLimit, nGreatest);
    }
    std::vector<std::uint8_t> aFound;
    for (std::size_t i = 0; i < aFrom.size(); ++i)
        if (aLeast[i] <= nLimit)
            aFound.push_back(aFrom[i]);
    return aFound;
}

static FourCells vSquares(std::int32_t nColour, std::int32_t nFirst)
{
    const std::int32_t n = nFirst + kCell / 2 - nColour;
    const FourCells v = {n, n + kCell, n + 2 * kCell, n + 3 * kCell};
    return v * v;
}

// The 64 cells of a small cube. Distance and index are one number, so that the nearest colour is a plain
// minimum.
static void FillSmallCube(std::span<const PaletteColour> aPalette, const std::vector<std::uint8_t>& aFound,
                          const Point& aFirst, std::vector<std::uint8_t>& aTable)
{
    std::array<FourCells, 16> aNearest;
    aNearest.fill(FourCells{} + std::numeric_limits<std::int32_t>::max());
    for (const std::uint8_t i : aFound) {
        const FourCells vB = vSquares(aPalette[i][0], aFirst[0]), vG = vSquares(aPalette[i][1], aFirst[1]);
        const FourCells vR = vSquares(aPalette[i][2], aFirst[2]);
        for (std::size_t nRow = 0; nRow < 16; ++nRow) {
            const FourCells vHere = (vR + (vB[nRow / 4] + vG[nRow % 4])) * 256 + i;
            aNearest[nRow] = vHere < aNearest[nRow] ? vHere : aNearest[nRow];
        }
    }
    for (std::size_t nRow = 0; nRow < 16; ++nRow) {
        const std::size_t nB = static_cast<std::size_t>(aFirst[0] / kCell) + nRow / 4;
        const std::size_t nG = static_cast<std::size_t>(aFirst[1] / kCell) + nRow % 4;
        const std::size_t nR = static_cast<std::size_t>(aFirst[2] / kCell);
        for (std::size_t i = 0; i < 4; ++i)
            aTable[(nB << kTableBits | nG) << kTableBits | (nR + i)] =
                static_cast<std::uint8_t>(aNearest[nRow][i]);
    }
}

template <typename Visit>
static void ForCubes(const Point& aFirst, std::int32_t nSide, std::int32_t nStep, const Visit& fnVisit)
{
    for (std::int32_t b = aFirst[0]; b < aFirst[0] + nSide; b += nStep)
        for (std::int32_t g = aFirst[1]; g < aFirst[1] + nSide; g += nStep)
            for (std::int32_t r = aFirst[2]; r < aFirst[2] + nSide; r += nStep)
                fnVisit(Point{b, g, r});
}

std::vector<std::uint8_t> aNearestTable(std::span<const PaletteColour> aPalette)
{
    std::vector<std::uint8_t> aTable(std::size_t{1} << 3 * kTableBits);
    std::vector<std::uint8_t> aAll(aPalette.size());
    for (std::size_t i = 0; i < aAll.size(); ++i)
        aAll[i] = static_cast<std::uint8_t>(i);
    ForCubes({0, 0, 0}, 256, kLargeCube, [&](const Point& aLarge) {
        const auto aFew = aCandidates(aPalette, aAll, aLarge, kLargeCube);
        ForCubes(aLarge, kLargeCube, kSmallCube, [&](const Point& aSmall) {
            FillSmallCube(aPalette, aCandidates(aPalette, aFew, aSmall, kSmallCube), aSmall, aTable);
        });
    });
    return aTable;
}

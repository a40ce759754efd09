// Colours for hidden pixels, from means of squares that double from level to level.
#include "src/platform/image/transforms/rows/hidden.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "src/platform/image/transforms/rows/picture_rows.h"

namespace transforms
{

namespace
{

using Cell = std::array<std::uint8_t, 4>;  // blue, green, red; and 0 where nothing of it is visible

struct Level {
    std::size_t nWidth, nHeight;
    std::vector<Cell> aCells;
};

// The mean of those of four cells that have any; nWeight gives each its part.
template <typename Weight>
Cell aMean(const std::array<const std::uint8_t*, 4>& aQuarters, const Weight& nWeight)
{
    std::uint32_t aWeights[4], nAll = 0, nAny = 0;
    for (std::size_t i = 0; i < 4; ++i) {
        aWeights[i] = aQuarters[i] ? nWeight(aQuarters[i][3]) : 0U;
        nAll += aWeights[i];
        nAny |= aWeights[i] ^ aWeights[0];
    }
    if (nAll == 0)
        return {0, 0, 0, 0};
    Cell aResult{0, 0, 0, 255};
    for (std::size_t c = 0; c < 3; ++c) {
        std::uint32_t nSum = 0;
        if (nAny == 0) {  // all weigh the same, as nearly everywhere
            for (const std::uint8_t* p : aQuarters)
                nSum += p[c];
            aResult[c] = static_cast<std::uint8_t>((nSum + 2) / 4);
            continue;
        }
        for (std::size_t i = 0; i < 4; ++i)
            nSum += aWeights[i] > 0 ? aWeights[i] * aQuarters[i][c] : 0U;
        aResult[c] = static_cast<std::uint8_t>((nSum + nAll / 2) / nAll);
    }
    return aResult;
}

// fnAt gives the cell or pixel at a place.
template <typename At, typename Weight>
Level objHalved(std::size_t nWidth, std::size_t nHeight, const At& fnAt, const Weight& nWeight)
{
    Level objLevel{(nWidth + 1) / 2, (nHeight + 1) / 2, {}};
    objLevel.aCells.resize(objLevel.nWidth * objLevel.nHeight);
    const auto fnInside = [&](std::size_t x, std::size_t y) {
        return x < nWidth && y < nHeight ? fnAt(x, y) : nullptr;
    };
    for (std::size_t y = 0; y < objLevel.nHeight; ++y)
        for (std::size_t x = 0; x < objLevel.nWidth; ++x)
            objLevel.aCells[y * objLevel.nWidth + x] =
                aMean({fnInside(2 * x, 2 * y), fnInside(2 * x + 1, 2 * y), fnInside(2 * x, 2 * y + 1),
                       fnInside(2 * x + 1, 2 * y + 1)},
                      nWeight);
    return objLevel;
}

// Each next level has half the width and height of the last; the last of all is one cell.
std::vector<Level> aLevels(const ImageBuffer& aImage)
{
    std::vector<Level> aResult;
    aResult.push_back(objHalved(
        static_cast<std::size_t>(aImage.width), static_cast<std::size_t>(aImage.height),
        [&](std::size_t x, std::size_t y) { return pRow(aImage, static_cast<std::int32_t>(y)) + 4 * x; },
        [](std::uint8_t nAlpha) { return std::uint32_t{nAlpha}; }));
    while (aResult.back().aCells.size() > 1) {
        const Level& objLast = aResult.back();
        aResult.push_back(objHalved(
            objLast.nWidth, objLast.nHeight,
            [&](std::size_t x, std::size_t y) { return objLast.aCells[y * objLast.nWidth + x].data(); },
            [](std::uint8_t nAny) { return nAny ? 1U : 0U; }));
    }
    return aResult;
}

std::size_t nHidden(const ImageBuffer& aImage)
{
    std::size_t nFound = 0;
    for (std::size_t i = 3; aImage.channels == 4 && i < aImage.bytes.size(); i += 4)
        nFound += aImage.bytes[i] == 0;
    return nFound;
}

}  // namespace

HiddenColours::HiddenColours(ImageBuffer& aImage) : m_aImage(aImage)
{
    const std::size_t nCount = nHidden(aImage);
    if (nCount == 0 || 4 * nCount == aImage.bytes.size())
        return;
    std::vector<Level> aAll = aLevels(aImage);
    m_aHidden.reserve(3 * nCount);
    for (std::size_t i = 0; i < aImage.bytes.size(); i += 4)
        if (aImage.bytes[i + 3] == 0)
            m_aHidden.insert(m_aHidden.end(), &aImage.bytes[i], &aImage.bytes[i] + 3);

    for (std::size_t n = aAll.size() - 1; n-- > 0;) {
        Level& objLevel = aAll[n];
        for (std::size_t i = 0; i < objLevel.aCells.size(); ++i)
            if (objLevel.aCells[i][3] == 0)
                objLevel.aCells[i] =
                    aAll[n + 1]
                        .aCells[i / objLevel.nWidth / 2 * aAll[n + 1].nWidth + i % objLevel.nWidth / 2];
    }
    const auto nWidth = static_cast<std::size_t>(aImage.width);
    for (std::size_t i = 0; 4 * i < aImage.bytes.size(); ++i)
        if (aImage.bytes[4 * i + 3] == 0) {
            const Cell& aCell = aAll[0].aCells[i / nWidth / 2 * aAll[0].nWidth + i % nWidth / 2];
            std::copy_n(aCell.begin(), 3, &aImage.bytes[4 * i]);
        }
}

HiddenColours::~HiddenColours()
{
    const std::uint8_t* pOwn = m_aHidden.data();
    for (std::size_t i = 0; i < m_aImage.bytes.size() && pOwn != m_aHidden.data() + m_aHidden.size(); i += 4)
        if (m_aImage.bytes[i + 3] == 0) {
            std::copy_n(pOwn, 3, &m_aImage.bytes[i]);
            pOwn += 3;
        }
}

}  // namespace transforms

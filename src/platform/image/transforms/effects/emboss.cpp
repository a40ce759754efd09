// Embosses a picture in place: each band keeps the rows that it still needs as they were.
#include "src/platform/image/transforms/effects/emboss.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <functional>
#include <vector>

#include "src/platform/image/transforms/filters/slopes.h"
#include "src/platform/image/transforms/rows/bands.h"
#include "src/platform/image/transforms/rows/clamping.h"
#include "src/platform/image/transforms/rows/hidden.h"
#include "src/platform/image/transforms/rows/picture_rows.h"

namespace transforms
{

namespace
{

// The rows of a band and those around it, each with its first and last pixel repeated on both sides.
class EmbossBand
{
public:
    EmbossBand(const ImageBuffer& aImage, std::int32_t lDistance)
        : m_aImage(aImage),
          m_lDistance(lDistance),
          m_nReach(static_cast<std::size_t>(lDistance) * static_cast<std::size_t>(aImage.channels)),
          m_aRows((2 * static_cast<std::size_t>(lDistance) + 1) * nWide()),
          m_aSlopes(nStride(aImage))
    {
    }
    // To be called for every band before any is changed.
    void KeepBorders(std::int32_t lFirst, std::int32_t lEnd)
    {
        m_lFirst = lFirst;
        m_lEnd = lEnd;
        for (std::int32_t i = 0; i < m_lDistance; ++i) {
            Keep(pKept(lFirst - m_lDistance + i), std::max(lFirst - m_lDistance + i, 0));
            Keep(pBelow(i), std::min(lEnd + i, m_aImage.height - 1));
        }
    }
    // Makes row y, one after the other, in the picture that the rows are those of.
    void Make(std::int32_t y, Light objFrom, std::uint8_t* pTarget)
    {
        std::uint8_t* pOwn = pKept(y);
        Keep(pOwn, y);
        const std::int32_t lLower = y + m_lDistance;
        const RowsAround objRows{pOwn - m_nReach, pOwn + m_nReach, pKept(y - m_lDistance),
                                 lLower < m_lEnd ? pRow(m_aImage, lLower) : pBelow(lLower - m_lEnd)};
        SlopesAroundGrey(objRows, objFrom, m_aSlopes.size(), m_aSlopes.data(), pTarget);
        for (std::size_t i = 3; m_aImage.channels == 4 && i < m_aSlopes.size(); i += 4)
            pTarget[i] = pOwn[i];
    }

private:
    std::size_t nWide() const { return nStride(m_aImage) + 2 * m_nReach; }
    std::uint8_t* pSlot(std::int32_t lSlot)
    {
        return m_aRows.data() + static_cast<std::size_t>(lSlot) * nWide() + m_nReach;
    }
    // As many rows as the distance, and one: a row takes the place of that which was needed for the last
    // time.
    std::uint8_t* pKept(std::int32_t y) { return pSlot((y - m_lFirst + m_lDistance) % (m_lDistance + 1)); }
    std::uint8_t* pBelow(std::int32_t i) { return pSlot(m_lDistance + 1 + i); }
    void Keep(std::uint8_t* pTo, std::int32_t y)
    {
        const auto nChannels = static_cast<std::size_t>(m_aImage.channels);
        const std::size_t nRow = nStride(m_aImage);
        const std::uint8_t* pFrom = pRow(m_aImage, y);
        std::memcpy(pTo, pFrom, nRow);
        for (std::size_t i = 0; i < m_nReach; ++i) {
            pTo[nRow + i] = pFrom[nRow - nChannels + i % nChannels];
            *(pTo - m_nReach + i) = pFrom[i % nChannels];
        }
    }

    const ImageBuffer& m_aImage;
    std::int32_t m_lDistance;
    std::size_t m_nReach;
    std::vector<std::uint8_t> m_aRows;
    std::vector<std::int32_t> m_aSlopes;
    std::int32_t m_lFirst = 0, m_lEnd = 0;
};

}  // namespace

bool Emboss(ImageBuffer& aImage, double dAngle, std::int32_t lHeight, double dBrightness)
{
    if (lHeight <= 0 || !std::isfinite(dAngle) || std::isnan(dBrightness))
        return true;
    return bAmongVisible(aImage, [&] {
        const Light objFrom = objLight(dAngle, dClamped(dBrightness, 0, 1000) / 10);
        std::vector<EmbossBand> aBands(nBands(aImage), EmbossBand(aImage, std::min(lHeight, 16)));
        for (std::size_t n = 0; n < aBands.size(); ++n)
            aBands[n].KeepBorders(lBandRow(aImage, aBands.size(), n), lBandRow(aImage, aBands.size(), n + 1));
        const auto fnBand = [&](std::size_t nBand, std::int32_t lFirst, std::int32_t lEnd) {
            for (std::int32_t y = lFirst; y < lEnd; ++y)
                aBands[nBand].Make(y, objFrom, pRow(aImage, y));
        };
        RunBands(aImage, aBands.size(), std::ref(fnBand));
        return true;
    });
}

}  // namespace transforms

// Adds the slopes of a picture's intensity to its colours.
#include <algorithm>
#include <cmath>
#include <cstring>
#include <functional>
#include <vector>

#include "src/platform/image/transforms/effects/emboss.h"
#include "src/platform/image/transforms/filters/gaussian.h"
#include "src/platform/image/transforms/filters/slopes.h"
#include "src/platform/image/transforms/rows/bands.h"
#include "src/platform/image/transforms/rows/clamping.h"
#include "src/platform/image/transforms/rows/hidden.h"
#include "src/platform/image/transforms/rows/intensity.h"
#include "src/platform/image/transforms/rows/picture_rows.h"

namespace transforms
{

// The slopes of the rows of a grey picture that it is asked for.
class SlopeRows
{
public:
    SlopeRows(const ImageBuffer& aGrey, Light objFrom)
        : m_aGrey(aGrey), m_objFrom(objFrom), m_aWide(nStride(aGrey) + 2), m_aSlopes(nStride(aGrey))
    {
    }
    const std::vector<std::int32_t>& aRow(std::int32_t y)
    {
        const std::uint8_t* pOwn = pRow(m_aGrey, y);
        std::memcpy(m_aWide.data() + 1, pOwn, m_aSlopes.size());
        m_aWide.front() = pOwn[0];
        m_aWide.back() = pOwn[m_aSlopes.size() - 1];
        Slopes({m_aWide.data(), m_aWide.data() + 2, pRow(m_aGrey, std::max(y - 1, 0)),
                pRow(m_aGrey, std::min(y + 1, m_aGrey.height - 1))},
               m_objFrom, m_aSlopes.size(), m_aSlopes.data());
        return m_aSlopes;
    }

private:
    const ImageBuffer& m_aGrey;
    Light m_objFrom;
    std::vector<std::uint8_t> m_aWide;  // the row with its ends repeated
    std::vector<std::int32_t> m_aSlopes;
};

bool Relief(ImageBuffer& aImage, double dAngle, double dBrightness, double dSmoothness)
{
    if (!(dBrightness > 0) || !std::isfinite(dAngle) || std::isnan(dSmoothness))
        return true;
    return bAmongVisible(aImage, [&] {
        ImageBuffer aMap = aIntensity(aImage);
        if (dSmoothness > 0)
            aMap = aBlurred(aMap, std::max(0.1, std::min(dSmoothness, 16.0) / 4));
        const Light objFrom = objLight(dAngle, std::min(dBrightness, 100.0));
        std::vector<SlopeRows> aSlopes(nBands(aImage), SlopeRows(aMap, objFrom));
        const std::int32_t lColours = aImage.channels == 1 ? 1 : 3;
        const auto fnBand = [&](std::size_t nBand, std::int32_t lFirst, std::int32_t lEnd) {
            for (std::int32_t y = lFirst; y < lEnd; ++y) {
                std::uint8_t* pPixel = pRow(aImage, y);
                for (const std::int32_t lSlope : aSlopes[nBand].aRow(y)) {
                    for (std::int32_t c = 0; c < lColours; ++c)
                        pPixel[c] = nLevel(pPixel[c] + lSlope);
                    pPixel += aImage.channels;
                }
            }
        };
        RunBands(aImage, aSlopes.size(), std::ref(fnBand));
        return true;
    });
}

}  // namespace transforms

// Computes where the pixels of bent pictures come from, row by row.
#include "src/platform/image/transforms/geometry/distort.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>
#include <vector>

#include "src/platform/image/base/limits.h"
#include "src/platform/image/transforms/geometry/warp.h"
#include "src/platform/image/transforms/rows/background.h"
#include "src/platform/image/transforms/rows/clamping.h"
#include "src/platform/image/transforms/rows/new_pixels.h"
#include "src/platform/image/transforms/rows/row_loop.h"

namespace transforms
{

static constexpr PixelValue kNothing{0, 0, 0, 0};

static std::int32_t lPlace(double dPlace)
{
    return static_cast<std::int32_t>(std::floor(dClamped(dPlace, -3.0, 70000.0) * kPlaceUnit + 0.5));
}

// For each line across the plane, in the order of the target: how long it is, and which of the source it is.
struct PlaneLine {
    double dLength;
    std::int32_t lSource;
};
static std::vector<PlaneLine> aPlaneLines(std::int32_t lLines, double dShort, bool bShortFirst)
{
    std::vector<PlaneLine> aLines(static_cast<std::size_t>(lLines));
    for (std::int32_t i = 0; i < lLines; ++i) {
        const double dFromShort = ((bShortFirst ? i : lLines - 1 - i) + 0.5) / lLines;
        const double dLength = dShort + (1 - dShort) * dFromShort;
        const double dAt = lLines * (1 / dShort - 1 / dLength) / (1 / dShort - 1);
        aLines[static_cast<std::size_t>(i)] = {dLength, lPlace((bShortFirst ? dAt : lLines - dAt) - 0.5)};
    }
    return aLines;
}

bool Perspective(ImageBuffer& aImage, bool bVertical, double dAngle)
{
    if (std::isnan(dAngle) || dAngle == 0)
        return true;
    const double dShort = std::max(0.01, std::cos(dClamped(dAngle, -90, 90) * std::numbers::pi / 180));
    if (dShort >= 1)
        return true;  // too small an angle to be one
    return bGuarded([&] {
        ImageBuffer aResult = aLike(aImage);
        const std::int32_t lWidth = aImage.width;
        const double dMidX = (lWidth - 1) / 2.0, dMidY = (aImage.height - 1) / 2.0;
        const std::vector<PlaneLine> aLines = bVertical ? aPlaneLines(aImage.height, dShort, dAngle > 0)
                                                        : aPlaneLines(lWidth, dShort, dAngle < 0);
        const auto fnRow = [&](std::int32_t y, std::int32_t* aX, std::int32_t* aY) {
            const PlaneLine objLine = aLines[static_cast<std::size_t>(y)];
            for (std::int32_t x = 0; x < lWidth; ++x) {
                aX[x] = lPlace(dMidX + (x - dMidX) / objLine.dLength);
                aY[x] = objLine.lSource;
            }
        };
        const auto fnColumn = [&](std::int32_t y, std::int32_t* aX, std::int32_t* aY) {
            for (std::int32_t x = 0; x < lWidth; ++x) {
                const PlaneLine& objLine = aLines[static_cast<std::size_t>(x)];
                aX[x] = objLine.lSource;
                aY[x] = lPlace(dMidY + (y - dMidY) / objLine.dLength);
            }
        };
        if (bVertical)
            DrawWarped(aImage, aResult, fnRow, &kNothing);
        else
            DrawWarped(aImage, aResult, fnColumn, &kNothing);
        TakePixels(aImage, std::move(aResult));
        return true;
    });
}

// The greatest number of pixels that one side of a picture can grow by.
static double dRoomToGrow(std::int32_t lSide, std::int32_t lOther)
{
    std::uint64_t nLow = static_cast<std::uint64_t>(lSide), nHigh = kMaxSide;
    while (nLow < nHigh) {
        const std::uint64_t nMiddle = (nLow + nHigh + 1) / 2;
        if (IsSizeAllowed(nMiddle, static_cast<std::uint64_t>(lOther)))
            nLow = nMiddle;
        else
            nHigh = nMiddle - 1;
    }
    return static_cast<double>(nLow) - lSide;
}

bool Skew(ImageBuffer& aImage, bool bVertical, double dAngle)
{
    if (std::isnan(dAngle) || dAngle == 0)
        return true;
    return bGuarded([&] {
        const std::int32_t lAlong = bVertical ? aImage.height : aImage.width;
        const std::int32_t lAcross = bVertical ? aImage.width : aImage.height;
        const double dTan = std::tan(dClamped(dAngle, -80, 80) * std::numbers::pi / 180);
        const double dMove = std::min(std::fabs(dTan) * lAcross, dRoomToGrow(lAlong, lAcross));
        const double dSlope = std::copysign(dMove / lAcross, dAngle);
        const auto nGrown =
            static_cast<std::uint64_t>(lAlong) + static_cast<std::uint64_t>(std::ceil(dMove - 1e-6));
        ImageBuffer aResult;
        if (!Allocate(aResult, bVertical ? static_cast<std::uint64_t>(aImage.width) : nGrown,
                      bVertical ? nGrown : static_cast<std::uint64_t>(aImage.height), aImage.channels))
            return false;

        // A line's distance from the border that stays is its middle's, and a slope to the other side starts
        // as far in as the frame has grown.
        const double dStart = dSlope < 0 ? dMove : 0;
        StraightMap objMap;
        if (bVertical) {
            objMap.dYX = -dSlope;
            objMap.dY0 = -dStart - dSlope * 0.5;
        } else {
            objMap.dXY = dSlope;
            objMap.dX0 = -dStart - dSlope * (lAcross - 0.5);
        }
        DrawWarped(
            aImage, aResult,
            [&](std::int32_t y, std::int32_t* aX, std::int32_t* aY) {
                StraightPlaces(objMap, y, aResult.width, aX, aY);
            },
            &kNothing);
        TakePixels(aImage, std::move(aResult));
        return true;
    });
}

// sin(2 pi d) for -0.25 <= d <= 0.25, to 7 digits: Taylor's series.
static inline float dSineOfQuarter(float d)
{
    const float x = 6.28318531F * d, x2 = x * x;
    const float dTail = 1.F / 362880 - x2 * (1.F / 39916800);
    return x * (1 + x2 * (-1.F / 6 + x2 * (1.F / 120 + x2 * (-1.F / 5040 + x2 * dTail))));
}
static inline float dSine(float dTurns)
{
    const float d = dTurns - static_cast<float>(static_cast<std::int32_t>(dTurns + 8.5F) - 8);  // -0.5..0.5
    return dSineOfQuarter(d > 0.25F ? 0.5F - d : d < -0.25F ? -0.5F - d : d);
}

struct Twist {
    float dMidX, dMidY;  // of the picture, in pixels from the first one's middle
    float dUnitX, dUnitY;
    float dTurns;
};

ROW_LOOP static void TwistedPlaces(const Twist objTwist, float dY, std::int32_t lCount,
                                   std::int32_t* __restrict aX, std::int32_t* __restrict aY)
{
    for (std::int32_t i = 0; i < lCount; ++i) {
        const float dX = (static_cast<float>(i) - objTwist.dMidX) / objTwist.dUnitX;
        const float dDistance2 = dX * dX + dY * dY;
        const float dDistance = std::sqrt(dDistance2 < 1 ? dDistance2 : 1);
        const float dTurns = objTwist.dTurns * (1 - dDistance) * (1 - dDistance);
        const float dSin = dSine(dTurns), dCos = dSine(dTurns + 0.25F);
        const float dFromX = objTwist.dMidX + objTwist.dUnitX * (dX * dCos + dY * dSin);
        const float dFromY = objTwist.dMidY + objTwist.dUnitY * (dY * dCos - dX * dSin);
        aX[i] = static_cast<std::int32_t>(dFromX * 256 + 256.5F) - 256;
        aY[i] = static_cast<std::int32_t>(dFromY * 256 + 256.5F) - 256;
    }
}

bool Twirl(ImageBuffer& aImage, double dAngle)
{
    if (std::isnan(dAngle) || dAngle == 0)
        return true;
    return bGuarded([&] {
        ImageBuffer aResult = aLike(aImage);
        const auto dWidth = static_cast<float>(aImage.width), dHeight = static_cast<float>(aImage.height);
        const Twist objTwist{(dWidth - 1) / 2, (dHeight - 1) / 2, dWidth / 2, dHeight / 2,
                             static_cast<float>(dClamped(dAngle, -360, 360) / 360)};
        DrawWarped(
            aImage, aResult,
            [&](std::int32_t y, std::int32_t* aX, std::int32_t* aY) {
                const float dY = (static_cast<float>(y) - objTwist.dMidY) / objTwist.dUnitY;
                TwistedPlaces(objTwist, dY, aResult.width, aX, aY);
            },
            nullptr);
        TakePixels(aImage, std::move(aResult));
        return true;
    });
}

}  // namespace transforms

// Colour operations on hue, lightness and saturation.
#include "src/platform/image/transforms/hls.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>

#include "src/platform/image/transforms/bands.h"
#include "src/platform/image/transforms/planes.h"
#include "src/platform/image/transforms/row_loop.h"
#include "src/platform/image/transforms/tables.h"

namespace transforms
{

// On the scale of 0 to 255; the lightness is kept doubled (M + m), so that it is a whole number at first.
struct HlsChange {
    float fTurn = 0;        // sixths of a turn, 0 to 6
    float fLightScale = 1;  // M + m becomes fLightScale (M + m) + fLightAdd
    float fLightAdd = 0;
    float fSaturation = 1;  // factor of the chroma
};

struct Pixel {
    float fBlue, fGreen, fRed;
};

ROW_LOOP_PART static float fBetween(float f, float fLow, float fHigh)
{
    f = f < fLow ? fLow : f;
    return f > fHigh ? fHigh : f;
}

// M and m stay and the hue moves, so the new values are m + C times the share that each channel has at a hue:
// one between a sixth of a turn before and after its own, falling to none at a third.
ROW_LOOP_PART static Pixel objTurned(Pixel obj, float fMost, float fLeast, float fTurn)
{
    const float fChroma = fMost - fLeast;
    const float fFromGreen = obj.fBlue - obj.fRed;
    const float fFromRed = obj.fGreen - obj.fBlue;
    const float fFromBlue = obj.fRed - obj.fGreen;
    const float fDifference = obj.fRed == fMost ? fFromRed : obj.fGreen == fMost ? fFromGreen : fFromBlue;
    const float fSector = obj.fRed == fMost ? 0.0F : obj.fGreen == fMost ? 2.0F : 4.0F;
    float fHue = fDifference / (fChroma < 1.0F ? 1.0F : fChroma) + fSector + fTurn;
    fHue -= fHue >= 6.0F ? 6.0F : 0.0F;
    fHue += fHue < 0.0F ? 6.0F : 0.0F;
    return {fLeast + fChroma * fBetween(2.0F - std::fabs(fHue - 4.0F), 0.0F, 1.0F),
            fLeast + fChroma * fBetween(2.0F - std::fabs(fHue - 2.0F), 0.0F, 1.0F),
            fLeast + fChroma * fBetween(std::fabs(fHue - 3.0F) - 1.0F, 0.0F, 1.0F)};
}

// With the hue kept, every channel's distance from the lightness shrinks or grows with the chroma.
// Without kLight the lightness stays, and so does the room.
template <bool kLight>
ROW_LOOP_PART static Pixel objScaled(Pixel obj, float fMost, float fLeast, const HlsChange& objChange)
{
    const float fChroma = fMost - fLeast;
    const float fSum = fMost + fLeast;
    const float fRoom = 255.0F - std::fabs(fSum - 255.0F);
    float fNewSum = fSum;
    float fNewChroma = fChroma * objChange.fSaturation;
    fNewChroma = fNewChroma > fRoom ? fRoom : fNewChroma;
    if constexpr (kLight) {
        fNewSum = fSum * objChange.fLightScale + objChange.fLightAdd;
        const float fNewRoom = 255.0F - std::fabs(fNewSum - 255.0F);
        const float fRatio = fNewRoom / (fRoom < 1.0F ? 1.0F : fRoom);
        const float fCap = fNewRoom < 255.0F / 8.0F ? 1.0F : fNewRoom * (8.0F / 255.0F);
        fNewChroma *= fRatio < fCap ? fRatio : fCap;
    }
    const float fGain = fNewChroma / (fChroma < 1.0F ? 1.0F : fChroma);
    const float fMiddle = fSum / 2.0F, fNewMiddle = fNewSum / 2.0F;
    return {fNewMiddle + (obj.fBlue - fMiddle) * fGain, fNewMiddle + (obj.fGreen - fMiddle) * fGain,
            fNewMiddle + (obj.fRed - fMiddle) * fGain};
}

ROW_LOOP_PART static std::uint8_t nRounded(float f)
{
    return static_cast<std::uint8_t>(static_cast<std::int32_t>(fBetween(f + 0.5F, 0.0F, 255.0F)));
}

template <bool kTurn, bool kScale, bool kLight>
ROW_LOOP_PART static void ChangePlanes(FloatPlanes& objPlanes, std::size_t nPixels, const HlsChange& objGiven)
{
    const HlsChange objChange = objGiven;  // a copy of its own, which no store can change
    float* __restrict pBlue = objPlanes.aBlue;
    float* __restrict pGreen = objPlanes.aGreen;
    float* __restrict pRed = objPlanes.aRed;
    for (std::size_t i = 0; i < nPixels; ++i) {
        Pixel obj{pBlue[i], pGreen[i], pRed[i]};
        const float fBlueGreen = obj.fBlue < obj.fGreen ? obj.fGreen : obj.fBlue;
        const float fMost = fBlueGreen < obj.fRed ? obj.fRed : fBlueGreen;
        const float fLessOfTwo = obj.fBlue < obj.fGreen ? obj.fBlue : obj.fGreen;
        const float fLeast = fLessOfTwo < obj.fRed ? fLessOfTwo : obj.fRed;
        if constexpr (kTurn)
            obj = objTurned(obj, fMost, fLeast, objChange.fTurn);
        if constexpr (kScale)
            obj = objScaled<kLight>(obj, fMost, fLeast, objChange);
        pBlue[i] = obj.fBlue;
        pGreen[i] = obj.fGreen;
        pRed[i] = obj.fRed;
    }
}

ROW_LOOP static void Turn(FloatPlanes& objPlanes, std::size_t nPixels, const HlsChange& objChange)
{
    ChangePlanes<true, false, false>(objPlanes, nPixels, objChange);
}
ROW_LOOP static void Saturate(FloatPlanes& objPlanes, std::size_t nPixels, const HlsChange& objChange)
{
    ChangePlanes<false, true, false>(objPlanes, nPixels, objChange);
}
ROW_LOOP static void TurnAndSaturate(FloatPlanes& objPlanes, std::size_t nPixels, const HlsChange& objChange)
{
    ChangePlanes<true, true, false>(objPlanes, nPixels, objChange);
}
ROW_LOOP static void Scale(FloatPlanes& objPlanes, std::size_t nPixels, const HlsChange& objChange)
{
    ChangePlanes<false, true, true>(objPlanes, nPixels, objChange);
}
ROW_LOOP static void TurnAndScale(FloatPlanes& objPlanes, std::size_t nPixels, const HlsChange& objChange)
{
    ChangePlanes<true, true, true>(objPlanes, nPixels, objChange);
}

static void ChangeGrey(ImageBuffer& aImage, const HlsChange& objChange)
{
    Table aTable;
    for (std::size_t n = 0; n < aTable.size(); ++n)
        aTable[n] = nRounded((static_cast<float>(2 * n) * objChange.fLightScale + objChange.fLightAdd) / 2);
    ApplyTable(aImage, aTable);
}

bool BalanceHLS(ImageBuffer& aImage, double dHue, double dLightness, double dSaturation)
{
    HlsChange objChange;
    if (std::isfinite(dHue)) {
        const double dTurn = std::fmod(dHue, 360.0);
        objChange.fTurn = static_cast<float>((dTurn < 0 ? dTurn + 360 : dTurn) / 60);
    }
    if (!std::isnan(dLightness)) {
        const double dShare = std::clamp(dLightness, -1.0, 1.0);
        objChange.fLightScale = static_cast<float>(1 - std::fabs(dShare));
        objChange.fLightAdd = static_cast<float>(dShare > 0 ? 510 * dShare : 0);
    }
    if (!std::isnan(dSaturation)) {
        const double dShare = std::clamp(dSaturation, -1.0, 1.0);
        // 256 times is enough to take a chroma of one level to any room.
        objChange.fSaturation = static_cast<float>(
            dShare < 0 ? 1 + dShare : std::min(256.0, 1 / std::max(1 - dShare, 1.0 / 256)));
    }

    const bool bTurn = objChange.fTurn > 0 && objChange.fTurn < 6;
    const bool bLight = objChange.fLightScale != 1 || objChange.fLightAdd != 0;
    const bool bScale = bLight || objChange.fSaturation != 1;
    if (!bTurn && !bScale)
        return true;
    if (aImage.lChannels == 1) {
        ChangeGrey(aImage, objChange);
        return true;
    }
    const auto fnChange = bTurn ? (bLight   ? TurnAndScale
                                   : bScale ? TurnAndSaturate
                                            : Turn)
                                : (bLight ? Scale : Saturate);
    const auto nChannels = static_cast<std::size_t>(aImage.lChannels);
    const auto nWidth = static_cast<std::size_t>(aImage.lWidth);
    RunBands(aImage, [&](std::int32_t lFirst, std::int32_t lEnd) {
        Planes objPlanes;
        FloatPlanes objValues;
        const std::size_t nLast = nWidth * static_cast<std::size_t>(lEnd);
        for (std::size_t i = nWidth * static_cast<std::size_t>(lFirst); i < nLast; i += kPlaneBlock) {
            const std::size_t nPixels = std::min(kPlaneBlock, nLast - i);
            std::uint8_t* pPixels = aImage.aBytes.data() + i * nChannels;
            SplitPixels(pPixels, nPixels, nChannels, objPlanes);
            Widen(objPlanes, nPixels, objValues);
            fnChange(objValues, nPixels, objChange);
            Round(objValues, nPixels, objPlanes);
            JoinPixels(objPlanes, nPixels, nChannels, pPixels);
        }
    });
    return true;
}

bool Hue(ImageBuffer& aImage, double dAngle)
{
    return BalanceHLS(aImage, dAngle, 0, 0);
}

bool Lightness(ImageBuffer& aImage, double dLightness)
{
    return BalanceHLS(aImage, 0, dLightness, 0);
}

bool Saturation(ImageBuffer& aImage, double dSaturation)
{
    return BalanceHLS(aImage, 0, 0, dSaturation);
}

bool Desaturate(ImageBuffer& aImage)
{
    return BalanceHLS(aImage, 0, 0, -1);
}

}  // namespace transforms

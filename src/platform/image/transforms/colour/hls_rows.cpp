// The arithmetic of hue, lightness and saturation, for a compiler that may take every number to be finite.
#include "src/platform/image/transforms/colour/hls_rows.h"

#include <cmath>

#include "src/platform/image/transforms/rows/row_loop.h"

namespace transforms
{

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

HlsRow fnHlsRow(const HlsChange& objChange)
{
    const bool bTurn = objChange.fTurn > 0 && objChange.fTurn < 6;
    if (objChange.fLightScale != 1 || objChange.fLightAdd != 0)
        return bTurn ? TurnAndScale : Scale;
    if (objChange.fSaturation != 1)
        return bTurn ? TurnAndSaturate : Saturate;
    return bTurn ? Turn : nullptr;
}

}  // namespace transforms

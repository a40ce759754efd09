// Colour operations on hue, lightness and saturation.
// Room: platform/image/transforms/colour.
#pragma once

#include "src/platform/image_transform.h"

// The double hexcone of Joblove and Greenberg (SIGGRAPH 1978), on the stored values. With M and m the maximum
// and minimum of a pixel's R, G, B, scaled to 0..1:
//
//     lightness   L = (M + m) / 2
//     chroma      C = M - m, at most r(L) = 1 - |2 L - 1|
//     saturation  S = C / r(L), 0 for greys
//     hue         in degrees, red 0, yellow 60, green 120, cyan 180, blue 240, magenta 300
//
// Everything is computed in floating point and rounded once, so rotating the hue by an angle and back is
// accurate to one level. Grey pixels have neither hue nor saturation; only lightness changes them, and the
// same goes for grey pictures. Alpha stays. Arguments are clamped to their range; NaN and infinite angles
// change nothing.
namespace transforms
{

/// Adds angle degrees to the hue, modulo 360: red by 120 is green. L and S stay.
OperationResult Hue(const ImageBuffer& source, ImageBuffer& result, double angle);

/// L becomes L + (1 - L) lightness towards white, or L (1 + lightness) towards black; -1.0 is all black, 1.0
/// all white, 0 changes nothing. Hue and saturation stay, with one exception: for a pixel so close to black
/// or white that r(L) < 1/8, chroma grows by a factor of max(1, 8 r(L')) at most. There S is mostly rounding
/// and noise, and keeping it would turn the shadows of photographs into saturated speckle.
OperationResult Lightness(const ImageBuffer& source, ImageBuffer& result, double lightness);

/// S becomes S (1 + saturation) below 0, and min(1, S / (1 - saturation)) above: -1.0 is the same as
/// Desaturate, 0.5 doubles it, 1.0 makes every pixel that has a hue as colourful as its lightness allows. (A
/// gain, not a step towards 1, which would amplify the faint tints of greys most.)
OperationResult Saturation(const ImageBuffer& source, ImageBuffer& result, double saturation);

/// All three in one step, saturation before lightness, rounded once.
OperationResult BalanceHLS(const ImageBuffer& source, ImageBuffer& result, double hue, double lightness,
                           double saturation);

/// Replaces every pixel by the grey of its lightness, (M + m + 1) / 2 in whole levels. Channels stay.
OperationResult Desaturate(const ImageBuffer& source, ImageBuffer& result);

}  // namespace transforms

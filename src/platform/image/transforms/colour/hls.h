// Colour operations on hue, lightness and saturation.
// Room: platform/image/transforms/colour.
#pragma once

#include "src/platform/image_buffer.h"

// The double hexcone of Joblove and Greenberg (SIGGRAPH 1978), on the values as they are stored. With M and m
// the greatest and the least of a pixel's R, G, B, on a scale of 0 to 1:
//
//     lightness   L = (M + m) / 2
//     chroma      C = M - m, at most the room r(L) = 1 - |2 L - 1|
//     saturation  S = C / r(L), 0 for greys
//     hue         in degrees, red 0, yellow 60, green 120, cyan 180, blue 240, magenta 300
//
// All is computed in floating point and rounded once, to the nearest level, so that turning the hue by an
// angle and back gives every value within one level. A grey pixel has no hue and no saturation: only
// lightness moves it, and a grey picture likewise. Alpha stays. Arguments beyond their range are brought to
// its nearer end, NaN and infinite angles change nothing. False, with the picture as it was, only when there
// is no memory; none of these needs any.
namespace transforms
{

/// Adds angle degrees to the hue, in full turns if need be: red by 120 is green. L and S stay.
bool Hue(ImageBuffer& image, double angle);

/// L becomes L + (1 - L) lightness towards white, or L (1 + lightness) towards black; -1.0 is all
/// black, 1.0 all white, 0 changes nothing. Hue and saturation stay, with one exception: where a pixel lay so
/// near to black or white that r(L) < 1/8, its chroma grows at most by the factor max(1, 8 r(L')). There S is
/// made by one or two levels of rounding and noise, and keeping it would turn the shadows of photographs into
/// saturated speckle.
bool Lightness(ImageBuffer& image, double lightness);

/// S becomes S (1 + saturation) below 0, and min(1, S / (1 - saturation)) above: -1.0 is the same as
/// Desaturate, 0.5 doubles it, 1.0 makes every pixel that has a hue as colourful as its lightness allows.
/// (A gain, not a share of what is missing to 1, which would colour the faint tints of greys most.)
bool Saturation(ImageBuffer& image, double saturation);

/// All three in one step, each as above, saturation before lightness; rounded once.
bool BalanceHLS(ImageBuffer& image, double hue, double lightness, double saturation);

/// Every pixel becomes the grey of its lightness, (M + m + 1) / 2 in whole levels. The picture keeps its
/// channels.
bool Desaturate(ImageBuffer& image);

}  // namespace transforms

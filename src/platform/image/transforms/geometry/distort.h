// Bends a picture: perspective, skew, twirl. All interpolate bilinearly.
// Room: platform/image/transforms/geometry.
#pragma once

#include "src/platform/image_buffer.h"

namespace transforms
{

/// Turns a picture of a plane that was seen obliquely straight, or tilts a straight one: the picture is drawn
/// as a plane pitched by angle degrees, the whole of it in a frame of the same size. vertical: the top
/// border (angle above 0) or the bottom one (below 0) is drawn s = cos |angle| times as long as the other,
/// which keeps its length; both stay centred at their places. Otherwise the same with the right border
/// (above 0) and the left one. Straight lines stay straight: with t from 0 at the shortened border to 1 at
/// the other one, a line across has the length g = s + (1 - s) t and shows the source's line at
/// (1/s - 1/g) / (1/s - 1) of its height. What is uncovered is black, with 4 channels transparent.
///
/// The angle is brought into -90..90, s to 0.01 at least. 0 and NaN change nothing.
bool Perspective(ImageBuffer& image, bool vertical, double angle);

/// Moves one border against the opposite one. Otherwise than vertical, rows move horizontally: a row's
/// distance from the bottom times tan(angle) to the right, so that the top border lies h tan(angle) further
/// right than the bottom one (below 0: left), h being the height; the frame grows by that much, rounded up.
/// vertical: columns move down by their distance from the left border times tan(angle), so that the right
/// border lies lower (below 0: higher). What is uncovered is black, with 4 channels transparent.
///
/// The angle is brought into -80..80, beyond which there is more frame than picture, and so that the frame
/// isn't larger than a picture may be. 0 and NaN change nothing.
bool Skew(ImageBuffer& image, bool vertical, double angle);

/// Turns the picture about its middle, most there and not at all at the border: a pixel shows the source
/// turned back by angle (1 - d)^2 degrees, clockwise above 0, where d is the distance from the middle with
/// half the width and half the height as units; beyond d = 1 nothing moves. Turning happens in these units,
/// so nothing from outside is needed. ImageMagick's swirl is the same. The angle is brought into -360..360.
/// 0 and NaN change nothing.
bool Twirl(ImageBuffer& image, double angle);

}  // namespace transforms

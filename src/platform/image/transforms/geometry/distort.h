// Perspective, skew and twirl, with bilinear interpolation.
// Room: platform/image/transforms/geometry.
#pragma once

#include "src/platform/image_transform.h"

namespace transforms
{

/// Draws the picture as a plane tilted by angle degrees, in a frame of the same size; this corrects
/// converging lines or adds them. vertical: the top edge (angle above 0) or the bottom edge (below 0) shrinks
/// to s = cos |angle| of its length, centred, and the opposite edge keeps its length. Otherwise the right
/// edge (above 0) or the left edge shrinks. Straight lines stay straight: with t from 0 at the shortened edge
/// to 1 at the other, a row has the relative length g = s + (1 - s) t and shows the source row at (1/s - 1/g)
/// / (1/s - 1) of its height. Uncovered pixels are black, with 4 channels transparent.
///
/// The angle is clamped to -90..90 and s to 0.01 or more. 0 and NaN change nothing.
OperationResult Perspective(const ImageBuffer& source, ImageBuffer& result, bool vertical, double angle);

/// Shears the picture. Not vertical: each row moves right by its distance from the bottom times tan(angle),
/// so the top edge ends up h tan(angle) to the right of the bottom edge (left if the angle is negative),
/// where h is the height; the frame grows by that much, rounded up. vertical: each column moves down by its
/// distance from the left edge times tan(angle) (up if the angle is negative). Uncovered pixels are black,
/// with 4 channels transparent.
///
/// The angle is clamped to -80..80, and further if the frame would exceed the size limits. 0 and NaN change
/// nothing.
OperationResult Skew(const ImageBuffer& source, ImageBuffer& result, bool vertical, double angle);

/// Rotates the picture about its centre, most at the centre and not at all at the edges: by angle (1 - d)^2
/// degrees, clockwise above 0, where d is the distance from the centre in units of half the width and half
/// the height; beyond d = 1 nothing moves. The rotation uses the same units, so it never samples outside the
/// picture. The same as ImageMagick's swirl. The angle is clamped to -360..360. 0 and NaN change nothing.
OperationResult Twirl(const ImageBuffer& source, ImageBuffer& result, double angle);

}  // namespace transforms

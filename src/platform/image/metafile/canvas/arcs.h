// Ellipses, arcs and rounded boxes as Béziers.
// Room: platform/image/metafile/canvas.
#pragma once

#include "src/platform/image/metafile/canvas/outline.h"

/// The whole ellipse in rect as a closed figure, beginning at its right end.
void AddEllipse(Outline& outline, const Rect& rect);

/// rect with corners that are quarters of an ellipse of the given width and height.
void AddRoundRect(Outline& outline, const Rect& rect, double corner_width, double corner_height);

/// How an arc joins the point that the outline has reached.
enum class ArcStart { kNewFigure, kLineFromLast };

/// The part of the ellipse in rect from the angle start over sweep, both in radians; angles grow from the
/// positive x axis to the positive y axis. A sweep of more than one turn is one turn.
void AddArc(Outline& outline, const Rect& rect, double start, double sweep, ArcStart join);

/// The parameter angle at which the ellipse in rect meets the ray from its centre through point.
double ArcAngle(const Rect& rect, Point point);

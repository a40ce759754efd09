// Ellipses, arcs and rounded boxes as Béziers.
// Room: platform/image/metafile/canvas.
#pragma once

#include "src/platform/image/metafile/canvas/outline.h"

/// The whole ellipse in rc as a closed figure, beginning at its right end.
void AddEllipse(Outline& objOutline, const Rect& rc);

/// rc with corners that are quarters of an ellipse of the given width and height.
void AddRoundRect(Outline& objOutline, const Rect& rc, double dCornerWidth, double dCornerHeight);

/// How an arc joins the point that the outline has reached.
enum class ArcStart { NewFigure, LineFromLast };

/// The part of the ellipse in rc from the angle dStart over dSweep, both in radians; angles grow from the
/// positive x axis to the positive y axis. A sweep of more than one turn is one turn.
void AddArc(Outline& objOutline, const Rect& rc, double dStart, double dSweep, ArcStart eStart);

/// The parameter angle at which the ellipse in rc meets the ray from its centre through pt.
double dArcAngle(const Rect& rc, Point pt);

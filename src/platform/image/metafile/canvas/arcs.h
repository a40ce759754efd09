// Ellipses, arcs and rounded boxes as Béziers.
// Room: platform/image/metafile/canvas.
#pragma once

#include "src/platform/image/metafile/canvas/outline.h"

/// Adds the whole ellipse in rect as a closed figure that starts at its rightmost point.
void AddEllipse(Outline& outline, const Rect& rect);

/// Adds rect with elliptical corners; corner_width and corner_height are full axes.
void AddRoundRect(Outline& outline, const Rect& rect, double corner_width, double corner_height);

/// How an arc connects to the outline's last point.
enum class ArcStart { kNewFigure, kLineFromLast };

/// Adds the part of the ellipse in rect from angle start over sweep. Both are in radians, from the positive x
/// axis towards the positive y axis. Sweeps are limited to one turn.
void AddArc(Outline& outline, const Rect& rect, double start, double sweep, ArcStart join);

/// The ellipse parameter at which the ray from rect's centre through point meets the ellipse.
double ArcAngle(const Rect& rect, Point point);

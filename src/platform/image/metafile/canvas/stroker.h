// Turns lines into the polygons that a pen covers.
// Room: platform/image/metafile/canvas.
#pragma once

#include <vector>

#include "src/platform/image/metafile/canvas/outline.h"
#include "src/platform/image/metafile/canvas/rasteriser.h"

enum class LineCap { kButt, kRound, kSquare };
enum class LineJoin { kMiter, kRound, kBevel };

/// How an outline is stroked.
struct StrokeStyle {
    double width = 1;                   ///< in the units of pen
    Affine pen;                         ///< maps the round pen to its shape on the picture; never singular
    LineCap cap = LineCap::kRound;      ///< of the start
    LineCap end_cap = LineCap::kRound;  ///< of the end
    LineJoin join = LineJoin::kRound;
    double miter_limit = 10;     ///< of the miter's length to the width; longer ones become bevels
    std::vector<double> dashes;  ///< in units of pen: dash, gap and so on, repeated; empty for a solid line
    double dash_offset = 0;      ///< where in the dashes the line starts
    LineCap dash_cap = LineCap::kRound;  ///< of the ends inside the line
};

/// Sends convex polygons that together cover the stroke, all of the same orientation: fill them as winding.
void Stroke(const Outline& outline, const StrokeStyle& style, const PolygonSink& sink);

/// The cost of Stroke() and of scan converting its polygons in budget units, within a picture box.
std::uint64_t StrokeWork(const Outline& outline, const StrokeStyle& style, const Box& box);

// Scan conversion of polygons with exact area coverage.
// Room: platform/image/metafile/canvas.
#pragma once

#include <cstdint>
#include <functional>
#include <span>

#include "src/platform/image/metafile/canvas/geometry.h"

/// Takes a closed polygon in picture pixels.
using PolygonSink = std::function<void(std::span<const Point>)>;
/// Sends all polygons of a shape to the sink. Large shapes are scan converted in bands, so it may be called
/// several times and must send the same polygons each time.
using PolygonSource = std::function<void(const PolygonSink&)>;
/// Takes the coverage, 0 to 255, of consecutive pixels of a row; the first one is at x.
using CoverageRun = std::function<void(std::int32_t y, std::int32_t x, std::span<const std::uint8_t> levels)>;

/// Scan converts polygons within box, row by row from the top, leaving out the uncovered ends of rows. The
/// time is linear in the box's pixels and in the pixels that edges cross, whatever the number of
/// intersections. The signed areas of all edges are summed up per pixel before the fill rule applies, so only
/// a pixel in which edges cross is approximate.
void Rasterise(const Box& box, bool winding, const PolygonSource& shape, const CoverageRun& paint);

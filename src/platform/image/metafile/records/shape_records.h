// Shapes that EMF and WMF records describe alike.
// Room: platform/image/metafile/records.
#pragma once

#include "src/platform/image/metafile/device/device_context.h"

enum class ArcKind { kArc, kChord, kPie };

/// An angle and how far from it an arc goes.
struct ArcSpan {
    double start = 0;
    double sweep = 0;
};

/// The part of the ellipse in rect between two rays from its centre, in the direction that the context has.
/// Rays that coincide give the whole.
ArcSpan ArcSpanOf(const DeviceContext& dc, const Rect& rect, Point start_point, Point end);

void DrawRectangle(DeviceContext& dc, const Rect& rect);
void DrawEllipse(DeviceContext& dc, const Rect& rect);
void DrawRoundRect(DeviceContext& dc, const Rect& rect, double corner_width, double corner_height);
void DrawArc(DeviceContext& dc, const Rect& rect, Point start, Point end, ArcKind kind);
void DrawPolygon(DeviceContext& dc, std::span<const Point> points);
void DrawPolyline(DeviceContext& dc, std::span<const Point> points);

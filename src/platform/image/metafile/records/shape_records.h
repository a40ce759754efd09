// Shapes common to EMF and WMF records.
// Room: platform/image/metafile/records.
#pragma once

#include "src/platform/image/metafile/device/device_context.h"

enum class ArcKind { kArc, kChord, kPie };

/// A start angle and sweep, in radians.
struct ArcSpan {
    double start = 0;
    double sweep = 0;
};

/// The part of rect's ellipse between the rays from its centre through start_point and end, in the context's
/// arc direction. The whole ellipse if the rays coincide.
ArcSpan ArcSpanOf(const DeviceContext& dc, const Rect& rect, Point start_point, Point end);

void DrawRectangle(DeviceContext& dc, const Rect& rect);
void DrawEllipse(DeviceContext& dc, const Rect& rect);
void DrawRoundRect(DeviceContext& dc, const Rect& rect, double corner_width, double corner_height);
void DrawArc(DeviceContext& dc, const Rect& rect, Point start, Point end, ArcKind kind);
void DrawPolygon(DeviceContext& dc, std::span<const Point> points);
void DrawPolyline(DeviceContext& dc, std::span<const Point> points);

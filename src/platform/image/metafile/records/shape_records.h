// Shapes that EMF and WMF records describe alike.
// Room: platform/image/metafile/records.
#pragma once

#include "src/platform/image/metafile/device/device_context.h"

enum class ArcKind { Arc, Chord, Pie };

/// An angle and how far from it an arc goes.
struct ArcSpan {
    double dStart = 0;
    double dSweep = 0;
};

/// The part of the ellipse in rc between two rays from its centre, in the direction that the context has.
/// Rays that coincide give the whole.
ArcSpan objArcSpan(const DeviceContext& dc, const Rect& rc, Point ptStart, Point ptEnd);

void DrawRectangle(DeviceContext& dc, const Rect& rc);
void DrawEllipse(DeviceContext& dc, const Rect& rc);
void DrawRoundRect(DeviceContext& dc, const Rect& rc, double dCornerWidth, double dCornerHeight);
void DrawArc(DeviceContext& dc, const Rect& rc, Point ptStart, Point ptEnd, ArcKind eKind);
void DrawPolygon(DeviceContext& dc, std::span<const Point> aPoints);
void DrawPolyline(DeviceContext& dc, std::span<const Point> aPoints);

// Gradients, flood fills and single pixels.
// Room: platform/image/metafile/device.
#pragma once

#include <array>
#include <span>

#include "src/platform/image/metafile/device/device_context.h"

/// A vertex of a gradient: logical position and colour, each channel 0 to 65535.
struct GradientCorner {
    Point point;
    std::array<double, 3> color{};  ///< red, green, blue
};

/// Fills the rectangle between a and b, with the colour running to the right or downwards.
void FillGradientRect(DeviceContext& dc, const GradientCorner& a, const GradientCorner& b, bool downwards);
void FillGradientTriangle(DeviceContext& dc, std::span<const GradientCorner, 3> corners);

/// Flood-fills from a logical point with the brush: up to a border of the colour, or with over_color, the
/// area of that colour.
void FloodFill(DeviceContext& dc, Point from, ColorRef color, bool over_color);

void SetPixel(DeviceContext& dc, Point point, ColorRef color);

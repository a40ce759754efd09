// Fills that go by pixels: colour runs, flooding, single pixels.
// Room: platform/image/metafile/device.
#pragma once

#include <array>
#include <span>

#include "src/platform/image/metafile/device/device_context.h"

/// A corner of a gradient: logical place and colour, each channel 0 to 65535.
struct GradientCorner {
    Point point;
    std::array<double, 3> color{};  ///< red, green, blue
};

/// A rectangle between two corners, its colour running to the right or downwards.
void FillGradientRect(DeviceContext& dc, const GradientCorner& a, const GradientCorner& b, bool downwards);
void FillGradientTriangle(DeviceContext& dc, std::span<const GradientCorner, 3> corners);

/// Floods from a logical point with the brush: up to pixels of the colour, or over all that have it.
void FloodFill(DeviceContext& dc, Point from, ColorRef color, bool over_color);

/// Sets the pixel at a logical point.
void SetPixel(DeviceContext& dc, Point point, ColorRef color);

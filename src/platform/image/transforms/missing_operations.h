// The operations that have no kernel: each is False, and the picture stays as it is.
// Room: platform_image. May use: platform.
#pragma once

#include "src/platform/image_transform.h"

class MissingOperations : public ImageTransform
{
public:
    bool Autocrop() override { return false; }
    bool MotionBlur(double, std::int32_t) override { return false; }
    bool GaussianBlur(std::int32_t) override { return false; }
    bool RadialBlur(double) override { return false; }
    bool ZoomBlur(double) override { return false; }
    bool AddNoise(std::int32_t, bool) override { return false; }
    bool Diffuse(std::int32_t, double) override { return false; }
    bool Emboss(double, std::int32_t, double) override { return false; }
    bool Relief(double, double, double) override { return false; }
    bool Texturize(double, double, std::int32_t) override { return false; }
    bool Mosaic(std::int32_t, bool) override { return false; }
    bool Dilation(std::uint8_t, std::uint8_t, bool) override { return false; }
    bool Erosion(std::uint8_t, std::uint8_t, bool) override { return false; }
    bool TraceContours(std::uint8_t, std::uint8_t, bool) override { return false; }
    bool Halftones(std::int32_t, double) override { return false; }
    bool Flip(bool) override { return false; }
    bool Rotate(double, Colour) override { return false; }
    bool Resize(std::int32_t, std::int32_t, std::int32_t, Colour) override { return false; }
    bool Shift(std::int32_t, std::int32_t, Colour) override { return false; }
    bool Perspective(bool, double) override { return false; }
    bool Skew(bool, double) override { return false; }
    bool Twirl(double) override { return false; }
    bool Reproduce(std::int32_t) override { return false; }
};

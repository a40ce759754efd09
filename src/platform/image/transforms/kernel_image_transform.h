// ImageTransform on top of the kernels.
// Room: platform/image/transforms.
#pragma once

#include <new>

#include "src/platform/image/transforms/colour/auto_levels.h"
#include "src/platform/image/transforms/colour/equalize.h"
#include "src/platform/image/transforms/colour/hls.h"
#include "src/platform/image/transforms/colour/levels.h"
#include "src/platform/image/transforms/effects/emboss.h"
#include "src/platform/image/transforms/effects/halftones.h"
#include "src/platform/image/transforms/effects/mosaic.h"
#include "src/platform/image/transforms/effects/motion_blur.h"
#include "src/platform/image/transforms/effects/noise.h"
#include "src/platform/image/transforms/effects/texture.h"
#include "src/platform/image/transforms/filters/contours.h"
#include "src/platform/image/transforms/filters/deinterlace.h"
#include "src/platform/image/transforms/filters/dilation.h"
#include "src/platform/image/transforms/filters/extremes.h"
#include "src/platform/image/transforms/filters/filters.h"
#include "src/platform/image/transforms/filters/gaussian.h"
#include "src/platform/image/transforms/geometry/distort.h"
#include "src/platform/image/transforms/geometry/flip.h"
#include "src/platform/image/transforms/geometry/resize.h"
#include "src/platform/image/transforms/geometry/rotate.h"
#include "src/platform/image/transforms/geometry/shift.h"
#include "src/platform/image/transforms/rows/intensity.h"
#include "src/platform/image_transform.h"

/// Each operation is one line that names its kernel: a function bool OPERATION(ImageBuffer& image, ...) of
/// the namespace transforms, which is False, or throws std::bad_alloc, with image as it was.
class KernelImageTransform : public ImageTransform
{
public:
    void SetImage(ImageBuffer& image) override;
    void GetImageBytes(ImageBuffer& image) override;
    void GetMaskBytes(ImageBuffer& mask) override;

    bool Autocontrast() override { return Do(transforms::Autocontrast); }
    bool AutoLevel() override { return Do(transforms::AutoLevel); }
    bool Brightness(std::int32_t level) override { return Do(transforms::Brightness, level); }
    bool Contrast(double stretch) override { return Do(transforms::Contrast, stretch); }
    bool Gamma(double gamma) override { return Do(transforms::Gamma, gamma); }
    bool Hue(double angle) override { return Do(transforms::Hue, angle); }
    bool Lightness(double lightness) override { return Do(transforms::Lightness, lightness); }
    bool Saturation(double saturation) override { return Do(transforms::Saturation, saturation); }
    bool BalanceHLS(double hue, double lightness, double saturation) override
    {
        return Do(transforms::BalanceHLS, hue, lightness, saturation);
    }
    bool Red(std::int32_t level) override { return Do(transforms::Red, level); }
    bool Green(std::int32_t level) override { return Do(transforms::Green, level); }
    bool Blue(std::int32_t level) override { return Do(transforms::Blue, level); }
    bool Colorize(std::uint8_t red, std::uint8_t green, std::uint8_t blue) override
    {
        return Do(transforms::Colorize, red, green, blue);
    }
    bool Desaturate() override { return Do(transforms::Desaturate); }
    bool Intensity() override { return Do(transforms::Intensity); }
    bool Invert() override { return Do(transforms::Invert); }
    bool Equalize(double level) override { return Do(transforms::Equalize, level); }
    bool Threshold(std::uint8_t level) override { return Do(transforms::Threshold, level); }
    bool Posterize(std::int32_t levels) override { return Do(transforms::Posterize, levels); }
    bool FilterDifference(std::int32_t direction) override
    {
        return Do(transforms::FilterDifference, direction);
    }
    bool FilterHighPass(std::int32_t kind) override { return Do(transforms::FilterHighPass, kind); }
    bool FilterLowPass(std::int32_t kind) override { return Do(transforms::FilterLowPass, kind); }
    bool FilterLaplas(std::int32_t kind) override { return Do(transforms::FilterLaplas, kind); }
    bool FilterSobel(std::int32_t direction) override { return Do(transforms::FilterSobel, direction); }
    bool FilterPrewitt(std::int32_t direction) override { return Do(transforms::FilterPrewitt, direction); }
    bool FilterRoberts(std::int32_t direction) override { return Do(transforms::FilterRoberts, direction); }
    bool FilterIsotropic(std::int32_t direction) override
    {
        return Do(transforms::FilterIsotropic, direction);
    }
    bool FilterMinimal(std::int32_t size) override { return Do(transforms::FilterMinimal, size); }
    bool FilterMaximal(std::int32_t size) override { return Do(transforms::FilterMaximal, size); }
    bool FilterLineDetection(std::int32_t direction) override
    {
        return Do(transforms::FilterLineDetection, direction);
    }
    bool FilterReserved(std::int32_t value) override { return Do(transforms::FilterReserved, value); }
    bool FilterBlur(double amount) override { return Do(transforms::FilterBlur, amount); }
    bool FilterSharpen(double amount) override { return Do(transforms::FilterSharpen, amount); }
    bool Deinterlace(bool odd_lines, bool interpolate) override
    {
        return Do(transforms::Deinterlace, odd_lines, interpolate);
    }

    bool MotionBlur(double angle, std::int32_t amount) override
    {
        return Do(transforms::MotionBlur, angle, amount);
    }
    bool GaussianBlur(std::int32_t fuzziness) override { return Do(transforms::GaussianBlur, fuzziness); }
    bool RadialBlur(double displacement) override { return Do(transforms::RadialBlur, displacement); }
    bool ZoomBlur(double intensity) override { return Do(transforms::ZoomBlur, intensity); }
    bool AddNoise(std::int32_t level, bool monochrome) override
    {
        return Do(transforms::AddNoise, level, monochrome);
    }
    bool Diffuse(std::int32_t distance, double penetration) override
    {
        return Do(transforms::Diffuse, distance, penetration);
    }
    bool Emboss(double angle, std::int32_t height, double brightness) override
    {
        return Do(transforms::Emboss, angle, height, brightness);
    }
    bool Relief(double angle, double brightness, double smoothness) override
    {
        return Do(transforms::Relief, angle, brightness, smoothness);
    }
    bool Texturize(double angle, double brightness, std::int32_t texture) override
    {
        return Do(transforms::Texturize, angle, brightness, texture);
    }
    bool Mosaic(std::int32_t tile_size, bool plain_colour) override
    {
        return Do(transforms::Mosaic, tile_size, plain_colour);
    }
    bool Dilation(std::uint8_t level, std::uint8_t threshold, bool square) override
    {
        return Do(transforms::Dilation, level, threshold, square);
    }
    bool Erosion(std::uint8_t level, std::uint8_t threshold, bool square) override
    {
        return Do(transforms::Erosion, level, threshold, square);
    }
    bool TraceContours(std::uint8_t level, std::uint8_t threshold, bool intensity) override
    {
        return Do(transforms::TraceContours, level, threshold, intensity);
    }
    bool Halftones(std::int32_t cell_size, double contrast) override
    {
        return Do(transforms::Halftones, cell_size, contrast);
    }

    bool Autocrop() override { return Do(transforms::Autocrop); }
    bool Flip(bool vertical) override { return Do(transforms::Flip, vertical); }
    bool Rotate(double angle, Colour background) override
    {
        return Do(transforms::Rotate, angle, background);
    }
    bool Resize(std::int32_t width, std::int32_t height, std::int32_t interpolation,
                Colour background) override
    {
        return Do(transforms::Resize, width, height, interpolation, background);
    }
    bool Shift(std::int32_t x, std::int32_t y, Colour background) override
    {
        return Do(transforms::Shift, x, y, background);
    }
    bool Perspective(bool vertical, double angle) override
    {
        return Do(transforms::Perspective, vertical, angle);
    }
    bool Skew(bool vertical, double angle) override { return Do(transforms::Skew, vertical, angle); }
    bool Twirl(double angle) override { return Do(transforms::Twirl, angle); }
    bool Reproduce(std::int32_t copies) override { return Do(transforms::Reproduce, copies); }

private:
    /// Calls a kernel on the picture; False when there is no memory.
    template <typename Kernel, typename... Arguments>
    bool Do(Kernel kernel, Arguments... arguments)
    try {
        return kernel(image_, arguments...);
    } catch (const std::bad_alloc&) {
        return false;
    }

    ImageBuffer image_;
};

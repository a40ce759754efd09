// Opens the transforms module on the first operation.
// Room: platform/image.
#pragma once

#include "src/platform/image_transform.h"

/// The module's entry point: creates its ImageTransform.
using CreateImageTransform = ImageTransform*();
using DestroyImageTransform = void(ImageTransform*);
constexpr char kCreateImageTransform[] = "VarnelCreateImageTransform";
constexpr char kDestroyImageTransform[] = "VarnelDestroyImageTransform";

/// Forwards to the module libvarnel_transforms.so (see module_file.h for where it is searched). Runs without
/// operations never open it. Without the module every operation returns False.
class LazyImageTransform : public ImageTransform
{
public:
    LazyImageTransform() = default;
    LazyImageTransform(const LazyImageTransform&) = delete;
    LazyImageTransform& operator=(const LazyImageTransform&) = delete;
    ~LazyImageTransform() override;

    void SetImage(ImageBuffer& image) override;
    void GetImageBytes(ImageBuffer& image) override;
    void GetMaskBytes(ImageBuffer& mask) override;

    bool Autocrop() override { return Pass(&ImageTransform::Autocrop); }
    bool Autocontrast() override { return Pass(&ImageTransform::Autocontrast); }
    bool AutoLevel() override { return Pass(&ImageTransform::AutoLevel); }
    bool Brightness(std::int32_t level) override { return Pass(&ImageTransform::Brightness, level); }
    bool Contrast(double stretch) override { return Pass(&ImageTransform::Contrast, stretch); }
    bool Gamma(double gamma) override { return Pass(&ImageTransform::Gamma, gamma); }
    bool Hue(double angle) override { return Pass(&ImageTransform::Hue, angle); }
    bool Lightness(double lightness) override { return Pass(&ImageTransform::Lightness, lightness); }
    bool Saturation(double saturation) override { return Pass(&ImageTransform::Saturation, saturation); }
    bool BalanceHLS(double hue, double lightness, double saturation) override
    {
        return Pass(&ImageTransform::BalanceHLS, hue, lightness, saturation);
    }
    bool Red(std::int32_t level) override { return Pass(&ImageTransform::Red, level); }
    bool Green(std::int32_t level) override { return Pass(&ImageTransform::Green, level); }
    bool Blue(std::int32_t level) override { return Pass(&ImageTransform::Blue, level); }
    bool Colorize(std::uint8_t red, std::uint8_t green, std::uint8_t blue) override
    {
        return Pass(&ImageTransform::Colorize, red, green, blue);
    }
    bool Desaturate() override { return Pass(&ImageTransform::Desaturate); }
    bool Intensity() override { return Pass(&ImageTransform::Intensity); }
    bool Invert() override { return Pass(&ImageTransform::Invert); }
    bool Equalize(double level) override { return Pass(&ImageTransform::Equalize, level); }
    bool Threshold(std::uint8_t level) override { return Pass(&ImageTransform::Threshold, level); }
    bool Posterize(std::int32_t levels) override { return Pass(&ImageTransform::Posterize, levels); }
    bool FilterDifference(std::int32_t direction) override
    {
        return Pass(&ImageTransform::FilterDifference, direction);
    }
    bool FilterHighPass(std::int32_t kind) override { return Pass(&ImageTransform::FilterHighPass, kind); }
    bool FilterLowPass(std::int32_t kind) override { return Pass(&ImageTransform::FilterLowPass, kind); }
    bool FilterLaplas(std::int32_t kind) override { return Pass(&ImageTransform::FilterLaplas, kind); }
    bool FilterSobel(std::int32_t direction) override
    {
        return Pass(&ImageTransform::FilterSobel, direction);
    }
    bool FilterPrewitt(std::int32_t direction) override
    {
        return Pass(&ImageTransform::FilterPrewitt, direction);
    }
    bool FilterRoberts(std::int32_t direction) override
    {
        return Pass(&ImageTransform::FilterRoberts, direction);
    }
    bool FilterIsotropic(std::int32_t direction) override
    {
        return Pass(&ImageTransform::FilterIsotropic, direction);
    }
    bool FilterMinimal(std::int32_t size) override { return Pass(&ImageTransform::FilterMinimal, size); }
    bool FilterMaximal(std::int32_t size) override { return Pass(&ImageTransform::FilterMaximal, size); }
    bool FilterLineDetection(std::int32_t direction) override
    {
        return Pass(&ImageTransform::FilterLineDetection, direction);
    }
    bool FilterReserved(std::int32_t value) override { return Pass(&ImageTransform::FilterReserved, value); }
    bool FilterBlur(double amount) override { return Pass(&ImageTransform::FilterBlur, amount); }
    bool FilterSharpen(double amount) override { return Pass(&ImageTransform::FilterSharpen, amount); }
    bool Deinterlace(bool odd_lines, bool interpolate) override
    {
        return Pass(&ImageTransform::Deinterlace, odd_lines, interpolate);
    }
    bool MotionBlur(double angle, std::int32_t amount) override
    {
        return Pass(&ImageTransform::MotionBlur, angle, amount);
    }
    bool GaussianBlur(std::int32_t fuzziness) override
    {
        return Pass(&ImageTransform::GaussianBlur, fuzziness);
    }
    bool RadialBlur(double displacement) override { return Pass(&ImageTransform::RadialBlur, displacement); }
    bool ZoomBlur(double intensity) override { return Pass(&ImageTransform::ZoomBlur, intensity); }
    bool AddNoise(std::int32_t level, bool monochrome) override
    {
        return Pass(&ImageTransform::AddNoise, level, monochrome);
    }
    bool Diffuse(std::int32_t distance, double penetration) override
    {
        return Pass(&ImageTransform::Diffuse, distance, penetration);
    }
    bool Emboss(double angle, std::int32_t height, double brightness) override
    {
        return Pass(&ImageTransform::Emboss, angle, height, brightness);
    }
    bool Relief(double angle, double brightness, double smoothness) override
    {
        return Pass(&ImageTransform::Relief, angle, brightness, smoothness);
    }
    bool Texturize(double angle, double brightness, std::int32_t texture) override
    {
        return Pass(&ImageTransform::Texturize, angle, brightness, texture);
    }
    bool Mosaic(std::int32_t tile_size, bool plain_colour) override
    {
        return Pass(&ImageTransform::Mosaic, tile_size, plain_colour);
    }
    bool Dilation(std::uint8_t level, std::uint8_t threshold, bool square) override
    {
        return Pass(&ImageTransform::Dilation, level, threshold, square);
    }
    bool Erosion(std::uint8_t level, std::uint8_t threshold, bool square) override
    {
        return Pass(&ImageTransform::Erosion, level, threshold, square);
    }
    bool TraceContours(std::uint8_t level, std::uint8_t threshold, bool intensity) override
    {
        return Pass(&ImageTransform::TraceContours, level, threshold, intensity);
    }
    bool Halftones(std::int32_t cell_size, double contrast) override
    {
        return Pass(&ImageTransform::Halftones, cell_size, contrast);
    }
    bool Flip(bool vertical) override { return Pass(&ImageTransform::Flip, vertical); }
    bool Rotate(double angle, Colour background) override
    {
        return Pass(&ImageTransform::Rotate, angle, background);
    }
    bool Resize(std::int32_t width, std::int32_t height, std::int32_t interpolation,
                Colour background) override
    {
        return Pass(&ImageTransform::Resize, width, height, interpolation, background);
    }
    bool Shift(std::int32_t x, std::int32_t y, Colour background) override
    {
        return Pass(&ImageTransform::Shift, x, y, background);
    }
    bool Perspective(bool vertical, double angle) override
    {
        return Pass(&ImageTransform::Perspective, vertical, angle);
    }
    bool Skew(bool vertical, double angle) override { return Pass(&ImageTransform::Skew, vertical, angle); }
    bool Twirl(double angle) override { return Pass(&ImageTransform::Twirl, angle); }
    bool Reproduce(std::int32_t copies) override { return Pass(&ImageTransform::Reproduce, copies); }

private:
    template <typename... Parameters, typename... Arguments>
    bool Pass(bool (ImageTransform::*operation)(Parameters...), Arguments... arguments)
    {
        return Open() && (module_->*operation)(arguments...);
    }
    bool Open();

    bool tried_ = false;
    ImageTransform* module_ = nullptr;
    DestroyImageTransform* destroy_ = nullptr;
    ImageBuffer image_;  ///< the picture, until the module takes it
};

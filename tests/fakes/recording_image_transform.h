// Image operations that change nothing and record calls.
// Room: tests/fakes.
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "src/platform/image_transform.h"

class RecordingImageTransform : public ImageTransform
{
public:
    std::vector<std::string>
        calls;          ///< all calls, such as "SetImage 200x100" or "Resize 100 50 0 0", in order
    bool fail = false;  ///< makes every operation return False
    std::function<void()> on_set_image;  ///< called in SetImage

    void SetImage(ImageBuffer& image) override
    {
        calls.push_back("SetImage " + std::to_string(image.width) + "x" + std::to_string(image.height));
        image_ = std::exchange(image, {});
        if (on_set_image)
            on_set_image();
    }
    void GetImageBytes(ImageBuffer& image) override
    {
        calls.push_back("GetImageBytes");
        image = std::exchange(image_, {});
    }
    void GetMaskBytes(ImageBuffer& mask) override
    {
        calls.push_back("GetMaskBytes");
        mask = {};
    }

    bool Autocrop() override { return Record("Autocrop"); }
    bool Autocontrast() override { return Record("Autocontrast"); }
    bool AutoLevel() override { return Record("AutoLevel"); }
    bool Brightness(std::int32_t level) override { return Record("Brightness", level); }
    bool Contrast(double stretch) override { return Record("Contrast", stretch); }
    bool Gamma(double gamma) override { return Record("Gamma", gamma); }
    bool Hue(double angle) override { return Record("Hue", angle); }
    bool Lightness(double lightness) override { return Record("Lightness", lightness); }
    bool Saturation(double saturation) override { return Record("Saturation", saturation); }
    bool BalanceHLS(double hue, double lightness, double saturation) override
    {
        return Record("BalanceHLS", hue, lightness, saturation);
    }
    bool Red(std::int32_t level) override { return Record("Red", level); }
    bool Green(std::int32_t level) override { return Record("Green", level); }
    bool Blue(std::int32_t level) override { return Record("Blue", level); }
    bool Colorize(std::uint8_t red, std::uint8_t green, std::uint8_t blue) override
    {
        return Record("Colorize", red, green, blue);
    }
    bool Desaturate() override { return Record("Desaturate"); }
    bool Intensity() override { return Record("Intensity"); }
    bool Invert() override { return Record("Invert"); }
    bool Equalize(double level) override { return Record("Equalize", level); }
    bool Threshold(std::uint8_t level) override { return Record("Threshold", level); }
    bool Posterize(std::int32_t levels) override { return Record("Posterize", levels); }
    bool FilterDifference(std::int32_t direction) override { return Record("FilterDifference", direction); }
    bool FilterHighPass(std::int32_t kind) override { return Record("FilterHighPass", kind); }
    bool FilterLowPass(std::int32_t kind) override { return Record("FilterLowPass", kind); }
    bool FilterLaplas(std::int32_t kind) override { return Record("FilterLaplas", kind); }
    bool FilterSobel(std::int32_t direction) override { return Record("FilterSobel", direction); }
    bool FilterPrewitt(std::int32_t direction) override { return Record("FilterPrewitt", direction); }
    bool FilterRoberts(std::int32_t direction) override { return Record("FilterRoberts", direction); }
    bool FilterIsotropic(std::int32_t direction) override { return Record("FilterIsotropic", direction); }
    bool FilterMinimal(std::int32_t size) override { return Record("FilterMinimal", size); }
    bool FilterMaximal(std::int32_t size) override { return Record("FilterMaximal", size); }
    bool FilterLineDetection(std::int32_t direction) override
    {
        return Record("FilterLineDetection", direction);
    }
    bool FilterReserved(std::int32_t value) override { return Record("FilterReserved", value); }
    bool FilterBlur(double amount) override { return Record("FilterBlur", amount); }
    bool FilterSharpen(double amount) override { return Record("FilterSharpen", amount); }
    bool Deinterlace(bool odd_lines, bool interpolate) override
    {
        return Record("Deinterlace", odd_lines, interpolate);
    }
    bool MotionBlur(double angle, std::int32_t amount) override
    {
        return Record("MotionBlur", angle, amount);
    }
    bool GaussianBlur(std::int32_t fuzziness) override { return Record("GaussianBlur", fuzziness); }
    bool RadialBlur(double displacement) override { return Record("RadialBlur", displacement); }
    bool ZoomBlur(double intensity) override { return Record("ZoomBlur", intensity); }
    bool AddNoise(std::int32_t level, bool monochrome) override
    {
        return Record("AddNoise", level, monochrome);
    }
    bool Diffuse(std::int32_t distance, double penetration) override
    {
        return Record("Diffuse", distance, penetration);
    }
    bool Emboss(double angle, std::int32_t height, double brightness) override
    {
        return Record("Emboss", angle, height, brightness);
    }
    bool Relief(double angle, double brightness, double smoothness) override
    {
        return Record("Relief", angle, brightness, smoothness);
    }
    bool Texturize(double angle, double brightness, std::int32_t texture) override
    {
        return Record("Texturize", angle, brightness, texture);
    }
    bool Mosaic(std::int32_t tile_size, bool plain_colour) override
    {
        return Record("Mosaic", tile_size, plain_colour);
    }
    bool Dilation(std::uint8_t level, std::uint8_t threshold, bool square) override
    {
        return Record("Dilation", level, threshold, square);
    }
    bool Erosion(std::uint8_t level, std::uint8_t threshold, bool square) override
    {
        return Record("Erosion", level, threshold, square);
    }
    bool TraceContours(std::uint8_t level, std::uint8_t threshold, bool intensity) override
    {
        return Record("TraceContours", level, threshold, intensity);
    }
    bool Halftones(std::int32_t cell_size, double contrast) override
    {
        return Record("Halftones", cell_size, contrast);
    }
    bool Flip(bool vertical) override { return Record("Flip", vertical); }
    bool Rotate(double angle, Colour background) override { return Record("Rotate", angle, background); }
    bool Resize(std::int32_t width, std::int32_t height, std::int32_t interpolation,
                Colour background) override
    {
        return Record("Resize", width, height, interpolation, background);
    }
    bool Shift(std::int32_t x, std::int32_t y, Colour background) override
    {
        return Record("Shift", x, y, background);
    }
    bool Perspective(bool vertical, double angle) override { return Record("Perspective", vertical, angle); }
    bool Skew(bool vertical, double angle) override { return Record("Skew", vertical, angle); }
    bool Twirl(double angle) override { return Record("Twirl", angle); }
    bool Reproduce(std::int32_t copies) override { return Record("Reproduce", copies); }

private:
    static std::string Text(bool value) { return value ? "True" : "False"; }
    static std::string Text(std::int32_t value) { return std::to_string(value); }
    static std::string Text(std::uint8_t value) { return std::to_string(value); }
    static std::string Text(double value)
    {
        std::string result = std::to_string(value);
        result.erase(result.find_last_not_of('0') + 1);
        return result + (result.back() == '.' ? "0" : "");
    }
    template <typename... Arguments>
    bool Record(const char* operation, Arguments... arguments)
    {
        calls.push_back((std::string(operation) + ... + (" " + Text(arguments))));
        return !fail;
    }

    ImageBuffer image_;
};

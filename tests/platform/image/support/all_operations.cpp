// The table of operations.
#include "tests/platform/image/support/all_operations.h"

#include "src/platform/image/transforms/kernel_image_transform.h"

std::vector<NamedOperation> AllOperations(const Arguments& a)
{
    using T = ImageTransform;
    const double d = a.number, e = a.other;
    const std::int32_t l = a.whole_number, m = a.other_whole;
    const std::uint8_t n = a.byte;
    const bool b = a.flag;
    return {{"Autocrop", [](T& t) { return t.Autocrop(); }},
            {"Autocontrast", [](T& t) { return t.Autocontrast(); }},
            {"AutoLevel", [](T& t) { return t.AutoLevel(); }},
            {"Brightness", [=](T& t) { return t.Brightness(l); }},
            {"Contrast", [=](T& t) { return t.Contrast(d); }},
            {"Gamma", [=](T& t) { return t.Gamma(d); }},
            {"Hue", [=](T& t) { return t.Hue(d); }},
            {"Lightness", [=](T& t) { return t.Lightness(d); }},
            {"Saturation", [=](T& t) { return t.Saturation(d); }},
            {"BalanceHLS", [=](T& t) { return t.BalanceHLS(d, e, d); }},
            {"Red", [=](T& t) { return t.Red(l); }},
            {"Green", [=](T& t) { return t.Green(l); }},
            {"Blue", [=](T& t) { return t.Blue(l); }},
            {"Colorize", [=](T& t) { return t.Colorize(n, 200, 100); }},
            {"Desaturate", [](T& t) { return t.Desaturate(); }},
            {"Intensity", [](T& t) { return t.Intensity(); }},
            {"Invert", [](T& t) { return t.Invert(); }},
            {"Equalize", [=](T& t) { return t.Equalize(d); }},
            {"Threshold", [=](T& t) { return t.Threshold(n); }},
            {"Posterize", [=](T& t) { return t.Posterize(l); }},
            {"FilterDifference", [=](T& t) { return t.FilterDifference(l); }},
            {"FilterHighPass", [=](T& t) { return t.FilterHighPass(l); }},
            {"FilterLowPass", [=](T& t) { return t.FilterLowPass(l); }},
            {"FilterLaplas", [=](T& t) { return t.FilterLaplas(l); }},
            {"FilterSobel", [=](T& t) { return t.FilterSobel(l); }},
            {"FilterPrewitt", [=](T& t) { return t.FilterPrewitt(l); }},
            {"FilterRoberts", [=](T& t) { return t.FilterRoberts(l); }},
            {"FilterIsotropic", [=](T& t) { return t.FilterIsotropic(l); }},
            {"FilterMinimal", [=](T& t) { return t.FilterMinimal(l); }},
            {"FilterMaximal", [=](T& t) { return t.FilterMaximal(l); }},
            {"FilterLineDetection", [=](T& t) { return t.FilterLineDetection(l); }},
            {"FilterReserved", [=](T& t) { return t.FilterReserved(l); }},
            {"FilterBlur", [=](T& t) { return t.FilterBlur(d); }},
            {"FilterSharpen", [=](T& t) { return t.FilterSharpen(d); }},
            {"Deinterlace", [=](T& t) { return t.Deinterlace(b, !b); }},
            {"MotionBlur", [=](T& t) { return t.MotionBlur(d, l); }},
            {"GaussianBlur", [=](T& t) { return t.GaussianBlur(l); }},
            {"RadialBlur", [=](T& t) { return t.RadialBlur(d); }},
            {"ZoomBlur", [=](T& t) { return t.ZoomBlur(d); }},
            {"AddNoise", [=](T& t) { return t.AddNoise(l, b); }},
            {"Diffuse", [=](T& t) { return t.Diffuse(l, d); }},
            {"Emboss", [=](T& t) { return t.Emboss(d, l, e); }},
            {"Relief", [=](T& t) { return t.Relief(d, e, d); }},
            {"Texturize", [=](T& t) { return t.Texturize(d, e, l); }},
            {"Mosaic", [=](T& t) { return t.Mosaic(l, b); }},
            {"Dilation", [=](T& t) { return t.Dilation(n, 50, b); }},
            {"Erosion", [=](T& t) { return t.Erosion(n, 50, b); }},
            {"TraceContours", [=](T& t) { return t.TraceContours(n, 100, b); }},
            {"Halftones", [=](T& t) { return t.Halftones(l, d); }},
            {"Flip", [=](T& t) { return t.Flip(b); }},
            {"Rotate", [=](T& t) { return t.Rotate(d, m); }},
            {"Resize", [=](T& t) { return t.Resize(l, m, b ? l : 2, m); }},
            {"Shift", [=](T& t) { return t.Shift(l, m, m); }},
            {"Perspective", [=](T& t) { return t.Perspective(b, d); }},
            {"Skew", [=](T& t) { return t.Skew(b, d); }},
            {"Twirl", [=](T& t) { return t.Twirl(d); }},
            {"Reproduce", [=](T& t) { return t.Reproduce(l); }}};
}

bool ApplyOperation(const NamedOperation& named_operation, ImageBuffer& image)
{
    KernelImageTransform transform;
    transform.SetImage(image);
    const bool done = named_operation.apply(transform);
    transform.GetImageBytes(image);
    return done;
}

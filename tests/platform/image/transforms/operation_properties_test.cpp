// Properties of operations on random pictures.
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cmath>

#include "tests/platform/image/support/all_operations.h"
#include "tests/platform/image/support/kernel_pictures.h"

static ImageBuffer AnyPicture()
{
    const auto width = *rc::gen::inRange(1, 40), height = *rc::gen::inRange(1, 40);
    const auto channels = *rc::gen::element(1, 3, 4);
    return RandomPicture(width, height, channels, *rc::gen::inRange<std::uint32_t>(0, 1000000));
}

using Apply = std::function<bool(ImageTransform&)>;

static ImageBuffer After(ImageBuffer image, const Apply& apply)
{
    RC_ASSERT(ApplyOperation({"", apply}, image));
    RC_ASSERT(Sound(image));
    return image;
}

RC_GTEST_PROP(Operations, ChangeNothingAtNeutralValues, ())
{
    const ImageBuffer image = AnyPicture();
    const double turn = 360.0 * *rc::gen::inRange(-3, 4);
    const std::int32_t any = *rc::gen::arbitrary<std::int32_t>();
    const std::vector<std::pair<const char*, Apply>> neutral{
        {"Brightness", [](auto& t) { return t.Brightness(0); }},
        {"Contrast", [](auto& t) { return t.Contrast(0); }},
        {"Gamma", [](auto& t) { return t.Gamma(1); }},
        {"Hue", [=](auto& t) { return t.Hue(turn); }},
        {"Lightness", [](auto& t) { return t.Lightness(0); }},
        {"Saturation", [](auto& t) { return t.Saturation(0); }},
        {"BalanceHLS", [=](auto& t) { return t.BalanceHLS(turn, 0, 0); }},
        {"Red", [](auto& t) { return t.Red(0); }},
        {"Green", [](auto& t) { return t.Green(0); }},
        {"Blue", [](auto& t) { return t.Blue(0); }},
        {"Colorize", [](auto& t) { return t.Colorize(255, 255, 255); }},
        {"Equalize", [](auto& t) { return t.Equalize(0); }},
        {"FilterReserved", [=](auto& t) { return t.FilterReserved(any); }},
        {"FilterMinimal", [](auto& t) { return t.FilterMinimal(1); }},
        {"FilterMaximal", [](auto& t) { return t.FilterMaximal(1); }},
        {"FilterBlur", [](auto& t) { return t.FilterBlur(0); }},
        {"FilterSharpen", [](auto& t) { return t.FilterSharpen(0); }},
        {"MotionBlur", [](auto& t) { return t.MotionBlur(20, 1); }},
        {"GaussianBlur", [](auto& t) { return t.GaussianBlur(0); }},
        {"RadialBlur", [](auto& t) { return t.RadialBlur(0); }},
        {"ZoomBlur", [](auto& t) { return t.ZoomBlur(0); }},
        {"AddNoise", [](auto& t) { return t.AddNoise(0, false); }},
        {"Diffuse", [](auto& t) { return t.Diffuse(0, 10) && t.Diffuse(10, 0); }},
        {"Mosaic", [](auto& t) { return t.Mosaic(1, false); }},
        {"Dilation", [](auto& t) { return t.Dilation(0, 0, true); }},
        {"Erosion", [](auto& t) { return t.Erosion(0, 0, true); }},
        {"Halftones", [](auto& t) { return t.Halftones(4, 0); }},
        {"Rotate", [=](auto& t) { return t.Rotate(turn, any); }},
        {"Resize", [&](auto& t) { return t.Resize(image.width, image.height, any, any); }},
        {"Shift", [=](auto& t) { return t.Shift(0, 0, any); }},
        {"Perspective", [](auto& t) { return t.Perspective(true, 0); }},
        {"Skew", [](auto& t) { return t.Skew(false, 0); }},
        {"Twirl", [](auto& t) { return t.Twirl(0); }},
        {"Reproduce", [](auto& t) { return t.Reproduce(1); }}};
    for (const auto& [name, apply] : neutral)
        if (!Equal(After(image, apply), image))
            RC_FAIL(name);
}

RC_GTEST_PROP(Operations, AreReversedByTheirInverses, ())
{
    const ImageBuffer image = AnyPicture();
    const bool vertical = *rc::gen::arbitrary<bool>();
    const double quarter = 90.0 * *rc::gen::inRange(-4, 5);

    RC_ASSERT(Equal(After(image, [=](auto& t) { return t.Flip(vertical) && t.Flip(vertical); }), image));
    RC_ASSERT(
        Equal(After(image, [=](auto& t) { return t.Rotate(quarter, 0) && t.Rotate(-quarter, 0); }), image));
    RC_ASSERT(Equal(After(image, [](auto& t) { return t.Invert() && t.Invert(); }), image));
    RC_ASSERT(Equal(After(image,
                          [](auto& t) {
                              return t.Rotate(90, 0) && t.Rotate(90, 0) && t.Rotate(90, 0) && t.Rotate(90, 0);
                          }),
                    image));
}

RC_GTEST_PROP(Operations, AreIdempotentWhereExpected, ())
{
    const ImageBuffer image = AnyPicture();
    const std::int32_t l = *rc::gen::inRange(2, 20);
    const auto n = static_cast<std::uint8_t>(*rc::gen::inRange(0, 256));
    const std::vector<std::pair<const char*, Apply>> all{
        {"Autocontrast", [](auto& t) { return t.Autocontrast(); }},
        {"AutoLevel", [](auto& t) { return t.AutoLevel(); }},
        {"Desaturate", [](auto& t) { return t.Desaturate(); }},
        {"Intensity", [](auto& t) { return t.Intensity(); }},
        {"Threshold", [=](auto& t) { return t.Threshold(n); }},
        {"Posterize", [=](auto& t) { return t.Posterize(l); }},
        {"Mosaic", [=](auto& t) { return t.Mosaic(l, true); }},
        {"Deinterlace", [=](auto& t) { return t.Deinterlace(n > 99, false); }}};
    for (const auto& [name, apply] : all) {
        const ImageBuffer once = After(image, apply);
        if (!Equal(After(once, apply), once))
            RC_FAIL(name);
    }
}

RC_GTEST_PROP(Operations, AreDeterministic, ())
{
    const ImageBuffer image = AnyPicture();
    for (const NamedOperation& named_operation :
         AllOperations({0.7, 25, 5, 9, 77, *rc::gen::arbitrary<bool>()})) {
        ImageBuffer one = image, other = image;
        RC_ASSERT(ApplyOperation(named_operation, one) && ApplyOperation(named_operation, other));
        if (!Equal(one, other))
            RC_FAIL(named_operation.name);
    }
}

RC_GTEST_PROP(Operations, KeepAlphaUnlessGeometric, ())
{
    const ImageBuffer image = RandomPicture(*rc::gen::inRange(1, 40), *rc::gen::inRange(1, 40), 4,
                                            *rc::gen::inRange<std::uint32_t>(0, 1000000));
    for (const NamedOperation& named_operation :
         AllOperations({0.7, 25, 5, 9, 77, *rc::gen::arbitrary<bool>()})) {
        const bool moves = named_operation.name == "Autocrop" || named_operation.name == "Flip" ||
                           named_operation.name == "Rotate" || named_operation.name == "Resize" ||
                           named_operation.name == "Shift" || named_operation.name == "Perspective" ||
                           named_operation.name == "Skew" || named_operation.name == "Twirl" ||
                           named_operation.name == "Reproduce";
        ImageBuffer changed = image;
        RC_ASSERT(ApplyOperation(named_operation, changed));
        if (!moves && !SameAlpha(changed, image))
            RC_FAIL(named_operation.name);
    }
}

RC_GTEST_PROP(Operations, KeepFlatPictureFlatWhenSmoothing, ())
{
    const ImageBuffer image =
        Plain(*rc::gen::inRange(1, 40), *rc::gen::inRange(1, 40), *rc::gen::element(1, 3, 4),
              static_cast<std::uint8_t>(*rc::gen::inRange(0, 256)));
    const std::int32_t l = *rc::gen::inRange(0, 300);
    const double d = *rc::gen::inRange(-400, 400) / 3.0;
    const std::vector<std::pair<const char*, Apply>> all{
        {"GaussianBlur", [=](auto& t) { return t.GaussianBlur(l); }},
        {"MotionBlur", [=](auto& t) { return t.MotionBlur(d, l); }},
        {"RadialBlur", [=](auto& t) { return t.RadialBlur(d); }},
        {"ZoomBlur", [=](auto& t) { return t.ZoomBlur(d); }},
        {"FilterBlur", [=](auto& t) { return t.FilterBlur(d); }},
        {"FilterSharpen", [=](auto& t) { return t.FilterSharpen(d); }},
        {"FilterLowPass", [=](auto& t) { return t.FilterLowPass(l); }},
        {"FilterHighPass", [=](auto& t) { return t.FilterHighPass(l); }},
        {"FilterMinimal", [=](auto& t) { return t.FilterMinimal(l); }},
        {"FilterMaximal", [=](auto& t) { return t.FilterMaximal(l); }},
        {"Mosaic", [=](auto& t) { return t.Mosaic(l, l % 2 > 0); }},
        {"Diffuse", [=](auto& t) { return t.Diffuse(l, d); }},
        {"Twirl", [=](auto& t) { return t.Twirl(d); }},
        {"Reproduce", [=](auto& t) { return t.Reproduce(l); }}};
    for (const auto& [name, apply] : all)
        if (!Equal(After(image, apply), image))
            RC_FAIL(name);
}

RC_GTEST_PROP(Operations, BoundValuesByMinimumAndMaximum, ())
{
    const ImageBuffer image = AnyPicture();
    const std::int32_t size = *rc::gen::inRange(1, 300);
    const ImageBuffer min = After(image, [=](auto& t) { return t.FilterMinimal(size); });
    const ImageBuffer greatest = After(image, [=](auto& t) { return t.FilterMaximal(size); });
    const ImageBuffer worn = After(image, [](auto& t) { return t.Erosion(255, 0, true); });
    const ImageBuffer grown = After(image, [](auto& t) { return t.Dilation(255, 0, true); });
    for (std::size_t i = 0; i < image.bytes.size(); ++i) {
        RC_ASSERT(min.bytes[i] <= image.bytes[i] && image.bytes[i] <= greatest.bytes[i]);
        RC_ASSERT(worn.bytes[i] <= image.bytes[i] && image.bytes[i] <= grown.bytes[i]);
    }
}

RC_GTEST_PROP(Operations, GiveDocumentedSizes, ())
{
    const ImageBuffer image = AnyPicture();
    const std::int32_t width = *rc::gen::inRange(-5, 90), height = *rc::gen::inRange(-5, 90);
    const std::int32_t kind = *rc::gen::inRange(-1, 4);
    const ImageBuffer resized = After(image, [=](auto& t) { return t.Resize(width, height, kind, 0); });
    RC_ASSERT(resized.width == std::max(width, 1) && resized.height == std::max(height, 1));
    RC_ASSERT(resized.channels == image.channels);

    const double angle = *rc::gen::inRange(1, 90);
    const double cos = std::cos(angle * 3.14159265358979323846 / 180);
    const double sin = std::sin(angle * 3.14159265358979323846 / 180);
    const ImageBuffer turned = After(image, [=](auto& t) { return t.Rotate(angle, 0); });
    RC_ASSERT(std::fabs(turned.width - image.width * cos - image.height * sin) < 1);
    RC_ASSERT(std::fabs(turned.height - image.width * sin - image.height * cos) < 1);

    const ImageBuffer skewed = After(image, [=](auto& t) { return t.Skew(false, angle); });
    RC_ASSERT(skewed.height == image.height && skewed.width >= image.width);
    const ImageBuffer cropped = After(image, [](auto& t) { return t.Autocrop(); });
    RC_ASSERT(cropped.width <= image.width && cropped.height <= image.height);
    for (const Apply& apply :
         {Apply([](auto& t) { return t.Reproduce(3); }), Apply([](auto& t) { return t.Shift(2, -3, 0); }),
          Apply([=](auto& t) { return t.Perspective(true, angle); }),
          Apply([=](auto& t) { return t.Twirl(angle); })}) {
        const ImageBuffer same = After(image, apply);
        RC_ASSERT(same.width == image.width && same.height == image.height);
    }
}

RC_GTEST_PROP(Operations, PreserveOrderOfLevels, ())
{
    // Every level once, in order.
    ImageBuffer image = Plain(256, 1, 1, 0);
    for (std::size_t i = 0; i < 256; ++i)
        image.bytes[i] = static_cast<std::uint8_t>(i);
    const std::int32_t l = *rc::gen::inRange(-300, 300);
    const double d = *rc::gen::inRange(0, 100) / 100.0;
    const std::vector<std::pair<const char*, Apply>> all{
        {"Brightness", [=](auto& t) { return t.Brightness(l); }},
        {"Contrast", [=](auto& t) { return t.Contrast(d); }},
        {"Gamma", [=](auto& t) { return t.Gamma(4 * d); }},
        {"Lightness", [=](auto& t) { return t.Lightness(l / 300.0); }},
        {"Equalize", [=](auto& t) { return t.Equalize(d); }},
        {"Posterize", [=](auto& t) { return t.Posterize(std::abs(l)); }},
        {"Threshold", [=](auto& t) { return t.Threshold(static_cast<std::uint8_t>(l)); }},
        {"Autocontrast", [](auto& t) { return t.Autocontrast(); }}};
    for (const auto& [name, apply] : all) {
        const ImageBuffer changed = After(image, apply);
        if (!std::is_sorted(changed.bytes.begin(), changed.bytes.end()))
            RC_FAIL(name);
    }
}

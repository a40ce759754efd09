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

using namespace operations;

static ImageBuffer After(ImageBuffer image, const std::vector<OperationCall>& calls)
{
    for (const OperationCall& call : calls)
        RC_ASSERT(ApplyOperation(call, image));
    RC_ASSERT(Sound(image));
    return image;
}

static ImageBuffer After(const ImageBuffer& image, const OperationCall& call)
{
    return After(image, std::vector{call});
}

RC_GTEST_PROP(Operations, ChangeNothingAtNeutralValues, ())
{
    const ImageBuffer image = AnyPicture();
    const double turn = 360.0 * *rc::gen::inRange(-3, 4);
    const std::int32_t any = *rc::gen::arbitrary<std::int32_t>();
    const std::vector<OperationCall> neutral{Brightness(0),
                                             Contrast(0),
                                             Gamma(1),
                                             Hue(turn),
                                             Lightness(0),
                                             Saturation(0),
                                             BalanceHLS(turn, 0, 0),
                                             Red(0),
                                             Green(0),
                                             Blue(0),
                                             Colorize(255, 255, 255),
                                             Equalize(0),
                                             FilterReserved(any),
                                             FilterMinimal(1),
                                             FilterMaximal(1),
                                             FilterBlur(0),
                                             FilterSharpen(0),
                                             MotionBlur(20, 1),
                                             GaussianBlur(0),
                                             RadialBlur(0),
                                             ZoomBlur(0),
                                             AddNoise(0, false),
                                             Diffuse(0, 10),
                                             Diffuse(10, 0),
                                             Mosaic(1, false),
                                             Dilation(0, 0, true),
                                             Erosion(0, 0, true),
                                             Halftones(4, 0),
                                             Rotate(turn, any),
                                             Resize(image.width, image.height, any, any),
                                             Shift(0, 0, any),
                                             Perspective(true, 0),
                                             Skew(false, 0),
                                             Twirl(0),
                                             Reproduce(1)};
    for (const OperationCall& call : neutral)
        if (!Equal(After(image, call), image))
            RC_FAIL(std::string(call.sName));
}

RC_GTEST_PROP(Operations, AreReversedByTheirInverses, ())
{
    const ImageBuffer image = AnyPicture();
    const bool vertical = *rc::gen::arbitrary<bool>();
    const double quarter = 90.0 * *rc::gen::inRange(-4, 5);

    RC_ASSERT(Equal(After(image, {Flip(vertical), Flip(vertical)}), image));
    RC_ASSERT(Equal(After(image, {Rotate(quarter, 0), Rotate(-quarter, 0)}), image));
    RC_ASSERT(Equal(After(image, {Invert(), Invert()}), image));
    RC_ASSERT(Equal(After(image, {Rotate(90, 0), Rotate(90, 0), Rotate(90, 0), Rotate(90, 0)}), image));
}

RC_GTEST_PROP(Operations, AreIdempotentWhereExpected, ())
{
    const ImageBuffer image = AnyPicture();
    const std::int32_t l = *rc::gen::inRange(2, 20);
    const auto n = static_cast<std::uint8_t>(*rc::gen::inRange(0, 256));
    const std::vector<OperationCall> all{
        Autocontrast(), AutoLevel(),  Desaturate(),    Intensity(),
        Threshold(n),   Posterize(l), Mosaic(l, true), Deinterlace(n > 99, false)};
    for (const OperationCall& call : all) {
        const ImageBuffer once = After(image, call);
        if (!Equal(After(once, call), once))
            RC_FAIL(std::string(call.sName));
    }
}

RC_GTEST_PROP(Operations, AreDeterministic, ())
{
    const ImageBuffer image = AnyPicture();
    for (const OperationCall& call : AllOperations({0.7, 25, 5, 9, 77, *rc::gen::arbitrary<bool>()})) {
        ImageBuffer one = image, other = image;
        RC_ASSERT(ApplyOperation(call, one) && ApplyOperation(call, other));
        if (!Equal(one, other))
            RC_FAIL(std::string(call.sName));
    }
}

RC_GTEST_PROP(Operations, KeepAlphaUnlessGeometric, ())
{
    const ImageBuffer image = RandomPicture(*rc::gen::inRange(1, 40), *rc::gen::inRange(1, 40), 4,
                                            *rc::gen::inRange<std::uint32_t>(0, 1000000));
    for (const OperationCall& call : AllOperations({0.7, 25, 5, 9, 77, *rc::gen::arbitrary<bool>()})) {
        const bool moves = call.sName == "Autocrop" || call.sName == "Flip" || call.sName == "Rotate" ||
                           call.sName == "Resize" || call.sName == "Shift" || call.sName == "Perspective" ||
                           call.sName == "Skew" || call.sName == "Twirl" || call.sName == "Reproduce";
        ImageBuffer changed = image;
        RC_ASSERT(ApplyOperation(call, changed));
        if (!moves && !SameAlpha(changed, image))
            RC_FAIL(std::string(call.sName));
    }
}

RC_GTEST_PROP(Operations, KeepFlatPictureFlatWhenSmoothing, ())
{
    const ImageBuffer image =
        Plain(*rc::gen::inRange(1, 40), *rc::gen::inRange(1, 40), *rc::gen::element(1, 3, 4),
              static_cast<std::uint8_t>(*rc::gen::inRange(0, 256)));
    const std::int32_t l = *rc::gen::inRange(0, 300);
    const double d = *rc::gen::inRange(-400, 400) / 3.0;
    const std::vector<OperationCall> all{
        GaussianBlur(l),      MotionBlur(d, l), RadialBlur(d),     ZoomBlur(d),      FilterBlur(d),
        FilterSharpen(d),     FilterLowPass(l), FilterHighPass(l), FilterMinimal(l), FilterMaximal(l),
        Mosaic(l, l % 2 > 0), Diffuse(l, d),    Twirl(d),          Reproduce(l)};
    for (const OperationCall& call : all)
        if (!Equal(After(image, call), image))
            RC_FAIL(std::string(call.sName));
}

RC_GTEST_PROP(Operations, BoundValuesByMinimumAndMaximum, ())
{
    const ImageBuffer image = AnyPicture();
    const std::int32_t size = *rc::gen::inRange(1, 300);
    const ImageBuffer min = After(image, FilterMinimal(size));
    const ImageBuffer greatest = After(image, FilterMaximal(size));
    const ImageBuffer worn = After(image, Erosion(255, 0, true));
    const ImageBuffer grown = After(image, Dilation(255, 0, true));
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
    const ImageBuffer resized = After(image, Resize(width, height, kind, 0));
    RC_ASSERT(resized.width == std::max(width, 1) && resized.height == std::max(height, 1));
    RC_ASSERT(resized.channels == image.channels);

    const double angle = *rc::gen::inRange(1, 90);
    const double cos = std::cos(angle * 3.14159265358979323846 / 180);
    const double sin = std::sin(angle * 3.14159265358979323846 / 180);
    const ImageBuffer turned = After(image, Rotate(angle, 0));
    RC_ASSERT(std::fabs(turned.width - image.width * cos - image.height * sin) < 1);
    RC_ASSERT(std::fabs(turned.height - image.width * sin - image.height * cos) < 1);

    const ImageBuffer skewed = After(image, Skew(false, angle));
    RC_ASSERT(skewed.height == image.height && skewed.width >= image.width);
    const ImageBuffer cropped = After(image, Autocrop());
    RC_ASSERT(cropped.width <= image.width && cropped.height <= image.height);
    for (const OperationCall& call :
         {Reproduce(3), Shift(2, -3, 0), Perspective(true, angle), Twirl(angle)}) {
        const ImageBuffer same = After(image, call);
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
    const std::vector<OperationCall> all{Brightness(l),
                                         Contrast(d),
                                         Gamma(4 * d),
                                         Lightness(l / 300.0),
                                         Equalize(d),
                                         Posterize(std::abs(l)),
                                         Threshold(static_cast<std::uint8_t>(l)),
                                         Autocontrast()};
    for (const OperationCall& call : all) {
        const ImageBuffer changed = After(image, call);
        if (!std::is_sorted(changed.bytes.begin(), changed.bytes.end()))
            RC_FAIL(std::string(call.sName));
    }
}

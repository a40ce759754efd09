// Properties of the operations over random pictures.
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cmath>

#include "tests/platform/image/support/all_operations.h"
#include "tests/platform/image/support/kernel_pictures.h"

static ImageBuffer aAnyPicture()
{
    const auto lWidth = *rc::gen::inRange(1, 40), lHeight = *rc::gen::inRange(1, 40);
    const auto lChannels = *rc::gen::element(1, 3, 4);
    return aRandomPicture(lWidth, lHeight, lChannels, *rc::gen::inRange<std::uint32_t>(0, 1000000));
}

using Apply = std::function<bool(ImageTransform&)>;

static ImageBuffer aAfter(ImageBuffer aImage, const Apply& fnApply)
{
    RC_ASSERT(bApply({"", fnApply}, aImage));
    RC_ASSERT(bSound(aImage));
    return aImage;
}

RC_GTEST_PROP(Operations, ChangeNothingByNeutralValues, ())
{
    const ImageBuffer aImage = aAnyPicture();
    const double dTurn = 360.0 * *rc::gen::inRange(-3, 4);
    const std::int32_t lAny = *rc::gen::arbitrary<std::int32_t>();
    const std::vector<std::pair<const char*, Apply>> aNeutral{
        {"Brightness", [](auto& t) { return t.Brightness(0); }},
        {"Contrast", [](auto& t) { return t.Contrast(0); }},
        {"Gamma", [](auto& t) { return t.Gamma(1); }},
        {"Hue", [=](auto& t) { return t.Hue(dTurn); }},
        {"Lightness", [](auto& t) { return t.Lightness(0); }},
        {"Saturation", [](auto& t) { return t.Saturation(0); }},
        {"BalanceHLS", [=](auto& t) { return t.BalanceHLS(dTurn, 0, 0); }},
        {"Red", [](auto& t) { return t.Red(0); }},
        {"Green", [](auto& t) { return t.Green(0); }},
        {"Blue", [](auto& t) { return t.Blue(0); }},
        {"Colorize", [](auto& t) { return t.Colorize(255, 255, 255); }},
        {"Equalize", [](auto& t) { return t.Equalize(0); }},
        {"FilterReserved", [=](auto& t) { return t.FilterReserved(lAny); }},
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
        {"Rotate", [=](auto& t) { return t.Rotate(dTurn, lAny); }},
        {"Resize", [&](auto& t) { return t.Resize(aImage.width, aImage.height, lAny, lAny); }},
        {"Shift", [=](auto& t) { return t.Shift(0, 0, lAny); }},
        {"Perspective", [](auto& t) { return t.Perspective(true, 0); }},
        {"Skew", [](auto& t) { return t.Skew(false, 0); }},
        {"Twirl", [](auto& t) { return t.Twirl(0); }},
        {"Reproduce", [](auto& t) { return t.Reproduce(1); }}};
    for (const auto& [sName, fnApply] : aNeutral)
        if (!bEqual(aAfter(aImage, fnApply), aImage))
            RC_FAIL(sName);
}

RC_GTEST_PROP(Operations, AreUndoneByTheirOpposites, ())
{
    const ImageBuffer aImage = aAnyPicture();
    const bool bVertical = *rc::gen::arbitrary<bool>();
    const double dQuarter = 90.0 * *rc::gen::inRange(-4, 5);

    RC_ASSERT(
        bEqual(aAfter(aImage, [=](auto& t) { return t.Flip(bVertical) && t.Flip(bVertical); }), aImage));
    RC_ASSERT(bEqual(aAfter(aImage, [=](auto& t) { return t.Rotate(dQuarter, 0) && t.Rotate(-dQuarter, 0); }),
                     aImage));
    RC_ASSERT(bEqual(aAfter(aImage, [](auto& t) { return t.Invert() && t.Invert(); }), aImage));
    RC_ASSERT(bEqual(aAfter(aImage,
                            [](auto& t) {
                                return t.Rotate(90, 0) && t.Rotate(90, 0) && t.Rotate(90, 0) &&
                                       t.Rotate(90, 0);
                            }),
                     aImage));
}

RC_GTEST_PROP(Operations, DoNothingMoreWhenDoneAgain, ())
{
    const ImageBuffer aImage = aAnyPicture();
    const std::int32_t l = *rc::gen::inRange(2, 20);
    const auto n = static_cast<std::uint8_t>(*rc::gen::inRange(0, 256));
    const std::vector<std::pair<const char*, Apply>> aAll{
        {"Autocontrast", [](auto& t) { return t.Autocontrast(); }},
        {"AutoLevel", [](auto& t) { return t.AutoLevel(); }},
        {"Desaturate", [](auto& t) { return t.Desaturate(); }},
        {"Intensity", [](auto& t) { return t.Intensity(); }},
        {"Threshold", [=](auto& t) { return t.Threshold(n); }},
        {"Posterize", [=](auto& t) { return t.Posterize(l); }},
        {"Mosaic", [=](auto& t) { return t.Mosaic(l, true); }},
        {"Deinterlace", [=](auto& t) { return t.Deinterlace(n > 99, false); }}};
    for (const auto& [sName, fnApply] : aAll) {
        const ImageBuffer aOnce = aAfter(aImage, fnApply);
        if (!bEqual(aAfter(aOnce, fnApply), aOnce))
            RC_FAIL(sName);
    }
}

RC_GTEST_PROP(Operations, GiveTheSameForTheSamePicture, ())
{
    const ImageBuffer aImage = aAnyPicture();
    for (const NamedOperation& obj : aAllOperations({0.7, 25, 5, 9, 77, *rc::gen::arbitrary<bool>()})) {
        ImageBuffer aOne = aImage, aOther = aImage;
        RC_ASSERT(bApply(obj, aOne) && bApply(obj, aOther));
        if (!bEqual(aOne, aOther))
            RC_FAIL(obj.sName);
    }
}

RC_GTEST_PROP(Operations, CarryAlphaUnlessTheyMoveThePicture, ())
{
    const ImageBuffer aImage = aRandomPicture(*rc::gen::inRange(1, 40), *rc::gen::inRange(1, 40), 4,
                                              *rc::gen::inRange<std::uint32_t>(0, 1000000));
    for (const NamedOperation& obj : aAllOperations({0.7, 25, 5, 9, 77, *rc::gen::arbitrary<bool>()})) {
        const bool bMoves = obj.sName == "Autocrop" || obj.sName == "Flip" || obj.sName == "Rotate" ||
                            obj.sName == "Resize" || obj.sName == "Shift" || obj.sName == "Perspective" ||
                            obj.sName == "Skew" || obj.sName == "Twirl" || obj.sName == "Reproduce";
        ImageBuffer aChanged = aImage;
        RC_ASSERT(bApply(obj, aChanged));
        if (!bMoves && !bSameAlpha(aChanged, aImage))
            RC_FAIL(obj.sName);
    }
}

RC_GTEST_PROP(Operations, OfBlurringLeaveAPlainPicturePlain, ())
{
    const ImageBuffer aImage =
        aPlain(*rc::gen::inRange(1, 40), *rc::gen::inRange(1, 40), *rc::gen::element(1, 3, 4),
               static_cast<std::uint8_t>(*rc::gen::inRange(0, 256)));
    const std::int32_t l = *rc::gen::inRange(0, 300);
    const double d = *rc::gen::inRange(-400, 400) / 3.0;
    const std::vector<std::pair<const char*, Apply>> aAll{
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
    for (const auto& [sName, fnApply] : aAll)
        if (!bEqual(aAfter(aImage, fnApply), aImage))
            RC_FAIL(sName);
}

RC_GTEST_PROP(Operations, OfTheLeastAndGreatestEncloseEveryValue, ())
{
    const ImageBuffer aImage = aAnyPicture();
    const std::int32_t lSize = *rc::gen::inRange(1, 300);
    const ImageBuffer aLeast = aAfter(aImage, [=](auto& t) { return t.FilterMinimal(lSize); });
    const ImageBuffer aGreatest = aAfter(aImage, [=](auto& t) { return t.FilterMaximal(lSize); });
    const ImageBuffer aWorn = aAfter(aImage, [](auto& t) { return t.Erosion(255, 0, true); });
    const ImageBuffer aGrown = aAfter(aImage, [](auto& t) { return t.Dilation(255, 0, true); });
    for (std::size_t i = 0; i < aImage.bytes.size(); ++i) {
        RC_ASSERT(aLeast.bytes[i] <= aImage.bytes[i] && aImage.bytes[i] <= aGreatest.bytes[i]);
        RC_ASSERT(aWorn.bytes[i] <= aImage.bytes[i] && aImage.bytes[i] <= aGrown.bytes[i]);
    }
}

RC_GTEST_PROP(Operations, HaveTheSizesThatTheySay, ())
{
    const ImageBuffer aImage = aAnyPicture();
    const std::int32_t lWidth = *rc::gen::inRange(-5, 90), lHeight = *rc::gen::inRange(-5, 90);
    const std::int32_t lKind = *rc::gen::inRange(-1, 4);
    const ImageBuffer aResized = aAfter(aImage, [=](auto& t) { return t.Resize(lWidth, lHeight, lKind, 0); });
    RC_ASSERT(aResized.width == std::max(lWidth, 1) && aResized.height == std::max(lHeight, 1));
    RC_ASSERT(aResized.channels == aImage.channels);

    const double dAngle = *rc::gen::inRange(1, 90);
    const double dCos = std::cos(dAngle * 3.14159265358979323846 / 180);
    const double dSin = std::sin(dAngle * 3.14159265358979323846 / 180);
    const ImageBuffer aTurned = aAfter(aImage, [=](auto& t) { return t.Rotate(dAngle, 0); });
    RC_ASSERT(std::fabs(aTurned.width - aImage.width * dCos - aImage.height * dSin) < 1);
    RC_ASSERT(std::fabs(aTurned.height - aImage.width * dSin - aImage.height * dCos) < 1);

    const ImageBuffer aSkewed = aAfter(aImage, [=](auto& t) { return t.Skew(false, dAngle); });
    RC_ASSERT(aSkewed.height == aImage.height && aSkewed.width >= aImage.width);
    const ImageBuffer aCropped = aAfter(aImage, [](auto& t) { return t.Autocrop(); });
    RC_ASSERT(aCropped.width <= aImage.width && aCropped.height <= aImage.height);
    for (const Apply& fnApply :
         {Apply([](auto& t) { return t.Reproduce(3); }), Apply([](auto& t) { return t.Shift(2, -3, 0); }),
          Apply([=](auto& t) { return t.Perspective(true, dAngle); }),
          Apply([=](auto& t) { return t.Twirl(dAngle); })}) {
        const ImageBuffer aSame = aAfter(aImage, fnApply);
        RC_ASSERT(aSame.width == aImage.width && aSame.height == aImage.height);
    }
}

RC_GTEST_PROP(Operations, OnLevelsKeepTheirOrder, ())
{
    // Every level once, in its order.
    ImageBuffer aImage = aPlain(256, 1, 1, 0);
    for (std::size_t i = 0; i < 256; ++i)
        aImage.bytes[i] = static_cast<std::uint8_t>(i);
    const std::int32_t l = *rc::gen::inRange(-300, 300);
    const double d = *rc::gen::inRange(0, 100) / 100.0;
    const std::vector<std::pair<const char*, Apply>> aAll{
        {"Brightness", [=](auto& t) { return t.Brightness(l); }},
        {"Contrast", [=](auto& t) { return t.Contrast(d); }},
        {"Gamma", [=](auto& t) { return t.Gamma(4 * d); }},
        {"Lightness", [=](auto& t) { return t.Lightness(l / 300.0); }},
        {"Equalize", [=](auto& t) { return t.Equalize(d); }},
        {"Posterize", [=](auto& t) { return t.Posterize(std::abs(l)); }},
        {"Threshold", [=](auto& t) { return t.Threshold(static_cast<std::uint8_t>(l)); }},
        {"Autocontrast", [](auto& t) { return t.Autocontrast(); }}};
    for (const auto& [sName, fnApply] : aAll) {
        const ImageBuffer aChanged = aAfter(aImage, fnApply);
        if (!std::is_sorted(aChanged.bytes.begin(), aChanged.bytes.end()))
            RC_FAIL(sName);
    }
}

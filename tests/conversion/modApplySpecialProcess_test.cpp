// Which image library calls each special process makes.
#include "src/conversion/modApplySpecialProcess.h"

#include <gtest/gtest.h>

#include "src/base/clsConversionOptions.h"
#include "src/base/raised_error.h"
#include "tests/fakes/test_application.h"

namespace
{

using Calls = std::vector<std::string>;

class ApplySpecialProcess : public testing::Test
{
protected:
    ApplySpecialProcess() { SetImage(200, 100); }

    void SetImage(std::int32_t lWidth, std::int32_t lHeight)
    {
        aImage.width = lWidth;
        aImage.height = lHeight;
        aImage.channels = 1;
        aImage.bytes.assign(static_cast<std::size_t>(lWidth) * static_cast<std::size_t>(lHeight), 9);
    }
    bool bApply(std::int32_t lSpecialProcess, const std::string& sOwn)
    {
        objOptions.sActionToDo = "S";
        objOptions.lSpecialProcess = lSpecialProcess;
        objOptions.sExtraParams = "1^0^FALSE^75^^^^^^^^" + sOwn;
        app.transform.calls.clear();
        return bApplySpecialProcess(app, objOptions, aImage);
    }
    /// The one operation called.
    std::string sCall(std::int32_t lSpecialProcess, const std::string& sOwn)
    {
        EXPECT_TRUE(bApply(lSpecialProcess, sOwn));
        const Calls& aCalls = app.transform.calls;
        return aCalls.size() == 1 ? aCalls[0] : "(" + std::to_string(aCalls.size()) + " calls)";
    }
    std::string sErrorOf(std::int32_t lSpecialProcess, const std::string& sOwn)
    {
        try {
            bApply(lSpecialProcess, sOwn);
            return "";
        } catch (const clsRaisedError& objError) {
            return objError.sDescription();
        }
    }

    TestApplication app;
    clsConversionOptions objOptions;
    ImageBuffer aImage;
};

}  // namespace

TEST_F(ApplySpecialProcess, CallsEachOperationWithItsArguments)
{
    const struct {
        std::int32_t lSpecialProcess;
        const char* sOwn;
        const char* sCall;
    } aExpected[] = {
        {2, "10^20^2^255^FALSE^", "Resize 10 20 2 255"},
        {3, "1.5^255^", "Rotate 1.5 255"},
        {4, "", "Autocrop"},
        {5, "1^", "Flip True"},
        {6, "1^-2^255^", "Shift 1 -2 255"},
        {7, "True^1.5^", "Perspective True 1.5"},
        {8, "False^1.5^", "Skew False 1.5"},
        {9, "1.5^", "Twirl 1.5"},
        {10, "3^", "Reproduce 3"},
        {11, "", "Autocontrast"},
        {12, "", "AutoLevel"},
        {13, "1.5^0.25^0.5^", "BalanceHLS 1.5 0.25 0.5"},
        {14, "-5^", "Blue -5"},
        {15, "40^", "Brightness 40"},
        {16, "1^2^255^", "Colorize 1 2 255"},
        {17, "0.75^", "Contrast 0.75"},
        {18, "", "Desaturate"},
        {19, "0.5^", "Equalize 0.5"},
        {20, "0.5^", "Gamma 0.5"},
        {21, "-5^", "Green -5"},
        {22, "1.5^", "Hue 1.5"},
        {23, "", "Intensity"},
        {24, "", "Invert"},
        {25, "0.25^", "Lightness 0.25"},
        {26, "5^", "Posterize 5"},
        {27, "-5^", "Red -5"},
        {28, "-0.5^", "Saturation -0.5"},
        {29, "100^", "Threshold 100"},
        {31, "True^35^", "AddNoise 35 True"},
        {32, "1.5^20^", "Diffuse 20 1.5"},
        {33, "True^1^2^", "Dilation 1 2 True"},
        {34, "1.5^2.5^3^", "Emboss 1.5 3 2.5"},
        {35, "True^1^2^", "Erosion 1 2 True"},
        {36, "7^", "GaussianBlur 7"},
        {37, "1.5^20^", "Halftones 20 1.5"},
        {38, "True^6^", "Mosaic 6 True"},
        {39, "1.5^10^", "MotionBlur 1.5 10"},
        {40, "1.5^", "RadialBlur 1.5"},
        {41, "1.5^2.5^3.5^", "Relief 1.5 2.5 3.5"},
        {42, "1.5^2.5^3^", "Texturize 1.5 2.5 3"},
        {43, "True^1^2^", "TraceContours 1 2 True"},
        {44, "33.5^", "ZoomBlur 33.5"},
        {45, "2^", "FilterHighPass 2"},
        {46, "2^", "FilterLowPass 2"},
        {47, "7^", "FilterDifference 7"},
        {48, "1^", "FilterLaplas 1"},
        {49, "1^", "FilterSobel 1"},
        {50, "1^", "FilterPrewitt 1"},
        {51, "1^", "FilterRoberts 1"},
        {52, "1^", "FilterIsotropic 1"},
        {53, "3^", "FilterLineDetection 3"},
        {54, "0.5^", "FilterBlur 0.5"},
        {55, "0.5^", "FilterSharpen 0.5"},
        {56, "9^", "FilterReserved 9"},
        {58, "2^", "FilterMinimal 2"},
        {59, "2^", "FilterMaximal 2"},
        {60, "True^False^", "Deinterlace True False"},
    };
    for (const auto& objExpected : aExpected)
        EXPECT_EQ(sCall(objExpected.lSpecialProcess, objExpected.sOwn), objExpected.sCall);
    EXPECT_EQ(std::size(aExpected) + 1, SpecialProcessCatalogue().size());
}

TEST_F(ApplySpecialProcess, FlipsVerticallyOnlyForDirectionOne)
{
    EXPECT_EQ(sCall(5, "0^"), "Flip False");
    EXPECT_EQ(sCall(5, "2^"), "Flip False");
    EXPECT_EQ(sCall(5, "-1^"), "Flip False");
}

TEST_F(ApplySpecialProcess, UsesZerosForMalformedDetails)
{
    EXPECT_EQ(sCall(3, "round"), "Rotate 0.0 0");
    EXPECT_EQ(sCall(60, ""), "Deinterlace False False");
}

TEST_F(ApplySpecialProcess, LeavesImagesOfConversionsAlone)
{
    objOptions.sActionToDo = "CS";
    objOptions.lSpecialProcess = 24;

    EXPECT_TRUE(bApplySpecialProcess(app, objOptions, aImage));

    EXPECT_TRUE(app.transform.calls.empty());
    EXPECT_EQ(aImage.width, 200);
}

TEST_F(ApplySpecialProcess, CallsNoOperationForUnknownNumbers)
{
    for (const std::int32_t lProcess : {57, 30, 99, 0, -1, 100}) {
        EXPECT_TRUE(bApply(lProcess, "1^2^3^"));
        EXPECT_TRUE(app.transform.calls.empty());
        EXPECT_EQ(aImage.width, 200);
    }
}

TEST_F(ApplySpecialProcess, IgnoresAResizeToZeroByZero)
{
    EXPECT_TRUE(bApply(2, "0^0^0^0^TRUE^"));

    EXPECT_TRUE(app.transform.calls.empty());
    EXPECT_EQ(aImage.bytes.size(), 20000u);
}

TEST_F(ApplySpecialProcess, KeepsAspectRatioIfOneSizeIsZero)
{
    EXPECT_EQ(sCall(2, "0^50^0^0^FALSE^"), "Resize 100 50 0 0");
    EXPECT_EQ(sCall(2, "300^0^0^0^FALSE^"), "Resize 300 150 0 0");
    EXPECT_EQ(sCall(2, "0^50^1^7^TRUE^"), "Resize 100 50 1 7");
}

TEST_F(ApplySpecialProcess, TakesTwoSizesLiterallyDespiteRetainAspectRatio)
{
    EXPECT_EQ(sCall(2, "10^10^0^0^TRUE^"), "Resize 10 10 0 0");
}

TEST_F(ApplySpecialProcess, RoundsTheComputedSize)
{
    SetImage(3, 2);
    EXPECT_EQ(sCall(2, "0^3^0^0^"), "Resize 4 3 0 0");
    SetImage(3, 2);
    EXPECT_EQ(sCall(2, "4^0^0^0^"), "Resize 4 3 0 0");
}

TEST_F(ApplySpecialProcess, AssumesRatioOneForZeroHeight)
{
    SetImage(200, 0);
    EXPECT_EQ(sCall(2, "0^50^0^0^"), "Resize 50 50 0 0");
}

TEST_F(ApplySpecialProcess, AvoidsDivisionByZeroForZeroWidth)
{
    SetImage(0, 100);
    EXPECT_EQ(sCall(2, "50^0^0^0^"), "Resize 50 0 0 0");
}

TEST_F(ApplySpecialProcess, RaisesOverflowForSizesBeyondSixteenBits)
{
    EXPECT_EQ(sErrorOf(2, "40000^10^0^0^"), "Overflow");
    EXPECT_EQ(sErrorOf(2, "10^32768^0^0^"), "Overflow");
    SetImage(200, 100);
    EXPECT_EQ(sErrorOf(2, "0^20000^0^0^"), "Overflow");
    SetImage(30000, 1);
    EXPECT_EQ(sErrorOf(2, "0^2000000000^0^0^"), "Overflow");
    SetImage(200, 100);
    EXPECT_EQ(sCall(2, "32767^10^0^0^"), "Resize 32767 10 0 0");
}

TEST_F(ApplySpecialProcess, RaisesOverflowForLevelsBeyondAByte)
{
    for (const std::string sOwn : {"256^0^0", "0^256^0", "0^0^256", "-1^0^0"})
        EXPECT_EQ(sErrorOf(16, sOwn), "Overflow");
    EXPECT_EQ(sErrorOf(29, "256"), "Overflow");
    for (const std::int32_t lProcess : {33, 35, 43}) {
        EXPECT_EQ(sErrorOf(lProcess, "True^256^0"), "Overflow");
        EXPECT_EQ(sErrorOf(lProcess, "True^0^-1"), "Overflow");
    }
    EXPECT_EQ(sCall(16, "255^255^255"), "Colorize 255 255 255");
}

TEST_F(ApplySpecialProcess, LeavesImageAloneAfterAnOverflow)
{
    EXPECT_EQ(sErrorOf(29, "256"), "Overflow");
    EXPECT_TRUE(app.transform.calls.empty());
    EXPECT_EQ(aImage.bytes.size(), 20000u);
}

TEST_F(ApplySpecialProcess, PassesOtherNumbersUnchecked)
{
    EXPECT_EQ(sCall(15, "-300^"), "Brightness -300");
    EXPECT_EQ(sCall(26, "100000^"), "Posterize 100000");
}

TEST_F(ApplySpecialProcess, NamesTheProcessWhenItsOperationFails)
{
    app.transform.fail = true;
    EXPECT_EQ(sErrorOf(24, ""),
              "Color: Invert could not be done (picture too large, out of memory, or the transforms are not "
              "installed)");
    EXPECT_TRUE(sErrorOf(56, "1").starts_with("SP_FILTERRESERVED56 could not be done"));
}

TEST_F(ApplySpecialProcess, UsesTheDecimalSignOfTheLocale)
{
    app.locale.sign = ',';
    EXPECT_EQ(sCall(17, "0,75^"), "Contrast 0.75");
}

TEST_F(ApplySpecialProcess, LeavesTheFormsOptionsAlone)
{
    app.frmMain.sImageConversionOptions = "mine";
    bApply(15, "1^");
    EXPECT_EQ(app.frmMain.sImageConversionOptions, "mine");
}

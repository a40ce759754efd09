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
        aCalls;          ///< all calls, such as "SetImage 200x100" or "Resize 100 50 0 0", in order
    bool bFail = false;  ///< makes every operation return False
    std::function<void()> OnSetImage;  ///< called in SetImage

    void SetImage(ImageBuffer& aImage) override
    {
        aCalls.push_back("SetImage " + std::to_string(aImage.width) + "x" + std::to_string(aImage.height));
        m_aImage = std::exchange(aImage, {});
        if (OnSetImage)
            OnSetImage();
    }
    void GetImageBytes(ImageBuffer& aImage) override
    {
        aCalls.push_back("GetImageBytes");
        aImage = std::exchange(m_aImage, {});
    }
    void GetMaskBytes(ImageBuffer& aMask) override
    {
        aCalls.push_back("GetMaskBytes");
        aMask = {};
    }

    bool Autocrop() override { return bRecord("Autocrop"); }
    bool Autocontrast() override { return bRecord("Autocontrast"); }
    bool AutoLevel() override { return bRecord("AutoLevel"); }
    bool Brightness(std::int32_t lLevel) override { return bRecord("Brightness", lLevel); }
    bool Contrast(double dStretch) override { return bRecord("Contrast", dStretch); }
    bool Gamma(double dGamma) override { return bRecord("Gamma", dGamma); }
    bool Hue(double dAngle) override { return bRecord("Hue", dAngle); }
    bool Lightness(double dLightness) override { return bRecord("Lightness", dLightness); }
    bool Saturation(double dSaturation) override { return bRecord("Saturation", dSaturation); }
    bool BalanceHLS(double dHue, double dLightness, double dSaturation) override
    {
        return bRecord("BalanceHLS", dHue, dLightness, dSaturation);
    }
    bool Red(std::int32_t lLevel) override { return bRecord("Red", lLevel); }
    bool Green(std::int32_t lLevel) override { return bRecord("Green", lLevel); }
    bool Blue(std::int32_t lLevel) override { return bRecord("Blue", lLevel); }
    bool Colorize(std::uint8_t nRed, std::uint8_t nGreen, std::uint8_t nBlue) override
    {
        return bRecord("Colorize", nRed, nGreen, nBlue);
    }
    bool Desaturate() override { return bRecord("Desaturate"); }
    bool Intensity() override { return bRecord("Intensity"); }
    bool Invert() override { return bRecord("Invert"); }
    bool Equalize(double dLevel) override { return bRecord("Equalize", dLevel); }
    bool Threshold(std::uint8_t nLevel) override { return bRecord("Threshold", nLevel); }
    bool Posterize(std::int32_t lLevels) override { return bRecord("Posterize", lLevels); }
    bool FilterDifference(std::int32_t lDirection) override
    {
        return bRecord("FilterDifference", lDirection);
    }
    bool FilterHighPass(std::int32_t lKind) override { return bRecord("FilterHighPass", lKind); }
    bool FilterLowPass(std::int32_t lKind) override { return bRecord("FilterLowPass", lKind); }
    bool FilterLaplas(std::int32_t lKind) override { return bRecord("FilterLaplas", lKind); }
    bool FilterSobel(std::int32_t lDirection) override { return bRecord("FilterSobel", lDirection); }
    bool FilterPrewitt(std::int32_t lDirection) override { return bRecord("FilterPrewitt", lDirection); }
    bool FilterRoberts(std::int32_t lDirection) override { return bRecord("FilterRoberts", lDirection); }
    bool FilterIsotropic(std::int32_t lDirection) override { return bRecord("FilterIsotropic", lDirection); }
    bool FilterMinimal(std::int32_t lSize) override { return bRecord("FilterMinimal", lSize); }
    bool FilterMaximal(std::int32_t lSize) override { return bRecord("FilterMaximal", lSize); }
    bool FilterLineDetection(std::int32_t lDirection) override
    {
        return bRecord("FilterLineDetection", lDirection);
    }
    bool FilterReserved(std::int32_t lValue) override { return bRecord("FilterReserved", lValue); }
    bool FilterBlur(double dAmount) override { return bRecord("FilterBlur", dAmount); }
    bool FilterSharpen(double dAmount) override { return bRecord("FilterSharpen", dAmount); }
    bool Deinterlace(bool bOddLines, bool bInterpolate) override
    {
        return bRecord("Deinterlace", bOddLines, bInterpolate);
    }
    bool MotionBlur(double dAngle, std::int32_t lAmount) override
    {
        return bRecord("MotionBlur", dAngle, lAmount);
    }
    bool GaussianBlur(std::int32_t lFuzziness) override { return bRecord("GaussianBlur", lFuzziness); }
    bool RadialBlur(double dDisplacement) override { return bRecord("RadialBlur", dDisplacement); }
    bool ZoomBlur(double dIntensity) override { return bRecord("ZoomBlur", dIntensity); }
    bool AddNoise(std::int32_t lLevel, bool bMonochrome) override
    {
        return bRecord("AddNoise", lLevel, bMonochrome);
    }
    bool Diffuse(std::int32_t lDistance, double dPenetration) override
    {
        return bRecord("Diffuse", lDistance, dPenetration);
    }
    bool Emboss(double dAngle, std::int32_t lHeight, double dBrightness) override
    {
        return bRecord("Emboss", dAngle, lHeight, dBrightness);
    }
    bool Relief(double dAngle, double dBrightness, double dSmoothness) override
    {
        return bRecord("Relief", dAngle, dBrightness, dSmoothness);
    }
    bool Texturize(double dAngle, double dBrightness, std::int32_t lTexture) override
    {
        return bRecord("Texturize", dAngle, dBrightness, lTexture);
    }
    bool Mosaic(std::int32_t lTileSize, bool bPlainColour) override
    {
        return bRecord("Mosaic", lTileSize, bPlainColour);
    }
    bool Dilation(std::uint8_t nLevel, std::uint8_t nThreshold, bool bSquare) override
    {
        return bRecord("Dilation", nLevel, nThreshold, bSquare);
    }
    bool Erosion(std::uint8_t nLevel, std::uint8_t nThreshold, bool bSquare) override
    {
        return bRecord("Erosion", nLevel, nThreshold, bSquare);
    }
    bool TraceContours(std::uint8_t nLevel, std::uint8_t nThreshold, bool bIntensity) override
    {
        return bRecord("TraceContours", nLevel, nThreshold, bIntensity);
    }
    bool Halftones(std::int32_t lCellSize, double dContrast) override
    {
        return bRecord("Halftones", lCellSize, dContrast);
    }
    bool Flip(bool bVertical) override { return bRecord("Flip", bVertical); }
    bool Rotate(double dAngle, Colour lBackground) override { return bRecord("Rotate", dAngle, lBackground); }
    bool Resize(std::int32_t lWidth, std::int32_t lHeight, std::int32_t lInterpolation,
                Colour lBackground) override
    {
        return bRecord("Resize", lWidth, lHeight, lInterpolation, lBackground);
    }
    bool Shift(std::int32_t lX, std::int32_t lY, Colour lBackground) override
    {
        return bRecord("Shift", lX, lY, lBackground);
    }
    bool Perspective(bool bVertical, double dAngle) override
    {
        return bRecord("Perspective", bVertical, dAngle);
    }
    bool Skew(bool bVertical, double dAngle) override { return bRecord("Skew", bVertical, dAngle); }
    bool Twirl(double dAngle) override { return bRecord("Twirl", dAngle); }
    bool Reproduce(std::int32_t lCopies) override { return bRecord("Reproduce", lCopies); }

private:
    static std::string sText(bool bValue) { return bValue ? "True" : "False"; }
    static std::string sText(std::int32_t lValue) { return std::to_string(lValue); }
    static std::string sText(std::uint8_t nValue) { return std::to_string(nValue); }
    static std::string sText(double dValue)
    {
        std::string sResult = std::to_string(dValue);
        sResult.erase(sResult.find_last_not_of('0') + 1);
        return sResult + (sResult.back() == '.' ? "0" : "");
    }
    template <typename... Arguments>
    bool bRecord(const char* sOperation, Arguments... aArguments)
    {
        aCalls.push_back((std::string(sOperation) + ... + (" " + sText(aArguments))));
        return !bFail;
    }

    ImageBuffer m_aImage;
};

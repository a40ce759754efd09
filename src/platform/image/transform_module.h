// Opens the module of the transforms, when the first operation is called.
// Room: platform/image.
#pragma once

#include "src/platform/image_transform.h"

/// What the module offers: an ImageTransform of its own, made and destroyed by it.
using CreateImageTransform = ImageTransform*();
using DestroyImageTransform = void(ImageTransform*);
constexpr char kCreateImageTransform[] = "VarnelCreateImageTransform";
constexpr char kDestroyImageTransform[] = "VarnelDestroyImageTransform";

/// Hands everything on to the module libvarnel_transforms.so (where it is looked for: module_file.h). A run
/// that transforms nothing never opens it. Without the module every operation is False.
class LazyImageTransform : public ImageTransform
{
public:
    LazyImageTransform() = default;
    LazyImageTransform(const LazyImageTransform&) = delete;
    LazyImageTransform& operator=(const LazyImageTransform&) = delete;
    ~LazyImageTransform() override;

    void SetImage(ImageBuffer& aImage) override;
    void GetImageBytes(ImageBuffer& aImage) override;
    void GetMaskBytes(ImageBuffer& aMask) override;

    bool Autocrop() override { return bPass(&ImageTransform::Autocrop); }
    bool Autocontrast() override { return bPass(&ImageTransform::Autocontrast); }
    bool AutoLevel() override { return bPass(&ImageTransform::AutoLevel); }
    bool Brightness(std::int32_t lLevel) override { return bPass(&ImageTransform::Brightness, lLevel); }
    bool Contrast(double dStretch) override { return bPass(&ImageTransform::Contrast, dStretch); }
    bool Gamma(double dGamma) override { return bPass(&ImageTransform::Gamma, dGamma); }
    bool Hue(double dAngle) override { return bPass(&ImageTransform::Hue, dAngle); }
    bool Lightness(double dLightness) override { return bPass(&ImageTransform::Lightness, dLightness); }
    bool Saturation(double dSaturation) override { return bPass(&ImageTransform::Saturation, dSaturation); }
    bool BalanceHLS(double dHue, double dLightness, double dSaturation) override
    {
        return bPass(&ImageTransform::BalanceHLS, dHue, dLightness, dSaturation);
    }
    bool Red(std::int32_t lLevel) override { return bPass(&ImageTransform::Red, lLevel); }
    bool Green(std::int32_t lLevel) override { return bPass(&ImageTransform::Green, lLevel); }
    bool Blue(std::int32_t lLevel) override { return bPass(&ImageTransform::Blue, lLevel); }
    bool Colorize(std::uint8_t nRed, std::uint8_t nGreen, std::uint8_t nBlue) override
    {
        return bPass(&ImageTransform::Colorize, nRed, nGreen, nBlue);
    }
    bool Desaturate() override { return bPass(&ImageTransform::Desaturate); }
    bool Intensity() override { return bPass(&ImageTransform::Intensity); }
    bool Invert() override { return bPass(&ImageTransform::Invert); }
    bool Equalize(double dLevel) override { return bPass(&ImageTransform::Equalize, dLevel); }
    bool Threshold(std::uint8_t nLevel) override { return bPass(&ImageTransform::Threshold, nLevel); }
    bool Posterize(std::int32_t lLevels) override { return bPass(&ImageTransform::Posterize, lLevels); }
    bool FilterDifference(std::int32_t lDirection) override
    {
        return bPass(&ImageTransform::FilterDifference, lDirection);
    }
    bool FilterHighPass(std::int32_t lKind) override { return bPass(&ImageTransform::FilterHighPass, lKind); }
    bool FilterLowPass(std::int32_t lKind) override { return bPass(&ImageTransform::FilterLowPass, lKind); }
    bool FilterLaplas(std::int32_t lKind) override { return bPass(&ImageTransform::FilterLaplas, lKind); }
    bool FilterSobel(std::int32_t lDirection) override
    {
        return bPass(&ImageTransform::FilterSobel, lDirection);
    }
    bool FilterPrewitt(std::int32_t lDirection) override
    {
        return bPass(&ImageTransform::FilterPrewitt, lDirection);
    }
    bool FilterRoberts(std::int32_t lDirection) override
    {
        return bPass(&ImageTransform::FilterRoberts, lDirection);
    }
    bool FilterIsotropic(std::int32_t lDirection) override
    {
        return bPass(&ImageTransform::FilterIsotropic, lDirection);
    }
    bool FilterMinimal(std::int32_t lSize) override { return bPass(&ImageTransform::FilterMinimal, lSize); }
    bool FilterMaximal(std::int32_t lSize) override { return bPass(&ImageTransform::FilterMaximal, lSize); }
    bool FilterLineDetection(std::int32_t lDirection) override
    {
        return bPass(&ImageTransform::FilterLineDetection, lDirection);
    }
    bool FilterReserved(std::int32_t lValue) override
    {
        return bPass(&ImageTransform::FilterReserved, lValue);
    }
    bool FilterBlur(double dAmount) override { return bPass(&ImageTransform::FilterBlur, dAmount); }
    bool FilterSharpen(double dAmount) override { return bPass(&ImageTransform::FilterSharpen, dAmount); }
    bool Deinterlace(bool bOddLines, bool bInterpolate) override
    {
        return bPass(&ImageTransform::Deinterlace, bOddLines, bInterpolate);
    }
    bool MotionBlur(double dAngle, std::int32_t lAmount) override
    {
        return bPass(&ImageTransform::MotionBlur, dAngle, lAmount);
    }
    bool GaussianBlur(std::int32_t lFuzziness) override
    {
        return bPass(&ImageTransform::GaussianBlur, lFuzziness);
    }
    bool RadialBlur(double dDisplacement) override
    {
        return bPass(&ImageTransform::RadialBlur, dDisplacement);
    }
    bool ZoomBlur(double dIntensity) override { return bPass(&ImageTransform::ZoomBlur, dIntensity); }
    bool AddNoise(std::int32_t lLevel, bool bMonochrome) override
    {
        return bPass(&ImageTransform::AddNoise, lLevel, bMonochrome);
    }
    bool Diffuse(std::int32_t lDistance, double dPenetration) override
    {
        return bPass(&ImageTransform::Diffuse, lDistance, dPenetration);
    }
    bool Emboss(double dAngle, std::int32_t lHeight, double dBrightness) override
    {
        return bPass(&ImageTransform::Emboss, dAngle, lHeight, dBrightness);
    }
    bool Relief(double dAngle, double dBrightness, double dSmoothness) override
    {
        return bPass(&ImageTransform::Relief, dAngle, dBrightness, dSmoothness);
    }
    bool Texturize(double dAngle, double dBrightness, std::int32_t lTexture) override
    {
        return bPass(&ImageTransform::Texturize, dAngle, dBrightness, lTexture);
    }
    bool Mosaic(std::int32_t lTileSize, bool bPlainColour) override
    {
        return bPass(&ImageTransform::Mosaic, lTileSize, bPlainColour);
    }
    bool Dilation(std::uint8_t nLevel, std::uint8_t nThreshold, bool bSquare) override
    {
        return bPass(&ImageTransform::Dilation, nLevel, nThreshold, bSquare);
    }
    bool Erosion(std::uint8_t nLevel, std::uint8_t nThreshold, bool bSquare) override
    {
        return bPass(&ImageTransform::Erosion, nLevel, nThreshold, bSquare);
    }
    bool TraceContours(std::uint8_t nLevel, std::uint8_t nThreshold, bool bIntensity) override
    {
        return bPass(&ImageTransform::TraceContours, nLevel, nThreshold, bIntensity);
    }
    bool Halftones(std::int32_t lCellSize, double dContrast) override
    {
        return bPass(&ImageTransform::Halftones, lCellSize, dContrast);
    }
    bool Flip(bool bVertical) override { return bPass(&ImageTransform::Flip, bVertical); }
    bool Rotate(double dAngle, Colour lBackground) override
    {
        return bPass(&ImageTransform::Rotate, dAngle, lBackground);
    }
    bool Resize(std::int32_t lWidth, std::int32_t lHeight, std::int32_t lInterpolation,
                Colour lBackground) override
    {
        return bPass(&ImageTransform::Resize, lWidth, lHeight, lInterpolation, lBackground);
    }
    bool Shift(std::int32_t lX, std::int32_t lY, Colour lBackground) override
    {
        return bPass(&ImageTransform::Shift, lX, lY, lBackground);
    }
    bool Perspective(bool bVertical, double dAngle) override
    {
        return bPass(&ImageTransform::Perspective, bVertical, dAngle);
    }
    bool Skew(bool bVertical, double dAngle) override
    {
        return bPass(&ImageTransform::Skew, bVertical, dAngle);
    }
    bool Twirl(double dAngle) override { return bPass(&ImageTransform::Twirl, dAngle); }
    bool Reproduce(std::int32_t lCopies) override { return bPass(&ImageTransform::Reproduce, lCopies); }

private:
    template <typename... Parameters, typename... Arguments>
    bool bPass(bool (ImageTransform::*fnOperation)(Parameters...), Arguments... aArguments)
    {
        return bOpen() && (m_pModule->*fnOperation)(aArguments...);
    }
    bool bOpen();

    bool m_bTried = false;
    ImageTransform* m_pModule = nullptr;
    DestroyImageTransform* m_pDestroy = nullptr;
    ImageBuffer m_aImage;  ///< the picture, until the module takes it
};

// The picture in work, and the kernel for each operation on it.
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

/// Each operation is one line that names its kernel: a function bool OPERATION(ImageBuffer& aImage, ...) of
/// the namespace transforms, which is False, or throws std::bad_alloc, with aImage as it was.
class KernelImageTransform : public ImageTransform
{
public:
    void SetImage(ImageBuffer& aImage) override;
    void GetImageBytes(ImageBuffer& aImage) override;
    void GetMaskBytes(ImageBuffer& aMask) override;

    bool Autocontrast() override { return bDo(transforms::Autocontrast); }
    bool AutoLevel() override { return bDo(transforms::AutoLevel); }
    bool Brightness(std::int32_t lLevel) override { return bDo(transforms::Brightness, lLevel); }
    bool Contrast(double dStretch) override { return bDo(transforms::Contrast, dStretch); }
    bool Gamma(double dGamma) override { return bDo(transforms::Gamma, dGamma); }
    bool Hue(double dAngle) override { return bDo(transforms::Hue, dAngle); }
    bool Lightness(double dLightness) override { return bDo(transforms::Lightness, dLightness); }
    bool Saturation(double dSaturation) override { return bDo(transforms::Saturation, dSaturation); }
    bool BalanceHLS(double dHue, double dLightness, double dSaturation) override
    {
        return bDo(transforms::BalanceHLS, dHue, dLightness, dSaturation);
    }
    bool Red(std::int32_t lLevel) override { return bDo(transforms::Red, lLevel); }
    bool Green(std::int32_t lLevel) override { return bDo(transforms::Green, lLevel); }
    bool Blue(std::int32_t lLevel) override { return bDo(transforms::Blue, lLevel); }
    bool Colorize(std::uint8_t nRed, std::uint8_t nGreen, std::uint8_t nBlue) override
    {
        return bDo(transforms::Colorize, nRed, nGreen, nBlue);
    }
    bool Desaturate() override { return bDo(transforms::Desaturate); }
    bool Intensity() override { return bDo(transforms::Intensity); }
    bool Invert() override { return bDo(transforms::Invert); }
    bool Equalize(double dLevel) override { return bDo(transforms::Equalize, dLevel); }
    bool Threshold(std::uint8_t nLevel) override { return bDo(transforms::Threshold, nLevel); }
    bool Posterize(std::int32_t lLevels) override { return bDo(transforms::Posterize, lLevels); }
    bool FilterDifference(std::int32_t lDirection) override
    {
        return bDo(transforms::FilterDifference, lDirection);
    }
    bool FilterHighPass(std::int32_t lKind) override { return bDo(transforms::FilterHighPass, lKind); }
    bool FilterLowPass(std::int32_t lKind) override { return bDo(transforms::FilterLowPass, lKind); }
    bool FilterLaplas(std::int32_t lKind) override { return bDo(transforms::FilterLaplas, lKind); }
    bool FilterSobel(std::int32_t lDirection) override { return bDo(transforms::FilterSobel, lDirection); }
    bool FilterPrewitt(std::int32_t lDirection) override
    {
        return bDo(transforms::FilterPrewitt, lDirection);
    }
    bool FilterRoberts(std::int32_t lDirection) override
    {
        return bDo(transforms::FilterRoberts, lDirection);
    }
    bool FilterIsotropic(std::int32_t lDirection) override
    {
        return bDo(transforms::FilterIsotropic, lDirection);
    }
    bool FilterMinimal(std::int32_t lSize) override { return bDo(transforms::FilterMinimal, lSize); }
    bool FilterMaximal(std::int32_t lSize) override { return bDo(transforms::FilterMaximal, lSize); }
    bool FilterLineDetection(std::int32_t lDirection) override
    {
        return bDo(transforms::FilterLineDetection, lDirection);
    }
    bool FilterReserved(std::int32_t lValue) override { return bDo(transforms::FilterReserved, lValue); }
    bool FilterBlur(double dAmount) override { return bDo(transforms::FilterBlur, dAmount); }
    bool FilterSharpen(double dAmount) override { return bDo(transforms::FilterSharpen, dAmount); }
    bool Deinterlace(bool bOddLines, bool bInterpolate) override
    {
        return bDo(transforms::Deinterlace, bOddLines, bInterpolate);
    }

    bool MotionBlur(double dAngle, std::int32_t lAmount) override
    {
        return bDo(transforms::MotionBlur, dAngle, lAmount);
    }
    bool GaussianBlur(std::int32_t lFuzziness) override { return bDo(transforms::GaussianBlur, lFuzziness); }
    bool RadialBlur(double dDisplacement) override { return bDo(transforms::RadialBlur, dDisplacement); }
    bool ZoomBlur(double dIntensity) override { return bDo(transforms::ZoomBlur, dIntensity); }
    bool AddNoise(std::int32_t lLevel, bool bMonochrome) override
    {
        return bDo(transforms::AddNoise, lLevel, bMonochrome);
    }
    bool Diffuse(std::int32_t lDistance, double dPenetration) override
    {
        return bDo(transforms::Diffuse, lDistance, dPenetration);
    }
    bool Emboss(double dAngle, std::int32_t lHeight, double dBrightness) override
    {
        return bDo(transforms::Emboss, dAngle, lHeight, dBrightness);
    }
    bool Relief(double dAngle, double dBrightness, double dSmoothness) override
    {
        return bDo(transforms::Relief, dAngle, dBrightness, dSmoothness);
    }
    bool Texturize(double dAngle, double dBrightness, std::int32_t lTexture) override
    {
        return bDo(transforms::Texturize, dAngle, dBrightness, lTexture);
    }
    bool Mosaic(std::int32_t lTileSize, bool bPlainColour) override
    {
        return bDo(transforms::Mosaic, lTileSize, bPlainColour);
    }
    bool Dilation(std::uint8_t nLevel, std::uint8_t nThreshold, bool bSquare) override
    {
        return bDo(transforms::Dilation, nLevel, nThreshold, bSquare);
    }
    bool Erosion(std::uint8_t nLevel, std::uint8_t nThreshold, bool bSquare) override
    {
        return bDo(transforms::Erosion, nLevel, nThreshold, bSquare);
    }
    bool TraceContours(std::uint8_t nLevel, std::uint8_t nThreshold, bool bIntensity) override
    {
        return bDo(transforms::TraceContours, nLevel, nThreshold, bIntensity);
    }
    bool Halftones(std::int32_t lCellSize, double dContrast) override
    {
        return bDo(transforms::Halftones, lCellSize, dContrast);
    }

    bool Autocrop() override { return bDo(transforms::Autocrop); }
    bool Flip(bool bVertical) override { return bDo(transforms::Flip, bVertical); }
    bool Rotate(double dAngle, Colour lBackground) override
    {
        return bDo(transforms::Rotate, dAngle, lBackground);
    }
    bool Resize(std::int32_t lWidth, std::int32_t lHeight, std::int32_t lInterpolation,
                Colour lBackground) override
    {
        return bDo(transforms::Resize, lWidth, lHeight, lInterpolation, lBackground);
    }
    bool Shift(std::int32_t lX, std::int32_t lY, Colour lBackground) override
    {
        return bDo(transforms::Shift, lX, lY, lBackground);
    }
    bool Perspective(bool bVertical, double dAngle) override
    {
        return bDo(transforms::Perspective, bVertical, dAngle);
    }
    bool Skew(bool bVertical, double dAngle) override { return bDo(transforms::Skew, bVertical, dAngle); }
    bool Twirl(double dAngle) override { return bDo(transforms::Twirl, dAngle); }
    bool Reproduce(std::int32_t lCopies) override { return bDo(transforms::Reproduce, lCopies); }

private:
    /// Calls a kernel on the picture; False when there is no memory.
    template <typename Kernel, typename... Arguments>
    bool bDo(Kernel fnKernel, Arguments... aArguments)
    try {
        return fnKernel(m_aImage, aArguments...);
    } catch (const std::bad_alloc&) {
        return false;
    }

    ImageBuffer m_aImage;
};

// The picture in work, and the kernel for each operation on it.
// Room: platform_image. May use: platform.
#pragma once

#include <new>

#include "src/platform/image/transforms/auto_levels.h"
#include "src/platform/image/transforms/deinterlace.h"
#include "src/platform/image/transforms/equalize.h"
#include "src/platform/image/transforms/extremes.h"
#include "src/platform/image/transforms/filters.h"
#include "src/platform/image/transforms/hls.h"
#include "src/platform/image/transforms/intensity.h"
#include "src/platform/image/transforms/levels.h"
#include "src/platform/image/transforms/missing_operations.h"
#include "src/platform/image_transform.h"

/// Each operation is one line that names its kernel: a function bool OPERATION(ImageBuffer& aImage, ...) of
/// the namespace transforms, which is False, or throws std::bad_alloc, with aImage as it was. One that gets a
/// kernel moves here from missing_operations.h.
class KernelImageTransform : public MissingOperations
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

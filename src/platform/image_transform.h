// The image library's operations on a picture in memory.
// Room: platform. Real one: platform/image. Recording one: tests/fakes.
#pragma once

#include <cstdint>

#include "src/platform/image_buffer.h"

/// A stored colour: its low byte is red, the next one green, the next one blue; the high byte means nothing.
using Colour = std::int32_t;

/// Works on one picture at a time, between SetImage and GetImageBytes. Sizes are in pixels, angles in
/// degrees. Any number may be given for any argument: what lies outside an operation's range is brought to
/// its nearest sense, and NaN changes nothing. Every operation is False, with the picture as it was, only
/// when there is no memory or the result would be larger than a picture may be. Values that mean "no change"
/// change no pixel. Nothing throws.
///
/// Colour operations carry alpha unchanged; geometric ones move it with the picture. What the formulas are
/// stands with each operation's declaration in platform/image/transforms.
class ImageTransform
{
public:
    virtual ~ImageTransform() = default;

    /// Takes the picture over; aImage is empty afterwards.
    virtual void SetImage(ImageBuffer& aImage) = 0;
    /// Hands the picture back, transformed.
    virtual void GetImageBytes(ImageBuffer& aImage) = 0;
    /// A picture of one channel: 255 where the picture is opaque, down to 0 where it is not there at all.
    virtual void GetMaskBytes(ImageBuffer& aMask) = 0;

    [[nodiscard]] virtual bool Autocrop() = 0;
    [[nodiscard]] virtual bool Autocontrast() = 0;
    [[nodiscard]] virtual bool AutoLevel() = 0;
    [[nodiscard]] virtual bool Brightness(std::int32_t lLevel) = 0;  ///< -255 to 255
    [[nodiscard]] virtual bool Contrast(double dStretch) = 0;        ///< 0.0 to 1.0
    [[nodiscard]] virtual bool Gamma(double dGamma) = 0;             ///< 1.0 no change, higher darker
    [[nodiscard]] virtual bool Hue(double dAngle) = 0;               ///< degrees
    [[nodiscard]] virtual bool Lightness(double dLightness) = 0;     ///< -1.0 black to 1.0 white
    [[nodiscard]] virtual bool Saturation(double dSaturation) = 0;   ///< -1.0 grey to 1.0 extreme
    [[nodiscard]] virtual bool BalanceHLS(double dHue, double dLightness, double dSaturation) = 0;
    [[nodiscard]] virtual bool Red(std::int32_t lLevel) = 0;    ///< -255 to 255
    [[nodiscard]] virtual bool Green(std::int32_t lLevel) = 0;  ///< -255 to 255
    [[nodiscard]] virtual bool Blue(std::int32_t lLevel) = 0;   ///< -255 to 255
    [[nodiscard]] virtual bool Colorize(std::uint8_t nRed, std::uint8_t nGreen, std::uint8_t nBlue) = 0;
    [[nodiscard]] virtual bool Desaturate() = 0;
    [[nodiscard]] virtual bool Intensity() = 0;
    [[nodiscard]] virtual bool Invert() = 0;
    [[nodiscard]] virtual bool Equalize(double dLevel) = 0;  ///< 0.0 no change to 1.0 whole
    [[nodiscard]] virtual bool Threshold(std::uint8_t nLevel) = 0;
    [[nodiscard]] virtual bool Posterize(std::int32_t lLevels) = 0;  ///< 2 to 255

    [[nodiscard]] virtual bool FilterDifference(std::int32_t lDirection) = 0;  ///< 0 to 7
    [[nodiscard]] virtual bool FilterHighPass(std::int32_t lKind) = 0;         ///< 0 medium, 1 strong, 2 weak
    [[nodiscard]] virtual bool FilterLowPass(std::int32_t lKind) = 0;          ///< 0 strong, 1 medium, 2 weak
    [[nodiscard]] virtual bool FilterLaplas(std::int32_t lKind) = 0;           ///< 0 high, 1 low
    [[nodiscard]] virtual bool FilterSobel(std::int32_t lDirection) = 0;       ///< 0 vertical, 1 horizontal
    [[nodiscard]] virtual bool FilterPrewitt(std::int32_t lDirection) = 0;     ///< 0 vertical, 1 horizontal
    [[nodiscard]] virtual bool FilterRoberts(std::int32_t lDirection) = 0;     ///< 0 first, 1 second diagonal
    [[nodiscard]] virtual bool FilterIsotropic(std::int32_t lDirection) = 0;   ///< 0 vertical, 1 horizontal
    [[nodiscard]] virtual bool FilterMinimal(std::int32_t lSize) = 0;          ///< 1 to 256
    [[nodiscard]] virtual bool FilterMaximal(std::int32_t lSize) = 0;          ///< 1 to 256
    [[nodiscard]] virtual bool FilterLineDetection(
        std::int32_t lDirection) = 0;                                    ///< 0 vertical, 1 horizontal, 2, 3
    [[nodiscard]] virtual bool FilterReserved(std::int32_t lValue) = 0;  ///< changes nothing
    [[nodiscard]] virtual bool FilterBlur(double dAmount) = 0;           ///< 0.0 to 1.0
    [[nodiscard]] virtual bool FilterSharpen(double dAmount) = 0;        ///< 0.0 to 1.0
    [[nodiscard]] virtual bool Deinterlace(bool bOddLines, bool bInterpolate) = 0;

    [[nodiscard]] virtual bool MotionBlur(double dAngle, std::int32_t lAmount) = 0;  ///< 2 to 255
    [[nodiscard]] virtual bool GaussianBlur(std::int32_t lFuzziness) = 0;            ///< 0 to 255
    [[nodiscard]] virtual bool RadialBlur(double dDisplacement) = 0;                 ///< percent
    [[nodiscard]] virtual bool ZoomBlur(double dIntensity) = 0;                      ///< percent
    [[nodiscard]] virtual bool AddNoise(std::int32_t lLevel, bool bMonochrome) = 0;
    [[nodiscard]] virtual bool Diffuse(std::int32_t lDistance, double dPenetration) = 0;
    [[nodiscard]] virtual bool Emboss(double dAngle, std::int32_t lHeight, double dBrightness) = 0;
    [[nodiscard]] virtual bool Relief(double dAngle, double dBrightness, double dSmoothness) = 0;
    [[nodiscard]] virtual bool Texturize(double dAngle, double dBrightness, std::int32_t lTexture) = 0;
    [[nodiscard]] virtual bool Mosaic(std::int32_t lTileSize, bool bPlainColour) = 0;
    [[nodiscard]] virtual bool Dilation(std::uint8_t nLevel, std::uint8_t nThreshold, bool bSquare) = 0;
    [[nodiscard]] virtual bool Erosion(std::uint8_t nLevel, std::uint8_t nThreshold, bool bSquare) = 0;
    [[nodiscard]] virtual bool TraceContours(std::uint8_t nLevel, std::uint8_t nThreshold,
                                             bool bIntensity) = 0;
    [[nodiscard]] virtual bool Halftones(std::int32_t lCellSize, double dContrast) = 0;

    [[nodiscard]] virtual bool Flip(bool bVertical) = 0;  ///< True: top to bottom
    [[nodiscard]] virtual bool Rotate(double dAngle,
                                      Colour lBackground) = 0;  ///< clockwise; the canvas grows
    /// 0 nearest, 1 bilinear, 2 bicubic.
    [[nodiscard]] virtual bool Resize(std::int32_t lWidth, std::int32_t lHeight, std::int32_t lInterpolation,
                                      Colour lBackground) = 0;
    [[nodiscard]] virtual bool Shift(std::int32_t lX, std::int32_t lY,
                                     Colour lBackground) = 0;                   ///< right and down
    [[nodiscard]] virtual bool Perspective(bool bVertical, double dAngle) = 0;  ///< -90 to 90
    [[nodiscard]] virtual bool Skew(bool bVertical, double dAngle) = 0;
    [[nodiscard]] virtual bool Twirl(double dAngle) = 0;
    [[nodiscard]] virtual bool Reproduce(std::int32_t lCopies) = 0;  ///< 1 to 32
};

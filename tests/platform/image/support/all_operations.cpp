// The table of operations.
#include "tests/platform/image/support/all_operations.h"

#include "src/platform/image/transforms/kernel_image_transform.h"

std::vector<OperationCall> AllOperations(const Arguments& a)
{
    using namespace operations;
    const double d = a.number, e = a.other;
    const std::int32_t l = a.whole_number, m = a.other_whole;
    const std::uint8_t n = a.byte;
    const bool b = a.flag;
    return {Autocrop(),
            Autocontrast(),
            AutoLevel(),
            Brightness(l),
            Contrast(d),
            Gamma(d),
            Hue(d),
            Lightness(d),
            Saturation(d),
            BalanceHLS(d, e, d),
            Red(l),
            Green(l),
            Blue(l),
            Colorize(n, 200, 100),
            Desaturate(),
            Intensity(),
            Invert(),
            Equalize(d),
            Threshold(n),
            Posterize(l),
            FilterDifference(l),
            FilterHighPass(l),
            FilterLowPass(l),
            FilterLaplas(l),
            FilterSobel(l),
            FilterPrewitt(l),
            FilterRoberts(l),
            FilterIsotropic(l),
            FilterMinimal(l),
            FilterMaximal(l),
            FilterLineDetection(l),
            FilterReserved(l),
            FilterBlur(d),
            FilterSharpen(d),
            Deinterlace(b, !b),
            MotionBlur(d, l),
            GaussianBlur(l),
            RadialBlur(d),
            ZoomBlur(d),
            AddNoise(l, b),
            Diffuse(l, d),
            Emboss(d, l, e),
            Relief(d, e, d),
            Texturize(d, e, l),
            Mosaic(l, b),
            Dilation(n, 50, b),
            Erosion(n, 50, b),
            TraceContours(n, 100, b),
            Halftones(l, d),
            Flip(b),
            Rotate(d, m),
            Resize(l, m, b ? l : 2, m),
            Shift(l, m, m),
            Perspective(b, d),
            Skew(b, d),
            Twirl(d),
            Reproduce(l)};
}

bool ApplyOperation(const OperationCall& call, ImageBuffer& image)
{
    return KernelImageTransform().Apply(call, image, image) != OperationResult::Failed;
}

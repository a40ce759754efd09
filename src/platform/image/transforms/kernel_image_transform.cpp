// Binds each operation to its kernel.
#include "src/platform/image/transforms/kernel_image_transform.h"

#include <algorithm>
#include <exception>
#include <string_view>
#include <utility>

#include "src/platform/image/base/limits.h"
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

namespace
{

struct Binding {
    std::string_view operation;
    OperationResult (*apply)(const OperationCall& call, const ImageBuffer& source, ImageBuffer& result);
};

// Passes a call's arguments to the kernel. That their types match the operation's parameters is checked when
// this is compiled, since kKernel must be callable with them without a conversion.
template <auto kKernel, typename... Arguments>
constexpr Binding Bind(const Operation<Arguments...>& operation)
{
    using Kernel = OperationResult (*)(const ImageBuffer&, ImageBuffer&, Arguments...);
    static_assert(std::is_same_v<decltype(kKernel), Kernel>);
    return {operation.sName, [](const OperationCall& call, const ImageBuffer& source, ImageBuffer& result) {
                return [&]<std::size_t... kIndex>(std::index_sequence<kIndex...>)
                {
                    return kKernel(source, result, std::get<Arguments>(call.aArguments.at(kIndex))...);
                }
                (std::index_sequence_for<Arguments...>());
            }};
}

constexpr Binding kBindings[] = {
    Bind<transforms::Autocontrast>(operations::Autocontrast),
    Bind<transforms::AutoLevel>(operations::AutoLevel),
    Bind<transforms::Brightness>(operations::Brightness),
    Bind<transforms::Contrast>(operations::Contrast),
    Bind<transforms::Gamma>(operations::Gamma),
    Bind<transforms::Hue>(operations::Hue),
    Bind<transforms::Lightness>(operations::Lightness),
    Bind<transforms::Saturation>(operations::Saturation),
    Bind<transforms::BalanceHLS>(operations::BalanceHLS),
    Bind<transforms::Red>(operations::Red),
    Bind<transforms::Green>(operations::Green),
    Bind<transforms::Blue>(operations::Blue),
    Bind<transforms::Colorize>(operations::Colorize),
    Bind<transforms::Desaturate>(operations::Desaturate),
    Bind<transforms::Intensity>(operations::Intensity),
    Bind<transforms::Invert>(operations::Invert),
    Bind<transforms::Equalize>(operations::Equalize),
    Bind<transforms::Threshold>(operations::Threshold),
    Bind<transforms::Posterize>(operations::Posterize),
    Bind<transforms::FilterDifference>(operations::FilterDifference),
    Bind<transforms::FilterHighPass>(operations::FilterHighPass),
    Bind<transforms::FilterLowPass>(operations::FilterLowPass),
    Bind<transforms::FilterLaplas>(operations::FilterLaplas),
    Bind<transforms::FilterSobel>(operations::FilterSobel),
    Bind<transforms::FilterPrewitt>(operations::FilterPrewitt),
    Bind<transforms::FilterRoberts>(operations::FilterRoberts),
    Bind<transforms::FilterIsotropic>(operations::FilterIsotropic),
    Bind<transforms::FilterMinimal>(operations::FilterMinimal),
    Bind<transforms::FilterMaximal>(operations::FilterMaximal),
    Bind<transforms::FilterLineDetection>(operations::FilterLineDetection),
    Bind<transforms::FilterReserved>(operations::FilterReserved),
    Bind<transforms::FilterBlur>(operations::FilterBlur),
    Bind<transforms::FilterSharpen>(operations::FilterSharpen),
    Bind<transforms::Deinterlace>(operations::Deinterlace),
    Bind<transforms::MotionBlur>(operations::MotionBlur),
    Bind<transforms::GaussianBlur>(operations::GaussianBlur),
    Bind<transforms::RadialBlur>(operations::RadialBlur),
    Bind<transforms::ZoomBlur>(operations::ZoomBlur),
    Bind<transforms::AddNoise>(operations::AddNoise),
    Bind<transforms::Diffuse>(operations::Diffuse),
    Bind<transforms::Emboss>(operations::Emboss),
    Bind<transforms::Relief>(operations::Relief),
    Bind<transforms::Texturize>(operations::Texturize),
    Bind<transforms::Mosaic>(operations::Mosaic),
    Bind<transforms::Dilation>(operations::Dilation),
    Bind<transforms::Erosion>(operations::Erosion),
    Bind<transforms::TraceContours>(operations::TraceContours),
    Bind<transforms::Halftones>(operations::Halftones),
    Bind<transforms::Autocrop>(operations::Autocrop),
    Bind<transforms::Flip>(operations::Flip),
    Bind<transforms::Rotate>(operations::Rotate),
    Bind<transforms::Resize>(operations::Resize),
    Bind<transforms::Shift>(operations::Shift),
    Bind<transforms::Perspective>(operations::Perspective),
    Bind<transforms::Skew>(operations::Skew),
    Bind<transforms::Twirl>(operations::Twirl),
    Bind<transforms::Reproduce>(operations::Reproduce),
};

}  // namespace

OperationResult KernelImageTransform::Apply(const OperationCall& call, const ImageBuffer& source,
                                            ImageBuffer& result)
try {
    const auto found = std::find_if(std::begin(kBindings), std::end(kBindings),
                                    [&](const Binding& binding) { return binding.operation == call.sName; });
    return found == std::end(kBindings) ? OperationResult::Failed : found->apply(call, source, result);
} catch (const std::exception&) {
    return OperationResult::Failed;
}

void KernelImageTransform::GetMaskBytes(const ImageBuffer& image, ImageBuffer& mask)
{
    mask = {};
    ImageBuffer result;
    if (!Allocate(result, static_cast<std::uint64_t>(image.width), static_cast<std::uint64_t>(image.height),
                  1))
        return;
    constexpr std::size_t kAlpha = 3;
    for (std::size_t i = 0; i < result.bytes.size(); ++i)
        result.bytes[i] = image.channels == 4 ? image.bytes[i * 4 + kAlpha] : 255;
    mask = std::move(result);
}

// Fuzzes special processes: arbitrary details on a small arbitrary image must give an error or a complete
// image, and the same one every time.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "src/base/clsConversionOptions.h"
#include "src/base/raised_error.h"
#include "src/conversion/modApplySpecialProcess.h"
#include "src/platform/image/transforms/kernel_image_transform.h"
#include "tests/fakes/test_application.h"

namespace
{

struct Kernels {
    KernelImageTransform objKernels;
};

/// In-memory services, but the real operations.
struct FuzzApplication : TestServices, Kernels, Application {
    FuzzApplication()
        : Application(Services{files, ini, clock, locale, mutex, folders, windows, images, utility,
                               objKernels, launcher})
    {
    }
};

constexpr std::size_t kHead = 4;  // process, width, height, channels
constexpr int kLongestSide = 80;
constexpr std::string_view kPrefix = "*^0^FALSE^75^^^^^^^^";

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    setenv("VARNEL_MAX_MEGAPIXELS", "1", 1);  // large images only cost time
    return 0;
}

// Fills the image by repeating the remaining bytes.
static ImageBuffer aPictureOf(const std::uint8_t* pHead, std::string_view sBytes)
{
    static constexpr std::int32_t aChannels[] = {1, 3, 4};
    ImageBuffer aImage;
    aImage.width = pHead[1] % kLongestSide + 1;
    aImage.height = pHead[2] % kLongestSide + 1;
    aImage.channels = aChannels[pHead[3] % 3];
    aImage.bytes.assign(static_cast<std::size_t>(aImage.width) * static_cast<std::size_t>(aImage.height) *
                            static_cast<std::size_t>(aImage.channels),
                        0);
    for (std::size_t i = 0; i < aImage.bytes.size() && !sBytes.empty(); ++i)
        aImage.bytes[i] = static_cast<std::uint8_t>(sBytes[i % sBytes.size()]);
    return aImage;
}

// False if the process raised an error.
static bool bApplied(FuzzApplication& app, clsConversionOptions& objOptions, ImageBuffer& aImage)
{
    try {
        return bApplySpecialProcess(app, objOptions, aImage);
    } catch (const clsRaisedError&) {
        return false;
    }
}

static bool bWhole(const ImageBuffer& aImage)
{
    const auto nPixels = static_cast<std::uint64_t>(aImage.width) * static_cast<std::uint64_t>(aImage.height);
    return aImage.width > 0 && aImage.height > 0 && nPixels <= 1'000'000 &&
           (aImage.channels == 1 || aImage.channels == 3 || aImage.channels == 4) &&
           aImage.bytes.size() == nPixels * static_cast<std::uint64_t>(aImage.channels);
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nSize)
{
    if (nSize < kHead)
        return 0;
    const std::string_view sText(reinterpret_cast<const char*>(pData) + kHead, nSize - kHead);
    const std::size_t nDetails = std::min(sText.find('\n'), sText.size());
    FuzzApplication app;
    clsConversionOptions objOptions;
    objOptions.sActionToDo = "S";
    objOptions.lSpecialProcess = pData[0] % 61;  // including unused numbers
    objOptions.sExtraParams = std::string(kPrefix) + std::string(sText.substr(0, nDetails));
    ImageBuffer aImage = aPictureOf(pData, sText.substr(std::min(nDetails + 1, sText.size())));
    ImageBuffer aAgain = aImage;

    const bool bDone = bApplied(app, objOptions, aImage);
    if (bDone && !bWhole(aImage))
        std::abort();
    if (bDone != bApplied(app, objOptions, aAgain) || (bDone && aImage.bytes != aAgain.bytes))
        std::abort();
    return 0;
}

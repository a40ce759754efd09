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
    KernelImageTransform kernels;
};

/// In-memory services, but the real operations.
struct FuzzApplication : TestServices, Kernels, Application {
    FuzzApplication()
        : Application(Services{files, ini, clock, locale, mutex, folders, windows, images, utility, kernels,
                               launcher})
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
static ImageBuffer PictureOf(const std::uint8_t* head, std::string_view bytes)
{
    static constexpr std::int32_t kChannels[] = {1, 3, 4};
    ImageBuffer image;
    image.width = head[1] % kLongestSide + 1;
    image.height = head[2] % kLongestSide + 1;
    image.channels = kChannels[head[3] % 3];
    image.bytes.assign(static_cast<std::size_t>(image.width) * static_cast<std::size_t>(image.height) *
                           static_cast<std::size_t>(image.channels),
                       0);
    for (std::size_t i = 0; i < image.bytes.size() && !bytes.empty(); ++i)
        image.bytes[i] = static_cast<std::uint8_t>(bytes[i % bytes.size()]);
    return image;
}

// False if the process raised an error.
static bool Applied(FuzzApplication& app, clsConversionOptions& options, ImageBuffer& image)
{
    try {
        return bApplySpecialProcess(app, options, image);
    } catch (const clsRaisedError&) {
        return false;
    }
}

static bool Whole(const ImageBuffer& image)
{
    const auto pixels = static_cast<std::uint64_t>(image.width) * static_cast<std::uint64_t>(image.height);
    return image.width > 0 && image.height > 0 && pixels <= 1'000'000 &&
           (image.channels == 1 || image.channels == 3 || image.channels == 4) &&
           image.bytes.size() == pixels * static_cast<std::uint64_t>(image.channels);
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size < kHead)
        return 0;
    const std::string_view text(reinterpret_cast<const char*>(data) + kHead, size - kHead);
    const std::size_t details = std::min(text.find('\n'), text.size());
    FuzzApplication app;
    clsConversionOptions options;
    options.sActionToDo = "S";
    options.lSpecialProcess = data[0] % 61;  // including unused numbers
    options.sExtraParams = std::string(kPrefix) + std::string(text.substr(0, details));
    ImageBuffer image = PictureOf(data, text.substr(std::min(details + 1, text.size())));
    ImageBuffer again = image;

    const bool done = Applied(app, options, image);
    if (done && !Whole(image))
        std::abort();
    if (done != Applied(app, options, again) || (done && image.bytes != again.bytes))
        std::abort();
    return 0;
}

// Fuzzes one codec's decoder: no crash, no out-of-bounds read, and only complete images.
#include <cstdint>
#include <cstdlib>
#include <new>

#include "src/platform/image/base/input_file.h"
#include "src/platform/image/codecs/codec.h"
#include "src/platform/image/codecs/registry.h"
#include "src/platform/image/colour/colour_profile.h"
#include "src/platform/image/metadata/metadata.h"

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    setenv("VARNEL_MAX_MEGAPIXELS", "4", 1);  // large images only cost time
    return 0;
}

static bool Whole(const ImageBuffer& image)
{
    const bool has_channels = image.channels == 1 || image.channels == 3 || image.channels == 4;
    const auto bytes = static_cast<std::uint64_t>(image.width) * static_cast<std::uint64_t>(image.height) *
                       static_cast<std::uint64_t>(image.channels);
    return has_channels && image.width > 0 && image.height > 0 && image.bytes.size() == bytes;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    InputFile file(Bytes(data, size));
    const Codec* codec = CodecOfType(FileType{VARNEL_FUZZ_TYPE});
    if (!codec)
        std::abort();
    codec->sniff(file.Head(), "");
    try {
        const std::unique_ptr<ImageDecoder> decoder = codec->open(file);
        const std::int32_t frames = decoder ? decoder->FrameCount() : 0;
        for (std::int32_t l = 0; l < frames && l < 8; ++l) {
            ImageBuffer image;
            if (!decoder->DecodeFrame(l, image))
                continue;
            // Also run what every load and some saves do with the file's metadata.
            FinishLoaded(image);
            ExifForSave(image, {"title", "description", "1/2/2003", "author", "copyright", "type", "model"});
            ConvertToSrgb(image);
            if (!Whole(image))
                std::abort();
        }
    } catch (const std::bad_alloc&) {
        // The only exception that a decoder may throw.
    }
    return 0;
}

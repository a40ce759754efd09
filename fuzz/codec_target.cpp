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

static bool bWhole(const ImageBuffer& aImage)
{
    const bool bChannels = aImage.channels == 1 || aImage.channels == 3 || aImage.channels == 4;
    const auto nBytes = static_cast<std::uint64_t>(aImage.width) * static_cast<std::uint64_t>(aImage.height) *
                        static_cast<std::uint64_t>(aImage.channels);
    return bChannels && aImage.width > 0 && aImage.height > 0 && aImage.bytes.size() == nBytes;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nSize)
{
    InputFile objFile(Bytes(pData, nSize));
    const Codec* pCodec = CodecOfType(VARNEL_FUZZ_TYPE);
    if (!pCodec)
        std::abort();
    pCodec->sniff(objFile.Head(), "");
    try {
        const std::unique_ptr<ImageDecoder> pDecoder = pCodec->open(objFile);
        const std::int32_t lFrames = pDecoder ? pDecoder->FrameCount() : 0;
        for (std::int32_t l = 0; l < lFrames && l < 8; ++l) {
            ImageBuffer aImage;
            if (!pDecoder->DecodeFrame(l, aImage))
                continue;
            // Also run what every load and some saves do with the file's metadata.
            FinishLoaded(aImage);
            ExifForSave(aImage, {"title", "description", "1/2/2003", "author", "copyright", "type", "model"});
            ConvertToSrgb(aImage);
            if (!bWhole(aImage))
                std::abort();
        }
    } catch (const std::bad_alloc&) {
        // The only exception that a decoder may throw.
    }
    return 0;
}

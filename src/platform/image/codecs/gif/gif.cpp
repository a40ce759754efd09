// The GIF codec.
#include "src/platform/image/codecs/gif/gif.h"

#include <cstring>

#include "src/platform/image/base/input_file.h"
#include "src/platform/image/codecs/gif/gif_decoder.h"

static bool bSniff(Bytes aHead, std::string_view)
{
    return aHead.size() >= 6 &&
           (std::memcmp(aHead.data(), "GIF87a", 6) == 0 || std::memcmp(aHead.data(), "GIF89a", 6) == 0);
}

std::unique_ptr<ImageDecoder> pOpenGif(InputFile& objFile)
{
    return GifDecoder::Open(objFile.All());
}

const Codec codecGif{4, true, false, bSniff, pOpenGif, bEncodeGif};

// GIF's entry in the codec table.
#include "src/platform/image/codecs/gif/gif.h"

#include <cstring>

#include "src/platform/image/base/input_file.h"
#include "src/platform/image/codecs/gif/gif_decoder.h"

static bool Sniff(Bytes head, std::string_view)
{
    return head.size() >= 6 &&
           (std::memcmp(head.data(), "GIF87a", 6) == 0 || std::memcmp(head.data(), "GIF89a", 6) == 0);
}

std::unique_ptr<ImageDecoder> OpenGif(InputFile& file)
{
    return GifDecoder::Open(file.All());
}

const Codec kGifCodec{FileType::kGif, true, false, Sniff, OpenGif, EncodeGif};

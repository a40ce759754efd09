// JPEG's entry in the codec table.
#include "src/platform/image/codecs/jpeg/jpeg.h"

static bool Sniff(Bytes head, std::string_view)
{
    return head.size() >= 3 && head[0] == 0xFF && head[1] == 0xD8 && head[2] == 0xFF;
}

const Codec kJpegCodec{FileType::kJpeg, false, true, Sniff, OpenJpeg, EncodeJpeg};

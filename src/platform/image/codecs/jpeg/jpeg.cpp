// The codec of JPEG.
#include "src/platform/image/codecs/jpeg/jpeg.h"

static bool SniffJpeg(Bytes aHead, std::string_view)
{
    return aHead.size() >= 3 && aHead[0] == 0xFF && aHead[1] == 0xD8 && aHead[2] == 0xFF;
}

const Codec codecJpeg = {1, false, true, SniffJpeg, pOpenJpeg, bEncodeJpeg};

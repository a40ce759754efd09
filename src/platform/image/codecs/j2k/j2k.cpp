// The JPEG 2000 codec.
#include "src/platform/image/codecs/j2k/j2k.h"

#include "src/platform/image/codecs/j2k/j2k_boxes.h"

static bool bSniff(Bytes aHead, std::string_view)
{
    return bIsCodestream(aHead) || bIsJp2(aHead);
}

const Codec codecJ2k{6, true, false, bSniff, pOpenJ2k, bEncodeJ2k};

// PNG's entry in the codec table.
#include "src/platform/image/codecs/png/png.h"

#include <algorithm>

#include "src/platform/image/codecs/png/png_chunks.h"

static bool Sniff(Bytes head, std::string_view)
{
    return head.size() >= kPngSignature.size() &&
           std::equal(kPngSignature.begin(), kPngSignature.end(), head.begin());
}

const Codec kPngCodec{FileType::kPng, true, true, Sniff, OpenPng, EncodePng};

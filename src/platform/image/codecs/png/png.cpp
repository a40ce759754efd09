// Puts the PNG format into the codec table's shape.
#include "src/platform/image/codecs/png/png.h"

#include <algorithm>

#include "src/platform/image/codecs/png/png_chunks.h"
#include "src/platform/image/codecs/png/png_reader.h"
#include "src/platform/image/codecs/png/png_writer.h"

static bool bIsPng(Bytes aHead, std::string_view)
{
    return aHead.size() >= kPngSignature.size() &&
           std::equal(kPngSignature.begin(), kPngSignature.end(), aHead.begin());
}

const Codec codecPng = {8, true, true, &bIsPng, &pOpenPng, &EncodePng};

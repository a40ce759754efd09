// Lists the formats. A new one needs its file in codecs/ and one line here.
#include "src/platform/image/codecs/registry.h"

#include <algorithm>
#include <vector>

#include "src/platform/image/codecs/bmp/bmp.h"
#include "src/platform/image/codecs/gif/gif.h"
#include "src/platform/image/codecs/ico/ani.h"
#include "src/platform/image/codecs/ico/cur.h"
#include "src/platform/image/codecs/ico/ico.h"
#include "src/platform/image/codecs/j2k/j2k.h"
#include "src/platform/image/codecs/jpeg/jpeg.h"
#include "src/platform/image/codecs/metafile/emf.h"
#include "src/platform/image/codecs/metafile/wmf.h"
#include "src/platform/image/codecs/pcx/pcx.h"
#include "src/platform/image/codecs/png/png.h"
#include "src/platform/image/codecs/ras/ras.h"
#include "src/platform/image/codecs/tga/tga.h"
#include "src/platform/image/codecs/tiff/tiff.h"

static const std::vector<const Codec*>& aTable()
{
    static const std::vector<const Codec*> aAll = {
        &kJpegCodec, &kPngCodec, &kTiffCodec, &kGifCodec, &kJ2kCodec, &kRasCodec, &kEmfCodec,
        &kWmfCodec,  &kAniCodec, &kBmpCodec,  &kIcoCodec, &kCurCodec, &kPcxCodec,
        &kTgaCodec,  // goes by the extension, and so comes after all that have a signature
    };
    return aAll;
}

std::span<const Codec* const> aCodecs()
{
    return aTable();
}

const Codec* pCodecOfType(std::int32_t lType)
{
    const auto itFound = std::find_if(aTable().begin(), aTable().end(),
                                      [lType](const Codec* pCodec) { return pCodec->lType == lType; });
    return itFound == aTable().end() ? nullptr : *itFound;
}

const Codec* pCodecOfContent(Bytes aHead, std::string_view sExtension)
{
    const auto itFound = std::find_if(aTable().begin(), aTable().end(),
                                      [&](const Codec* pCodec) { return pCodec->Sniff(aHead, sExtension); });
    return itFound == aTable().end() ? nullptr : *itFound;
}

// The table of formats. A new one needs a folder in codecs/ and one line here.
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

static const std::vector<const Codec*>& CodecTable()
{
    static const std::vector<const Codec*> kAll = {
        &kJpegCodec, &kPngCodec, &kTiffCodec, &kGifCodec, &kJ2kCodec, &kRasCodec, &kEmfCodec,
        &kWmfCodec,  &kAniCodec, &kBmpCodec,  &kIcoCodec, &kCurCodec, &kPcxCodec,
        &kTgaCodec,  // recognised by extension, so it comes after all formats with a signature
    };
    return kAll;
}

std::span<const Codec* const> Codecs()
{
    return CodecTable();
}

const Codec* CodecOfType(FileType type)
{
    const auto found = std::find_if(CodecTable().begin(), CodecTable().end(),
                                    [type](const Codec* codec) { return codec->type == type; });
    return found == CodecTable().end() ? nullptr : *found;
}

const Codec* CodecOfContent(Bytes head, std::string_view extension)
{
    const auto found = std::find_if(CodecTable().begin(), CodecTable().end(),
                                    [&](const Codec* codec) { return codec->sniff(head, extension); });
    return found == CodecTable().end() ? nullptr : *found;
}

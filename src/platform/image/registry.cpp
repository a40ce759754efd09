// Lists the formats. A new one needs its file in codecs/ and one line here.
#include "src/platform/image/registry.h"

#include <algorithm>
#include <vector>

#include "src/platform/image/codecs/jpeg.h"

static const std::vector<const Codec*>& aTable()
{
    static const std::vector<const Codec*> aAll = {
        &codecJpeg,
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

// Reads Windows icons.
#include "src/platform/image/codecs/ico/ico.h"

#include "src/platform/image/codecs/ico/icon_directory.h"

static bool Sniff(Bytes head, std::string_view)
{
    return IsIconFile(head, IconKind::kIcon);
}

const Codec kIcoCodec{FileType::kIco, true, false, Sniff, OpenIcon, nullptr};

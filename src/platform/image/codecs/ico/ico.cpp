// Reads Windows icons.
#include "src/platform/image/codecs/ico/ico.h"

#include "src/platform/image/codecs/ico/icon_directory.h"

static bool Sniff(Bytes aHead, std::string_view)
{
    return bIconFile(aHead, IconKind::kIcon);
}

const Codec codecIco{12, true, false, Sniff, pOpenIcon, nullptr};

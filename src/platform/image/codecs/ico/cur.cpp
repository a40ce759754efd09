// Reads Windows cursors.
#include "src/platform/image/codecs/ico/cur.h"

#include "src/platform/image/codecs/ico/icon_directory.h"

static bool Sniff(Bytes aHead, std::string_view)
{
    return bIconFile(aHead, IconKind::kCursor);
}

const Codec codecCur{13, true, false, Sniff, pOpenIcon, nullptr};

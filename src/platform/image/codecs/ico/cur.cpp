// Reads Windows cursors.
#include "src/platform/image/codecs/ico/cur.h"

#include "src/platform/image/codecs/ico/icon_directory.h"

static bool Sniff(Bytes head, std::string_view)
{
    return IsIconFile(head, IconKind::kCursor);
}

const Codec kCurCodec{FileType::kCur, true, false, Sniff, OpenIcon, nullptr};

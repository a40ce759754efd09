// JPEG 2000's entry in the codec table.
#include "src/platform/image/codecs/j2k/j2k.h"

#include "src/platform/image/codecs/j2k/j2k_boxes.h"

static bool Sniff(Bytes head, std::string_view)
{
    return IsCodestream(head) || IsJp2(head);
}

const Codec kJ2kCodec{FileType::kJ2k, true, false, Sniff, OpenJ2k, EncodeJ2k};

// Finds what a JPEG 2000 file holds: the codestream, and beside it resolution and metadata.
// Room: platform/image/codecs/j2k.
#pragma once

#include "src/platform/image/base/byte_reader.h"
#include "src/platform/image_buffer.h"

struct J2kFile {
    bool is_jp2 = false;         ///< a JP2 file; else a bare codestream
    Bytes codestream;            ///< from its first marker on; lent from the file
    double dots_per_inch_x = 0;  ///< 0 when the file doesn't say
    double dots_per_inch_y = 0;
    ImageMetadata metadata;
};

/// True for the first bytes of a bare codestream.
bool IsCodestream(Bytes head);
/// True for the first bytes of a JP2 file or one of its larger kin.
bool IsJp2(Bytes head);

/// Walks the boxes of a JP2 file; a bare codestream is taken as it is. False for any other file, and for one
/// whose codestream is missing or longer than the file.
bool ReadBoxes(Bytes bytes, J2kFile& file);

// Locates the contents of a JPEG 2000 file: codestream, resolution and metadata.
// Room: platform/image/codecs/j2k.
#pragma once

#include "src/platform/image/base/byte_reader.h"
#include "src/platform/image_buffer.h"

struct J2kFile {
    bool is_jp2 = false;         ///< false for a bare codestream
    Bytes codestream;            ///< from its first marker; refers to the file's bytes
    double dots_per_inch_x = 0;  ///< 0 = unknown
    double dots_per_inch_y = 0;
    ImageMetadata metadata;
};

/// True if head starts a bare codestream.
bool IsCodestream(Bytes head);
/// True if head starts a JP2 file or one of its supersets.
bool IsJp2(Bytes head);

/// Reads the boxes of a JP2 file, or takes a bare codestream as it is. False for other files and if the
/// codestream is missing. A truncated codestream is taken as far as it goes: its own structure tells what is
/// missing.
bool ReadBoxes(Bytes bytes, J2kFile& file);

// Finds what a JPEG 2000 file holds: the codestream, and beside it resolution and metadata.
// Room: platform/image/codecs/j2k.
#pragma once

#include "src/platform/image/base/byte_reader.h"
#include "src/platform/image_buffer.h"

struct J2kFile {
    bool bBoxes = false;       ///< a JP2 file; else a bare codestream
    Bytes aCodestream;         ///< from its first marker on; lent from the file
    double dDotsPerInchX = 0;  ///< 0 when the file doesn't say
    double dDotsPerInchY = 0;
    ImageMetadata objMetadata;
};

/// True for the first bytes of a bare codestream.
bool bIsCodestream(Bytes aHead);
/// True for the first bytes of a JP2 file or one of its larger kin.
bool bIsJp2(Bytes aHead);

/// Walks the boxes of a JP2 file; a bare codestream is taken as it is. False for any other file, and for one
/// whose codestream is missing or longer than the file.
bool bReadBoxes(Bytes aFile, J2kFile& objFile);

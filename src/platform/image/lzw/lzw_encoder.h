// GIF's LZW encoder.
// Room: platform/image/lzw.
#pragma once

#include <cstdint>

#include "src/platform/image/base/byte_reader.h"

class OutputFile;

/// Writes a GIF's image data: code size, codes in sub-blocks of at most 255 bytes, and the terminating empty
/// block. T. Welch's LZW with codes of growing width, least significant bit first; the table is cleared when
/// all 4096 codes are used. bits (1 to 8) is the size of an index; indexes must not be empty. False if
/// writing failed.
bool WriteLzw(Bytes indexes, unsigned bits, OutputFile& out);

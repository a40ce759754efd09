// Compresses the indexes of a GIF picture.
// Room: platform/image/lzw.
#pragma once

#include <cstdint>

#include "src/platform/image/base/byte_reader.h"

class OutputFile;

/// Writes the picture data of a GIF: the code size, the codes in sub-blocks of at most 255 bytes, and the
/// empty block at the end. Method: T. Welch's LZW with codes of growing width, the least significant bit
/// first; the table is cleared when its 4096 codes are used. bits (1 to 8) is how many bits an index has;
/// indexes holds at least one. False if the file could not be written.
bool WriteLzw(Bytes indexes, unsigned bits, OutputFile& out);

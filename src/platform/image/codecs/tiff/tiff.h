// TIFF: pages of every common layout read, pages without compression, by LZW or by the CCITT methods
// written.
// Room: platform/image/codecs/tiff.
#pragma once

#include "src/platform/image/codecs/codec.h"

/// Type 3. Each directory of the file's chain is a page. Encode writes a file of one page; tiff_document.h
/// writes files of several.
extern const Codec kTiffCodec;

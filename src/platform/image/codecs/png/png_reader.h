// Opens PNG files.
// Room: platform/image/codecs/png.
#pragma once

#include <memory>

#include "src/platform/image/codecs/codec.h"

/// Null for a file whose header is broken or foreign. file outlives the decoder.
std::unique_ptr<ImageDecoder> OpenPng(InputFile& file);

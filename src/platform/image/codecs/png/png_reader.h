// Opens PNG files.
// Room: platform/image/codecs/png.
#pragma once

#include <memory>

#include "src/platform/image/codecs/codec.h"

/// Null if the header is invalid. file must outlive the decoder.
std::unique_ptr<ImageDecoder> OpenPng(InputFile& file);

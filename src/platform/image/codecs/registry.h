// The table of all formats.
// Room: platform/image/codecs.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "src/platform/image/codecs/codec.h"

/// Every codec, those with a signature before those that go by the extension.
std::span<const Codec* const> aCodecs();

/// The codec of a file type code, or null.
const Codec* pCodecOfType(std::int32_t lType);

/// The first codec that recognises the file, or null.
const Codec* pCodecOfContent(Bytes aHead, std::string_view sExtension);

// The table of all formats.
// Room: platform/image/codecs.
#pragma once

#include <span>
#include <string_view>

#include "src/platform/image/codecs/codec.h"

/// Every codec, those with a signature before those that go by the extension.
std::span<const Codec* const> Codecs();

/// The codec of a file type, or null.
const Codec* CodecOfType(FileType type);

/// The first codec that recognises the file, or null.
const Codec* CodecOfContent(Bytes head, std::string_view extension);

// The table of formats.
// Room: platform/image/codecs.
#pragma once

#include <span>
#include <string_view>

#include "src/platform/image/codecs/codec.h"

/// All codecs, those with a signature before those recognised by extension.
std::span<const Codec* const> Codecs();

/// The codec for a file type, or null.
const Codec* CodecOfType(FileType type);

/// The first codec that recognises the file, or null.
const Codec* CodecOfContent(Bytes head, std::string_view extension);

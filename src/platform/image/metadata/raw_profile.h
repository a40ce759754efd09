// Metadata as hexadecimal text, as programs wrote it before PNG had chunks for it.
// Room: platform/image/metadata.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "src/platform/image/base/byte_reader.h"

/// Keyword prefix; the type follows: "exif", "APP1", "xmp", "iptc".
constexpr std::string_view kRawProfilePrefix = "Raw profile type ";

/// Decodes a text of the form "\n", type, "\n", decimal length, "\n", hexadecimal digits with line breaks
/// anywhere. Empty if the form is wrong or digits are missing.
std::vector<std::uint8_t> FromRawProfile(std::string_view text);

/// Encodes a block in that form.
std::string ToRawProfile(std::string_view kind, Bytes block);

/// The IPTC datasets of a block, bare or inside image resources ("8BIM", ID 0x0404); empty if there are none.
std::vector<std::uint8_t> IptcOfResources(Bytes block);

/// Wraps IPTC datasets in an image resource, as other programs expect them under "iptc".
std::vector<std::uint8_t> IptcAsResource(Bytes iptc);

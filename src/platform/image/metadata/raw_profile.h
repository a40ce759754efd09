// Blocks of metadata as hexadecimal text, the way of programs from before PNG had chunks for them.
// Room: platform/image/metadata.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "src/platform/image/base/byte_reader.h"

/// The keyword before a block's kind: "exif", "APP1", "xmp", "iptc".
constexpr std::string_view kRawProfilePrefix = "Raw profile type ";

/// The block in a text of the form "\n", kind, "\n", its length in decimal, "\n", hexadecimal digits with
/// line ends anywhere between them. Empty when the text is not of that form or shorter than it says.
std::vector<std::uint8_t> FromRawProfile(std::string_view text);

/// The text of a block, in that form.
std::string ToRawProfile(std::string_view kind, Bytes block);

/// The IPTC datasets of a block that holds them bare or wrapped in image resources ("8BIM", number 0x0404);
/// empty when there are none.
std::vector<std::uint8_t> IptcOfResources(Bytes block);

/// IPTC datasets wrapped as one image resource, as other programs expect them behind "iptc".
std::vector<std::uint8_t> IptcAsResource(Bytes iptc);

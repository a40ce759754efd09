// Decodes the text of metafile records to characters.
// Room: platform/image/metafile/device.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "src/platform/image/base/byte_reader.h"

/// A character and the number of record units (bytes or 16-bit words) it takes; a record gives its distances
/// per unit.
struct TextCharacter {
    char32_t code = 0;
    std::uint32_t units = 1;
};

/// Decodes bytes in the code page of a font's character set. Undefined bytes become U+FFFD.
std::vector<TextCharacter> DecodeBytes(Bytes text, std::uint8_t char_set);
/// Decodes UTF-16LE; unpaired surrogates become U+FFFD.
std::vector<TextCharacter> DecodeUtf16(Bytes text);

std::string Utf8(const std::vector<TextCharacter>& text);

/// Maps a Symbol font code to Unicode; 0 if it has no meaning.
char32_t UnicodeOfSymbol(std::uint8_t code);
/// Maps common Wingdings codes to Unicode; 0 for the others.
char32_t UnicodeOfWingdings(std::uint8_t code);

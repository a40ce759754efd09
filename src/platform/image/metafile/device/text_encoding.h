// From the bytes of metafile texts to characters.
// Room: platform/image/metafile/device.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "src/platform/image/base/byte_reader.h"

/// A character and how many units (bytes, or 16-bit words) of the record stand for it: the distances that a
/// record gives are counted by units.
struct TextCharacter {
    char32_t code = 0;
    std::uint32_t units = 1;
};

/// Bytes in the code page of a font's character set. What the code page doesn't have comes as U+FFFD.
std::vector<TextCharacter> DecodeBytes(Bytes text, std::uint8_t char_set);
/// UTF-16, little-endian; half a pair comes as U+FFFD.
std::vector<TextCharacter> DecodeUtf16(Bytes text);

std::string Utf8(const std::vector<TextCharacter>& text);

/// What a code of the Symbol font means in Unicode; 0 for one without a meaning.
char32_t UnicodeOfSymbol(std::uint8_t code);
/// The same for the commonest signs of Wingdings; 0 for the others.
char32_t UnicodeOfWingdings(std::uint8_t code);

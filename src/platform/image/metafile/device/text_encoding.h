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
    char32_t nCode = 0;
    std::uint32_t nUnits = 1;
};

/// Bytes in the code page of a font's character set. What the code page doesn't have comes as U+FFFD.
std::vector<TextCharacter> aDecodedBytes(Bytes aText, std::uint8_t nCharSet);
/// UTF-16, little-endian; half a pair comes as U+FFFD.
std::vector<TextCharacter> aDecodedWords(Bytes aText);

std::string sUtf8(const std::vector<TextCharacter>& aText);

/// What a code of the Symbol font means in Unicode; 0 for one without a meaning.
char32_t nUnicodeOfSymbol(std::uint8_t nCode);
/// The same for the commonest signs of Wingdings; 0 for the others.
char32_t nUnicodeOfWingdings(std::uint8_t nCode);

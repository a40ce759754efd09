// The extension area of a Targa file, which holds the texts.
// Room: platform/image/codecs/tga.
#pragma once

#include <array>
#include <cstdint>

#include "src/platform/image/codecs/tga/tga_header.h"
#include "src/platform/image_library.h"

/// The area for a picture with or without alpha. The author goes to the author's name; title and description,
/// in lines of 80, to the four comment lines; the title also to the job's name; the date, if it is one, to
/// the date stamp. Texts are UTF-8, cut to their fields between two characters.
std::array<std::uint8_t, kTgaExtensionSize> TgaExtension(const ImageInfoTexts& texts, bool has_alpha);

// The extension area of a Targa file, which stores the texts.
// Room: platform/image/codecs/tga.
#pragma once

#include <array>
#include <cstdint>

#include "src/platform/image/codecs/tga/tga_header.h"
#include "src/platform/image_library.h"

/// Builds the extension area. Author goes to the author field; title and description, wrapped at 80 columns,
/// to the four comment lines; the title also to the job name; a valid date to the date stamp. Texts are
/// UTF-8, truncated between characters.
std::array<std::uint8_t, kTgaExtensionSize> TgaExtension(const ImageInfoTexts& texts, bool has_alpha);

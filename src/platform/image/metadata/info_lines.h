// The texts of a save as the lines of a comment, for formats that have one comment for all.
// Room: platform/image/metadata.
#pragma once

#include <string>

#include "src/platform/image_library.h"

/// A line for each text that isn't empty, "Title: ..." and so on, in UTF-8, parted by line feeds; "" if all
/// are empty.
std::string InfoLines(const ImageInfoTexts& texts);

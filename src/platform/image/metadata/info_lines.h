// Joins the user's texts, for formats with a single comment.
// Room: platform/image/metadata.
#pragma once

#include <string>

#include "src/platform/image_library.h"

/// One line per text that isn't empty, "Title: ..." and so on, in UTF-8, separated by line feeds; "" if all
/// are empty.
std::string InfoLines(const ImageInfoTexts& texts);

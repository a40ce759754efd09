// What EMF and WMF records say of a font alike.
// Room: platform/image/metafile/records.
#pragma once

#include <string>
#include <vector>

#include "src/platform/image/base/byte_reader.h"
#include "src/platform/image/metafile/device/objects.h"
#include "src/platform/image/metafile/device/text_encoding.h"

/// The eight bytes from the italic flag to the pitch and family, which both kinds hold behind the weight.
void ReadFontStyle(ByteReader& reader, Font& font);

/// The face's name as UTF-8, without the "@" that asks for the same font turned for vertical writing.
std::string FaceOf(const std::vector<TextCharacter>& name);

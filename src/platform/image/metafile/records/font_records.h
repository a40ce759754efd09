// Font fields common to EMF and WMF records.
// Room: platform/image/metafile/records.
#pragma once

#include <string>
#include <vector>

#include "src/platform/image/base/byte_reader.h"
#include "src/platform/image/metafile/device/objects.h"
#include "src/platform/image/metafile/device/text_encoding.h"

/// Reads the eight bytes from the italic flag to pitch and family, which follow the weight in both formats.
void ReadFontStyle(ByteReader& reader, Font& font);

/// The face name as UTF-8, without the "@" prefix of fonts for vertical writing.
std::string FaceOf(const std::vector<TextCharacter>& name);

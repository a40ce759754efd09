// Reads font fields.
#include "src/platform/image/metafile/records/font_records.h"

void ReadFontStyle(ByteReader& reader, Font& font)
{
    font.italic = reader.U8() != 0;
    font.underline = reader.U8() != 0;
    font.strike_out = reader.U8() != 0;
    font.char_set = reader.U8();
    reader.Take(3);  // precisions and quality
    font.pitch_and_family = reader.U8();
}

std::string FaceOf(const std::vector<TextCharacter>& name)
{
    std::string face = Utf8(name);
    if (face.starts_with('@'))
        face.erase(0, 1);
    return face;
}

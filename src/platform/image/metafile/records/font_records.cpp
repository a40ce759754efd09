// Reads the common fields of a font.
#include "src/platform/image/metafile/records/font_records.h"

void ReadFontStyle(ByteReader& rd, Font& objFont)
{
    objFont.bItalic = rd.U8() != 0;
    objFont.bUnderline = rd.U8() != 0;
    objFont.bStrikeOut = rd.U8() != 0;
    objFont.nCharSet = rd.U8();
    rd.Take(3);  // precisions and quality
    objFont.nPitchAndFamily = rd.U8();
}

std::string sFaceOf(const std::vector<TextCharacter>& aName)
{
    std::string sFace = sUtf8(aName);
    if (sFace.starts_with('@'))
        sFace.erase(0, 1);
    return sFace;
}

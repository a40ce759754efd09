// Plays EMF+ text records.
#include "src/platform/image/metafile/emfplus/data_readers.h"
#include "src/platform/image/metafile/emfplus/emfplus_player.h"
#include "src/platform/image/metafile/emfplus/text_layout.h"

namespace
{
enum TextRecord : std::uint16_t { kDrawString = 0x401C, kDrawDriverString = 0x4036 };

enum DriverOption : std::uint32_t { kCharacters = 1, kRealizedAdvance = 4 };
}  // namespace

// In the fonts of the system that most of these files come from, glyph 3 is the space, and printable ASCII
// follows.
static constexpr char32_t kFirstAsciiGlyph = 3;

// The margins of text without a format, in ems.
static constexpr double kDefaultMargin = 1.0 / 6;

static PlusTypeface SizedTypeface(PlusPlay& play, const PlusFont& font)
{
    const double em = font.size * play.graphics.PageUnitsPer(static_cast<PlusUnit>(font.unit));
    return TypefaceOf(play.graphics.Context(), font, em);
}

static void FillLetters(PlusPlay& play, const Outline& letters, const PlusBrush& brush)
{
    play.graphics.FillPicture(letters.Transformed(play.graphics.WorldToPicture()), brush);
}

static PlusOutcome DrawString(PlusPlay& play, const PlusRecord& record)
{
    ByteReader reader = record.Data();
    const PlusBrush* brush = play.BrushOf(record, reader.U32Le());
    const auto* format = play.Find<PlusStringFormat>(reader.U32Le());
    const std::uint64_t length = reader.U32Le();
    const Rect box = ReadRectF(reader);
    const auto* font = play.Find<PlusFont>(record.Id());
    if (reader.Failed() || !brush || !font || reader.Left() / 2 < length)
        return PlusOutcome::kBroken;
    const PlusTypeface typeface = SizedTypeface(play, *font);
    if (!typeface.face) {
        play.exhausted = true;
        return PlusOutcome::kBroken;
    }
    const PlusStringFormat plain{0, 0, 0, 0, kDefaultMargin, kDefaultMargin};
    const std::vector<TextCharacter> text = DecodeUtf16(reader.Take(length * 2));
    FillLetters(play, LayOut(play.graphics.Context(), typeface, text, box, format ? *format : plain), *brush);
    return PlusOutcome::kDone;
}

static PlusGlyph DriverGlyph(DeviceContext& dc, const PlusTypeface& typeface, char32_t code,
                             bool is_character)
{
    if (is_character)
        return GlyphFor(dc, typeface, code);
    // Glyph indexes mean nothing in a substitute font, except for the usual range of ASCII.
    if (!typeface.face->SameFamily())
        return GlyphFor(dc, typeface, code >= kFirstAsciiGlyph ? code - kFirstAsciiGlyph + ' ' : ' ');
    return {typeface.face, code, typeface.face->Shape(code).advance * typeface.em};
}

static PlusOutcome DrawDriverString(PlusPlay& play, const PlusRecord& record)
{
    ByteReader reader = record.Data();
    const PlusBrush* brush = play.BrushOf(record, reader.U32Le());
    const std::uint32_t options = reader.U32Le();
    const bool has_matrix = reader.U32Le() != 0;
    const std::uint64_t count = reader.U32Le();
    const auto* font = play.Find<PlusFont>(record.Id());
    const bool one_place = (options & kRealizedAdvance) != 0;
    if (reader.Failed() || !brush || !font || reader.Left() / 2 < count)
        return PlusOutcome::kBroken;
    if (count == 0)
        return PlusOutcome::kDone;
    ByteReader codes(reader.Take(count * 2));
    const auto places = ReadPlusPoints(reader, one_place ? 1 : count, PointFormat::kFloat);
    if (!places)
        return PlusOutcome::kBroken;
    // With advances of the font, writers may store one position or all.
    if (one_place && reader.Left() >= (count - 1) * 8)
        reader.Take((count - 1) * 8);
    const Affine matrix = has_matrix ? ReadMatrix(reader) : Affine{};
    const PlusTypeface typeface = SizedTypeface(play, *font);
    if (!typeface.face) {
        play.exhausted = true;
        return PlusOutcome::kBroken;
    }
    DeviceContext& dc = play.graphics.Context();
    Outline letters;
    Point pen = (*places)[0];
    for (std::size_t n = 0; n < count; ++n) {
        const PlusGlyph glyph = DriverGlyph(dc, typeface, codes.U16Le(), (options & kCharacters) != 0);
        if (!one_place)
            pen = (*places)[n];
        if (!AddGlyph(dc, typeface, glyph, pen, letters))
            return PlusOutcome::kDone;
        pen.x += glyph.advance;
    }
    AddBars(typeface, (*places)[0], pen.x - (*places)[0].x, letters);
    FillLetters(play, letters.Transformed(matrix), *brush);
    return PlusOutcome::kDone;
}

PlusOutcome PlayPlusText(PlusPlay& play, const PlusRecord& record)
{
    switch (record.type) {
        case kDrawString:
            return DrawString(play, record);
        case kDrawDriverString:
            return DrawDriverString(play, record);
        default:
            return PlusOutcome::kNotMine;
    }
}

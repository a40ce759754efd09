// Plays EMF records that create, select and delete objects.
#include <algorithm>

#include "src/platform/image/metafile/device/text_encoding.h"
#include "src/platform/image/metafile/emf/emf_player.h"
#include "src/platform/image/metafile/records/font_records.h"
#include "src/platform/image/metafile/records/palette_records.h"

namespace
{
enum ObjectRecord : std::uint32_t {
    kSelectObject = 37,
    kCreatePen = 38,
    kCreateBrush = 39,
    kDeleteObject = 40,
    kSelectPalette = 48,
    kCreatePalette = 49,
    kSetPaletteEntries = 50,
    kResizePalette = 51,
    kCreateFont = 82,
    kCreateMonoBrush = 93,
    kCreateDibBrush = 94,
    kExtCreatePen = 95,
};
}  // namespace

static constexpr std::uint32_t kStock = 0x80000000;

static constexpr std::uint32_t kBrushNull = 1;
static constexpr std::uint32_t kBrushHatched = 2;

// Index 0 is the metafile itself. Grow the table if needed: some headers announce too few objects.
static Outcome Put(EmfPlay& play, std::uint32_t index, Object object)
{
    if (index == 0 || index > 0xFFFF)
        return Outcome::kBroken;
    if (index >= play.objects.size())
        play.objects.resize(index + 1);
    play.objects[index] = std::move(object);
    return Outcome::kDone;
}

static Brush PlainBrush(std::uint32_t style, ColorRef color, std::uint32_t hatch)
{
    Brush brush;
    brush.kind = style == kBrushNull      ? BrushKind::kNull
                 : style == kBrushHatched ? BrushKind::kHatched
                                          : BrushKind::kSolid;
    brush.color = color;
    brush.hatch = hatch;
    return brush;
}

static Outcome CreatePen(EmfPlay& play, ByteReader& reader)
{
    const std::uint32_t index = reader.U32Le();
    Pen pen;
    pen.style = reader.U32Le();
    pen.width = ReadPoint(reader).x;
    pen.brush.color = reader.U32Le();
    return reader.Failed() ? Outcome::kBroken : Put(play, index, std::make_shared<const Pen>(std::move(pen)));
}

static Outcome ExtCreatePen(EmfPlay& play, const EmfRecord& record)
{
    ByteReader reader = record.Data();
    const std::uint32_t index = reader.U32Le();
    const EmfDibPlace place = ReadDibPlace(reader);
    Pen pen;
    pen.extended = true;
    pen.style = reader.U32Le();
    pen.width = reader.U32Le();
    const std::uint32_t brush_style = reader.U32Le();
    const ColorRef color = reader.U32Le();
    const std::uint32_t hatch = reader.U32Le();
    pen.brush = PlainBrush(brush_style, color, hatch);
    const auto dib = DibAt(record, place, color);
    if (dib && !dib->Empty() && brush_style > kBrushHatched) {
        pen.brush.kind = BrushKind::kDib;
        pen.brush.dib = *dib;
    }
    const std::uint32_t dashes = reader.U32Le();
    if (reader.Failed() || !dib || reader.Left() / 4 < dashes)
        return Outcome::kBroken;
    // Styles have at most sixteen entries.
    for (std::uint32_t n = 0; n < std::min(dashes, 16u); ++n)
        pen.dashes.push_back(reader.U32Le());
    return Put(play, index, std::make_shared<const Pen>(std::move(pen)));
}

static Outcome CreateBrush(EmfPlay& play, ByteReader& reader)
{
    const std::uint32_t index = reader.U32Le();
    const std::uint32_t style = reader.U32Le();
    const ColorRef color = reader.U32Le();
    const std::uint32_t hatch = reader.U32Le();
    if (reader.Failed())
        return Outcome::kBroken;
    return Put(play, index, std::make_shared<const Brush>(PlainBrush(style, color, hatch)));
}

static Outcome CreatePatternBrush(EmfPlay& play, const EmfRecord& record)
{
    ByteReader reader = record.Data();
    const std::uint32_t index = reader.U32Le();
    const std::uint32_t usage = reader.U32Le();
    const EmfDibPlace place = ReadDibPlace(reader);
    const auto dib = DibAt(record, place, usage);
    if (reader.Failed() || !dib)
        return Outcome::kBroken;
    Brush brush;
    brush.kind = record.type == kCreateMonoBrush ? BrushKind::kMonoDib : BrushKind::kDib;
    brush.dib = *dib;
    return Put(play, index, std::make_shared<const Brush>(std::move(brush)));
}

static Outcome CreateFont(EmfPlay& play, ByteReader& reader)
{
    const std::uint32_t index = reader.U32Le();
    Font font;
    font.height = reader.I32Le();
    font.width = reader.I32Le();
    font.escapement = reader.I32Le();
    reader.I32Le();  // character orientation: always that of the escapement
    font.weight = reader.I32Le();
    ReadFontStyle(reader, font);
    if (reader.Failed())
        return Outcome::kBroken;
    std::vector<TextCharacter> face = DecodeUtf16(reader.Take(std::min<std::uint64_t>(reader.Left(), 64)));
    face.erase(std::find_if(face.begin(), face.end(),
                            [](const TextCharacter& text_character) { return text_character.code == 0; }),
               face.end());
    font.face = FaceOf(face);
    return Put(play, index, std::make_shared<const Font>(std::move(font)));
}

static Outcome CreatePalette(EmfPlay& play, ByteReader& reader)
{
    const std::uint32_t index = reader.U32Le();
    reader.U16Le();  // version
    const std::uint32_t count = reader.U16Le();
    Palette palette;
    if (!ReadPaletteColors(reader, count, palette.colors))
        return Outcome::kBroken;
    return Put(play, index, std::make_shared<const Palette>(std::move(palette)));
}

static Outcome ChangePalette(EmfPlay& play, const EmfRecord& record)
{
    ByteReader reader = record.Data();
    const std::uint32_t index = reader.U32Le();
    const Object old_object = ObjectAt(play, index);
    const auto* old_palette = std::get_if<std::shared_ptr<const Palette>>(&old_object);
    if (!old_palette)
        return OutcomeOf(!reader.Failed());
    Palette palette = **old_palette;
    if (record.type == kResizePalette)
        palette.colors.resize(std::min(reader.U32Le(), 65535u));
    else {
        const std::uint32_t first = reader.U32Le();
        const std::uint32_t count = reader.U32Le();
        std::vector<std::uint32_t> colors;
        if (!ReadPaletteColors(reader, count, colors))
            return Outcome::kBroken;
        for (std::size_t n = 0; n < colors.size() && n + first < palette.colors.size(); ++n)
            palette.colors[n + first] = colors[n];
    }
    auto new_palette = std::make_shared<const Palette>(std::move(palette));
    if (play.dc.state.palette == *old_palette)
        play.dc.state.palette = new_palette;
    return reader.Failed() ? Outcome::kBroken : Put(play, index, std::move(new_palette));
}

Outcome PlayObject(EmfPlay& play, const EmfRecord& record)
{
    ByteReader reader = record.Data();
    switch (record.type) {
        case kSelectObject:
        case kSelectPalette: {
            const std::uint32_t index = reader.U32Le();
            if ((index & kStock) != 0)
                play.dc.Select(StockObject(index & ~kStock));
            else
                play.dc.Select(ObjectAt(play, index));
            return OutcomeOf(!reader.Failed());
        }
        case kDeleteObject: {
            const std::uint32_t index = reader.U32Le();
            if (index < play.objects.size())
                play.objects[index] = {};
            return OutcomeOf(!reader.Failed());
        }
        case kCreatePen:
            return CreatePen(play, reader);
        case kExtCreatePen:
            return ExtCreatePen(play, record);
        case kCreateBrush:
            return CreateBrush(play, reader);
        case kCreateMonoBrush:
        case kCreateDibBrush:
            return CreatePatternBrush(play, record);
        case kCreateFont:
            return CreateFont(play, reader);
        case kCreatePalette:
            return CreatePalette(play, reader);
        case kSetPaletteEntries:
        case kResizePalette:
            return ChangePalette(play, record);
        default:
            return Outcome::kNotMine;
    }
}

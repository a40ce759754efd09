// Plays WMF records that create, select and delete objects.
#include <algorithm>

#include "src/platform/image/metafile/device/bitmaps.h"
#include "src/platform/image/metafile/device/text_encoding.h"
#include "src/platform/image/metafile/records/font_records.h"
#include "src/platform/image/metafile/records/palette_records.h"
#include "src/platform/image/metafile/wmf/wmf_player.h"

namespace
{
// Function 0x34 selects a palette; those that create objects have 0xF in the high nibble.
enum ObjectNumber : std::uint8_t {
    kSelectClipRegion = 0x2C,
    kSelectObject = 0x2D,
    kSelectPalette = 0x34,
    kAnimatePalette = 0x36,
    kSetPaletteEntries = 0x37,
    kResizePalette = 0x39,
    kCreateDibBrush = 0x42,
    kDeleteObject = 0xF0,
    kCreatePalette = 0xF7,
    kCreateBrush = 0xF8,
    kCreatePatternBrush = 0xF9,
    kCreatePen = 0xFA,
    kCreateFont = 0xFB,
    kCreateBrushIndirect = 0xFC,
    kCreateBitmapIndirect = 0xFD,
    kCreateBitmap = 0xFE,
    kCreateRegion = 0xFF,
};
}  // namespace

static constexpr std::uint16_t kBrushNull = 1;
static constexpr std::uint16_t kBrushHatched = 2;
static constexpr std::uint16_t kBrushPattern = 3;

// Object indexes are 16 bits wide.
static constexpr std::size_t kMaxObjects = 65535;

// Null objects occupy a slot, too.
static Outcome Put(WmfPlay& play, Object object)
{
    for (Object& place : play.objects)
        if (std::holds_alternative<std::monostate>(place)) {
            place = std::move(object);
            return Outcome::kDone;
        }
    if (play.objects.size() >= kMaxObjects)
        return Outcome::kGivingUp;
    play.objects.push_back(std::move(object));
    return Outcome::kDone;
}

static Object Placeholder()
{
    return std::make_shared<const Region>();
}

static Outcome CreatePen(WmfPlay& play, ByteReader& reader)
{
    Pen pen;
    pen.style = reader.U16Le();
    pen.width = reader.I16Le();
    reader.U16Le();  // y coordinate of the width: unused
    pen.brush.color = reader.U32Le();
    return reader.Failed() ? Outcome::kBroken : Put(play, std::make_shared<const Pen>(std::move(pen)));
}

static Outcome CreateBrush(WmfPlay& play, ByteReader& reader)
{
    Brush brush;
    const std::uint16_t style = reader.U16Le();
    brush.kind = style == kBrushNull      ? BrushKind::kNull
                 : style == kBrushHatched ? BrushKind::kHatched
                                          : BrushKind::kSolid;
    brush.color = reader.U32Le();
    brush.hatch = reader.U16Le();
    return reader.Failed() ? Outcome::kBroken : Put(play, std::make_shared<const Brush>(std::move(brush)));
}

static Bitmap16Source ReadBitmap16(ByteReader& reader, std::uint64_t unused)
{
    Bitmap16Source bitmap;
    reader.U16Le();  // type
    bitmap.width = reader.I16Le();
    bitmap.height = reader.I16Le();
    bitmap.bytes_per_row = reader.U16Le();
    reader.U8();  // planes
    bitmap.bits_per_pixel = reader.U8();
    reader.Take(unused);
    bitmap.bits = reader.Take(reader.Left());
    return bitmap;
}

static Outcome CreateDibBrush(WmfPlay& play, ByteReader& reader)
{
    const std::uint16_t style = reader.U16Le();
    const std::uint16_t usage = reader.U16Le();
    ByteReader old = reader;
    Brush brush;
    brush.kind = BrushKind::kDib;
    brush.dib = PackedDib(reader.Take(reader.Left()), usage == 1);
    if (brush.dib.Empty() && style == kBrushPattern) {  // some writers store an old bitmap here
        brush.kind = BrushKind::kBitmap16;
        brush.bitmap16 = ReadBitmap16(old, 0);
    }
    return reader.Failed() ? Outcome::kBroken : Put(play, std::make_shared<const Brush>(std::move(brush)));
}

static Outcome CreatePatternBrush(WmfPlay& play, ByteReader& reader)
{
    Brush brush;
    brush.kind = BrushKind::kBitmap16;
    brush.bitmap16 = ReadBitmap16(reader, 4 + 18);  // pointer and reserved bytes
    return reader.Failed() ? Outcome::kBroken : Put(play, std::make_shared<const Brush>(std::move(brush)));
}

static Outcome CreateFont(WmfPlay& play, ByteReader& reader)
{
    Font font;
    font.height = reader.I16Le();
    font.width = reader.I16Le();
    font.escapement = reader.I16Le();
    reader.I16Le();  // character orientation: always that of the escapement
    font.weight = reader.I16Le();
    ReadFontStyle(reader, font);
    if (reader.Failed())
        return Outcome::kBroken;
    Bytes face = reader.Take(std::min<std::uint64_t>(reader.Left(), 32));
    face = face.first(static_cast<std::size_t>(std::find(face.begin(), face.end(), 0) - face.begin()));
    font.face = FaceOf(DecodeBytes(face, font.char_set == 2 ? 0 : font.char_set));
    return Put(play, std::make_shared<const Font>(std::move(font)));
}

static Outcome CreatePalette(WmfPlay& play, ByteReader& reader)
{
    reader.U16Le();  // version
    const std::uint64_t count = reader.U16Le();
    Palette palette;
    if (!ReadPaletteColors(reader, count, palette.colors))
        return Outcome::kBroken;
    return Put(play, std::make_shared<const Palette>(std::move(palette)));
}

// These records change the selected palette.
static Outcome ChangePalette(WmfPlay& play, const WmfRecord& record)
{
    ByteReader reader = record.Data();
    const std::shared_ptr<const Palette> old = play.dc.state.palette;
    Palette palette = *old;
    if (record.Number() == kResizePalette)
        palette.colors.resize(reader.U16Le());
    else {
        const std::size_t first = reader.U16Le();
        const std::uint64_t count = reader.U16Le();
        std::vector<std::uint32_t> colors;
        if (!ReadPaletteColors(reader, count, colors))
            return Outcome::kBroken;
        for (std::size_t n = 0; n < colors.size() && n + first < palette.colors.size(); ++n)
            palette.colors[n + first] = colors[n];
    }
    if (reader.Failed())
        return Outcome::kBroken;
    const auto new_palette = std::make_shared<const Palette>(std::move(palette));
    play.dc.state.palette = new_palette;
    for (Object& place : play.objects)
        if (const auto* old_palette = std::get_if<std::shared_ptr<const Palette>>(&place))
            if (*old_palette == old)
                place = new_palette;
    return Outcome::kDone;
}

static Outcome CreateRegion(WmfPlay& play, ByteReader& reader)
{
    reader.Take(2 + 2 + 4 + 2);  // next object, type, object count, size
    const std::uint16_t scans = reader.U16Le();
    reader.Take(2 + 8);  // longest scan, bounds
    Region region;
    for (std::uint16_t n = 0; n < scans; ++n) {
        const std::uint16_t ends = reader.U16Le();
        const double top = reader.I16Le();
        const double bottom = reader.I16Le();
        if (reader.Failed() || reader.Left() < std::uint64_t{ends} * 2)
            return Outcome::kBroken;
        for (std::uint16_t i = 0; i + 1 < ends; i = static_cast<std::uint16_t>(i + 2)) {
            const double left = reader.I16Le();
            region.rects.push_back({left, top, static_cast<double>(reader.I16Le()), bottom});
        }
        reader.Take((ends & 1) * 2);
        reader.U16Le();  // the repeated count
    }
    return reader.Failed() ? Outcome::kBroken : Put(play, std::make_shared<const Region>(std::move(region)));
}

static Outcome Create(WmfPlay& play, const WmfRecord& record)
{
    ByteReader reader = record.Data();
    switch (record.Number()) {
        case kCreateDibBrush:
            return CreateDibBrush(play, reader);
        case kCreatePalette:
            return CreatePalette(play, reader);
        case kCreatePatternBrush:
            return CreatePatternBrush(play, reader);
        case kCreatePen:
            return CreatePen(play, reader);
        case kCreateFont:
            return CreateFont(play, reader);
        case kCreateBrushIndirect:
            return CreateBrush(play, reader);
        case kCreateRegion:
            return CreateRegion(play, reader);
        case kCreateBrush:
        case kCreateBitmapIndirect:
        case kCreateBitmap:
            return Put(play, Placeholder());
        default:
            return Outcome::kNotMine;
    }
}

Outcome PlayWmfObject(WmfPlay& play, const WmfRecord& record)
{
    ByteReader reader = record.Data();
    switch (record.Number()) {
        case kSelectClipRegion:
        case kSelectObject:
        case kSelectPalette: {
            const Object& chosen = ObjectAt(play, reader.U16Le());
            if (!reader.Failed())
                play.dc.Select(chosen);
            return OutcomeOf(!reader.Failed());
        }
        case kDeleteObject: {
            const std::uint16_t index = reader.U16Le();
            if (!reader.Failed() && index < play.objects.size())
                play.objects[index] = {};
            return OutcomeOf(!reader.Failed());
        }
        case kAnimatePalette:
        case kSetPaletteEntries:
        case kResizePalette:
            return ChangePalette(play, record);
        default: {
            const Outcome outcome = Create(play, record);
            // The objects after a broken one keep their numbers.
            if (outcome == Outcome::kBroken && Put(play, Placeholder()) == Outcome::kGivingUp)
                return Outcome::kGivingUp;
            return outcome;
        }
    }
}

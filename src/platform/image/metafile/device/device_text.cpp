// Lays out glyphs and draws their outlines.
#include "src/platform/image/metafile/device/device_text.h"

#include <numbers>

#include "src/platform/image/metafile/canvas/raster_ops.h"

static constexpr std::uint32_t kAlignUpdate = 1;
static constexpr std::uint32_t kAlignRight = 2;
static constexpr std::uint32_t kAlignCenter = 6;
static constexpr std::uint32_t kAlignBottom = 8;
static constexpr std::uint32_t kAlignBaseLine = 24;

static constexpr std::uint8_t kSymbolCharSet = 2;
// In the fonts of the system that most of these files come from, glyph 3 is the space, and printable ASCII
// follows.
static constexpr char32_t kFirstAsciiGlyph = 3;

static constexpr std::uint64_t kCostOfGlyph = 2'000;

namespace
{
struct PlacedGlyph {
    FontFace* face = nullptr;
    std::uint32_t glyph = 0;
    double advance = 0;  ///< from the font, in ems
    char32_t code = 0;
    std::uint32_t units = 1;
};

/// A font at its drawing size.
struct SizedFont {
    FontFace* face = nullptr;
    double em = 0;            ///< logical
    double width_factor = 1;  ///< horizontal scale factor
    Affine to_picture;        ///< from logical lengths along and below the baseline; without translation
};
}  // namespace

static SizedFont MakeSizedFont(DeviceContext& dc, const Font& font)
{
    SizedFont result;
    result.face = dc.Fonts().FaceFor(font);
    if (!result.face)
        return result;
    const FontFace& face = *result.face;
    if (font.height > 0)
        result.em = font.height / (face.Ascent() + face.Descent());
    else
        result.em = font.height < 0 ? -font.height : 16 * dc.DeviceUnit().y;
    if (font.width != 0)
        result.width_factor = std::abs(font.width) / (face.MeanWidth() * result.em);
    if (!std::isfinite(result.width_factor) || result.width_factor <= 0)
        result.width_factor = 1;

    // Text rotates with the world transform, but isn't mirrored by the page's signs.
    Affine orientation = Then(dc.state.world, dc.PageScale());
    if (orientation.Determinant() < 0)
        orientation = Then({1, 0, 0, -1, 0, 0}, orientation);
    const double angle = font.escapement / 1800 * std::numbers::pi;
    const Affine rotation{std::cos(angle), -std::sin(angle), std::sin(angle), std::cos(angle), 0, 0};
    result.to_picture = Then(rotation, orientation);
    result.to_picture.x0 = result.to_picture.y0 = 0;
    return result;
}

static bool IsSymbolFont(const Font& font)
{
    return font.char_set == kSymbolCharSet || font.face == "Symbol" || font.face == "Wingdings";
}

// Maps symbol codes to Unicode if a substitute font is used.
static char32_t MapSymbolCharacter(const Font& font, const FontFace& face, char32_t code)
{
    if (!IsSymbolFont(font))
        return code;
    const char32_t byte = code >= 0xF000 && code <= 0xF0FF ? code - 0xF000 : code;
    if (face.HasSymbolMap())
        return byte <= 0xFF ? 0xF000 + byte : code;
    if (byte > 0xFF)
        return code;
    const bool is_dingbats = font.face.find("ings") != std::string::npos;
    const char32_t unicode = is_dingbats ? UnicodeOfWingdings(static_cast<std::uint8_t>(byte))
                             : font.face.find("Symbol") != std::string::npos || !face.SameFamily()
                                 ? UnicodeOfSymbol(static_cast<std::uint8_t>(byte))
                                 : 0;
    return unicode != 0 ? unicode : code;
}

static std::vector<PlacedGlyph> GlyphsOf(DeviceContext& dc, const TextRun& run, const Font& font,
                                         const SizedFont& size)
{
    std::vector<PlacedGlyph> result;
    result.reserve(run.text.size());
    for (const TextCharacter& character : run.text) {
        if (!dc.Work().Spend(kCostOfGlyph))
            return {};
        PlacedGlyph glyph;
        glyph.face = size.face;
        glyph.units = character.units;
        glyph.code = character.code;
        if (run.glyph_numbers && size.face->SameFamily())
            glyph.glyph = character.code;
        else {
            // Glyph indexes mean nothing in a substitute font, except for the usual range of ASCII.
            if (run.glyph_numbers)
                glyph.code =
                    character.code >= kFirstAsciiGlyph ? character.code - kFirstAsciiGlyph + ' ' : ' ';
            glyph.code = MapSymbolCharacter(font, *size.face, glyph.code);
            glyph.glyph = size.face->GlyphOf(glyph.code);
            const bool missing = glyph.glyph == 0 && glyph.code > ' ' && glyph.code != 0x200B;
            if (missing)
                if (FontFace* other = dc.Fonts().FaceWith(glyph.code, font)) {
                    glyph.face = other;
                    glyph.glyph = other->GlyphOf(glyph.code);
                }
            // Control characters draw as spaces.
            if (glyph.code < ' ')
                glyph.glyph = size.face->GlyphOf(' ');
        }
        glyph.advance = glyph.face->Shape(glyph.glyph).advance;
        result.push_back(glyph);
    }
    return result;
}

// The advance of each glyph in logical units, along and across the baseline.
static std::vector<Point> StepsOf(const DeviceContext& dc, const TextRun& run, const SizedFont& size,
                                  const std::vector<PlacedGlyph>& glyphs)
{
    std::vector<Point> result;
    result.reserve(glyphs.size());
    std::size_t unit = 0;
    for (const PlacedGlyph& glyph : glyphs) {
        Point step{glyph.advance * size.em * size.width_factor + dc.state.char_extra +
                       (glyph.code == ' ' ? dc.state.break_extra : 0),
                   0};
        if (unit + glyph.units <= run.steps.size()) {
            step = {};
            for (std::uint32_t n = 0; n < glyph.units; ++n)
                step = step + run.steps[unit + n];
        }
        unit += glyph.units;
        result.push_back(step);
    }
    return result;
}

// A substitute font may be wider than the record's distances allow. Condense its glyphs instead of letting
// them overlap.
static double CondenseFactor(const TextRun& run, const SizedFont& size,
                             const std::vector<PlacedGlyph>& glyphs, const std::vector<Point>& steps)
{
    if (run.steps.empty() || size.face->SameFamily())
        return 1;
    double own = 0;
    double given = 0;
    for (std::size_t n = 0; n < glyphs.size(); ++n) {
        own += glyphs[n].advance * size.em * size.width_factor;
        given += steps[n].x;
    }
    const double ratio = given / own;
    return ratio > 0.1 && ratio < 0.97 ? std::max(0.6, ratio) : 1;
}

static void AddBar(Outline& outline, const Affine& map, const Rect& rect)
{
    Outline bar;
    bar.AddBox(rect);
    outline.Append(bar.Transformed(map));
}

static void PaintBox(DeviceContext& dc, const Rect& rect, const Affine& map)
{
    Outline box;
    box.AddBox(rect);
    dc.Fill(box.Transformed(map), Ink::Solid(dc.ResolveColor(dc.state.back_color)), kRop2Copy);
}

bool DrawText(DeviceContext& dc, const TextRun& run)
{
    DcState& state = dc.state;
    const Affine& map = dc.LogicalToPicture();
    if (run.box && run.fill_box && !dc.InPath())
        PaintBox(dc, *run.box, map);
    if (run.text.empty() || !state.font)
        return true;
    const Font& font = *state.font;
    const SizedFont size = MakeSizedFont(dc, font);
    if (!size.face)
        return false;
    const std::vector<PlacedGlyph> glyphs = GlyphsOf(dc, run, font, size);
    if (glyphs.empty())
        return !dc.Work().Spent();
    const std::vector<Point> steps = StepsOf(dc, run, size, glyphs);
    Point end;
    for (const Point& step : steps)
        end = end + step;

    // Offset of the baseline from the reference point.
    const std::uint32_t align = state.text_align;
    const bool updates_position = (align & kAlignUpdate) != 0;
    const Point reference = updates_position ? state.position : run.reference;
    const double ascent = size.face->Ascent() * size.em;
    const double descent = size.face->Descent() * size.em;
    const bool center = (align & kAlignCenter) == kAlignCenter;
    const bool right = !center && (align & kAlignRight) != 0;
    Point start{center ? -end.x / 2 : right ? -end.x : 0, ascent};
    if ((align & kAlignBaseLine) == kAlignBaseLine)
        start.y = 0;
    else if ((align & kAlignBottom) != 0)
        start.y = -descent;
    const Point origin = map.Apply(reference) + size.to_picture.ApplyToVector(start);
    Affine to_picture = size.to_picture;
    to_picture.x0 = ClampToDrawable(origin.x);
    to_picture.y0 = ClampToDrawable(origin.y);
    if (!to_picture.Finite())
        return true;

    Outline letters;
    const double width_factor = size.width_factor * CondenseFactor(run, size, glyphs, steps);
    Point pen;
    for (std::size_t n = 0; n < glyphs.size(); ++n) {
        const Outline& shape = glyphs[n].face->Shape(glyphs[n].glyph).outline;
        const Affine place{size.em * width_factor, 0, 0, size.em, pen.x, pen.y};
        if (!dc.Work().Spend(shape.PointCount() * 16))
            return false;
        letters.Append(shape.Transformed(Then(place, to_picture)));
        pen = pen + steps[n];
    }
    const double thick = std::max(size.face->UnderlineThickness() * size.em, dc.DeviceUnit().y);
    const auto underline = [&](double middle) {
        AddBar(letters, to_picture, {0, middle - thick / 2, end.x, middle + thick / 2});
    };
    if (font.underline)
        underline(size.face->UnderlineOffset() * size.em);
    if (font.strike_out)
        underline(-0.3 * ascent);

    if (dc.InPath())
        dc.AddToPath(letters);
    else {
        const Clip before = state.clip;
        if (run.box && run.clip_to_box)
            dc.CombineClip(dc.ClipOf({&*run.box, 1}, map), ClipMode::kAnd);
        if (state.opaque_back && !run.fill_box)
            PaintBox(dc, {0, -ascent, end.x, descent}, to_picture);
        dc.Target().Fill(letters, true, Ink::Solid(dc.ResolveColor(state.text_color)), kRop2Copy,
                         dc.CurrentClip(), true);
        state.clip = before;
    }
    if (updates_position && !center) {
        const double turn = font.escapement / 1800 * std::numbers::pi;
        const double moved = right ? -end.x : end.x;
        dc.MoveTo(reference + Point{moved * std::cos(turn), -moved * std::sin(turn) * dc.Handedness()});
    }
    return !dc.Work().Spent();
}

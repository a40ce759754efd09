// Lays out strings: line breaks, alignment, underlines.
#include "src/platform/image/metafile/emfplus/text_layout.h"

static constexpr std::uint32_t kStyleBold = 1;
static constexpr std::uint32_t kStyleItalic = 2;
static constexpr std::uint32_t kStyleUnderline = 4;
static constexpr std::uint32_t kStyleStrikeOut = 8;

static constexpr std::uint32_t kRightToLeft = 1;
static constexpr std::uint32_t kVertical = 2;
static constexpr std::uint32_t kNoWrap = 0x1000;

static constexpr std::uint64_t kCostOfGlyph = 2'000;

PlusTypeface TypefaceOf(DeviceContext& dc, const PlusFont& font, double em)
{
    PlusTypeface result;
    result.font.face = font.family;
    result.font.weight = (font.style & kStyleBold) != 0 ? 700 : 400;
    result.font.italic = (font.style & kStyleItalic) != 0;
    result.em = em;
    result.style = font.style;
    result.face = dc.Fonts().FaceFor(result.font);
    return result;
}

PlusGlyph GlyphFor(DeviceContext& dc, const PlusTypeface& typeface, char32_t character)
{
    PlusGlyph result{typeface.face, typeface.face->GlyphOf(character), 0};
    // The characters of symbol fonts are in the private use area.
    if (result.glyph == 0 && character <= 0xFF && typeface.face->HasSymbolMap())
        result.glyph = typeface.face->GlyphOf(0xF000 + character);
    if (result.glyph == 0 && character > ' ' && character != 0x200B)
        if (FontFace* other = dc.Fonts().FaceWith(character, typeface.font))
            result = {other, other->GlyphOf(character), 0};
    if (character < ' ')
        result.glyph = typeface.face->GlyphOf(' ');
    result.advance = result.face->Shape(result.glyph).advance * typeface.em;
    return result;
}

bool AddGlyph(DeviceContext& dc, const PlusTypeface& typeface, const PlusGlyph& glyph, Point at,
              Outline& letters)
{
    const Outline& shape = glyph.face->Shape(glyph.glyph).outline;
    if (!dc.Work().Spend(shape.PointCount() * 16 + kCostOfGlyph))
        return false;
    letters.Append(shape.Transformed({typeface.em, 0, 0, typeface.em, at.x, at.y}));
    return true;
}

void AddBars(const PlusTypeface& typeface, Point from, double width, Outline& letters)
{
    const double thick = typeface.face->UnderlineThickness() * typeface.em;
    const auto add = [&](double middle) {
        letters.AddBox({from.x, from.y + middle - thick / 2, from.x + width, from.y + middle + thick / 2});
    };
    if ((typeface.style & kStyleUnderline) != 0)
        add(typeface.face->UnderlineOffset() * typeface.em);
    if ((typeface.style & kStyleStrikeOut) != 0)
        add(-0.3 * typeface.face->Ascent() * typeface.em);
}

namespace
{
struct Letter {
    char32_t code = 0;
    PlusGlyph glyph;
};

/// A line: its letters and their width without spaces at the end.
struct Line {
    std::size_t first = 0;
    std::size_t end = 0;
    double width = 0;
};
}  // namespace

static std::vector<Letter> LettersOf(DeviceContext& dc, const PlusTypeface& typeface,
                                     const std::vector<TextCharacter>& text, bool hides_hotkeys)
{
    std::vector<Letter> letters;
    bool after_ampersand = false;
    for (const TextCharacter& character : text) {
        if (!dc.Work().Spend(kCostOfGlyph))
            return {};
        if (character.code == '\r')
            continue;
        if (hides_hotkeys && character.code == '&' && !after_ampersand) {
            after_ampersand = true;
            continue;
        }
        after_ampersand = false;
        letters.push_back({character.code, GlyphFor(dc, typeface, character.code)});
    }
    return letters;
}

// Breaks at line ends, and at spaces where a line would exceed the width.
static std::vector<Line> BreakLines(const std::vector<Letter>& letters, double width)
{
    std::vector<Line> lines;
    Line line;
    double pen = 0;
    std::size_t word = 0;    // where the current word starts
    double before_word = 0;  // the width of the line's words so far
    const auto finish = [&](std::size_t end, double line_width, std::size_t next) {
        line.end = end;
        line.width = line_width;
        lines.push_back(line);
        line.first = word = next;
        pen = before_word = 0;
    };
    double visible = 0;  // the pen after the last letter that isn't a space
    for (std::size_t n = 0; n < letters.size(); ++n) {
        if (letters[n].code == '\n') {
            finish(n, visible, n + 1);
            visible = 0;
            continue;
        }
        if (letters[n].code == ' ') {
            pen += letters[n].glyph.advance;
            word = n + 1;
            before_word = visible;
            continue;
        }
        if (width > 0 && pen + letters[n].glyph.advance > width && n > line.first) {
            // Take the word to the next line, or break it if it fills the line.
            const std::size_t start = word > line.first ? word : n;
            finish(start, word > line.first ? before_word : visible, start);
            for (std::size_t i = start; i < n; ++i)
                pen += letters[i].glyph.advance;
        }
        pen += letters[n].glyph.advance;
        visible = pen;
    }
    finish(letters.size(), visible, letters.size());
    return lines;
}

// The part of the free space before aligned contents.
static double Share(std::uint32_t align)
{
    return align == 1 ? 0.5 : align == 2 ? 1 : 0;
}

Outline LayOut(DeviceContext& dc, const PlusTypeface& typeface, const std::vector<TextCharacter>& text,
               const Rect& box, const PlusStringFormat& format)
{
    const bool vertical = (format.flags & kVertical) != 0;
    const double box_width = vertical ? box.Height() : box.Width();
    const double box_height = vertical ? box.Width() : box.Height();
    const double leading = box_width > 0 ? format.leading * typeface.em : 0;
    const double trailing = box_width > 0 ? format.trailing * typeface.em : 0;
    const double room = std::max(0.0, box_width - leading - trailing);
    const std::vector<Letter> letters = LettersOf(dc, typeface, text, format.hotkey != 0);
    // Widths differ a little between a font and its substitute: don't break a line for that.
    const bool wraps = (format.flags & kNoWrap) == 0 && box_width > 0;
    const std::vector<Line> lines = BreakLines(letters, wraps ? room + 0.02 * typeface.em : 0);

    const double line_height = typeface.face->LineHeight() * typeface.em;
    const double height = line_height * static_cast<double>(lines.size());
    double top = (box_height - height) * Share(format.line_align);
    if (box_height <= 0)
        top = -height * Share(format.line_align);
    std::uint32_t align = format.align;
    if ((format.flags & kRightToLeft) != 0 && align != 1)
        align = align == 0 ? 2 : 0;
    Outline result;
    for (const Line& line : lines) {
        const double left = leading + (room - line.width) * Share(align);
        const double baseline = top + typeface.face->Ascent() * typeface.em;
        top += line_height;
        Point pen{left, baseline};
        for (std::size_t n = line.first; n < line.end; ++n) {
            if (!AddGlyph(dc, typeface, letters[n].glyph, pen, result))
                return result;
            pen.x += letters[n].glyph.advance;
        }
        AddBars(typeface, {left, baseline}, line.width, result);
    }
    // Vertical text runs down, and its lines follow from right to left.
    return result.Transformed(vertical ? Affine{0, 1, -1, 0, box.right, box.top}
                                       : Affine{1, 0, 0, 1, box.left, box.top});
}

// Breaks EMF+ strings into lines and places their glyphs.
// Room: platform/image/metafile/emfplus.
#pragma once

#include <vector>

#include "src/platform/image/metafile/device/device_context.h"
#include "src/platform/image/metafile/device/text_encoding.h"
#include "src/platform/image/metafile/emfplus/objects.h"

/// A font at its size in world units.
struct PlusTypeface {
    FontFace* face = nullptr;  ///< null if no font is installed
    Font font;
    double em = 0;
    std::uint32_t style = 0;
};

/// A glyph with the face that has it.
struct PlusGlyph {
    FontFace* face = nullptr;
    std::uint32_t glyph = 0;
    double advance = 0;  ///< world units
};

PlusTypeface TypefaceOf(DeviceContext& dc, const PlusFont& font, double em);
PlusGlyph GlyphFor(DeviceContext& dc, const PlusTypeface& typeface, char32_t character);
/// Adds a glyph whose baseline starts at the point. False if the budget is spent.
bool AddGlyph(DeviceContext& dc, const PlusTypeface& typeface, const PlusGlyph& glyph, Point at,
              Outline& letters);
/// Adds underline and strike-out, if the style has them.
void AddBars(const PlusTypeface& typeface, Point from, double width, Outline& letters);

/// The letters of a string in its box, in world units. A box without width or height is a point to align at.
Outline LayOut(DeviceContext& dc, const PlusTypeface& typeface, const std::vector<TextCharacter>& text,
               const Rect& box, const PlusStringFormat& format);

// Finds the fonts that a metafile names, or those that come nearest, and gives their letters as outlines.
// Room: platform/image/metafile/device.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <unordered_map>

#include "src/platform/image/metafile/canvas/budget.h"
#include "src/platform/image/metafile/canvas/outline.h"
#include "src/platform/image/metafile/device/objects.h"

struct FT_FaceRec_;
struct FT_LibraryRec_;

/// One letter. Lengths are in widths of an em; y grows downwards from the base line.
struct GlyphShape {
    Outline outline;
    double advance = 0;
};

/// A font file that was found for a name and a style.
class FontFace
{
public:
    /// Takes over face. slant shears upright letters for an italic that has no font of its own.
    FontFace(FT_FaceRec_* face, bool same_family, bool embolden, double slant);
    ~FontFace();
    FontFace(const FontFace&) = delete;
    FontFace& operator=(const FontFace&) = delete;

    bool SameFamily() const { return same_family_; }  ///< the family is the one that was asked for
    bool HasSymbolMap() const { return symbol_map_; }
    /// The number of a character's glyph; 0 if there is none.
    std::uint32_t GlyphOf(char32_t character) const;
    const GlyphShape& Shape(std::uint32_t glyph);

    double Ascent() const { return ascent_; }  ///< of the cell, above the base line
    double Descent() const { return descent_; }
    double MeanWidth() const { return mean_width_; }
    double UnderlineOffset() const
    {
        return underline_offset_;
    }  ///< from the base line down to the line's middle
    double UnderlineThickness() const { return underline_thickness_; }

private:
    FT_FaceRec_* face_;
    bool same_family_;
    bool embolden_;
    double slant_;
    bool symbol_map_ = false;
    double ascent_ = 0.9;
    double descent_ = 0.2;
    double mean_width_ = 0.45;
    double underline_offset_ = 0.1;
    double underline_thickness_ = 0.05;
    std::unordered_map<std::uint32_t, GlyphShape> shapes_;
};

/// The fonts of one play, found once each.
class FontCache
{
public:
    explicit FontCache(Budget& budget) : budget_(budget) {}
    ~FontCache();
    FontCache(const FontCache&) = delete;
    FontCache& operator=(const FontCache&) = delete;

    /// Null when the machine has no font at all, or the work isn't granted.
    FontFace* FaceFor(const Font& font);
    /// A font that has the character, in a style like font's; null if there is none.
    FontFace* FaceWith(char32_t character, const Font& font);

private:
    FontFace* FindFace(const std::string& key, const Font& font, char32_t character);

    Budget& budget_;
    FT_LibraryRec_* library_ = nullptr;
    std::map<std::string, std::unique_ptr<FontFace>> faces_;
};

// Finds the best match for a metafile's fonts and provides glyph outlines.
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

/// A glyph. Lengths are in ems; y grows downwards from the baseline.
struct GlyphShape {
    Outline outline;
    double advance = 0;
};

/// A font face opened for a name and style.
class FontFace
{
public:
    /// Takes ownership of face. slant shears upright glyphs to synthesise an italic.
    FontFace(FT_FaceRec_* face, bool same_family, bool embolden, double slant);
    ~FontFace();
    FontFace(const FontFace&) = delete;
    FontFace& operator=(const FontFace&) = delete;

    bool SameFamily() const { return same_family_; }  ///< false for a substitute
    bool HasSymbolMap() const { return symbol_map_; }
    /// The glyph index of a character; 0 if the font lacks it.
    std::uint32_t GlyphOf(char32_t character) const;
    const GlyphShape& Shape(std::uint32_t glyph);

    double Ascent() const { return ascent_; }  ///< of the cell, above the baseline
    double Descent() const { return descent_; }
    double LineHeight() const { return line_height_; }  ///< from one baseline to the next
    double MeanWidth() const { return mean_width_; }
    double UnderlineOffset() const
    {
        return underline_offset_;
    }  ///< from the baseline down to the line's centre
    double UnderlineThickness() const { return underline_thickness_; }

private:
    FT_FaceRec_* face_;
    bool same_family_;
    bool embolden_;
    double slant_;
    bool symbol_map_ = false;
    double ascent_ = 0.9;
    double descent_ = 0.2;
    double line_height_ = 1.15;
    double mean_width_ = 0.45;
    double underline_offset_ = 0.1;
    double underline_thickness_ = 0.05;
    std::unordered_map<std::uint32_t, GlyphShape> shapes_;
};

/// The fonts used while playing one metafile, each looked up once.
class FontCache
{
public:
    explicit FontCache(Budget& budget) : budget_(budget) {}
    ~FontCache();
    FontCache(const FontCache&) = delete;
    FontCache& operator=(const FontCache&) = delete;

    /// Null if no font is installed or the budget is spent.
    FontFace* FaceFor(const Font& font);
    /// A font that has the character, in a style similar to font's; null if there is none.
    FontFace* FaceWith(char32_t character, const Font& font);

private:
    FontFace* FindFace(const std::string& key, const Font& font, char32_t character);

    Budget& budget_;
    FT_LibraryRec_* library_ = nullptr;
    std::map<std::string, std::shared_ptr<FontFace>> faces_;  ///< by name and style
    std::map<std::string, std::shared_ptr<FontFace>>
        opened_;  ///< by file and style: many names have one font
};

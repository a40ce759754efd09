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
    Outline objOutline;
    double dAdvance = 0;
};

/// A font file that was found for a name and a style.
class FontFace
{
public:
    /// Takes over pFace. dSlant shears upright letters for an italic that has no font of its own.
    FontFace(FT_FaceRec_* pFace, bool bSameFamily, bool bEmbolden, double dSlant);
    ~FontFace();
    FontFace(const FontFace&) = delete;
    FontFace& operator=(const FontFace&) = delete;

    bool SameFamily() const { return m_bSameFamily; }  ///< the family is the one that was asked for
    bool HasSymbolMap() const { return m_bSymbolMap; }
    /// The number of a character's glyph; 0 if there is none.
    std::uint32_t GlyphOf(char32_t nCharacter) const;
    const GlyphShape& Shape(std::uint32_t nGlyph);

    double Ascent() const { return m_dAscent; }  ///< of the cell, above the base line
    double Descent() const { return m_dDescent; }
    double MeanWidth() const { return m_dMeanWidth; }
    double UnderlineOffset() const
    {
        return m_dUnderlineOffset;
    }  ///< from the base line down to the line's middle
    double UnderlineThickness() const { return m_dUnderlineThickness; }

private:
    FT_FaceRec_* m_pFace;
    bool m_bSameFamily;
    bool m_bEmbolden;
    double m_dSlant;
    bool m_bSymbolMap = false;
    double m_dAscent = 0.9;
    double m_dDescent = 0.2;
    double m_dMeanWidth = 0.45;
    double m_dUnderlineOffset = 0.1;
    double m_dUnderlineThickness = 0.05;
    std::unordered_map<std::uint32_t, GlyphShape> m_aShapes;
};

/// The fonts of one play, found once each.
class FontShelf
{
public:
    explicit FontShelf(Budget& objBudget) : m_objBudget(objBudget) {}
    ~FontShelf();
    FontShelf(const FontShelf&) = delete;
    FontShelf& operator=(const FontShelf&) = delete;

    /// Null when the machine has no font at all, or the work isn't granted.
    FontFace* pFaceFor(const Font& objFont);
    /// A font that has the character, in a style like objFont's; null if there is none.
    FontFace* pFaceWith(char32_t nCharacter, const Font& objFont);

private:
    FontFace* pFound(const std::string& sKey, const Font& objFont, char32_t nCharacter);

    Budget& m_objBudget;
    FT_LibraryRec_* m_pLibrary = nullptr;
    std::map<std::string, std::unique_ptr<FontFace>> m_aFaces;
};

// Finds fonts through fontconfig and opens them with FreeType.
#include "src/platform/image/metafile/device/fonts.h"

#include <fontconfig/fontconfig.h>
#include <ft2build.h>

#include <array>
#include <string_view>
#include <utility>
#include FT_FREETYPE_H
#include FT_OUTLINE_H
#include FT_TRUETYPE_TABLES_H

// Looking a font up takes about as long as painting this many pixels.
static constexpr std::uint64_t kCostOfLookup = 300'000;
static constexpr std::size_t kMostShapesKept = 4096;

FontFace::FontFace(FT_FaceRec_* pFace, bool bSameFamily, bool bEmbolden, double dSlant)
    : m_pFace(pFace), m_bSameFamily(bSameFamily), m_bEmbolden(bEmbolden), m_dSlant(dSlant)
{
    m_bSymbolMap = FT_Select_Charmap(pFace, FT_ENCODING_UNICODE) != 0 &&
                   FT_Select_Charmap(pFace, FT_ENCODING_MS_SYMBOL) == 0;
    const double dEm = pFace->units_per_EM > 0 ? pFace->units_per_EM : 1000;
    m_dAscent = pFace->ascender / dEm;
    m_dDescent = -pFace->descender / dEm;
    const auto* pMetrics = static_cast<const TT_OS2*>(FT_Get_Sfnt_Table(pFace, FT_SFNT_OS2));
    if (pMetrics && pMetrics->version != 0xFFFF) {
        if (pMetrics->usWinAscent + pMetrics->usWinDescent > 0) {
            m_dAscent = pMetrics->usWinAscent / dEm;
            m_dDescent = pMetrics->usWinDescent / dEm;
        }
        if (pMetrics->xAvgCharWidth > 0)
            m_dMeanWidth = pMetrics->xAvgCharWidth / dEm;
    }
    if (!(m_dAscent + m_dDescent > 0.1)) {
        m_dAscent = 0.9;
        m_dDescent = 0.2;
    }
    if (pFace->underline_thickness > 0) {
        m_dUnderlineThickness = pFace->underline_thickness / dEm;
        m_dUnderlineOffset = -pFace->underline_position / dEm;
    }
}

FontFace::~FontFace()
{
    FT_Done_Face(m_pFace);
}

std::uint32_t FontFace::GlyphOf(char32_t nCharacter) const
{
    return FT_Get_Char_Index(m_pFace, nCharacter);
}

/// What an outline is built into while FreeType takes a glyph apart.
struct GlyphTaker {
    Outline& objOutline;
    double dScale;
    Point ptLast;

    Point From(const FT_Vector* pPoint) const
    {
        return {static_cast<double>(pPoint->x) * dScale, -static_cast<double>(pPoint->y) * dScale};
    }
};

static int TakeMove(const FT_Vector* pTo, void* pUser)
{
    auto& objTaker = *static_cast<GlyphTaker*>(pUser);
    objTaker.objOutline.Close();
    objTaker.ptLast = objTaker.From(pTo);
    objTaker.objOutline.MoveTo(objTaker.ptLast);
    return 0;
}

static int TakeLine(const FT_Vector* pTo, void* pUser)
{
    auto& objTaker = *static_cast<GlyphTaker*>(pUser);
    objTaker.ptLast = objTaker.From(pTo);
    objTaker.objOutline.LineTo(objTaker.ptLast);
    return 0;
}

static int TakeConic(const FT_Vector* pControl, const FT_Vector* pTo, void* pUser)
{
    auto& objTaker = *static_cast<GlyphTaker*>(pUser);
    const Point ptControl = objTaker.From(pControl);
    const Point ptEnd = objTaker.From(pTo);
    // A quadratic curve as a cubic.
    objTaker.objOutline.CurveTo(objTaker.ptLast + (2.0 / 3) * (ptControl - objTaker.ptLast),
                                ptEnd + (2.0 / 3) * (ptControl - ptEnd), ptEnd);
    objTaker.ptLast = ptEnd;
    return 0;
}

static int TakeCubic(const FT_Vector* pA, const FT_Vector* pB, const FT_Vector* pTo, void* pUser)
{
    auto& objTaker = *static_cast<GlyphTaker*>(pUser);
    objTaker.ptLast = objTaker.From(pTo);
    objTaker.objOutline.CurveTo(objTaker.From(pA), objTaker.From(pB), objTaker.ptLast);
    return 0;
}

const GlyphShape& FontFace::Shape(std::uint32_t nGlyph)
{
    const auto itFound = m_aShapes.find(nGlyph);
    if (itFound != m_aShapes.end())
        return itFound->second;
    if (m_aShapes.size() >= kMostShapesKept)
        m_aShapes.clear();
    GlyphShape& objShape = m_aShapes[nGlyph];
    if (FT_Load_Glyph(m_pFace, nGlyph, FT_LOAD_NO_SCALE | FT_LOAD_NO_BITMAP) != 0)
        return objShape;
    FT_GlyphSlot pSlot = m_pFace->glyph;
    const double dScale = 1.0 / (m_pFace->units_per_EM > 0 ? m_pFace->units_per_EM : 1000);
    objShape.dAdvance = static_cast<double>(pSlot->metrics.horiAdvance) * dScale;
    if (pSlot->format != FT_GLYPH_FORMAT_OUTLINE)
        return objShape;
    if (m_bEmbolden)
        FT_Outline_Embolden(&pSlot->outline, m_pFace->units_per_EM / 24);
    if (m_dSlant != 0) {
        const FT_Matrix objShear{0x10000, static_cast<FT_Fixed>(m_dSlant * 0x10000), 0, 0x10000};
        FT_Outline_Transform(&pSlot->outline, &objShear);
    }
    FT_Outline_Funcs objFunctions{TakeMove, TakeLine, TakeConic, TakeCubic, 0, 0};
    GlyphTaker objTaker{objShape.objOutline, dScale, {}};
    if (FT_Outline_Decompose(&pSlot->outline, &objFunctions, &objTaker) != 0)
        objShape.objOutline.Clear();
    objShape.objOutline.Close();
    return objShape;
}

FontShelf::~FontShelf()
{
    m_aFaces.clear();
    if (m_pLibrary)
        FT_Done_FreeType(m_pLibrary);
}

// Names of old that no font bears any more, by what took their place; and families that go by their kind.
static const char* sKnownSubstitute(const std::string& sFace)
{
    static constexpr std::array<std::pair<std::string_view, const char*>, 12> aKnown = {{
        {"Helv", "Arial"},
        {"MS Sans Serif", "Arial"},
        {"MS Shell Dlg", "Arial"},
        {"MS Shell Dlg 2", "Arial"},
        {"Microsoft Sans Serif", "Arial"},
        {"System", "Arial"},
        {"Tms Rmn", "Times New Roman"},
        {"MS Serif", "Times New Roman"},
        {"Fixedsys", "Courier New"},
        {"Terminal", "Courier New"},
        {"Lucida Console", "Courier New"},
        {"Arial Narrow", "Liberation Sans Narrow"},
    }};
    for (const auto& [sName, sSubstitute] : aKnown)
        if (sFace == sName)
            return sSubstitute;
    // PostScript's names go on with the style: Times-Roman, Helvetica-Bold.
    if (sFace.starts_with("Helvetica"))
        return "Arial";
    if (sFace.starts_with("Times"))
        return "Times New Roman";
    return sFace.starts_with("Courier") ? "Courier New" : nullptr;
}

static const char* sFamilyOfKind(const Font& objFont)
{
    const bool bFixed = (objFont.nPitchAndFamily & 3) == 1;
    const int nKind = objFont.nPitchAndFamily >> 4;
    if (bFixed || nKind == 3)
        return "Courier New";
    return nKind == 1 ? "Times New Roman" : "Arial";
}

static const FcChar8* pText(const char* sText)
{
    return reinterpret_cast<const FcChar8*>(sText);
}

struct FcPatternRelease {
    void operator()(FcPattern* pPattern) const { FcPatternDestroy(pPattern); }
};
using FcPatternPtr = std::unique_ptr<FcPattern, FcPatternRelease>;

static FcPatternPtr pMatched(const Font& objFont, char32_t nCharacter)
{
    const FcPatternPtr pPattern(FcPatternCreate());
    if (!pPattern)
        return nullptr;
    if (!objFont.sFace.empty() && nCharacter == 0)
        FcPatternAddString(pPattern.get(), FC_FAMILY, pText(objFont.sFace.c_str()));
    if (const char* sSubstitute = sKnownSubstitute(objFont.sFace))
        FcPatternAddString(pPattern.get(), FC_FAMILY, pText(sSubstitute));
    FcPatternAddString(pPattern.get(), FC_FAMILY, pText(sFamilyOfKind(objFont)));
    const std::int32_t lWeight = objFont.lWeight <= 0 ? 400 : std::clamp(objFont.lWeight, 1, 1000);
    FcPatternAddInteger(pPattern.get(), FC_WEIGHT, FcWeightFromOpenType(lWeight));
    FcPatternAddInteger(pPattern.get(), FC_SLANT, objFont.bItalic ? FC_SLANT_ITALIC : FC_SLANT_ROMAN);
    FcPatternAddBool(pPattern.get(), FC_SCALABLE, FcTrue);
    FcPatternAddBool(pPattern.get(), FC_OUTLINE, FcTrue);
    FcPatternAddBool(pPattern.get(), FC_COLOR, FcFalse);
    if (nCharacter != 0) {
        FcCharSet* pSet = FcCharSetCreate();
        FcCharSetAddChar(pSet, nCharacter);
        FcPatternAddCharSet(pPattern.get(), FC_CHARSET, pSet);
        FcCharSetDestroy(pSet);
    }
    FcConfigSubstitute(nullptr, pPattern.get(), FcMatchPattern);
    FcDefaultSubstitute(pPattern.get());
    FcResult eResult = FcResultNoMatch;
    return FcPatternPtr(FcFontMatch(nullptr, pPattern.get(), &eResult));
}

static bool bHasFamily(FcPattern* pPattern, const std::string& sFamily)
{
    FcChar8* pName = nullptr;
    for (int n = 0; FcPatternGetString(pPattern, FC_FAMILY, n, &pName) == FcResultMatch; ++n)
        if (FcStrCmpIgnoreCase(pName, pText(sFamily.c_str())) == 0)
            return true;
    return false;
}

FontFace* FontShelf::pFound(const std::string& sKey, const Font& objFont, char32_t nCharacter)
{
    const auto itFound = m_aFaces.find(sKey);
    if (itFound != m_aFaces.end())
        return itFound->second.get();
    if (!m_objBudget.Spend(kCostOfLookup) || (!m_pLibrary && FT_Init_FreeType(&m_pLibrary) != 0))
        return nullptr;
    std::unique_ptr<FontFace>& pKept = m_aFaces[sKey];
    const FcPatternPtr pMatch = pMatched(objFont, nCharacter);
    FcChar8* pFile = nullptr;
    if (!pMatch || FcPatternGetString(pMatch.get(), FC_FILE, 0, &pFile) != FcResultMatch)
        return nullptr;
    int nIndex = 0;
    FcPatternGetInteger(pMatch.get(), FC_INDEX, 0, &nIndex);
    FcBool bEmbolden = FcFalse;
    FcPatternGetBool(pMatch.get(), FC_EMBOLDEN, 0, &bEmbolden);
    FcMatrix* pMatrix = nullptr;
    const bool bSheared =
        FcPatternGetMatrix(pMatch.get(), FC_MATRIX, 0, &pMatrix) == FcResultMatch && pMatrix;
    FT_Face pFace = nullptr;
    if (FT_New_Face(m_pLibrary, reinterpret_cast<const char*>(pFile), nIndex, &pFace) != 0)
        return nullptr;
    if (!FT_IS_SCALABLE(pFace)) {
        FT_Done_Face(pFace);
        return nullptr;
    }
    pKept = std::make_unique<FontFace>(pFace, bHasFamily(pMatch.get(), objFont.sFace), bEmbolden != FcFalse,
                                       bSheared ? pMatrix->xy : 0);
    if (nCharacter != 0 && pKept->GlyphOf(nCharacter) == 0)
        pKept.reset();  // fontconfig gives the nearest, even if it doesn't have the character
    return pKept.get();
}

static std::string sStyleKey(const Font& objFont)
{
    return std::to_string(objFont.lWeight) + (objFont.bItalic ? "i" : "r") +
           std::to_string(objFont.nPitchAndFamily & 0xF3);
}

FontFace* FontShelf::pFaceFor(const Font& objFont)
{
    return pFound(objFont.sFace + '\n' + sStyleKey(objFont), objFont, 0);
}

FontFace* FontShelf::pFaceWith(char32_t nCharacter, const Font& objFont)
{
    // Fonts that were opened for other characters are asked first: a text stays in one script, mostly.
    for (const auto& [sKey, pFace] : m_aFaces)
        if (pFace && sKey.front() == '\t' && pFace->GlyphOf(nCharacter) != 0)
            return pFace.get();
    return pFound('\t' + std::to_string(static_cast<std::uint32_t>(nCharacter)) + '\n' + sStyleKey(objFont),
                  objFont, nCharacter);
}

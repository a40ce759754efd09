// Places letters and draws them as outlines.
#include "src/platform/image/metafile/device/device_text.h"

#include <numbers>

#include "src/platform/image/metafile/canvas/raster_ops.h"

static constexpr std::uint32_t kAlignUpdate = 1;
static constexpr std::uint32_t kAlignRight = 2;
static constexpr std::uint32_t kAlignCenter = 6;
static constexpr std::uint32_t kAlignBottom = 8;
static constexpr std::uint32_t kAlignBaseLine = 24;

static constexpr std::uint8_t kSymbolCharSet = 2;
// In the fonts that came with the system that made most of these files, printable ASCII begins with glyph 3.
static constexpr char32_t kFirstAsciiGlyph = 3;

static constexpr std::uint64_t kCostOfGlyph = 2'000;

/// A letter and where it goes.
struct PlacedGlyph {
    FontFace* pFace = nullptr;
    std::uint32_t nGlyph = 0;
    double dAdvance = 0;  ///< its own, in ems
    char32_t nCode = 0;
    std::uint32_t nUnits = 1;
};

/// A font at the size in which it is used.
struct SizedFont {
    FontFace* pFace = nullptr;
    double dEm = 0;       ///< logical
    double dWiden = 1;    ///< how much wider than it is made
    Affine objToPicture;  ///< from logical lengths along and below the base line, no shift
};

static SizedFont objSized(DeviceContext& dc, const Font& objFont)
{
    SizedFont objResult;
    objResult.pFace = dc.Fonts().pFaceFor(objFont);
    if (!objResult.pFace)
        return objResult;
    const FontFace& objFace = *objResult.pFace;
    if (objFont.dHeight > 0)
        objResult.dEm = objFont.dHeight / (objFace.Ascent() + objFace.Descent());
    else
        objResult.dEm = objFont.dHeight < 0 ? -objFont.dHeight : 16 * dc.UnitOfDevice().y;
    if (objFont.dWidth != 0)
        objResult.dWiden = std::abs(objFont.dWidth) / (objFace.MeanWidth() * objResult.dEm);
    if (!std::isfinite(objResult.dWiden) || objResult.dWiden <= 0)
        objResult.dWiden = 1;

    // Text turns with the world, but the signs of the page don't mirror it.
    Affine objStand = Then(dc.State.objWorld, dc.PageScale());
    if (objStand.Determinant() < 0)
        objStand = Then({1, 0, 0, -1, 0, 0}, objStand);
    const double dTurn = objFont.dEscapement / 1800 * std::numbers::pi;
    const Affine objTurn{std::cos(dTurn), -std::sin(dTurn), std::sin(dTurn), std::cos(dTurn), 0, 0};
    objResult.objToPicture = Then(objTurn, objStand);
    objResult.objToPicture.x0 = objResult.objToPicture.y0 = 0;
    return objResult;
}

static bool bIsSymbolFont(const Font& objFont)
{
    return objFont.nCharSet == kSymbolCharSet || objFont.sFace == "Symbol" || objFont.sFace == "Wingdings";
}

// The character that is meant, given the font that there is.
static char32_t nMeant(const Font& objFont, const FontFace& objFace, char32_t nCode)
{
    if (!bIsSymbolFont(objFont))
        return nCode;
    const char32_t nByte = nCode >= 0xF000 && nCode <= 0xF0FF ? nCode - 0xF000 : nCode;
    if (objFace.HasSymbolMap())
        return nByte <= 0xFF ? 0xF000 + nByte : nCode;
    if (nByte > 0xFF)
        return nCode;
    const bool bDings = objFont.sFace.find("ings") != std::string::npos;
    const char32_t nUnicode = bDings ? nUnicodeOfWingdings(static_cast<std::uint8_t>(nByte))
                              : objFont.sFace.find("Symbol") != std::string::npos || !objFace.SameFamily()
                                  ? nUnicodeOfSymbol(static_cast<std::uint8_t>(nByte))
                                  : 0;
    return nUnicode != 0 ? nUnicode : nCode;
}

static std::vector<PlacedGlyph> aGlyphsOf(DeviceContext& dc, const TextRun& objRun, const Font& objFont,
                                          const SizedFont& objSize)
{
    std::vector<PlacedGlyph> aResult;
    aResult.reserve(objRun.aText.size());
    for (const TextCharacter& objCharacter : objRun.aText) {
        if (!dc.Work().Spend(kCostOfGlyph))
            return {};
        PlacedGlyph objGlyph;
        objGlyph.pFace = objSize.pFace;
        objGlyph.nUnits = objCharacter.nUnits;
        objGlyph.nCode = objCharacter.nCode;
        if (objRun.bGlyphNumbers && objSize.pFace->SameFamily())
            objGlyph.nGlyph = objCharacter.nCode;
        else {
            // A number in another font than the one at hand says nothing, but for the usual place of ASCII.
            if (objRun.bGlyphNumbers)
                objGlyph.nCode = objCharacter.nCode >= kFirstAsciiGlyph
                                     ? objCharacter.nCode - kFirstAsciiGlyph + ' '
                                     : ' ';
            objGlyph.nCode = nMeant(objFont, *objSize.pFace, objGlyph.nCode);
            objGlyph.nGlyph = objSize.pFace->GlyphOf(objGlyph.nCode);
            const bool bMissing = objGlyph.nGlyph == 0 && objGlyph.nCode > ' ' && objGlyph.nCode != 0x200B;
            if (bMissing)
                if (FontFace* pOther = dc.Fonts().pFaceWith(objGlyph.nCode, objFont)) {
                    objGlyph.pFace = pOther;
                    objGlyph.nGlyph = pOther->GlyphOf(objGlyph.nCode);
                }
            // Control characters have no picture.
            if (objGlyph.nCode < ' ')
                objGlyph.nGlyph = objSize.pFace->GlyphOf(' ');
        }
        objGlyph.dAdvance = objGlyph.pFace->Shape(objGlyph.nGlyph).dAdvance;
        aResult.push_back(objGlyph);
    }
    return aResult;
}

// How far each letter moves the pen, in logical units along and across the base line.
static std::vector<Point> aStepsOf(const DeviceContext& dc, const TextRun& objRun, const SizedFont& objSize,
                                   const std::vector<PlacedGlyph>& aGlyphs)
{
    std::vector<Point> aResult;
    aResult.reserve(aGlyphs.size());
    std::size_t nUnit = 0;
    for (const PlacedGlyph& objGlyph : aGlyphs) {
        Point ptStep{objGlyph.dAdvance * objSize.dEm * objSize.dWiden + dc.State.dCharExtra +
                         (objGlyph.nCode == ' ' ? dc.State.dBreakExtra : 0),
                     0};
        if (nUnit + objGlyph.nUnits <= objRun.aSteps.size()) {
            ptStep = {};
            for (std::uint32_t n = 0; n < objGlyph.nUnits; ++n)
                ptStep = ptStep + objRun.aSteps[nUnit + n];
        }
        nUnit += objGlyph.nUnits;
        aResult.push_back(ptStep);
    }
    return aResult;
}

// Another font than the file was made with may be wider than the room that its distances leave. Then its
// letters are made narrower rather than laid over each other.
static double dCondensed(const TextRun& objRun, const SizedFont& objSize,
                         const std::vector<PlacedGlyph>& aGlyphs, const std::vector<Point>& aSteps)
{
    if (objRun.aSteps.empty() || objSize.pFace->SameFamily())
        return 1;
    double dOwn = 0;
    double dGiven = 0;
    for (std::size_t n = 0; n < aGlyphs.size(); ++n) {
        dOwn += aGlyphs[n].dAdvance * objSize.dEm * objSize.dWiden;
        dGiven += aSteps[n].x;
    }
    const double dRatio = dGiven / dOwn;
    return dRatio > 0.1 && dRatio < 0.97 ? std::max(0.6, dRatio) : 1;
}

static void AddBar(Outline& objOutline, const Affine& objMap, const Rect& rc)
{
    Outline objBar;
    objBar.AddBox(rc);
    objOutline.Append(objBar.Transformed(objMap));
}

static void PaintBox(DeviceContext& dc, const Rect& rc, const Affine& objMap)
{
    Outline objBox;
    objBox.AddBox(rc);
    dc.Fill(objBox.Transformed(objMap), Ink{dc.Resolved(dc.State.nBackColor), nullptr, 0, 0}, kRop2Copy);
}

bool DrawText(DeviceContext& dc, const TextRun& objRun)
{
    DcState& objState = dc.State;
    const Affine& objMap = dc.LogicalToPicture();
    if (objRun.rcBox && objRun.bFillBox && !dc.InPath())
        PaintBox(dc, *objRun.rcBox, objMap);
    if (objRun.aText.empty() || !objState.pFont)
        return true;
    const Font& objFont = *objState.pFont;
    const SizedFont objSize = objSized(dc, objFont);
    if (!objSize.pFace)
        return false;
    const std::vector<PlacedGlyph> aGlyphs = aGlyphsOf(dc, objRun, objFont, objSize);
    if (aGlyphs.empty())
        return !dc.Work().Spent();
    const std::vector<Point> aSteps = aStepsOf(dc, objRun, objSize, aGlyphs);
    Point ptEnd;
    for (const Point& ptStep : aSteps)
        ptEnd = ptEnd + ptStep;

    // Where the base line begins, seen from the reference point.
    const std::uint32_t nAlign = objState.nTextAlign;
    const bool bUpdate = (nAlign & kAlignUpdate) != 0;
    const Point ptReference = bUpdate ? objState.ptPosition : objRun.ptReference;
    const double dAscent = objSize.pFace->Ascent() * objSize.dEm;
    const double dDescent = objSize.pFace->Descent() * objSize.dEm;
    const bool bCenter = (nAlign & kAlignCenter) == kAlignCenter;
    const bool bRight = !bCenter && (nAlign & kAlignRight) != 0;
    Point ptStart{bCenter ? -ptEnd.x / 2 : bRight ? -ptEnd.x : 0, dAscent};
    if ((nAlign & kAlignBaseLine) == kAlignBaseLine)
        ptStart.y = 0;
    else if ((nAlign & kAlignBottom) != 0)
        ptStart.y = -dDescent;
    const Point ptOrigin = objMap.Apply(ptReference) + objSize.objToPicture.ApplyToVector(ptStart);
    Affine objToPicture = objSize.objToPicture;
    objToPicture.x0 = dTamed(ptOrigin.x);
    objToPicture.y0 = dTamed(ptOrigin.y);
    if (!objToPicture.Finite())
        return true;

    Outline objLetters;
    const double dWiden = objSize.dWiden * dCondensed(objRun, objSize, aGlyphs, aSteps);
    Point ptPen;
    for (std::size_t n = 0; n < aGlyphs.size(); ++n) {
        const Outline& objShape = aGlyphs[n].pFace->Shape(aGlyphs[n].nGlyph).objOutline;
        const Affine objPlace{objSize.dEm * dWiden, 0, 0, objSize.dEm, ptPen.x, ptPen.y};
        if (!dc.Work().Spend(objShape.PointCount() * 16))
            return false;
        objLetters.Append(objShape.Transformed(Then(objPlace, objToPicture)));
        ptPen = ptPen + aSteps[n];
    }
    const double dThick = std::max(objSize.pFace->UnderlineThickness() * objSize.dEm, dc.UnitOfDevice().y);
    const auto Underline = [&](double dMiddle) {
        AddBar(objLetters, objToPicture, {0, dMiddle - dThick / 2, ptEnd.x, dMiddle + dThick / 2});
    };
    if (objFont.bUnderline)
        Underline(objSize.pFace->UnderlineOffset() * objSize.dEm);
    if (objFont.bStrikeOut)
        Underline(-0.3 * dAscent);

    if (dc.InPath())
        dc.AddToPath(objLetters);
    else {
        const Clip clipBefore = objState.clip;
        if (objRun.rcBox && objRun.bClipToBox)
            dc.CombineClip(dc.ClipOf({&*objRun.rcBox, 1}, objMap), ClipMode::And);
        if (objState.bOpaqueBack && !objRun.bFillBox)
            PaintBox(dc, {0, -dAscent, ptEnd.x, dDescent}, objToPicture);
        dc.Target().Fill(objLetters, true, Ink{dc.Resolved(objState.nTextColor), nullptr, 0, 0}, kRop2Copy,
                         dc.CurrentClip(), true);
        objState.clip = clipBefore;
    }
    if (bUpdate && !bCenter) {
        const double dTurn = objFont.dEscapement / 1800 * std::numbers::pi;
        const double dMoved = bRight ? -ptEnd.x : ptEnd.x;
        dc.MoveTo(ptReference + Point{dMoved * std::cos(dTurn), -dMoved * std::sin(dTurn) * dc.Handedness()});
    }
    return !dc.Work().Spent();
}

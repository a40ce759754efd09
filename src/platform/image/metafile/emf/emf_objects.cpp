// EMF records that make, choose and delete objects.
#include <algorithm>

#include "src/platform/image/metafile/device/text_encoding.h"
#include "src/platform/image/metafile/emf/emf_player.h"
#include "src/platform/image/metafile/records/font_records.h"
#include "src/platform/image/metafile/records/palette_records.h"

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

static constexpr std::uint32_t kStock = 0x80000000;

static constexpr std::uint32_t kBrushNull = 1;
static constexpr std::uint32_t kBrushHatched = 2;

// Index 0 is the metafile itself. The header says how many there are, but not every writer counts well.
static Outcome ePut(EmfPlay& objPlay, std::uint32_t nIndex, Object objNew)
{
    if (nIndex == 0 || nIndex > 0xFFFF)
        return Outcome::Broken;
    if (nIndex >= objPlay.aObjects.size())
        objPlay.aObjects.resize(nIndex + 1);
    objPlay.aObjects[nIndex] = std::move(objNew);
    return Outcome::Done;
}

static Brush objPlainBrush(std::uint32_t nStyle, ColorRef nColor, std::uint32_t nHatch)
{
    Brush objBrush;
    objBrush.eKind = nStyle == kBrushNull      ? BrushKind::Null
                     : nStyle == kBrushHatched ? BrushKind::Hatched
                                               : BrushKind::Solid;
    objBrush.nColor = nColor;
    objBrush.nHatch = nHatch;
    return objBrush;
}

static Outcome eCreatePen(EmfPlay& objPlay, ByteReader& rd)
{
    const std::uint32_t nIndex = rd.U32Le();
    Pen objPen;
    objPen.nStyle = rd.U32Le();
    objPen.dWidth = ptRead(rd).x;
    objPen.objBrush.nColor = rd.U32Le();
    return rd.Failed() ? Outcome::Broken
                       : ePut(objPlay, nIndex, std::make_shared<const Pen>(std::move(objPen)));
}

static Outcome eExtCreatePen(EmfPlay& objPlay, const EmfRecord& objRecord)
{
    ByteReader rd = objRecord.Data();
    const std::uint32_t nIndex = rd.U32Le();
    const EmfDibPlace objPlace = objReadDibPlace(rd);
    Pen objPen;
    objPen.bExtended = true;
    objPen.nStyle = rd.U32Le();
    objPen.dWidth = rd.U32Le();
    const std::uint32_t nBrushStyle = rd.U32Le();
    const ColorRef nColor = rd.U32Le();
    const std::uint32_t nHatch = rd.U32Le();
    objPen.objBrush = objPlainBrush(nBrushStyle, nColor, nHatch);
    const auto objDib = objDibAt(objRecord, objPlace, nColor);
    if (objDib && !objDib->Empty() && nBrushStyle > kBrushHatched) {
        objPen.objBrush.eKind = BrushKind::Dib;
        objPen.objBrush.objDib = *objDib;
    }
    const std::uint32_t nDashes = rd.U32Le();
    if (rd.Failed() || !objDib || rd.Left() / 4 < nDashes)
        return Outcome::Broken;
    // No style has more than sixteen.
    for (std::uint32_t n = 0; n < std::min(nDashes, 16u); ++n)
        objPen.aDashes.push_back(rd.U32Le());
    return ePut(objPlay, nIndex, std::make_shared<const Pen>(std::move(objPen)));
}

static Outcome eCreateBrush(EmfPlay& objPlay, ByteReader& rd)
{
    const std::uint32_t nIndex = rd.U32Le();
    const std::uint32_t nStyle = rd.U32Le();
    const ColorRef nColor = rd.U32Le();
    const std::uint32_t nHatch = rd.U32Le();
    if (rd.Failed())
        return Outcome::Broken;
    return ePut(objPlay, nIndex, std::make_shared<const Brush>(objPlainBrush(nStyle, nColor, nHatch)));
}

static Outcome eCreatePatternBrush(EmfPlay& objPlay, const EmfRecord& objRecord)
{
    ByteReader rd = objRecord.Data();
    const std::uint32_t nIndex = rd.U32Le();
    const std::uint32_t nUsage = rd.U32Le();
    const EmfDibPlace objPlace = objReadDibPlace(rd);
    const auto objDib = objDibAt(objRecord, objPlace, nUsage);
    if (rd.Failed() || !objDib)
        return Outcome::Broken;
    Brush objBrush;
    objBrush.eKind = objRecord.nType == kCreateMonoBrush ? BrushKind::MonoDib : BrushKind::Dib;
    objBrush.objDib = *objDib;
    return ePut(objPlay, nIndex, std::make_shared<const Brush>(std::move(objBrush)));
}

static Outcome eCreateFont(EmfPlay& objPlay, ByteReader& rd)
{
    const std::uint32_t nIndex = rd.U32Le();
    Font objFont;
    objFont.dHeight = rd.I32Le();
    objFont.dWidth = rd.I32Le();
    objFont.dEscapement = rd.I32Le();
    rd.I32Le();  // orientation of the letters: the escapement's
    objFont.lWeight = rd.I32Le();
    ReadFontStyle(rd, objFont);
    if (rd.Failed())
        return Outcome::Broken;
    std::vector<TextCharacter> aFace = aDecodedWords(rd.Take(std::min<std::uint64_t>(rd.Left(), 64)));
    aFace.erase(
        std::find_if(aFace.begin(), aFace.end(), [](const TextCharacter& obj) { return obj.nCode == 0; }),
        aFace.end());
    objFont.sFace = sFaceOf(aFace);
    return ePut(objPlay, nIndex, std::make_shared<const Font>(std::move(objFont)));
}

static Outcome eCreatePalette(EmfPlay& objPlay, ByteReader& rd)
{
    const std::uint32_t nIndex = rd.U32Le();
    rd.U16Le();  // version
    const std::uint32_t nCount = rd.U16Le();
    Palette objPalette;
    if (!bReadPaletteColors(rd, nCount, objPalette.aColors))
        return Outcome::Broken;
    return ePut(objPlay, nIndex, std::make_shared<const Palette>(std::move(objPalette)));
}

static Outcome eChangePalette(EmfPlay& objPlay, const EmfRecord& objRecord)
{
    ByteReader rd = objRecord.Data();
    const std::uint32_t nIndex = rd.U32Le();
    const Object objOld = objNumbered(objPlay, nIndex);
    const auto* ppOld = std::get_if<std::shared_ptr<const Palette>>(&objOld);
    if (!ppOld)
        return eOutcome(!rd.Failed());
    Palette objPalette = **ppOld;
    if (objRecord.nType == kResizePalette)
        objPalette.aColors.resize(std::min(rd.U32Le(), 65535u));
    else {
        const std::uint32_t nFirst = rd.U32Le();
        const std::uint32_t nCount = rd.U32Le();
        std::vector<std::uint32_t> aColors;
        if (!bReadPaletteColors(rd, nCount, aColors))
            return Outcome::Broken;
        for (std::size_t n = 0; n < aColors.size() && n + nFirst < objPalette.aColors.size(); ++n)
            objPalette.aColors[n + nFirst] = aColors[n];
    }
    auto pNew = std::make_shared<const Palette>(std::move(objPalette));
    if (objPlay.dc.State.pPalette == *ppOld)
        objPlay.dc.State.pPalette = pNew;
    return rd.Failed() ? Outcome::Broken : ePut(objPlay, nIndex, std::move(pNew));
}

Outcome ePlayObject(EmfPlay& objPlay, const EmfRecord& objRecord)
{
    ByteReader rd = objRecord.Data();
    switch (objRecord.nType) {
        case kSelectObject:
        case kSelectPalette: {
            const std::uint32_t nIndex = rd.U32Le();
            if ((nIndex & kStock) != 0)
                objPlay.dc.Select(objStock(nIndex & ~kStock));
            else
                objPlay.dc.Select(objNumbered(objPlay, nIndex));
            return eOutcome(!rd.Failed());
        }
        case kDeleteObject: {
            const std::uint32_t nIndex = rd.U32Le();
            if (nIndex < objPlay.aObjects.size())
                objPlay.aObjects[nIndex] = {};
            return eOutcome(!rd.Failed());
        }
        case kCreatePen:
            return eCreatePen(objPlay, rd);
        case kExtCreatePen:
            return eExtCreatePen(objPlay, objRecord);
        case kCreateBrush:
            return eCreateBrush(objPlay, rd);
        case kCreateMonoBrush:
        case kCreateDibBrush:
            return eCreatePatternBrush(objPlay, objRecord);
        case kCreateFont:
            return eCreateFont(objPlay, rd);
        case kCreatePalette:
            return eCreatePalette(objPlay, rd);
        case kSetPaletteEntries:
        case kResizePalette:
            return eChangePalette(objPlay, objRecord);
        default:
            return Outcome::NotMine;
    }
}

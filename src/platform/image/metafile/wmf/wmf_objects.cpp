// WMF records that make, choose and delete objects.
#include <algorithm>

#include "src/platform/image/metafile/device/bitmaps.h"
#include "src/platform/image/metafile/device/text_encoding.h"
#include "src/platform/image/metafile/records/font_records.h"
#include "src/platform/image/metafile/records/palette_records.h"
#include "src/platform/image/metafile/wmf/wmf_player.h"

// Function 0x34 selects a palette; those that make objects have 0xF in the upper half of their number.
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

static constexpr std::uint16_t kBrushNull = 1;
static constexpr std::uint16_t kBrushHatched = 2;
static constexpr std::uint16_t kBrushPattern = 3;

// More objects at once than places have numbers can't be asked for.
static constexpr std::size_t kMostObjects = 65535;

// An object that draws nothing takes a place like any other.
static Outcome ePut(WmfPlay& objPlay, Object objNew)
{
    for (Object& objPlace : objPlay.aObjects)
        if (std::holds_alternative<std::monostate>(objPlace)) {
            objPlace = std::move(objNew);
            return Outcome::Done;
        }
    if (objPlay.aObjects.size() >= kMostObjects)
        return Outcome::Broken;
    objPlay.aObjects.push_back(std::move(objNew));
    return Outcome::Done;
}

static Object objPlaceholder()
{
    return std::make_shared<const Region>();
}

static Outcome eCreatePen(WmfPlay& objPlay, ByteReader& rd)
{
    Pen objPen;
    objPen.nStyle = rd.U16Le();
    objPen.dWidth = rd.I16Le();
    rd.U16Le();  // height: not used
    objPen.objBrush.nColor = rd.U32Le();
    return rd.Failed() ? Outcome::Broken : ePut(objPlay, std::make_shared<const Pen>(std::move(objPen)));
}

static Outcome eCreateBrush(WmfPlay& objPlay, ByteReader& rd)
{
    Brush objBrush;
    const std::uint16_t nStyle = rd.U16Le();
    objBrush.eKind = nStyle == kBrushNull      ? BrushKind::Null
                     : nStyle == kBrushHatched ? BrushKind::Hatched
                                               : BrushKind::Solid;
    objBrush.nColor = rd.U32Le();
    objBrush.nHatch = rd.U16Le();
    return rd.Failed() ? Outcome::Broken : ePut(objPlay, std::make_shared<const Brush>(std::move(objBrush)));
}

static Bitmap16Source objReadBitmap16(ByteReader& rd, std::uint64_t nUnused)
{
    Bitmap16Source objBitmap;
    rd.U16Le();  // type
    objBitmap.lWidth = rd.I16Le();
    objBitmap.lHeight = rd.I16Le();
    objBitmap.nBytesPerRow = rd.U16Le();
    rd.U8();  // planes
    objBitmap.nBitsPerPixel = rd.U8();
    rd.Take(nUnused);
    objBitmap.aBits = rd.Take(rd.Left());
    return objBitmap;
}

static Outcome eCreateDibBrush(WmfPlay& objPlay, ByteReader& rd)
{
    const std::uint16_t nStyle = rd.U16Le();
    const std::uint16_t nUsage = rd.U16Le();
    ByteReader rdOld = rd;
    Brush objBrush;
    objBrush.eKind = BrushKind::Dib;
    objBrush.objDib = objPackedDib(rd.Take(rd.Left()), nUsage == 1);
    if (objBrush.objDib.Empty() && nStyle == kBrushPattern) {  // some writers put a bitmap of the old kind
        objBrush.eKind = BrushKind::Bitmap16;
        objBrush.objBitmap16 = objReadBitmap16(rdOld, 0);
    }
    return rd.Failed() ? Outcome::Broken : ePut(objPlay, std::make_shared<const Brush>(std::move(objBrush)));
}

static Outcome eCreatePatternBrush(WmfPlay& objPlay, ByteReader& rd)
{
    Brush objBrush;
    objBrush.eKind = BrushKind::Bitmap16;
    objBrush.objBitmap16 = objReadBitmap16(rd, 4 + 18);  // a pointer, and what has no use
    return rd.Failed() ? Outcome::Broken : ePut(objPlay, std::make_shared<const Brush>(std::move(objBrush)));
}

static Outcome eCreateFont(WmfPlay& objPlay, ByteReader& rd)
{
    Font objFont;
    objFont.dHeight = rd.I16Le();
    objFont.dWidth = rd.I16Le();
    objFont.dEscapement = rd.I16Le();
    rd.I16Le();  // orientation of the letters: the escapement's
    objFont.lWeight = rd.I16Le();
    ReadFontStyle(rd, objFont);
    if (rd.Failed())
        return Outcome::Broken;
    Bytes aFace = rd.Take(std::min<std::uint64_t>(rd.Left(), 32));
    aFace = aFace.first(static_cast<std::size_t>(std::find(aFace.begin(), aFace.end(), 0) - aFace.begin()));
    objFont.sFace = sFaceOf(aDecodedBytes(aFace, objFont.nCharSet == 2 ? 0 : objFont.nCharSet));
    return ePut(objPlay, std::make_shared<const Font>(std::move(objFont)));
}

static Outcome eCreatePalette(WmfPlay& objPlay, ByteReader& rd)
{
    rd.U16Le();  // version
    const std::uint64_t nCount = rd.U16Le();
    Palette objPalette;
    if (!bReadPaletteColors(rd, nCount, objPalette.aColors))
        return Outcome::Broken;
    return ePut(objPlay, std::make_shared<const Palette>(std::move(objPalette)));
}

// These work on the palette that is selected.
static Outcome eChangePalette(WmfPlay& objPlay, const WmfRecord& objRecord)
{
    ByteReader rd = objRecord.Data();
    const std::shared_ptr<const Palette> pOld = objPlay.dc.State.pPalette;
    Palette objPalette = *pOld;
    if (objRecord.Number() == kResizePalette)
        objPalette.aColors.resize(rd.U16Le());
    else {
        const std::size_t nFirst = rd.U16Le();
        const std::uint64_t nCount = rd.U16Le();
        std::vector<std::uint32_t> aColors;
        if (!bReadPaletteColors(rd, nCount, aColors))
            return Outcome::Broken;
        for (std::size_t n = 0; n < aColors.size() && n + nFirst < objPalette.aColors.size(); ++n)
            objPalette.aColors[n + nFirst] = aColors[n];
    }
    if (rd.Failed())
        return Outcome::Broken;
    const auto pNew = std::make_shared<const Palette>(std::move(objPalette));
    objPlay.dc.State.pPalette = pNew;
    for (Object& objPlace : objPlay.aObjects)
        if (const auto* ppPalette = std::get_if<std::shared_ptr<const Palette>>(&objPlace))
            if (*ppPalette == pOld)
                objPlace = pNew;
    return Outcome::Done;
}

static Outcome eCreateRegion(WmfPlay& objPlay, ByteReader& rd)
{
    rd.Take(2 + 2 + 4 + 2);  // chain, kind, count of objects, size
    const std::uint16_t nScans = rd.U16Le();
    rd.Take(2 + 8);  // longest scan, bounds
    Region objRegion;
    for (std::uint16_t n = 0; n < nScans; ++n) {
        const std::uint16_t nEnds = rd.U16Le();
        const double dTop = rd.I16Le();
        const double dBottom = rd.I16Le();
        if (rd.Failed() || rd.Left() < std::uint64_t{nEnds} * 2)
            return Outcome::Broken;
        for (std::uint16_t i = 0; i + 1 < nEnds; i = static_cast<std::uint16_t>(i + 2)) {
            const double dLeft = rd.I16Le();
            objRegion.aRects.push_back({dLeft, dTop, static_cast<double>(rd.I16Le()), dBottom});
        }
        rd.Take((nEnds & 1) * 2);
        rd.U16Le();  // the count once more
    }
    return rd.Failed() ? Outcome::Broken
                       : ePut(objPlay, std::make_shared<const Region>(std::move(objRegion)));
}

Outcome ePlayWmfObject(WmfPlay& objPlay, const WmfRecord& objRecord)
{
    ByteReader rd = objRecord.Data();
    switch (objRecord.Number()) {
        case kSelectClipRegion:
        case kSelectObject:
        case kSelectPalette: {
            const Object& objChosen = objNumbered(objPlay, rd.U16Le());
            if (!rd.Failed())
                objPlay.dc.Select(objChosen);
            return eOutcome(!rd.Failed());
        }
        case kDeleteObject: {
            const std::uint16_t nIndex = rd.U16Le();
            if (!rd.Failed() && nIndex < objPlay.aObjects.size())
                objPlay.aObjects[nIndex] = {};
            return eOutcome(!rd.Failed());
        }
        case kAnimatePalette:
        case kSetPaletteEntries:
        case kResizePalette:
            return eChangePalette(objPlay, objRecord);
        case kCreateDibBrush:
            return eCreateDibBrush(objPlay, rd);
        case kCreatePalette:
            return eCreatePalette(objPlay, rd);
        case kCreatePatternBrush:
            return eCreatePatternBrush(objPlay, rd);
        case kCreatePen:
            return eCreatePen(objPlay, rd);
        case kCreateFont:
            return eCreateFont(objPlay, rd);
        case kCreateBrushIndirect:
            return eCreateBrush(objPlay, rd);
        case kCreateRegion:
            return eCreateRegion(objPlay, rd);
        case kCreateBrush:
        case kCreateBitmapIndirect:
        case kCreateBitmap:
            return ePut(objPlay, objPlaceholder());
        default:
            return Outcome::NotMine;
    }
}

// EMF records of text.
#include "src/platform/image/metafile/device/device_text.h"
#include "src/platform/image/metafile/emf/emf_player.h"

enum TextRecord : std::uint32_t {
    kExtTextOutA = 83,
    kExtTextOutW = 84,
    kPolyTextOutA = 96,
    kPolyTextOutW = 97,
    kSmallTextOut = 108,
};

static constexpr std::uint32_t kOptionOpaque = 2;
static constexpr std::uint32_t kOptionClipped = 4;
static constexpr std::uint32_t kOptionGlyphs = 0x10;
static constexpr std::uint32_t kOptionNoRect = 0x100;
static constexpr std::uint32_t kOptionSmallChars = 0x200;
static constexpr std::uint32_t kOptionSteps2D = 0x2000;

static std::vector<TextCharacter> aCharacters(const DeviceContext& dc, Bytes aText, bool bWide)
{
    return bWide ? aDecodedWords(aText) : aDecodedBytes(aText, dc.State.pFont ? dc.State.pFont->nCharSet : 0);
}

// One text object; its offsets count from the start of the record.
static Outcome eDrawObject(DeviceContext& dc, const EmfRecord& objRecord, ByteReader& rd, bool bWide)
{
    TextRun objRun;
    objRun.ptReference = ptRead(rd);
    const std::uint64_t nChars = rd.U32Le();
    const std::uint64_t nText = rd.U32Le();
    const std::uint32_t nOptions = rd.U32Le();
    if ((nOptions & kOptionNoRect) == 0)
        objRun.rcBox = rcRead(rd);
    const std::uint64_t nSteps = rd.U32Le();
    const Bytes aAll = objRecord.aAll;
    const std::uint64_t nTextSize = nChars * (bWide ? 2 : 1);
    if (rd.Failed() || (nChars > 0 && (nText > aAll.size() || nTextSize > aAll.size() - nText)))
        return Outcome::Broken;
    objRun.bFillBox = objRun.rcBox && (nOptions & kOptionOpaque) != 0;
    objRun.bClipToBox = objRun.rcBox && (nOptions & kOptionClipped) != 0;
    objRun.bGlyphNumbers = bWide && (nOptions & kOptionGlyphs) != 0;
    if (nChars > 0)
        objRun.aText = aCharacters(dc, aAll.subspan(nText, nTextSize), bWide);
    // Writers leave the distances out, or point behind the record where they forgot them: then the font's own
    // hold.
    const bool b2D = (nOptions & kOptionSteps2D) != 0;
    const std::uint64_t nStepsSize = nChars * (b2D ? 8 : 4);
    if (nSteps != 0 && nSteps <= aAll.size() && nStepsSize <= aAll.size() - nSteps) {
        ByteReader rdSteps(aAll.subspan(nSteps, nStepsSize));
        objRun.aSteps.reserve(nChars);
        for (std::uint64_t n = 0; n < nChars; ++n) {
            const double dAlong = rdSteps.I32Le();
            const double dUp = b2D ? rdSteps.I32Le() : 0;
            objRun.aSteps.push_back({dAlong, -dUp});
        }
    }
    return eOutcome(DrawText(dc, objRun));
}

static Outcome eSmallText(DeviceContext& dc, ByteReader& rd)
{
    TextRun objRun;
    objRun.ptReference = ptRead(rd);
    const std::uint64_t nChars = rd.U32Le();
    const std::uint32_t nOptions = rd.U32Le();
    rd.Take(12);  // graphics mode and scales
    if ((nOptions & kOptionNoRect) == 0)
        objRun.rcBox = rcRead(rd);
    // Small characters are the low bytes of 16-bit ones, not those of a code page.
    const bool bSmall = (nOptions & kOptionSmallChars) != 0;
    const Bytes aText = rd.Take(nChars * (bSmall ? 1 : 2));
    if (rd.Failed())
        return Outcome::Broken;
    objRun.bFillBox = objRun.rcBox && (nOptions & kOptionOpaque) != 0;
    objRun.bClipToBox = objRun.rcBox && (nOptions & kOptionClipped) != 0;
    objRun.bGlyphNumbers = (nOptions & kOptionGlyphs) != 0;
    if (bSmall)
        for (const std::uint8_t nByte : aText)
            objRun.aText.push_back({nByte, 1});
    else
        objRun.aText = aDecodedWords(aText);
    return eOutcome(DrawText(dc, objRun));
}

Outcome ePlayText(EmfPlay& objPlay, const EmfRecord& objRecord)
{
    ByteReader rd = objRecord.Data();
    const bool bWide = objRecord.nType == kExtTextOutW || objRecord.nType == kPolyTextOutW;
    switch (objRecord.nType) {
        case kExtTextOutA:
        case kExtTextOutW:
            rd.Take(16 + 12);  // bounds, graphics mode, scales
            return eDrawObject(objPlay.dc, objRecord, rd, bWide);
        case kPolyTextOutA:
        case kPolyTextOutW: {
            rd.Take(16 + 12);
            const std::uint32_t nCount = rd.U32Le();
            if (rd.Left() / 40 < nCount)
                return Outcome::Broken;
            for (std::uint32_t n = 0; n < nCount; ++n)
                if (eDrawObject(objPlay.dc, objRecord, rd, bWide) == Outcome::Broken)
                    return Outcome::Broken;
            return Outcome::Done;
        }
        case kSmallTextOut:
            return eSmallText(objPlay.dc, rd);
        default:
            return Outcome::NotMine;
    }
}

// Steps through the records of a WMF, and plays those of text.
#include "src/platform/image/metafile/wmf/wmf_player.h"

#include "src/platform/image/metafile/device/device_text.h"

static constexpr std::uint64_t kCostOfRecord = 20;

static constexpr std::uint8_t kTextOut = 0x21;
static constexpr std::uint8_t kExtTextOut = 0x32;

static constexpr std::uint16_t kOptionOpaque = 2;
static constexpr std::uint16_t kOptionClipped = 4;

Point ptReadYX(ByteReader& rd)
{
    const double y = rd.I16Le();
    return {static_cast<double>(rd.I16Le()), y};
}

Rect rcReadReversed(ByteReader& rd)
{
    const Point ptEnd = ptReadYX(rd);
    const Point ptStart = ptReadYX(rd);
    return {ptStart.x, ptStart.y, ptEnd.x, ptEnd.y};
}

const Object& objNumbered(const WmfPlay& objPlay, std::uint32_t nIndex)
{
    static const Object objNone;
    return nIndex < objPlay.aObjects.size() ? objPlay.aObjects[nIndex] : objNone;
}

static std::uint8_t nCharSet(const DeviceContext& dc)
{
    return dc.State.pFont ? dc.State.pFont->nCharSet : 0;
}

static Outcome eTextOut(DeviceContext& dc, ByteReader& rd)
{
    const std::uint64_t nCount = rd.U16Le();
    const Bytes aText = rd.Take(nCount);
    rd.Take(nCount & 1);
    TextRun objRun;
    objRun.ptReference = ptReadYX(rd);
    if (rd.Failed())
        return Outcome::Broken;
    objRun.aText = aDecodedBytes(aText, nCharSet(dc));
    return eOutcome(DrawText(dc, objRun));
}

static Outcome eExtTextOut(DeviceContext& dc, ByteReader& rd)
{
    TextRun objRun;
    objRun.ptReference = ptReadYX(rd);
    const std::uint64_t nCount = rd.U16Le();
    const std::uint16_t nOptions = rd.U16Le();
    objRun.bFillBox = (nOptions & kOptionOpaque) != 0;
    objRun.bClipToBox = (nOptions & kOptionClipped) != 0;
    if (objRun.bFillBox || objRun.bClipToBox) {
        // This rectangle alone stands left to right.
        const double dLeft = rd.I16Le();
        const double dTop = rd.I16Le();
        const double dRight = rd.I16Le();
        objRun.rcBox = Rect{dLeft, dTop, dRight, static_cast<double>(rd.I16Le())};
    }
    const Bytes aText = rd.Take(nCount);
    if (rd.Failed())
        return Outcome::Broken;
    objRun.aText = aDecodedBytes(aText, nCharSet(dc));
    rd.Take(std::min<std::uint64_t>(nCount & 1, rd.Left()));
    // The distances are optional.
    if (rd.Left() >= nCount * 2)
        for (std::uint64_t n = 0; n < nCount; ++n)
            objRun.aSteps.push_back({static_cast<double>(rd.I16Le()), 0});
    return eOutcome(DrawText(dc, objRun));
}

Outcome ePlayWmfText(WmfPlay& objPlay, const WmfRecord& objRecord)
{
    ByteReader rd = objRecord.Data();
    switch (objRecord.Number()) {
        case kTextOut:
            return eTextOut(objPlay.dc, rd);
        case kExtTextOut:
            return eExtTextOut(objPlay.dc, rd);
        default:
            return Outcome::NotMine;
    }
}

static Outcome ePlay(WmfPlay& objPlay, const WmfRecord& objRecord)
{
    for (const auto fnFamily : {ePlayWmfShape, ePlayWmfState, ePlayWmfObject, ePlayWmfText, ePlayWmfBitmap}) {
        const Outcome eResult = fnFamily(objPlay, objRecord);
        if (eResult != Outcome::NotMine)
            return eResult;
    }
    return Outcome::Done;  // what isn't known, or draws nothing, is left out
}

bool bPlayWmf(DeviceContext& dc, const MetafileRequest& objRequest)
{
    WmfPlay objPlay(dc);
    Bytes aLeft = objRequest.aRecords;
    for (;;) {
        ByteReader rd(aLeft);
        const std::uint64_t nSize = std::uint64_t{rd.U32Le()} * 2;
        WmfRecord objRecord;
        objRecord.nFunction = rd.U16Le();
        if (rd.Failed() || nSize < 6 || nSize > aLeft.size() || !dc.Work().Spend(kCostOfRecord + nSize / 16))
            return false;
        if (objRecord.nFunction == 0)
            return true;
        objRecord.aParameters = aLeft.subspan(6, nSize - 6);
        aLeft = aLeft.subspan(nSize);
        if (ePlay(objPlay, objRecord) == Outcome::Broken || dc.Work().Spent() || dc.Target().Failed())
            return false;
    }
}

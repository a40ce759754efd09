// Steps through the records of an EMF.
#include "src/platform/image/metafile/emf/emf_player.h"

#include <array>
#include <bit>

static constexpr std::uint32_t kEndOfFile = 14;
static constexpr std::uint32_t kComment = 70;
static constexpr std::uint32_t kEmfPlusMark = 0x2B464D45;
static constexpr std::uint16_t kEmfPlusHeader = 0x4001;

// Even a record that does nothing has to be read.
static constexpr std::uint64_t kCostOfRecord = 20;

Point ptRead(ByteReader& rd)
{
    const double x = rd.I32Le();
    return {x, static_cast<double>(rd.I32Le())};
}

Rect rcRead(ByteReader& rd)
{
    const Point ptA = ptRead(rd);
    const Point ptB = ptRead(rd);
    return {ptA.x, ptA.y, ptB.x, ptB.y};
}

Affine objReadTransform(ByteReader& rd)
{
    std::array<double, 6> a{};
    for (double& d : a)
        d = std::bit_cast<float>(rd.U32Le());
    return {a[0], a[1], a[2], a[3], a[4], a[5]};
}

EmfDibPlace objReadDibPlace(ByteReader& rd)
{
    EmfDibPlace objPlace;
    objPlace.nHeaderOffset = rd.U32Le();
    objPlace.nHeaderSize = rd.U32Le();
    objPlace.nBitsOffset = rd.U32Le();
    objPlace.nBitsSize = rd.U32Le();
    return objPlace;
}

std::optional<DibSource> objDibAt(const EmfRecord& objRecord, const EmfDibPlace& objPlace,
                                  std::uint32_t nUsage)
{
    if (objPlace.nHeaderSize == 0)
        return DibSource{};
    const std::uint64_t nRecord = objRecord.aAll.size();
    if (std::uint64_t{objPlace.nHeaderOffset} + objPlace.nHeaderSize > nRecord ||
        objPlace.nBitsOffset > nRecord)
        return std::nullopt;
    // Some writers count the bits without the last row's filling, or too long; what is there will do or not.
    const std::uint64_t nBits = std::min<std::uint64_t>(objPlace.nBitsSize, nRecord - objPlace.nBitsOffset);
    return DibSource{objRecord.aAll.subspan(objPlace.nHeaderOffset, objPlace.nHeaderSize),
                     objRecord.aAll.subspan(objPlace.nBitsOffset, nBits), nUsage == 1};
}

std::optional<Region> objReadRegion(ByteReader& rd)
{
    const std::uint32_t nHeader = rd.U32Le();
    rd.U32Le();  // kind: always rectangles
    const std::uint32_t nCount = rd.U32Le();
    rd.U32Le();  // size of the rectangles
    rcRead(rd);  // bounds
    if (nHeader > 32)
        rd.Take(nHeader - 32);
    if (rd.Failed() || nHeader < 32 || rd.Left() / 16 < nCount)
        return std::nullopt;
    Region objRegion;
    objRegion.aRects.reserve(nCount);
    for (std::uint32_t n = 0; n < nCount; ++n)
        objRegion.aRects.push_back(rcRead(rd));
    return objRegion;
}

const Object& objNumbered(const EmfPlay& objPlay, std::uint32_t nIndex)
{
    static const Object objNone;
    return nIndex < objPlay.aObjects.size() ? objPlay.aObjects[nIndex] : objNone;
}

static void LookIntoComment(EmfPlay& objPlay, const EmfRecord& objRecord)
{
    ByteReader rd = objRecord.Data();
    rd.U32Le();  // size
    if (rd.U32Le() != kEmfPlusMark || rd.U16Le() != kEmfPlusHeader)
        return;
    const bool bDual = (rd.U16Le() & 1) != 0;
    objPlay.bOnlyEmfPlus = !rd.Failed() && !bDual;
}

static Outcome ePlay(EmfPlay& objPlay, const EmfRecord& objRecord)
{
    for (const auto fnFamily :
         {ePlayPoints, ePlayState, ePlayObject, ePlayShape, ePlayClip, ePlayText, ePlayBitmap}) {
        const Outcome eResult = fnFamily(objPlay, objRecord);
        if (eResult != Outcome::NotMine)
            return eResult;
    }
    if (objRecord.nType == kComment)
        LookIntoComment(objPlay, objRecord);
    return Outcome::Done;  // what isn't known, or draws nothing, is left out
}

bool bPlayEmf(DeviceContext& dc, const MetafileRequest& objRequest)
{
    EmfPlay objPlay(dc);
    // The first place of the table is the metafile's own.
    objPlay.aObjects.resize(std::min<std::uint32_t>(objRequest.nObjects, 65535) + 1);
    Bytes aLeft = objRequest.aRecords;
    for (;;) {
        ByteReader rd(aLeft);
        EmfRecord objRecord;
        objRecord.nType = rd.U32Le();
        const std::uint32_t nSize = rd.U32Le();
        if (rd.Failed() || nSize < 8 || nSize > aLeft.size() || !dc.Work().Spend(kCostOfRecord + nSize / 16))
            return false;
        if (objRecord.nType == kEndOfFile)
            break;
        objRecord.aAll = aLeft.first(nSize);
        aLeft = aLeft.subspan(nSize);
        if (ePlay(objPlay, objRecord) == Outcome::Broken || dc.Work().Spent() || dc.Target().Failed())
            return false;
    }
    return !objPlay.bOnlyEmfPlus || !dc.Target().Touched().Empty();
}

// EMF records of lines, polygons and Béziers, with points of 32 and of 16 bits.
#include "src/platform/image/metafile/emf/emf_player.h"
#include "src/platform/image/metafile/records/shape_records.h"

enum PointsRecord : std::uint32_t {
    kPolyBezier = 2,
    kPolygon = 3,
    kPolyline = 4,
    kPolyBezierTo = 5,
    kPolylineTo = 6,
    kPolyPolyline = 7,
    kPolyPolygon = 8,
    kPolyDraw = 56,
    kPolyBezier16 = 85,
    kPolyPolygon16 = 91,
    kPolyDraw16 = 92,
};

static constexpr std::uint32_t kFrom16 = kPolyBezier16 - kPolyBezier;

static bool bReadPoints(ByteReader& rd, std::uint64_t nCount, bool bShort, std::vector<Point>& aPoints)
{
    if (rd.Failed() || rd.Left() / (bShort ? 4 : 8) < nCount)
        return false;
    aPoints.resize(nCount);
    for (Point& pt : aPoints) {
        pt.x = bShort ? rd.I16Le() : rd.I32Le();
        pt.y = bShort ? rd.I16Le() : rd.I32Le();
    }
    return true;
}

static Outline objCurves(const std::vector<Point>& aPoints)
{
    Outline objResult;
    if (!aPoints.empty())
        objResult.MoveTo(aPoints[0]);
    for (std::size_t n = 1; n + 3 <= aPoints.size(); n += 3)
        objResult.CurveTo(aPoints[n], aPoints[n + 1], aPoints[n + 2]);
    return objResult;
}

// Many lines or polygons in one record. The polygons are one shape: where they overlap, the fill mode
// decides.
static Outcome eManyFigures(DeviceContext& dc, ByteReader& rd, bool bShort, bool bPolygons)
{
    const std::uint32_t nFigures = rd.U32Le();
    rd.U32Le();  // number of points: the sum of the figures' own counts is what is read
    if (rd.Failed() || rd.Left() / 4 < nFigures)
        return Outcome::Broken;
    std::vector<std::uint32_t> aCounts(nFigures);
    std::uint64_t nSum = 0;
    for (std::uint32_t& nCount : aCounts)
        nSum += nCount = rd.U32Le();
    std::vector<Point> aPoints;
    if (!bReadPoints(rd, nSum, bShort, aPoints))
        return Outcome::Broken;
    Outline objShape;
    std::size_t nPoint = 0;
    for (const std::uint32_t nCount : aCounts) {
        if (nCount == 0)
            continue;
        objShape.MoveTo(aPoints[nPoint]);
        for (std::uint32_t n = 1; n < nCount; ++n)
            objShape.LineTo(aPoints[nPoint + n]);
        if (bPolygons)
            objShape.Close();
        nPoint += nCount;
    }
    dc.Draw(objShape, bPolygons ? ShapeParts::Both : ShapeParts::Line);
    return Outcome::Done;
}

static constexpr std::uint8_t kCloseBit = 1;
static constexpr std::uint8_t kLineType = 2;
static constexpr std::uint8_t kCurveType = 4;
static constexpr std::uint8_t kMoveType = 6;

static Outcome eDrawTyped(DeviceContext& dc, ByteReader& rd, bool bShort)
{
    const std::uint32_t nCount = rd.U32Le();
    std::vector<Point> aPoints;
    if (!bReadPoints(rd, nCount, bShort, aPoints))
        return Outcome::Broken;
    const Bytes aTypes = rd.Take(nCount);
    if (rd.Failed())
        return Outcome::Broken;
    // In a path the figure that is open goes on; outside of one all of it is one line.
    const bool bInPath = dc.InPath();
    Outline objLine;
    objLine.MoveTo(dc.State.ptPosition);
    for (std::size_t n = 0; n < nCount; ++n) {
        const std::uint8_t nType = aTypes[n] & 6;
        const std::size_t nUsed = nType == kCurveType ? 3 : 1;
        if (n + nUsed > nCount)
            break;
        if (nType == kMoveType) {
            dc.MoveTo(aPoints[n]);
            objLine.MoveTo(aPoints[n]);
        } else if (nType == kLineType) {
            if (bInPath)
                dc.LinesTo({&aPoints[n], 1});
            objLine.LineTo(aPoints[n]);
        } else if (nType == kCurveType) {
            if (bInPath)
                dc.CurvesTo({&aPoints[n], 3});
            objLine.CurveTo(aPoints[n], aPoints[n + 1], aPoints[n + 2]);
        }
        n += nUsed - 1;
        if ((aTypes[n] & kCloseBit) != 0 && nType != kMoveType) {
            dc.CloseFigure();
            objLine.Close();
        }
        dc.State.ptPosition = aPoints[n];
    }
    if (!bInPath)
        dc.Draw(objLine, ShapeParts::Line);
    return Outcome::Done;
}

Outcome ePlayPoints(EmfPlay& objPlay, const EmfRecord& objRecord)
{
    DeviceContext& dc = objPlay.dc;
    const bool bShort = (objRecord.nType >= kPolyBezier16 && objRecord.nType <= kPolyPolygon16) ||
                        objRecord.nType == kPolyDraw16;
    const std::uint32_t nKind = objRecord.nType == kPolyDraw16 ? std::uint32_t{kPolyDraw}
                                : bShort                       ? objRecord.nType - kFrom16
                                                               : objRecord.nType;
    if (nKind != kPolyDraw && (nKind < kPolyBezier || nKind > kPolyPolygon))
        return Outcome::NotMine;
    ByteReader rd = objRecord.Data();
    rcRead(rd);  // bounds
    if (nKind == kPolyPolyline || nKind == kPolyPolygon)
        return eManyFigures(dc, rd, bShort, nKind == kPolyPolygon);
    if (nKind == kPolyDraw)
        return eDrawTyped(dc, rd, bShort);
    std::vector<Point> aPoints;
    const std::uint32_t nCount = rd.U32Le();
    if (!bReadPoints(rd, nCount, bShort, aPoints))
        return Outcome::Broken;
    switch (nKind) {
        case kPolyBezier:
            dc.Draw(objCurves(aPoints), ShapeParts::Line);
            break;
        case kPolygon:
            DrawPolygon(dc, aPoints);
            break;
        case kPolyline:
            DrawPolyline(dc, aPoints);
            break;
        case kPolyBezierTo:
            dc.CurvesTo(aPoints);
            break;
        default:
            dc.LinesTo(aPoints);
            break;
    }
    return Outcome::Done;
}

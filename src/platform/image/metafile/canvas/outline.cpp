// Lines and curves.
#include "src/platform/image/metafile/canvas/outline.h"

void Outline::MoveTo(Point pt)
{
    pt = ptTamed(pt);
    if (!m_aVerbs.empty() && m_aVerbs.back() == Verb::Move)
        m_aPoints.back() = pt;
    else {
        m_aVerbs.push_back(Verb::Move);
        m_aPoints.push_back(pt);
    }
    m_ptStart = m_ptLast = pt;
}

void Outline::LineTo(Point pt)
{
    if (m_aVerbs.empty())
        return MoveTo(pt);
    if (m_aVerbs.back() == Verb::Close)
        MoveTo(m_ptStart);
    m_aVerbs.push_back(Verb::Line);
    m_aPoints.push_back(ptTamed(pt));
    m_ptLast = m_aPoints.back();
}

void Outline::CurveTo(Point ptA, Point ptB, Point ptEnd)
{
    if (m_aVerbs.empty())
        MoveTo(ptA);
    if (m_aVerbs.back() == Verb::Close)
        MoveTo(m_ptStart);
    m_aVerbs.push_back(Verb::Curve);
    m_aPoints.push_back(ptTamed(ptA));
    m_aPoints.push_back(ptTamed(ptB));
    m_aPoints.push_back(ptTamed(ptEnd));
    m_ptLast = m_aPoints.back();
}

void Outline::Close()
{
    if (m_aVerbs.empty() || m_aVerbs.back() == Verb::Close)
        return;
    m_aVerbs.push_back(Verb::Close);
    m_ptLast = m_ptStart;
}

void Outline::AddBox(const Rect& rc)
{
    MoveTo({rc.dLeft, rc.dTop});
    LineTo({rc.dRight, rc.dTop});
    LineTo({rc.dRight, rc.dBottom});
    LineTo({rc.dLeft, rc.dBottom});
    Close();
}

void Outline::Append(const Outline& objOther)
{
    if (objOther.Empty())
        return;
    m_aVerbs.insert(m_aVerbs.end(), objOther.m_aVerbs.begin(), objOther.m_aVerbs.end());
    m_aPoints.insert(m_aPoints.end(), objOther.m_aPoints.begin(), objOther.m_aPoints.end());
    m_ptStart = objOther.m_ptStart;
    m_ptLast = objOther.m_ptLast;
}

void Outline::Continue(const Outline& objOther)
{
    if (objOther.Empty())
        return;
    LineTo(objOther.First());
    m_aVerbs.insert(m_aVerbs.end(), objOther.m_aVerbs.begin() + 1, objOther.m_aVerbs.end());
    m_aPoints.insert(m_aPoints.end(), objOther.m_aPoints.begin() + 1, objOther.m_aPoints.end());
    m_ptLast = objOther.m_ptLast;
}

void Outline::Clear()
{
    m_aVerbs.clear();
    m_aPoints.clear();
    m_ptStart = m_ptLast = {};
}

// Calls objVisitor(eVerb, index of its first point, point before it).
template <typename Visitor>
void Outline::ForEach(Visitor objVisitor) const
{
    std::size_t nPoint = 0;
    Point ptStart, ptBefore;
    for (const Verb eVerb : m_aVerbs) {
        const std::size_t nCount = eVerb == Verb::Curve ? 3 : eVerb == Verb::Close ? 0 : 1;
        objVisitor(eVerb, nPoint, ptBefore, ptStart);
        nPoint += nCount;
        ptBefore = eVerb == Verb::Close ? ptStart : m_aPoints[nPoint - 1];
        if (eVerb == Verb::Move)
            ptStart = ptBefore;
    }
}

Outline Outline::Transformed(const Affine& objMap) const
{
    Outline objResult = *this;
    for (Point& pt : objResult.m_aPoints)
        pt = ptTamed(objMap.Apply(pt));
    objResult.m_ptStart = ptTamed(objMap.Apply(m_ptStart));
    objResult.m_ptLast = ptTamed(objMap.Apply(m_ptLast));
    return objResult;
}

Outline Outline::AllClosed() const
{
    Outline objResult;
    ForEach([&](Verb eVerb, std::size_t nPoint, Point, Point) {
        switch (eVerb) {
            case Verb::Move:
                objResult.Close();
                objResult.MoveTo(m_aPoints[nPoint]);
                break;
            case Verb::Line:
                objResult.LineTo(m_aPoints[nPoint]);
                break;
            case Verb::Curve:
                objResult.CurveTo(m_aPoints[nPoint], m_aPoints[nPoint + 1], m_aPoints[nPoint + 2]);
                break;
            case Verb::Close:
                objResult.Close();
                break;
        }
    });
    objResult.Close();
    return objResult;
}

Rect Outline::Extents() const
{
    if (m_aPoints.empty())
        return {};
    Rect rc{m_aPoints[0].x, m_aPoints[0].y, m_aPoints[0].x, m_aPoints[0].y};
    for (const Point& pt : m_aPoints) {
        rc.dLeft = std::min(rc.dLeft, pt.x);
        rc.dTop = std::min(rc.dTop, pt.y);
        rc.dRight = std::max(rc.dRight, pt.x);
        rc.dBottom = std::max(rc.dBottom, pt.y);
    }
    return rc;
}

// Coordinates come from a chain of multiplications; a hundredth of a pixel is their noise.
static bool bSame(double dA, double dB)
{
    return std::abs(dA - dB) < 0.01;
}

bool Outline::Rectilinear() const
{
    bool bResult = true;
    ForEach([&](Verb eVerb, std::size_t nPoint, Point ptBefore, Point ptStart) {
        if (eVerb == Verb::Curve)
            bResult = false;
        if (eVerb == Verb::Line || eVerb == Verb::Close) {
            const Point ptEnd = eVerb == Verb::Line ? m_aPoints[nPoint] : ptStart;
            bResult = bResult && (bSame(ptEnd.x, ptBefore.x) || bSame(ptEnd.y, ptBefore.y));
        }
    });
    return bResult;
}

// Moves the points of one figure, first to last, to pixel corners.
static void MoveToCorners(Point* pFirst, Point* pLast)
{
    Rect rc{pFirst->x, pFirst->y, pFirst->x, pFirst->y};
    for (const Point* pPoint = pFirst; pPoint != pLast; ++pPoint)
        rc = {std::min(rc.dLeft, pPoint->x), std::min(rc.dTop, pPoint->y), std::max(rc.dRight, pPoint->x),
              std::max(rc.dBottom, pPoint->y)};
    // A bar thinner than a pixel, as rulings often are, would fall between two corners and be lost.
    const bool bThinX = std::floor(rc.dLeft + 0.5) == std::floor(rc.dRight + 0.5) && rc.Width() > 0;
    const bool bThinY = std::floor(rc.dTop + 0.5) == std::floor(rc.dBottom + 0.5) && rc.Height() > 0;
    const double dMiddleX = (rc.dLeft + rc.dRight) / 2;
    const double dMiddleY = (rc.dTop + rc.dBottom) / 2;
    for (Point* pPoint = pFirst; pPoint != pLast; ++pPoint) {
        pPoint->x =
            bThinX ? std::floor(dMiddleX) + (pPoint->x > dMiddleX ? 1 : 0) : std::floor(pPoint->x + 0.5);
        pPoint->y =
            bThinY ? std::floor(dMiddleY) + (pPoint->y > dMiddleY ? 1 : 0) : std::floor(pPoint->y + 0.5);
    }
}

Outline Outline::OnPixelCorners() const
{
    Outline objResult = *this;
    Point* const pPoints = objResult.m_aPoints.data();
    std::size_t nFirst = 0;
    ForEach([&](Verb eVerb, std::size_t nPoint, Point, Point) {
        if (eVerb != Verb::Move || nPoint == nFirst)
            return;
        MoveToCorners(pPoints + nFirst, pPoints + nPoint);
        nFirst = nPoint;
    });
    if (nFirst < m_aPoints.size())
        MoveToCorners(pPoints + nFirst, pPoints + m_aPoints.size());
    return objResult;
}

Outline Outline::OnPixelCentres(double dWidth) const
{
    const bool bOdd = std::fmod(std::max(1.0, std::floor(dWidth + 0.5)), 2) == 1;
    // A line of an odd width runs through the middle of a pixel, one of an even width between two.
    const auto dSnapped = [bOdd](double d) { return bOdd ? std::floor(d) + 0.5 : std::floor(d); };
    Outline objResult = *this;
    const std::size_t nPoints = m_aPoints.size();
    std::size_t nStart = 0;
    std::size_t nLast = 0;
    ForEach([&](Verb eVerb, std::size_t nPoint, Point ptBefore, Point ptStart) {
        if (eVerb == Verb::Move)
            nStart = nLast = nPoint;
        else if (eVerb == Verb::Curve)
            nLast = nPoint + 2;
        else {
            const std::size_t nEnd = eVerb == Verb::Line ? nPoint : nStart;
            const Point ptEnd = eVerb == Verb::Line ? m_aPoints[nPoint] : ptStart;
            // The short level pieces of a curve drawn in many lines must stay where they are, or it gets
            // dents.
            const bool bLong = dLength(ptEnd - ptBefore) >= 4 || nPoints <= 5;
            const bool bLevel = bLong && bSame(ptEnd.y, ptBefore.y);
            const bool bUpright = bLong && bSame(ptEnd.x, ptBefore.x);
            if (bLevel)
                objResult.m_aPoints[nLast].y = objResult.m_aPoints[nEnd].y = dSnapped(ptBefore.y);
            if (bUpright)
                objResult.m_aPoints[nLast].x = objResult.m_aPoints[nEnd].x = dSnapped(ptBefore.x);
            nLast = nEnd;
        }
    });
    return objResult;
}

double Outline::Length() const
{
    double dSum = 0;
    ForEach([&](Verb eVerb, std::size_t nPoint, Point ptBefore, Point ptStart) {
        if (eVerb == Verb::Line)
            dSum += dLength(m_aPoints[nPoint] - ptBefore);
        else if (eVerb == Verb::Close)
            dSum += dLength(ptStart - ptBefore);
        else if (eVerb == Verb::Curve)
            dSum += dLength(m_aPoints[nPoint] - ptBefore) +
                    dLength(m_aPoints[nPoint + 1] - m_aPoints[nPoint]) +
                    dLength(m_aPoints[nPoint + 2] - m_aPoints[nPoint + 1]);
    });
    return dSum;
}

std::uint64_t Outline::Work(std::int32_t lTop, std::int32_t lBottom) const
{
    const auto dRows = [&](Point ptA, Point ptB) {
        const double dTop = std::max<double>(std::min(ptA.y, ptB.y), lTop);
        return std::max(0.0, std::min<double>(std::max(ptA.y, ptB.y), lBottom) - dTop);
    };
    double dSum = 0;
    ForEach([&](Verb eVerb, std::size_t nPoint, Point ptBefore, Point ptStart) {
        if (eVerb == Verb::Line)
            dSum += dRows(ptBefore, m_aPoints[nPoint]);
        else if (eVerb == Verb::Close)
            dSum += dRows(ptBefore, ptStart);
        else if (eVerb == Verb::Curve)
            dSum += 200 + dRows(ptBefore, m_aPoints[nPoint]) +
                    dRows(m_aPoints[nPoint], m_aPoints[nPoint + 1]) +
                    dRows(m_aPoints[nPoint + 1], m_aPoints[nPoint + 2]);
    });
    return static_cast<std::uint64_t>(dSum) * 4 + m_aPoints.size() * 16;
}

void Outline::AddTo(cairo_t* pCairo) const
{
    ForEach([&](Verb eVerb, std::size_t nPoint, Point, Point) {
        switch (eVerb) {
            case Verb::Move:
                cairo_move_to(pCairo, m_aPoints[nPoint].x, m_aPoints[nPoint].y);
                break;
            case Verb::Line:
                cairo_line_to(pCairo, m_aPoints[nPoint].x, m_aPoints[nPoint].y);
                break;
            case Verb::Curve:
                cairo_curve_to(pCairo, m_aPoints[nPoint].x, m_aPoints[nPoint].y, m_aPoints[nPoint + 1].x,
                               m_aPoints[nPoint + 1].y, m_aPoints[nPoint + 2].x, m_aPoints[nPoint + 2].y);
                break;
            case Verb::Close:
                cairo_close_path(pCairo);
                break;
        }
    });
}

// Ellipses, arcs and rounded boxes.
#include "src/platform/image/metafile/canvas/arcs.h"

#include <numbers>

void AddArc(Outline& objOutline, const Rect& rc, double dStart, double dSweep, ArcStart eStart)
{
    const Point ptCentre{(rc.dLeft + rc.dRight) / 2, (rc.dTop + rc.dBottom) / 2};
    const Point ptRadius{(rc.dRight - rc.dLeft) / 2, (rc.dBottom - rc.dTop) / 2};
    constexpr double kTurn = 2 * std::numbers::pi;
    if (!std::isfinite(dStart) || !std::isfinite(dSweep))
        return;
    dSweep = std::clamp(dSweep, -kTurn, kTurn);
    const int nPieces = std::max(1, static_cast<int>(std::ceil(std::abs(dSweep) / (kTurn / 4) - 1e-9)));
    const double dStep = dSweep / nPieces;
    // The length of the tangents that brings a cubic nearest to an arc of dStep.
    const double dTangent = 4.0 / 3 * std::tan(dStep / 4);
    const auto ptAt = [&](double dCos, double dSin) {
        return Point{ptCentre.x + ptRadius.x * dCos, ptCentre.y + ptRadius.y * dSin};
    };
    double dCos = std::cos(dStart);
    double dSin = std::sin(dStart);
    if (eStart == ArcStart::NewFigure)
        objOutline.MoveTo(ptAt(dCos, dSin));
    else
        objOutline.LineTo(ptAt(dCos, dSin));
    for (int n = 1; n <= nPieces; ++n) {
        const double dNextCos = std::cos(dStart + n * dStep);
        const double dNextSin = std::sin(dStart + n * dStep);
        objOutline.CurveTo(ptAt(dCos - dTangent * dSin, dSin + dTangent * dCos),
                           ptAt(dNextCos + dTangent * dNextSin, dNextSin - dTangent * dNextCos),
                           ptAt(dNextCos, dNextSin));
        dCos = dNextCos;
        dSin = dNextSin;
    }
}

void AddEllipse(Outline& objOutline, const Rect& rc)
{
    AddArc(objOutline, rc, 0, -2 * std::numbers::pi, ArcStart::NewFigure);
    objOutline.Close();
}

void AddRoundRect(Outline& objOutline, const Rect& rc, double dCornerWidth, double dCornerHeight)
{
    const Rect rcGood = rc.Normalised();
    const double dWidth = std::min(std::abs(dCornerWidth), rcGood.Width());
    const double dHeight = std::min(std::abs(dCornerHeight), rcGood.Height());
    if (!(dWidth > 0) || !(dHeight > 0))
        return objOutline.AddBox(rcGood);
    constexpr double kQuarter = std::numbers::pi / 2;
    const Rect rcRight{rcGood.dRight - dWidth, 0, rcGood.dRight, 0};
    const Rect rcLeft{rcGood.dLeft, 0, rcGood.dLeft + dWidth, 0};
    const auto rcCorner = [&](const Rect& rcSide, bool bTop) {
        return Rect{rcSide.dLeft, bTop ? rcGood.dTop : rcGood.dBottom - dHeight, rcSide.dRight,
                    bTop ? rcGood.dTop + dHeight : rcGood.dBottom};
    };
    AddArc(objOutline, rcCorner(rcRight, true), 0, -kQuarter, ArcStart::NewFigure);
    AddArc(objOutline, rcCorner(rcLeft, true), -kQuarter, -kQuarter, ArcStart::LineFromLast);
    AddArc(objOutline, rcCorner(rcLeft, false), -2 * kQuarter, -kQuarter, ArcStart::LineFromLast);
    AddArc(objOutline, rcCorner(rcRight, false), -3 * kQuarter, -kQuarter, ArcStart::LineFromLast);
    objOutline.Close();
}

double dArcAngle(const Rect& rc, Point pt)
{
    const double dRadiusX = (rc.dRight - rc.dLeft) / 2;
    const double dRadiusY = (rc.dBottom - rc.dTop) / 2;
    const double x = (pt.x - (rc.dLeft + rc.dRight) / 2) / (dRadiusX == 0 ? 1 : dRadiusX);
    const double y = (pt.y - (rc.dTop + rc.dBottom) / 2) / (dRadiusY == 0 ? 1 : dRadiusY);
    return std::atan2(y, x);
}

// How the pens of a metafile become lines on the picture.
#include <array>

#include "src/platform/image/metafile/device/device_context.h"

static bool bIsGeometric(const Pen& objPen)
{
    return objPen.bExtended ? (objPen.nStyle & PenStyle::kGeometric) != 0 : objPen.dWidth > 1;
}

// The dashes of the named styles. Thin pens have them in pixels, wide ones in widths.
static std::vector<double> aNamedDashes(std::uint32_t nDash, bool bGeometric)
{
    static const std::array<std::vector<double>, 5> aThin = {
        {{}, {18, 6}, {3, 3}, {9, 6, 3, 6}, {9, 3, 3, 3, 3, 3}}};
    static const std::array<std::vector<double>, 5> aWide = {
        {{}, {3, 1}, {1, 1}, {3, 1, 1, 1}, {3, 1, 1, 1, 1, 1}}};
    if (nDash == PenStyle::kAlternate)
        return {1, 1};
    if (nDash >= aThin.size())
        return {};
    return bGeometric ? aWide[nDash] : aThin[nDash];
}

// Cairo takes no negative lengths and not only zeros, and a sum that is no number of pixels would never end.
static bool bUsableDashes(const std::vector<double>& aDashes, double dPixelsPerUnit)
{
    double dSum = 0;
    for (const double d : aDashes) {
        if (!(d >= 0) || !std::isfinite(d))
            return false;
        dSum += d;
    }
    return dSum * dPixelsPerUnit > 0.1;
}

StrokeStyle DeviceContext::StyleOf(const Pen& objPen, bool bRectilinear) const
{
    StrokeStyle objStyle;
    const bool bGeometric = bIsGeometric(objPen);
    Affine objLinear = LogicalToPicture();
    objLinear.x0 = objLinear.y0 = 0;
    double dScale = objLinear.Scale();
    const double dLongest =
        std::max(dLength(objLinear.ApplyToVector({1, 0})), dLength(objLinear.ApplyToVector({0, 1})));
    // A map that squeezes the plane to a line has no pen.
    if (!(dScale > dLongest * 1e-3) || !std::isfinite(dScale)) {
        dScale = std::isfinite(dLongest) && dLongest > 0 ? dLongest : 1;
        objLinear = {dScale, 0, 0, dScale, 0, 0};
    }
    const double dPixels = objPen.dWidth * dScale;
    // A pen of one pixel stays one where the picture is a trifle larger than the device was.
    const bool bHairline = !(dPixels > 1.2) || (objPen.bExtended && !bGeometric);
    if (bHairline || bRectilinear) {
        // Straight grid lines get a whole number of pixels, so that all of them look alike.
        objStyle.dWidth = bHairline ? 1 : std::floor(dTamed(dPixels) + 0.5);
        objStyle.objPen = {};
    } else {
        objStyle.dWidth = dTamed(objPen.dWidth);
        objStyle.objPen = objLinear;
    }

    if (objPen.bExtended && bGeometric) {
        const std::uint32_t nCap = objPen.nStyle & PenStyle::kCapMask;
        objStyle.eCap = nCap == PenStyle::kCapSquare ? CAIRO_LINE_CAP_SQUARE
                        : nCap == PenStyle::kCapFlat ? CAIRO_LINE_CAP_BUTT
                                                     : CAIRO_LINE_CAP_ROUND;
        const std::uint32_t nJoin = objPen.nStyle & PenStyle::kJoinMask;
        objStyle.eJoin = nJoin == PenStyle::kJoinBevel   ? CAIRO_LINE_JOIN_BEVEL
                         : nJoin == PenStyle::kJoinMiter ? CAIRO_LINE_JOIN_MITER
                                                         : CAIRO_LINE_JOIN_ROUND;
    } else if (bHairline) {
        // One pixel is as far as a thin line reaches over its ends.
        objStyle.eCap = CAIRO_LINE_CAP_SQUARE;
        objStyle.eJoin = CAIRO_LINE_JOIN_MITER;
    }
    objStyle.dMiterLimit = std::clamp(State.dMiterLimit, 1.0, 100.0);
    if (bHairline)
        objStyle.dMiterLimit = 2;

    const std::uint32_t nDash = objPen.nStyle & PenStyle::kDashMask;
    double dUnit = 1;  // of the dashes, in those of the pen
    if (nDash == PenStyle::kUserStyle) {
        objStyle.aDashes = objPen.aDashes;
        dUnit = bGeometric && (bHairline || bRectilinear) ? dScale : 1;
    } else {
        objStyle.aDashes = aNamedDashes(nDash, bGeometric);
        dUnit = bGeometric ? objStyle.dWidth : 1;
    }
    for (double& d : objStyle.aDashes)
        d *= dUnit;
    if (!bUsableDashes(objStyle.aDashes, objStyle.objPen.Scale()))
        objStyle.aDashes.clear();
    // The caps of the pens that choose none would close the gaps.
    if (!objStyle.aDashes.empty() && (!objPen.bExtended || !bGeometric))
        objStyle.eCap = CAIRO_LINE_CAP_BUTT;
    return objStyle;
}

void DeviceContext::DrawLine(Outline objPicture)
{
    if (!State.pPen || (State.pPen->nStyle & PenStyle::kDashMask) == PenStyle::kNull || objPicture.Empty())
        return;
    const std::shared_ptr<const Pen> pPen = State.pPen;
    const std::optional<Ink> objInk = InkOf(pPen->objBrush);
    if (!objInk)
        return;
    // The points name pixels, and a line runs through their middle.
    const Point ptHalf = HalfPixel();
    objPicture = objPicture.Transformed({1, 0, 0, 1, ptHalf.x, ptHalf.y});
    const StrokeStyle objStyle = StyleOf(*pPen, objPicture.Rectilinear());
    objPicture = objPicture.OnPixelCentres(objStyle.dWidth * objStyle.objPen.Scale());
    const Clip clip = CurrentClip();
    if (!objStyle.aDashes.empty() && State.bOpaqueBack && !pPen->bExtended) {
        StrokeStyle objGaps = objStyle;
        objGaps.aDashes.clear();
        m_objCanvas.Stroke(objPicture, objGaps, Ink{Resolved(State.nBackColor), nullptr, 0, 0}, State.nRop2,
                           clip);
    }
    m_objCanvas.Stroke(objPicture, objStyle, *objInk, State.nRop2, clip);
}

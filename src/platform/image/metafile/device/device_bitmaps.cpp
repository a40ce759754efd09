// Scales bitmaps and mixes them with the picture.
#include "src/platform/image/metafile/device/device_bitmaps.h"

#include "src/platform/image/metafile/canvas/raster_ops.h"
#include "src/platform/image/metafile/device/bitmaps.h"

static constexpr int kHalftone = 4;

Corners objCornersOf(const Rect& rc, const Affine& objMap)
{
    return {ptTamed(objMap.Apply({rc.dLeft, rc.dTop})), ptTamed(objMap.Apply({rc.dRight, rc.dTop})),
            ptTamed(objMap.Apply({rc.dLeft, rc.dBottom}))};
}

enum class Sampling { Nearest, Smooth };

/// Where a bitmap comes, and how its pixels are found.
struct Placement {
    Outline objShape;           ///< on the picture
    Affine objSourceToPicture;  ///< pixels of the whole bitmap to pixels of the picture
    bool bUpright = false;
    Rect rcValid;  ///< the part of the source that exists
};

// Moves an edge to a pixel corner; two edges that were apart stay a pixel apart.
static void RoundEdges(double& dA, double& dB)
{
    const double dRoundA = std::floor(dA + 0.5);
    double dRoundB = std::floor(dB + 0.5);
    if (dRoundA == dRoundB && dA != dB)
        dRoundB += dB > dA ? 1 : -1;
    dA = dRoundA;
    dB = dRoundB;
}

static std::optional<Placement> objPlaced(const BitmapPart& objPart, Corners objCorners)
{
    const Rect& rc = objPart.rcSource;
    const Rect rcAll{0, 0, static_cast<double>(objPart.aImage.width),
                     static_cast<double>(objPart.aImage.height)};
    if (rc.Width() == 0 || rc.Height() == 0 || !std::isfinite(rc.Width()) || !std::isfinite(rc.Height()))
        return std::nullopt;
    Placement objResult;
    const Point ptX = objCorners.ptTopRight - objCorners.ptTopLeft;
    const Point ptY = objCorners.ptBottomLeft - objCorners.ptTopLeft;
    objResult.bUpright = std::abs(ptX.y) < 0.01 && std::abs(ptY.x) < 0.01;
    if (objResult.bUpright) {
        // Strips of one picture must meet without a seam, and a bitmap of the picture's scale must keep its
        // pixels.
        RoundEdges(objCorners.ptTopLeft.x, objCorners.ptTopRight.x);
        RoundEdges(objCorners.ptTopLeft.y, objCorners.ptBottomLeft.y);
        objCorners.ptBottomLeft.x = objCorners.ptTopLeft.x;
        objCorners.ptTopRight.y = objCorners.ptTopLeft.y;
    }
    const Point ptStepX = (1 / rc.Width()) * (objCorners.ptTopRight - objCorners.ptTopLeft);
    const Point ptStepY = (1 / rc.Height()) * (objCorners.ptBottomLeft - objCorners.ptTopLeft);
    Affine& objMap = objResult.objSourceToPicture;
    objMap = {ptStepX.x, ptStepX.y, ptStepY.x, ptStepY.y, 0, 0};
    const Point ptMoved = objMap.ApplyToVector({rc.dLeft, rc.dTop});
    objMap.x0 = objCorners.ptTopLeft.x - ptMoved.x;
    objMap.y0 = objCorners.ptTopLeft.y - ptMoved.y;
    if (!objMap.Finite() || !std::isfinite(1 / objMap.Determinant()))
        return std::nullopt;
    const Rect rcGood = rc.Normalised();
    objResult.rcValid = {std::max(rcGood.dLeft, rcAll.dLeft), std::max(rcGood.dTop, rcAll.dTop),
                         std::min(rcGood.dRight, rcAll.dRight), std::min(rcGood.dBottom, rcAll.dBottom)};
    if (!(objResult.rcValid.Width() > 0) || !(objResult.rcValid.Height() > 0))
        return std::nullopt;
    objResult.objShape.AddBox(objResult.rcValid);
    objResult.objShape = objResult.objShape.Transformed(objMap);
    if (objResult.bUpright)
        objResult.objShape = objResult.objShape.OnPixelCorners();
    return objResult;
}

/// The pixels that are needed for a part of the picture, and their place.
struct Sampled {
    Pixels objPixels;
    Affine objToPicture;
};

static std::optional<Sampled> objSampled(const DeviceContext& dc, const BitmapPart& objPart,
                                         const Placement& objPlace, const Box& boxNeeded, Sampling eSampling,
                                         bool bAlpha)
{
    const Affine objBack = objPlace.objSourceToPicture.Inverse();
    const Rect rcNeeded =
        RectAround(objBack, {static_cast<double>(boxNeeded.lLeft), static_cast<double>(boxNeeded.lTop),
                             static_cast<double>(boxNeeded.lRight), static_cast<double>(boxNeeded.lBottom)});
    // How many source pixels fall on one of the picture, along each axis of the source.
    const double dShrinkX = 1 / std::max(1e-9, dLength(objPlace.objSourceToPicture.ApplyToVector({1, 0})));
    const double dShrinkY = 1 / std::max(1e-9, dLength(objPlace.objSourceToPicture.ApplyToVector({0, 1})));
    const double dMarginX = std::min(2 + 2 * dShrinkX, kFarthest);
    const double dMarginY = std::min(2 + 2 * dShrinkY, kFarthest);
    const Box boxPart = Intersection(BoxOf(objPlace.rcValid),
                                     BoxOf({rcNeeded.dLeft - dMarginX, rcNeeded.dTop - dMarginY,
                                            rcNeeded.dRight + dMarginX, rcNeeded.dBottom + dMarginY}));
    if (boxPart.Empty() || !dc.Work().Spend(boxPart.Area() * 4))
        return std::nullopt;
    // Cairo averages well as long as it shrinks to no less than some tenth; beyond that, and where its
    // pictures would be too large, squares of pixels are averaged before.
    const auto lStep = [&](double dShrink, std::int32_t lExtent) {
        const double dWanted = eSampling == Sampling::Smooth ? std::floor(dShrink / 6) : 1;
        const std::int32_t lLeast = (lExtent + kMaxSurfaceSide - 1) / kMaxSurfaceSide;
        return std::max({1, lLeast, static_cast<std::int32_t>(std::clamp(dWanted, 1.0, 65536.0))});
    };
    const std::int32_t lStepX = lStep(dShrinkX, boxPart.Width());
    const std::int32_t lStepY = lStep(dShrinkY, boxPart.Height());
    const Affine objScale{static_cast<double>(lStepX),
                          0,
                          0,
                          static_cast<double>(lStepY),
                          static_cast<double>(boxPart.lLeft),
                          static_cast<double>(boxPart.lTop)};
    return Sampled{objPixelsOf(objPart.aImage, boxPart, lStepX, lStepY, bAlpha),
                   Then(objScale, objPlace.objSourceToPicture)};
}

// Draws the sampled pixels into the shape.
static void DrawSampled(cairo_t* pCairo, const Sampled& objSource, const Placement& objPlace,
                        Sampling eSampling, bool bSoftEdges)
{
    const SurfacePtr pSurface = pSurfaceOn(objSource.objPixels);
    const PatternPtr pPattern(cairo_pattern_create_for_surface(pSurface.get()));
    const Affine objBack = objSource.objToPicture.Inverse();
    const cairo_matrix_t objMatrix{objBack.xx, objBack.yx, objBack.xy, objBack.yy, objBack.x0, objBack.y0};
    cairo_pattern_set_matrix(pPattern.get(), &objMatrix);
    cairo_pattern_set_extend(pPattern.get(), CAIRO_EXTEND_PAD);
    cairo_pattern_set_filter(pPattern.get(),
                             eSampling == Sampling::Smooth ? CAIRO_FILTER_GOOD : CAIRO_FILTER_NEAREST);
    cairo_set_source(pCairo, pPattern.get());
    cairo_set_antialias(pCairo, bSoftEdges ? CAIRO_ANTIALIAS_DEFAULT : CAIRO_ANTIALIAS_NONE);
    cairo_set_operator(pCairo, bSoftEdges ? CAIRO_OPERATOR_OVER : CAIRO_OPERATOR_SOURCE);
    objPlace.objShape.AddTo(pCairo);
    cairo_fill(pCairo);
}

// Bitmaps of about the picture's scale, and those that are shrunk, are smoothed. One that is enlarged by far
// is meant as blocks of colour unless the file asks for a halftone.
static Sampling eSamplingFor(const DeviceContext& dc, const Placement& objPlace)
{
    const Affine& objMap = objPlace.objSourceToPicture;
    const double dX = dLength(objMap.ApplyToVector({1, 0}));
    const double dY = dLength(objMap.ApplyToVector({0, 1}));
    const bool bSameSize = objPlace.bUpright && std::abs(dX - 1) < 1e-9 && std::abs(dY - 1) < 1e-9;
    if (bSameSize)
        return Sampling::Nearest;
    const bool bEnlarged = std::min(dX, dY) >= 2;
    return bEnlarged && dc.State.nStretchMode != kHalftone ? Sampling::Nearest : Sampling::Smooth;
}

static void Lay(DeviceContext& dc, const BitmapPart& objPart, const Placement& objPlace, Sampling eSampling,
                bool bAlpha, bool bSoftEdges, const std::function<void(Pixels&)>& fPrepare,
                const Canvas::Mix& fMix)
{
    const Clip clip = dc.CurrentClip();
    const Box box = BoxOf(objPlace.objShape.Extents());
    const Box boxNeeded = Intersection(Intersection(box, clip.box), dc.Target().Area());
    if (boxNeeded.Empty())
        return;
    if (dc.Target().Measuring())
        return dc.Target().Touch(boxNeeded);
    std::optional<Sampled> objSource = objSampled(dc, objPart, objPlace, boxNeeded, eSampling, bAlpha);
    if (!objSource)
        return;
    fPrepare(objSource->objPixels);
    dc.Target().Compose(
        boxNeeded, clip,
        [&](cairo_t* pCairo) {
            DrawSampled(pCairo, *objSource, objPlace, eSampling, bSoftEdges && !objPlace.bUpright);
        },
        fMix);
}

static void LeaveAsTheyAre(Pixels&) {}

static bool bMaskSet(const BitmapMask& objMask, const BitmapPart& objPart, const Affine& objBack,
                     std::int32_t x, std::int32_t y)
{
    const Point pt = objBack.Apply({x + 0.5, y + 0.5});
    const auto u = static_cast<std::int64_t>(std::floor(dTamed(pt.x - objPart.rcSource.dLeft))) + objMask.lX;
    const auto v = static_cast<std::int64_t>(std::floor(dTamed(pt.y - objPart.rcSource.dTop))) + objMask.lY;
    if (u < 0 || v < 0 || u >= objMask.aImage.width || v >= objMask.aImage.height)
        return false;
    const std::int64_t nIndex = (v * objMask.aImage.width + u) * objMask.aImage.channels;
    return objMask.aImage.bytes[static_cast<std::size_t>(nIndex)] >= 128;
}

void DrawBitmap(DeviceContext& dc, const BitmapPart& objPart, const Corners& objCorners, std::uint8_t nRop,
                const BitmapMask* pMask, std::uint8_t nRopOutside)
{
    const auto objPlace = objPlaced(objPart, objCorners);
    if (!objPlace)
        return;
    if (nRop == kRopSourceCopy && !pMask) {
        return Lay(dc, objPart, *objPlace, eSamplingFor(dc, *objPlace), false, true, LeaveAsTheyAre,
                   [](std::int32_t, std::int32_t, std::uint32_t nOld, std::uint32_t nNew,
                      std::uint32_t nLevel) { return nOver(nOld, nScaled(nNew, nLevel)); });
    }
    const Ink objInk = dc.InkOf(dc.State.pBrush).value_or(Ink{0xFFFFFF, nullptr, 0, 0});
    const Affine objBack = objPlace->objSourceToPicture.Inverse();
    // A mean of two colours has no bitwise meaning, so nothing is smoothed.
    Lay(dc, objPart, *objPlace, Sampling::Nearest, false, false, LeaveAsTheyAre,
        [&](std::int32_t x, std::int32_t y, std::uint32_t nOld, std::uint32_t nNew, std::uint32_t nLevel) {
            if (nNew >> 24 < 128 || nLevel < 128)
                return nOld;
            const bool bInside = !pMask || bMaskSet(*pMask, objPart, objBack, x, y);
            return nRop3(bInside ? nRop : nRopOutside, nOld, nNew, objInk.At(x, y));
        });
}

void BlendBitmap(DeviceContext& dc, const BitmapPart& objPart, const Corners& objCorners,
                 std::uint32_t nAlpha, bool bOwnAlpha)
{
    const auto objPlace = objPlaced(objPart, objCorners);
    if (!objPlace)
        return;
    Lay(dc, objPart, *objPlace, eSamplingFor(dc, *objPlace), bOwnAlpha, true, LeaveAsTheyAre,
        [nAlpha](std::int32_t, std::int32_t, std::uint32_t nOld, std::uint32_t nNew, std::uint32_t nLevel) {
            return nOver(nOld, nScaled(nNew, nDividedBy255(nLevel * nAlpha)));
        });
}

void DrawBitmapBut(DeviceContext& dc, const BitmapPart& objPart, const Corners& objCorners,
                   std::uint32_t nLeftOut)
{
    const auto objPlace = objPlaced(objPart, objCorners);
    if (!objPlace)
        return;
    const auto fnClear = [nLeftOut](Pixels& objPixels) {
        std::replace(objPixels.aPixels.begin(), objPixels.aPixels.end(), nLeftOut | 0xFF000000, 0u);
    };
    Lay(dc, objPart, *objPlace, Sampling::Nearest, false, true, fnClear,
        [](std::int32_t, std::int32_t, std::uint32_t nOld, std::uint32_t nNew, std::uint32_t nLevel) {
            return nOver(nOld, nScaled(nNew, nLevel));
        });
}

void PaintRect(DeviceContext& dc, const Rect& rc, std::uint8_t nRop)
{
    Outline objShape;
    objShape.AddBox(rc);
    objShape = objShape.Transformed(dc.LogicalToPicture());
    if (objShape.Rectilinear())
        objShape = objShape.OnPixelCorners();
    const std::optional<Ink> objInk = dc.InkOf(dc.State.pBrush);
    if (nRop == kRopNothing || (bUsesPattern(nRop) && !objInk))
        return;
    if (nRop == kRopPatternCopy)
        return dc.Fill(objShape, *objInk, kRop2Copy);
    if (nRop == 0x00 || nRop == 0xFF)
        return dc.Fill(objShape, Ink{nRop == 0 ? 0u : 0xFFFFFFu, nullptr, 0, 0}, kRop2Copy);
    const Ink objPattern = objInk.value_or(Ink{});
    dc.Target().Compose(
        BoxOf(objShape.Extents()), dc.CurrentClip(),
        [&](cairo_t* pCairo) {
            cairo_set_antialias(pCairo, CAIRO_ANTIALIAS_NONE);
            objShape.AddTo(pCairo);
            cairo_fill(pCairo);
        },
        [&](std::int32_t x, std::int32_t y, std::uint32_t nOld, std::uint32_t nNew, std::uint32_t nLevel) {
            return nNew >> 24 >= 128 && nLevel >= 128 ? nRop3(nRop, nOld, nOld, objPattern.At(x, y)) : nOld;
        });
}

bool bCopyPicture(DeviceContext& dc, const Rect& rc, ImageBuffer& aImage)
{
    Canvas& objCanvas = dc.Target();
    const Box box = Intersection(BoxOf(RectAround(dc.LogicalToPicture(), rc), true), objCanvas.Area());
    if (box.Empty() || objCanvas.Measuring() || !dc.Work().Spend(box.Area()))
        return false;
    ImageBuffer aResult;
    aResult.width = box.Width();
    aResult.height = box.Height();
    aResult.channels = 3;
    aResult.bytes.resize(box.Area() * 3);
    std::uint8_t* pOut = aResult.bytes.data();
    for (std::int32_t y = box.lTop; y < box.lBottom; ++y) {
        const std::uint32_t* pRow = objCanvas.Row(y) + (box.lLeft - objCanvas.Area().lLeft);
        for (std::int32_t x = 0; x < box.Width(); ++x)
            for (unsigned c = 0; c < 3; ++c)
                *pOut++ = static_cast<std::uint8_t>(pRow[x] >> 8 * c);
    }
    aImage = std::move(aResult);
    return true;
}

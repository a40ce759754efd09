// Colour runs, flooding, single pixels.
#include "src/platform/image/metafile/device/device_fills.h"

#include "src/platform/image/metafile/canvas/raster_ops.h"

static std::uint32_t nMixed(const std::array<double, 3>& aColor)
{
    std::uint32_t nResult = 0;
    for (const double d : aColor)
        nResult =
            nResult << 8 | static_cast<std::uint32_t>(std::clamp(std::floor(d / 257 + 0.5), 0.0, 255.0));
    return nResult;
}

void FillGradientRect(DeviceContext& dc, const GradientCorner& objA, const GradientCorner& objB,
                      bool bDownwards)
{
    const Affine& objMap = dc.LogicalToPicture();
    Outline objShape;
    objShape.AddBox(Rect{objA.pt.x, objA.pt.y, objB.pt.x, objB.pt.y}.Normalised());
    objShape = objShape.Transformed(objMap);
    if (objShape.Rectilinear())
        objShape = objShape.OnPixelCorners();
    const Point ptA = ptTamed(objMap.Apply(objA.pt));
    const Point ptB =
        ptTamed(objMap.Apply(bDownwards ? Point{objA.pt.x, objB.pt.y} : Point{objB.pt.x, objA.pt.y}));
    const Point ptRun = ptB - ptA;
    const double dSquare = ptRun.x * ptRun.x + ptRun.y * ptRun.y;
    if (!(dSquare > 1e-9))
        return;
    dc.Target().Compose(
        BoxOf(objShape.Extents()), dc.CurrentClip(),
        [&](cairo_t* pCairo) {
            objShape.AddTo(pCairo);
            cairo_fill(pCairo);
        },
        [&](std::int32_t x, std::int32_t y, std::uint32_t nOld, std::uint32_t nNew, std::uint32_t nLevel) {
            const Point pt = Point{x + 0.5, y + 0.5} - ptA;
            const double dPart = std::clamp((pt.x * ptRun.x + pt.y * ptRun.y) / dSquare, 0.0, 1.0);
            std::array<double, 3> aColor{};
            for (std::size_t c = 0; c < 3; ++c)
                aColor[c] = objA.aColor[c] + dPart * (objB.aColor[c] - objA.aColor[c]);
            return nOver(nOld, nScaled(nMixed(aColor) | 0xFF000000, nDividedBy255((nNew >> 24) * nLevel)));
        });
}

void FillGradientTriangle(DeviceContext& dc, std::span<const GradientCorner, 3> aCorners)
{
    const Affine& objMap = dc.LogicalToPicture();
    std::array<Point, 3> aPoints;
    Outline objShape;
    for (std::size_t n = 0; n < 3; ++n) {
        aPoints[n] = ptTamed(objMap.Apply(aCorners[n].pt));
        objShape.LineTo(aPoints[n]);
    }
    objShape.Close();
    const Point ptU = aPoints[1] - aPoints[0];
    const Point ptV = aPoints[2] - aPoints[0];
    const double dArea = ptU.x * ptV.y - ptU.y * ptV.x;
    if (std::abs(dArea) < 1e-6)
        return;
    dc.Target().Compose(
        BoxOf(objShape.Extents()), dc.CurrentClip(),
        [&](cairo_t* pCairo) {
            // Triangles of one surface share their sides: soft edges would let the ground shine through
            // between them.
            cairo_set_antialias(pCairo, CAIRO_ANTIALIAS_NONE);
            objShape.AddTo(pCairo);
            cairo_fill(pCairo);
        },
        [&](std::int32_t x, std::int32_t y, std::uint32_t nOld, std::uint32_t nNew, std::uint32_t nLevel) {
            const Point pt = Point{x + 0.5, y + 0.5} - aPoints[0];
            const double dU = (pt.x * ptV.y - pt.y * ptV.x) / dArea;
            const double dV = (ptU.x * pt.y - ptU.y * pt.x) / dArea;
            std::array<double, 3> aColor{};
            for (std::size_t c = 0; c < 3; ++c)
                aColor[c] = (1 - dU - dV) * aCorners[0].aColor[c] + dU * aCorners[1].aColor[c] +
                            dV * aCorners[2].aColor[c];
            return nOver(nOld, nScaled(nMixed(aColor) | 0xFF000000, nDividedBy255((nNew >> 24) * nLevel)));
        });
}

static Point ptPixelOf(const DeviceContext& dc, Point pt)
{
    const Point ptPicture = ptTamed(dc.LogicalToPicture().Apply(pt));
    // A hair below the corner is the corner, by the noise of the mapping.
    return {std::floor(ptPicture.x + 1e-6), std::floor(ptPicture.y + 1e-6)};
}

void FloodFill(DeviceContext& dc, Point ptFrom, ColorRef nColorAsked, bool bOverColor)
{
    Canvas& objCanvas = dc.Target();
    const Clip clip = dc.CurrentClip();
    const Box box = Intersection(clip.box, objCanvas.Area());
    const Point ptPixel = ptPixelOf(dc, ptFrom);
    const auto objInk = dc.InkOf(dc.State.pBrush);
    const auto x0 = static_cast<std::int32_t>(ptPixel.x);
    const auto y0 = static_cast<std::int32_t>(ptPixel.y);
    if (objCanvas.Measuring() || !objInk || !box.Holds(x0, y0) || !dc.Work().Spend(box.Area() * 2))
        return;
    const std::uint32_t nColor = dc.Resolved(nColorAsked);
    const auto lStride = static_cast<std::size_t>(box.Width());
    std::vector<bool> aDone(box.Area());
    const auto nIndex = [&](std::int32_t x, std::int32_t y) {
        return static_cast<std::size_t>(y - box.lTop) * lStride + static_cast<std::size_t>(x - box.lLeft);
    };
    const auto bOpen = [&](std::int32_t x, std::int32_t y) {
        const std::uint32_t nPixel = objCanvas.Row(y)[x - objCanvas.Area().lLeft] & 0xFFFFFF;
        return !aDone[nIndex(x, y)] && clip.Level(x, y) >= 128 && (nPixel == nColor) == bOverColor;
    };
    // Runs of open pixels: the first pixel of each that touches a finished run waits here.
    struct Seed {
        std::int32_t x;
        std::int32_t y;
    };
    std::vector<Seed> aSeeds;
    if (bOpen(x0, y0))
        aSeeds.push_back({x0, y0});
    objCanvas.Touch({x0, y0, x0 + 1, y0 + 1});
    while (!aSeeds.empty()) {
        const Seed objSeed = aSeeds.back();
        aSeeds.pop_back();
        if (!bOpen(objSeed.x, objSeed.y))
            continue;
        std::int32_t lLeft = objSeed.x;
        std::int32_t lRight = objSeed.x + 1;
        while (lLeft > box.lLeft && bOpen(lLeft - 1, objSeed.y))
            --lLeft;
        while (lRight < box.lRight && bOpen(lRight, objSeed.y))
            ++lRight;
        for (std::int32_t x = lLeft; x < lRight; ++x)
            aDone[nIndex(x, objSeed.y)] = true;
        for (const std::int32_t y : {objSeed.y - 1, objSeed.y + 1}) {
            if (y < box.lTop || y >= box.lBottom)
                continue;
            bool bInRun = false;
            for (std::int32_t x = lLeft; x < lRight; ++x) {
                const bool bNow = bOpen(x, y);
                if (bNow && !bInRun)
                    aSeeds.push_back({x, y});
                bInRun = bNow;
            }
        }
    }
    Box boxPainted;
    for (std::int32_t y = box.lTop; y < box.lBottom; ++y) {
        std::uint32_t* pRow = objCanvas.Row(y);
        for (std::int32_t x = box.lLeft; x < box.lRight; ++x) {
            if (!aDone[nIndex(x, y)])
                continue;
            std::uint32_t& nPixel = pRow[x - objCanvas.Area().lLeft];
            nPixel = nOver(nPixel, objInk->At(x, y));
            boxPainted = Around(boxPainted, {x, y, x + 1, y + 1});
        }
    }
    objCanvas.Touch(boxPainted);
}

void SetPixel(DeviceContext& dc, Point pt, ColorRef nColor)
{
    // Drawn as a box, so that it shows where the picture is larger than the device was.
    const Point ptUnit = dc.UnitOfDevice();
    Outline objBox;
    objBox.AddBox({pt.x, pt.y, pt.x + ptUnit.x, pt.y + ptUnit.y});
    dc.Fill(objBox.Transformed(dc.LogicalToPicture()), Ink{dc.Resolved(nColor), nullptr, 0, 0}, kRop2Copy);
}

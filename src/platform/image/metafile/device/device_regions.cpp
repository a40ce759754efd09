// Fills, frames and inverts regions.
#include "src/platform/image/metafile/device/device_regions.h"

#include "src/platform/image/metafile/canvas/raster_ops.h"

// Paints what the clip holds, of the context's own clip.
static void PaintClip(DeviceContext& dc, const Clip& clip, const Ink& objInk, int nRop2)
{
    if (clip.box.Empty())
        return;
    Outline objBox;
    objBox.AddBox({static_cast<double>(clip.box.lLeft), static_cast<double>(clip.box.lTop),
                   static_cast<double>(clip.box.lRight), static_cast<double>(clip.box.lBottom)});
    dc.Target().Fill(objBox, true, objInk, nRop2, Combined(dc.CurrentClip(), clip, ClipMode::And, dc.Work()));
}

static Clip ClipOfRegion(DeviceContext& dc, const Region& objRegion)
{
    return dc.ClipOf(objRegion.aRects, dc.LogicalToPicture());
}

void FillRegion(DeviceContext& dc, const Region& objRegion, const std::shared_ptr<const Brush>& pBrush)
{
    if (const auto objInk = dc.InkOf(pBrush))
        PaintClip(dc, ClipOfRegion(dc, objRegion), *objInk, dc.State.nRop2);
}

void InvertRegion(DeviceContext& dc, const Region& objRegion)
{
    PaintClip(dc, ClipOfRegion(dc, objRegion), Ink{}, kRop2Not);
}

// For a line of levels, whether each and all lReach neighbours on both sides are set; beyond the ends nothing
// is.
static void Erode(const std::vector<bool>& aIn, std::vector<bool>& aOut, std::int32_t lReach)
{
    const auto lCount = static_cast<std::int32_t>(aIn.size());
    std::int32_t lRun = 0;  // how many in a row are set, up to the place read
    for (std::int32_t l = 0; l < lCount + lReach; ++l) {
        lRun = l < lCount && aIn[static_cast<std::size_t>(l)] ? lRun + 1 : 0;
        if (l >= lReach)
            aOut[static_cast<std::size_t>(l - lReach)] = lRun > 2 * lReach;
    }
}

void FrameRegion(DeviceContext& dc, const Region& objRegion, const std::shared_ptr<const Brush>& pBrush,
                 double dWidth, double dHeight)
{
    const auto objInk = dc.InkOf(pBrush);
    const Clip clipAll = ClipOfRegion(dc, objRegion);
    if (!objInk || clipAll.box.Empty())
        return;
    if (dc.Target().Measuring())
        return dc.Target().Touch(Intersection(clipAll.box, dc.CurrentClip().box));
    const Affine& objMap = dc.LogicalToPicture();
    const std::int32_t lWidth = clipAll.box.Width();
    const std::int32_t lHeight = clipAll.box.Height();
    const auto lReach = [](double dLogical, double dScale, std::int32_t lMost) {
        return std::clamp(static_cast<std::int32_t>(std::floor(dTamed(std::abs(dLogical * dScale)) + 0.5)), 1,
                          lMost);
    };
    const std::int32_t lReachX = lReach(dWidth, dLength(objMap.ApplyToVector({1, 0})), lWidth);
    const std::int32_t lReachY = lReach(dHeight, dLength(objMap.ApplyToVector({0, 1})), lHeight);
    if (!dc.Work().Spend(clipAll.box.Area() * 16))
        return;

    // The inside is what is left after taking the frame's width off every edge, first along rows, then along
    // columns.
    auto pInside = std::make_shared<Coverage>(clipAll.box);
    std::vector<bool> aLine(static_cast<std::size_t>(lWidth));
    std::vector<bool> aEroded(aLine.size());
    for (std::int32_t y = 0; y < lHeight; ++y) {
        for (std::int32_t x = 0; x < lWidth; ++x)
            aLine[static_cast<std::size_t>(x)] =
                clipAll.Level(clipAll.box.lLeft + x, clipAll.box.lTop + y) >= 128;
        Erode(aLine, aEroded, lReachX);
        std::uint8_t* pRow = pInside->Row(clipAll.box.lTop + y);
        for (std::int32_t x = 0; x < lWidth; ++x)
            pRow[x] = aEroded[static_cast<std::size_t>(x)] ? 255 : 0;
    }
    aLine.assign(static_cast<std::size_t>(lHeight), false);
    aEroded.assign(aLine.size(), false);
    for (std::int32_t x = 0; x < lWidth; ++x) {
        for (std::int32_t y = 0; y < lHeight; ++y)
            aLine[static_cast<std::size_t>(y)] = pInside->Row(clipAll.box.lTop + y)[x] != 0;
        Erode(aLine, aEroded, lReachY);
        for (std::int32_t y = 0; y < lHeight; ++y)
            pInside->Row(clipAll.box.lTop + y)[x] = aEroded[static_cast<std::size_t>(y)] ? 255 : 0;
    }
    const Clip clipInside{clipAll.box, std::move(pInside)};
    PaintClip(dc, Combined(clipAll, clipInside, ClipMode::Difference, dc.Work()), *objInk, dc.State.nRop2);
}

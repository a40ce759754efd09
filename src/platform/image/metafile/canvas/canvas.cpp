// Paints with Cairo, and with loops of its own where Cairo has no such operation.
#include "src/platform/image/metafile/canvas/canvas.h"

#include <new>

#include "src/platform/image/metafile/canvas/raster_ops.h"

static constexpr std::uint64_t kCostOfOperation = 200;
// A layer is cleared, drawn and mixed.
static constexpr std::uint64_t kCostOfLayer = 6;

std::unique_ptr<Canvas> Canvas::Create(const Box& boxArea, Budget& objBudget)
{
    std::unique_ptr<Canvas> pCanvas(new Canvas(objBudget));
    pCanvas->m_boxArea = boxArea;
    pCanvas->m_pSurface.reset(
        cairo_image_surface_create(CAIRO_FORMAT_RGB24, boxArea.Width(), boxArea.Height()));
    if (cairo_surface_status(pCanvas->m_pSurface.get()) != CAIRO_STATUS_SUCCESS)
        return nullptr;
    cairo_surface_set_device_offset(pCanvas->m_pSurface.get(), -boxArea.lLeft, -boxArea.lTop);
    pCanvas->m_pCairo.reset(cairo_create(pCanvas->m_pSurface.get()));
    cairo_set_source_rgb(pCanvas->m_pCairo.get(), 1, 1, 1);
    cairo_paint(pCanvas->m_pCairo.get());
    return pCanvas->Failed() ? nullptr : std::move(pCanvas);
}

std::unique_ptr<Canvas> Canvas::CreateMeasuring(Budget& objBudget)
{
    std::unique_ptr<Canvas> pCanvas(new Canvas(objBudget));
    constexpr auto kFar = static_cast<std::int32_t>(kFarthest);
    pCanvas->m_boxArea = {-kFar, -kFar, kFar, kFar};
    return pCanvas;
}

bool Canvas::Failed() const
{
    return m_eStatus != CAIRO_STATUS_SUCCESS ||
           (m_pCairo && cairo_status(m_pCairo.get()) != CAIRO_STATUS_SUCCESS);
}

std::uint32_t* Canvas::Row(std::int32_t y)
{
    unsigned char* pBytes = cairo_image_surface_get_data(m_pSurface.get());
    const int nStride = cairo_image_surface_get_stride(m_pSurface.get());
    return reinterpret_cast<std::uint32_t*>(pBytes +
                                            static_cast<std::ptrdiff_t>(y - m_boxArea.lTop) * nStride);
}

void Canvas::Compose(const Box& box, const Clip& clip, const Draw& fDraw, const Mix& fMix)
{
    const Box boxLayer = Intersection(Intersection(box, clip.box), m_boxArea);
    if (boxLayer.Empty())
        return;
    Touch(boxLayer);
    if (Measuring() || Failed() || !m_objBudget.Spend(boxLayer.Area() * kCostOfLayer + kCostOfOperation))
        return;
    m_aLayer.assign(boxLayer.Area(), 0);
    const SurfacePtr pLayer(cairo_image_surface_create_for_data(
        reinterpret_cast<unsigned char*>(m_aLayer.data()), CAIRO_FORMAT_ARGB32, boxLayer.Width(),
        boxLayer.Height(), boxLayer.Width() * 4));
    cairo_surface_set_device_offset(pLayer.get(), -boxLayer.lLeft, -boxLayer.lTop);
    {
        const CairoPtr pCairo(cairo_create(pLayer.get()));
        fDraw(pCairo.get());
        m_eStatus = cairo_status(pCairo.get());
    }
    cairo_surface_finish(pLayer.get());
    if (Failed())
        return;
    cairo_surface_flush(m_pSurface.get());
    const std::uint32_t* pFrom = m_aLayer.data();
    for (std::int32_t y = boxLayer.lTop; y < boxLayer.lBottom; ++y) {
        std::uint32_t* pTo = Row(y) + (boxLayer.lLeft - m_boxArea.lLeft);
        const std::uint8_t* pLevel =
            clip.pCoverage ? clip.pCoverage->Row(y) + (boxLayer.lLeft - clip.box.lLeft) : nullptr;
        for (std::int32_t x = boxLayer.lLeft; x < boxLayer.lRight; ++x, ++pFrom, ++pTo) {
            const std::uint32_t nLevel = pLevel ? *pLevel++ : 255;
            if (nLevel != 0)
                *pTo = fMix(x, y, *pTo & 0xFFFFFF, *pFrom, nLevel);
        }
    }
    cairo_surface_mark_dirty_rectangle(m_pSurface.get(), boxLayer.lLeft - m_boxArea.lLeft,
                                       boxLayer.lTop - m_boxArea.lTop, boxLayer.Width(), boxLayer.Height());
}

void Canvas::Paint(const Box& boxInk, std::uint64_t nWork, const Ink& objInk, int nRop2Asked,
                   const Clip& clip, const Draw& fDraw)
{
    const Box box = Intersection(Intersection(boxInk, clip.box), m_boxArea);
    if (box.Empty() || nRop2Asked == kRop2Nop)
        return;
    Touch(box);
    if (Measuring() || Failed() || !m_objBudget.Spend(box.Area() + nWork + kCostOfOperation))
        return;
    // Two of the operations are plain painting in another colour.
    Ink objPlain = objInk;
    if (nRop2Asked == kRop2Black || nRop2Asked == kRop2White) {
        objPlain = Ink{nRop2Asked == kRop2Black ? 0u : 0xFFFFFFu, nullptr, 0, 0};
        nRop2Asked = kRop2Copy;
    }
    if (nRop2Asked == kRop2Copy && !clip.pCoverage) {
        cairo_t* pCairo = m_pCairo.get();
        cairo_reset_clip(pCairo);
        cairo_rectangle(pCairo, box.lLeft, box.lTop, box.Width(), box.Height());
        cairo_clip(pCairo);
        objPlain.ApplyTo(pCairo);
        fDraw(pCairo);
        return;
    }
    const bool bBitwise = nRop2Asked != kRop2Copy;
    const auto fDrawInk = [&](cairo_t* pCairo) {
        // Half a pixel has no bitwise meaning.
        cairo_set_antialias(pCairo, bBitwise ? CAIRO_ANTIALIAS_NONE : CAIRO_ANTIALIAS_DEFAULT);
        objPlain.ApplyTo(pCairo);
        fDraw(pCairo);
    };
    if (bBitwise)
        Compose(box, clip, fDrawInk,
                [nRop2Asked](std::int32_t, std::int32_t, std::uint32_t nOld, std::uint32_t nNew,
                             std::uint32_t nLevel) {
                    return nNew >> 24 >= 128 && nLevel >= 128 ? nRop2(nRop2Asked, nOld, nNew) : nOld;
                });
    else
        Compose(box, clip, fDrawInk,
                [](std::int32_t, std::int32_t, std::uint32_t nOld, std::uint32_t nNew, std::uint32_t nLevel) {
                    return nOver(nOld, nScaled(nNew, nLevel));
                });
}

// The pixels that a line along the outline can touch.
static Box BoxOfStroke(const Outline& objOutline, const StrokeStyle& objStyle)
{
    const double dLargest = std::max(dLength({objStyle.objPen.xx, objStyle.objPen.yx}),
                                     dLength({objStyle.objPen.xy, objStyle.objPen.yy}));
    const double dSpread =
        objStyle.eJoin == CAIRO_LINE_JOIN_MITER ? std::max(1.5, objStyle.dMiterLimit) : 1.5;
    const double dMargin = dTamed(objStyle.dWidth * dLargest * dSpread + 1);
    const Rect rc = objOutline.Extents();
    return BoxOf({rc.dLeft - dMargin, rc.dTop - dMargin, rc.dRight + dMargin, rc.dBottom + dMargin});
}

static void DrawAlong(cairo_t* pCairo, const Outline& objOutline, const StrokeStyle& objStyle)
{
    objOutline.AddTo(pCairo);
    const cairo_matrix_t objPen{
        objStyle.objPen.xx, objStyle.objPen.yx, objStyle.objPen.xy, objStyle.objPen.yy, 0, 0};
    cairo_transform(pCairo, &objPen);
    cairo_set_line_width(pCairo, objStyle.dWidth);
    cairo_set_line_cap(pCairo, objStyle.eCap);
    cairo_set_line_join(pCairo, objStyle.eJoin);
    cairo_set_miter_limit(pCairo, objStyle.dMiterLimit);
    cairo_set_dash(pCairo, objStyle.aDashes.data(), static_cast<int>(objStyle.aDashes.size()), 0);
    cairo_stroke(pCairo);
    cairo_identity_matrix(pCairo);
}

static void DrawInside(cairo_t* pCairo, const Outline& objOutline, bool bWinding)
{
    objOutline.AddTo(pCairo);
    cairo_set_fill_rule(pCairo, bWinding ? CAIRO_FILL_RULE_WINDING : CAIRO_FILL_RULE_EVEN_ODD);
    cairo_fill(pCairo);
}

std::uint64_t Canvas::WorkOf(const Outline& objOutline, const StrokeStyle& objStyle) const
{
    // Each line has two sides, and two ends or joins.
    std::uint64_t nWork = objOutline.Work(m_boxArea.lTop, m_boxArea.lBottom) * 3;
    double dPeriod = 0;
    for (const double dDash : objStyle.aDashes)
        dPeriod += dDash;
    const double dPen = objStyle.objPen.Scale();
    if (dPeriod * dPen > 0)
        nWork += static_cast<std::uint64_t>(dTamed(objOutline.Length() / (dPeriod * dPen))) * 200 *
                 objStyle.aDashes.size();
    return nWork;
}

void Canvas::Fill(const Outline& objOutline, bool bWinding, const Ink& objInk, int nRop2Asked,
                  const Clip& clip, bool bExact)
{
    if (objOutline.Empty())
        return;
    const Outline objNeat = !bExact && objOutline.Rectilinear() ? objOutline.OnPixelCorners() : objOutline;
    Paint(BoxOf(objNeat.Extents()), objNeat.Work(m_boxArea.lTop, m_boxArea.lBottom), objInk, nRop2Asked, clip,
          [&](cairo_t* pCairo) { DrawInside(pCairo, objNeat, bWinding); });
}

void Canvas::Stroke(const Outline& objOutline, const StrokeStyle& objStyle, const Ink& objInk, int nRop2Asked,
                    const Clip& clip)
{
    if (objOutline.Empty())
        return;
    Paint(BoxOfStroke(objOutline, objStyle), WorkOf(objOutline, objStyle), objInk, nRop2Asked, clip,
          [&](cairo_t* pCairo) { DrawAlong(pCairo, objOutline, objStyle); });
}

Clip Canvas::Covered(const Box& boxInk, std::uint64_t nWork, const Draw& fDraw)
{
    const Box box = Intersection(boxInk, m_boxArea);
    if (box.Empty())
        return {};
    if (Measuring())
        return {box, nullptr};
    if (!m_objBudget.Spend(box.Area() * 8 + nWork + kCostOfOperation))
        return {};
    const SurfacePtr pMask(cairo_image_surface_create(CAIRO_FORMAT_A8, box.Width(), box.Height()));
    cairo_surface_set_device_offset(pMask.get(), -box.lLeft, -box.lTop);
    {
        const CairoPtr pCairo(cairo_create(pMask.get()));
        fDraw(pCairo.get());
        m_eStatus = cairo_status(pCairo.get());
    }
    if (Failed())
        return {};
    cairo_surface_flush(pMask.get());
    auto pCoverage = std::make_shared<Coverage>(box);
    const unsigned char* pBytes = cairo_image_surface_get_data(pMask.get());
    const int nStride = cairo_image_surface_get_stride(pMask.get());
    for (std::int32_t y = box.lTop; y < box.lBottom; ++y, pBytes += nStride)
        std::copy(pBytes, pBytes + box.Width(), pCoverage->Row(y));
    return {box, std::move(pCoverage)};
}

Clip Canvas::ClipOf(const Outline& objOutline, bool bWinding, const Box& boxLimit)
{
    if (objOutline.Empty())
        return {};
    const Outline objNeat = objOutline.Rectilinear() ? objOutline.OnPixelCorners() : objOutline;
    return Covered(Intersection(BoxOf(objNeat.Extents()), boxLimit),
                   objNeat.Work(m_boxArea.lTop, m_boxArea.lBottom),
                   [&](cairo_t* pCairo) { DrawInside(pCairo, objNeat, bWinding); });
}

Clip Canvas::ClipOf(const Outline& objOutline, const StrokeStyle& objStyle, const Box& boxLimit)
{
    if (objOutline.Empty())
        return {};
    return Covered(Intersection(BoxOfStroke(objOutline, objStyle), boxLimit), WorkOf(objOutline, objStyle),
                   [&](cairo_t* pCairo) { DrawAlong(pCairo, objOutline, objStyle); });
}

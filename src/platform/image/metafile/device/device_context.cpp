// Mapping, saved states, colours and clipping of a metafile's device context.
#include "src/platform/image/metafile/device/device_context.h"

#include <utility>

#include "src/platform/image/metafile/device/brush_ink.h"

// A saved state takes some hundred bytes and its record eight.
static constexpr std::size_t kMostSavedStates = 4096;

static constexpr int kMapText = 1;
static constexpr int kMapTwips = 6;
static constexpr int kMapIsotropic = 7;

// WMF knows no device; its metric map modes are held to a screen's resolution.
static constexpr double kScreenDotsPerMillimetre = 96 / 25.4;

DeviceContext::DeviceContext(Canvas& objCanvas, const MetafileRequest& objRequest)
    : m_objCanvas(objCanvas), m_objRequest(objRequest), m_objFonts(objCanvas.Work())
{
    for (const std::uint32_t nStock : {0u, 7u, 13u})
        Select(objStock(nStock));
    State.pPalette = pDefaultPalette();
    ResetClip();
    State.clipMeta = State.clip;
    if (objRequest.bEnhanced)
        m_objDeviceToPicture = {objRequest.dScaleX, 0, 0, objRequest.dScaleY, objRequest.dOffsetX,
                                objRequest.dOffsetY};
    else {
        State.ptWindowOrg = {objRequest.dWindowLeft, objRequest.dWindowTop};
        State.ptWindowExt = {objRequest.dWindowWidth, objRequest.dWindowHeight};
        State.ptViewportExt = objCanvas.Measuring() ? State.ptWindowExt
                                                    : Point{static_cast<double>(objRequest.lWidth),
                                                            static_cast<double>(objRequest.lHeight)};
    }
}

bool DeviceContext::SaveState()
{
    if (m_aSaved.size() >= kMostSavedStates)
        return false;
    m_aSaved.push_back(State);
    return true;
}

void DeviceContext::RestoreState(std::int32_t lWhich)
{
    const auto lCount = static_cast<std::int64_t>(m_aSaved.size());
    const std::int64_t lIndex = lWhich < 0 ? lCount + lWhich : std::int64_t{lWhich} - 1;
    if (lWhich == 0 || lIndex < 0 || lIndex >= lCount)
        return;
    State = std::move(m_aSaved[static_cast<std::size_t>(lIndex)]);
    m_aSaved.resize(static_cast<std::size_t>(lIndex));
    MappingChanged();
}

void DeviceContext::Select(const Object& objObject)
{
    if (const auto* ppPen = std::get_if<std::shared_ptr<const Pen>>(&objObject))
        State.pPen = *ppPen;
    else if (const auto* ppBrush = std::get_if<std::shared_ptr<const Brush>>(&objObject))
        State.pBrush = *ppBrush;
    else if (const auto* ppFont = std::get_if<std::shared_ptr<const Font>>(&objObject))
        State.pFont = *ppFont;
    else if (const auto* ppPalette = std::get_if<std::shared_ptr<const Palette>>(&objObject))
        State.pPalette = *ppPalette;
    else if (const auto* ppRegion = std::get_if<std::shared_ptr<const Region>>(&objObject))
        // A region that is selected becomes the clip; in WMF its units are those of the device.
        State.clip =
            ClipOf((*ppRegion)->aRects, m_objRequest.bEnhanced ? m_objDeviceToPicture : LogicalToPicture());
}

bool DeviceContext::ExtentsAreFixed() const
{
    return m_objRequest.bEnhanced ? State.nMapMode < kMapIsotropic
                                  : State.nMapMode > kMapText && State.nMapMode < kMapIsotropic;
}

void DeviceContext::SetMapMode(int nMode)
{
    if (nMode < kMapText || nMode > 8 || nMode == State.nMapMode)
        return;
    State.nMapMode = nMode;
    MappingChanged();
    // Files made for a placeable header often name the text mode and set a window nevertheless, so in WMF
    // only the metric modes have a scale of their own.
    static constexpr double kUnitsPerMillimetre[] = {0, 0, 10, 100, 100 / 25.4, 1000 / 25.4, 1440 / 25.4};
    const bool bWmf = !m_objRequest.bEnhanced;
    const Point ptDots = bWmf ? Point{kScreenDotsPerMillimetre, kScreenDotsPerMillimetre}
                              : Point{m_objRequest.dDotsPerMillimetreX, m_objRequest.dDotsPerMillimetreY};
    if (nMode >= 2 && nMode <= kMapTwips) {
        State.ptWindowExt = {kUnitsPerMillimetre[nMode], kUnitsPerMillimetre[nMode]};
        State.ptViewportExt = {ptDots.x, -ptDots.y};
    } else if (nMode == kMapText && !bWmf)
        State.ptWindowExt = State.ptViewportExt = {1, 1};
    else if (nMode == kMapIsotropic && !bWmf) {
        State.ptWindowExt = {10, 10};
        State.ptViewportExt = {ptDots.x, -ptDots.y};
    }
}

void DeviceContext::SetViewportExt(Point ptExt)
{
    State.ptViewportExt = ptExt;
    MappingChanged();
    if (m_objRequest.bEnhanced || m_bViewportSeen || ptExt.x == 0 || ptExt.y == 0)
        return;
    // A WMF names the pixels of the screen that it was made on: what it first takes for its viewport is the
    // picture.
    m_bViewportSeen = true;
    m_ptViewportScale = {m_objRequest.lWidth / std::abs(ptExt.x), m_objRequest.lHeight / std::abs(ptExt.y)};
    if (m_objCanvas.Measuring())
        m_ptViewportScale = {1, 1};
    m_objDeviceToPicture = {m_ptViewportScale.x, 0, 0, m_ptViewportScale.y, 0, 0};
}

// The scale of a map mode, with its signs.
static Point ptPageScale(const DcState& objState)
{
    const auto dRatio = [](double dView, double dWindow) {
        const double d = dView / dWindow;
        return std::isfinite(d) && d != 0 ? d : 1;
    };
    Point ptScale{dRatio(objState.ptViewportExt.x, objState.ptWindowExt.x),
                  dRatio(objState.ptViewportExt.y, objState.ptWindowExt.y)};
    if (objState.nMapMode == kMapIsotropic) {
        const double dLess = std::min(std::abs(ptScale.x), std::abs(ptScale.y));
        ptScale = {std::copysign(dLess, ptScale.x), std::copysign(dLess, ptScale.y)};
    }
    return ptScale;
}

const Affine& DeviceContext::LogicalToPicture() const
{
    if (m_bMappingKnown)
        return m_objLogicalToPicture;
    const Point ptScale = ptPageScale(State);
    const Affine objPage{ptScale.x,
                         0,
                         0,
                         ptScale.y,
                         State.ptViewportOrg.x - State.ptWindowOrg.x * ptScale.x,
                         State.ptViewportOrg.y - State.ptWindowOrg.y * ptScale.y};
    m_objLogicalToPicture = Then(Then(State.objWorld, objPage), m_objDeviceToPicture);
    if (!m_objLogicalToPicture.Finite())
        m_objLogicalToPicture = m_objDeviceToPicture;
    m_bMappingKnown = true;
    return m_objLogicalToPicture;
}

Affine DeviceContext::PageScale() const
{
    const Point ptScale = ptPageScale(State);
    return {std::abs(ptScale.x * m_objDeviceToPicture.xx), 0, 0,
            std::abs(ptScale.y * m_objDeviceToPicture.yy), 0, 0};
}

Point DeviceContext::UnitOfDevice() const
{
    const Affine& objMap = LogicalToPicture();
    const auto dUnit = [](double dPicture, double dLogical) {
        const double d = dPicture / dLogical;
        return std::isfinite(d) ? d : 0;
    };
    // Without a device, as in WMF, lines are placed by the logical unit, or by the pixel where that is less.
    const double dLogicalX = dLength(objMap.ApplyToVector({1, 0}));
    const double dLogicalY = dLength(objMap.ApplyToVector({0, 1}));
    if (!m_objRequest.bEnhanced)
        return {std::min(1.0, dUnit(1, dLogicalX)), std::min(1.0, dUnit(1, dLogicalY))};
    return {dUnit(std::abs(m_objDeviceToPicture.xx), dLogicalX),
            dUnit(std::abs(m_objDeviceToPicture.yy), dLogicalY)};
}

Point DeviceContext::HalfPixel() const
{
    if (m_objRequest.bEnhanced)
        return {std::min(0.5, std::abs(m_objDeviceToPicture.xx) / 2),
                std::min(0.5, std::abs(m_objDeviceToPicture.yy) / 2)};
    const Affine& objMap = LogicalToPicture();
    return {std::min(0.5, dLength(objMap.ApplyToVector({1, 0})) / 2),
            std::min(0.5, dLength(objMap.ApplyToVector({0, 1})) / 2)};
}

double DeviceContext::Handedness() const
{
    const Point ptScale = ptPageScale(State);
    return ptScale.x * ptScale.y < 0 ? -1 : 1;
}

std::uint32_t DeviceContext::Resolved(ColorRef nColor) const
{
    const auto nSwapped = [](std::uint32_t n) { return (n & 255) << 16 | (n & 0xFF00) | (n >> 16 & 255); };
    // High byte 1 is an index into the palette; 0 and 2 are colours themselves.
    if (nColor >> 24 != 1)
        return nSwapped(nColor);
    const std::vector<std::uint32_t>& aColors = State.pPalette->aColors;
    const std::size_t nIndex = nColor & 0xFFFF;
    return nIndex < aColors.size() ? aColors[nIndex] : 0;
}

std::optional<Ink> DeviceContext::InkOf(const Brush& objBrush) const
{
    std::optional<Ink> objInk = objInkOf(objBrush, *this);
    if (objInk && objInk->pTile) {
        const Point ptOrigin = m_objDeviceToPicture.Apply(State.ptBrushOrg);
        objInk->lOriginX = static_cast<std::int32_t>(std::floor(dTamed(ptOrigin.x) + 0.5));
        objInk->lOriginY = static_cast<std::int32_t>(std::floor(dTamed(ptOrigin.y) + 0.5));
    }
    return objInk;
}

std::optional<Ink> DeviceContext::InkOf(const std::shared_ptr<const Brush>& pBrush)
{
    if (!pBrush || pBrush->eKind == BrushKind::Null)
        return std::nullopt;
    if (pBrush->eKind == BrushKind::Solid)
        return Ink{Resolved(pBrush->nColor), nullptr, 0, 0};
    // A pattern is decoded once, as long as nothing that it depends on changes.
    const ColorRef nBack = State.bOpaqueBack ? State.nBackColor : 0xFF000000;
    if (pBrush != m_pInkBrush || m_nInkText != State.nTextColor || m_nInkBack != nBack) {
        m_objInk = InkOf(*pBrush);
        m_pInkBrush = pBrush;
        m_nInkText = State.nTextColor;
        m_nInkBack = nBack;
    } else if (m_objInk && m_objInk->pTile) {
        const Point ptOrigin = m_objDeviceToPicture.Apply(State.ptBrushOrg);
        m_objInk->lOriginX = static_cast<std::int32_t>(std::floor(dTamed(ptOrigin.x) + 0.5));
        m_objInk->lOriginY = static_cast<std::int32_t>(std::floor(dTamed(ptOrigin.y) + 0.5));
    }
    return m_objInk;
}

Clip DeviceContext::CurrentClip() const
{
    return Combined(State.clip, State.clipMeta, ClipMode::And, Work());
}

void DeviceContext::CombineClip(const Clip& clip, ClipMode eMode)
{
    State.clip = Combined(State.clip, clip, eMode, Work());
}

void DeviceContext::SetMetaClip()
{
    State.clipMeta = CurrentClip();
    ResetClip();
}

Clip DeviceContext::ClipOf(std::span<const Rect> aRects, const Affine& objMap)
{
    const Box& boxArea = m_objCanvas.Area();
    if (aRects.size() == 1 && objMap.KeepsAxes())
        return {Intersection(BoxOf(RectAround(objMap, aRects[0]), true), boxArea), nullptr};
    Outline objOutline;
    for (const Rect& rc : aRects)
        objOutline.AddBox(rc.Normalised());
    return m_objCanvas.ClipOf(objOutline.Transformed(objMap), true, boxArea);
}

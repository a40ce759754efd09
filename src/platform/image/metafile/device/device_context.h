// The drawing state of a metafile and the operations on shapes, which EMF and WMF records share.
// Room: platform/image/metafile/device.
#pragma once

#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "src/platform/image/metafile/canvas/canvas.h"
#include "src/platform/image/metafile/device/fonts.h"
#include "src/platform/image/metafile/device/metafile_api.h"
#include "src/platform/image/metafile/device/objects.h"

/// What SaveDC keeps.
struct DcState {
    int nMapMode = 1;
    Point ptWindowOrg;
    Point ptWindowExt{1, 1};
    Point ptViewportOrg;
    Point ptViewportExt{1, 1};
    Affine objWorld;

    std::shared_ptr<const Pen> pPen;
    std::shared_ptr<const Brush> pBrush;
    std::shared_ptr<const Font> pFont;
    std::shared_ptr<const Palette> pPalette;

    ColorRef nTextColor = 0;
    ColorRef nBackColor = 0xFFFFFF;
    bool bOpaqueBack = true;
    int nRop2 = 13;
    bool bWinding = false;
    int nStretchMode = 1;
    std::uint32_t nTextAlign = 0;
    double dCharExtra = 0;   ///< logical units after each letter
    double dBreakExtra = 0;  ///< logical units for each blank
    bool bClockwise = false;
    double dMiterLimit = 10;
    Point ptBrushOrg;  ///< units of the reference device

    Point ptPosition;
    Clip clip;
    Clip clipMeta;
};

enum class ShapeParts { Line, Fill, Both };

class DeviceContext
{
public:
    DeviceContext(Canvas& objCanvas, const MetafileRequest& objRequest);

    DcState State;  ///< changed by the records; MappingChanged() afterwards where coordinates are concerned

    bool SaveState();
    /// lWhich below 0 counts back from the last saved, above 0 from the first. An unknown one changes
    /// nothing.
    void RestoreState(std::int32_t lWhich);
    void Select(const Object& objObject);

    // Coordinates.
    void SetMapMode(int nMode);
    /// The records of EMF are bound to the extents of the fixed map modes; WMF files set them whatever the
    /// mode says.
    bool ExtentsAreFixed() const;
    void SetViewportExt(Point ptExt);
    void MappingChanged() { m_bMappingKnown = false; }
    const Affine& LogicalToPicture() const;
    /// Only the map mode, without world transform and signs: how text stands.
    Affine PageScale() const;
    const Affine& DeviceToPicture() const { return m_objDeviceToPicture; }
    /// A unit of the reference device in logical units, along each axis.
    Point UnitOfDevice() const;

    // Colours.
    std::uint32_t Resolved(ColorRef nColor) const;
    /// What a brush paints with; nothing for the null brush or one whose bitmap is broken.
    std::optional<Ink> InkOf(const std::shared_ptr<const Brush>& pBrush);
    std::optional<Ink> InkOf(const Brush& objBrush) const;

    // Shapes, in logical units. In a path bracket they are added to the path instead of being painted.
    void MoveTo(Point pt);
    /// Draws from the current position along the lines or curves, and moves it to their end.
    void LinesTo(std::span<const Point> aPoints);
    void CurvesTo(std::span<const Point> aPoints);
    void ArcTo(const Rect& rc, double dStart, double dSweep);
    void Draw(const Outline& objLogical, ShapeParts eParts);
    /// A shape in a box: what is filled, and the same a pixel smaller, on which its line runs.
    void Draw(const Outline& objFilled, const Outline& objLine);
    /// The box of its line: without the last row and column where the records count them out.
    Rect LineBox(const Rect& rc) const;
    /// +1 if angles that grow with the clock do so in logical units, -1 if the page is mirrored.
    double Handedness() const;

    // Path bracket.
    void BeginPath();
    void EndPath() { m_bInPath = false; }
    void AbortPath();
    void CloseFigure();
    void WidenPath();
    void PaintPath(ShapeParts eParts);
    void SelectClipPath(ClipMode eMode);
    bool InPath() const { return m_bInPath; }
    void AddToPath(const Outline& objPicture) { m_objPath.Append(objPicture); }

    // Clipping.
    Clip CurrentClip() const;
    void CombineClip(const Clip& clip, ClipMode eMode);
    void ResetClip() { State.clip = {m_objCanvas.Area(), nullptr}; }
    void SetMetaClip();
    Clip ClipOf(std::span<const Rect> aRects, const Affine& objMap);

    Canvas& Target() const { return m_objCanvas; }
    FontShelf& Fonts() { return m_objFonts; }
    Budget& Work() const { return m_objCanvas.Work(); }
    const MetafileRequest& Request() const { return m_objRequest; }

    void Fill(const Outline& objPicture, const Ink& objInk, int nRop2);
    void DrawLine(Outline objPicture);

private:
    StrokeStyle StyleOf(const Pen& objPen, bool bRectilinear) const;
    Point HalfPixel() const;

    Canvas& m_objCanvas;
    const MetafileRequest& m_objRequest;
    Affine m_objDeviceToPicture;
    bool m_bViewportSeen = false;
    Point m_ptViewportScale{1, 1};
    mutable bool m_bMappingKnown = false;
    mutable Affine m_objLogicalToPicture;
    std::vector<DcState> m_aSaved;

    bool m_bInPath = false;
    bool m_bFigureOpen = false;
    Outline m_objPath;
    std::optional<Pen> m_objWidenedBy;

    std::shared_ptr<const Brush> m_pInkBrush;  ///< the brush whose ink was made last
    std::optional<Ink> m_objInk;
    ColorRef m_nInkText = 0;
    ColorRef m_nInkBack = 0;
    FontShelf m_objFonts;
};

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
    int map_mode = 1;
    Point window_org;
    Point window_ext{1, 1};
    Point viewport_org;
    Point viewport_ext{1, 1};
    Affine world;

    std::shared_ptr<const Pen> pen;
    std::shared_ptr<const Brush> brush;
    std::shared_ptr<const Font> font;
    std::shared_ptr<const Palette> palette;

    ColorRef text_color = 0;
    ColorRef back_color = 0xFFFFFF;
    bool opaque_back = true;
    int rop2 = 13;
    bool winding = false;
    int stretch_mode = 1;
    std::uint32_t text_align = 0;
    double char_extra = 0;   ///< logical units after each letter
    double break_extra = 0;  ///< logical units for each blank
    bool clockwise = false;
    double miter_limit = 10;
    Point brush_org;  ///< units of the reference device

    Point position;
    Clip clip;
    Clip meta;
};

enum class ShapeParts { kLine, kFill, kBoth };

class DeviceContext
{
public:
    DeviceContext(Canvas& canvas, const MetafileRequest& request);

    DcState state;  ///< changed by the records; MappingChanged() afterwards where coordinates are concerned

    bool SaveState();
    /// which below 0 counts back from the last saved, above 0 from the first. An unknown one changes
    /// nothing.
    void RestoreState(std::int32_t which);
    void Select(const Object& object);

    // Coordinates.
    void SetMapMode(int mode);
    /// The records of EMF are bound to the extents of the fixed map modes; WMF files set them whatever the
    /// mode says.
    bool ExtentsAreFixed() const;
    void SetViewportExt(Point ext);
    void MappingChanged() { mapping_known_ = false; }
    const Affine& LogicalToPicture() const;
    /// Only the map mode, without world transform and signs: how text stands.
    Affine PageScale() const;
    const Affine& DeviceToPicture() const { return device_to_picture_; }
    /// A unit of the reference device in logical units, along each axis.
    Point DeviceUnit() const;

    // Colours.
    std::uint32_t ResolveColor(ColorRef color) const;
    /// What a brush paints with; nothing for the null brush or one whose bitmap is broken.
    std::optional<Ink> InkFor(const std::shared_ptr<const Brush>& brush);
    std::optional<Ink> InkFor(const Brush& brush) const;

    // Shapes, in logical units. In a path bracket they are added to the path instead of being painted.
    void MoveTo(Point point);
    /// Draws from the current position along the lines or curves, and moves it to their end.
    void LinesTo(std::span<const Point> points);
    void CurvesTo(std::span<const Point> points);
    void ArcTo(const Rect& rect, double start, double sweep);
    void Draw(const Outline& logical, ShapeParts parts);
    /// A shape in a box: what is filled, and the same a pixel smaller, on which its line runs.
    void Draw(const Outline& filled, const Outline& line);
    /// The box of its line: without the last row and column where the records count them out.
    Rect LineBox(const Rect& rect) const;
    /// +1 if angles that grow with the clock do so in logical units, -1 if the page is mirrored.
    double Handedness() const;

    // Path bracket.
    void BeginPath();
    void EndPath() { in_path_ = false; }
    void AbortPath();
    void CloseFigure();
    void WidenPath();
    void PaintPath(ShapeParts parts);
    void SelectClipPath(ClipMode mode);
    bool InPath() const { return in_path_; }
    void AddToPath(const Outline& picture) { path_.Append(picture); }

    // Clipping.
    Clip CurrentClip() const;
    void CombineClip(const Clip& clip, ClipMode mode);
    void ResetClip() { state.clip = {canvas_.Area(), nullptr}; }
    void SetMetaClip();
    Clip ClipOf(std::span<const Rect> rects, const Affine& map);

    Canvas& Target() const { return canvas_; }
    FontCache& Fonts() { return fonts_; }
    Budget& Work() const { return canvas_.Work(); }
    const MetafileRequest& Request() const { return request_; }

    void Fill(const Outline& picture, const Ink& ink, int rop2);
    void DrawLine(Outline picture);

private:
    StrokeStyle StyleOf(const Pen& pen, bool rectilinear) const;
    Point HalfPixel() const;

    Canvas& canvas_;
    const MetafileRequest& request_;
    Affine device_to_picture_;
    bool viewport_seen_ = false;
    Point viewport_scale_{1, 1};
    mutable bool mapping_known_ = false;
    mutable Affine logical_to_picture_;
    std::vector<DcState> saved_;

    bool in_path_ = false;
    bool figure_open_ = false;
    Outline path_;
    std::optional<Pen> widened_by_;

    std::shared_ptr<const Brush> ink_brush_;  ///< the brush whose ink was made last
    std::optional<Ink> ink_;
    ColorRef ink_text_ = 0;
    ColorRef ink_back_ = 0;
    FontCache fonts_;
};

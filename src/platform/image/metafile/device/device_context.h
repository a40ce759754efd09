// The device context: drawing state and shape operations shared by EMF and WMF records.
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

/// The state that SaveDC saves.
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
    double char_extra = 0;   ///< logical units after each character
    double break_extra = 0;  ///< logical units added to each space
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

    /// Makes this the context of a metafile within another: maps its device to the picture and confines it.
    void Nest(const Affine& device_to_picture, const Clip& limit);

    DcState state;  ///< records change it; call MappingChanged() after changing coordinates

    bool SaveState();
    /// A negative index counts back from the last saved state, a positive one from the first. Unknown indexes
    /// are ignored.
    void RestoreState(std::int32_t which);
    void Select(const Object& object);

    void SetMapMode(int mode);
    /// In EMF the fixed map modes ignore extents; WMF files set them in any mode.
    bool ExtentsAreFixed() const;
    void SetViewportExt(Point ext);
    void MappingChanged() { mapping_known_ = false; }
    const Affine& LogicalToPicture() const;
    /// The map mode alone, without world transform and signs; text is scaled by it.
    Affine PageScale() const;
    const Affine& DeviceToPicture() const { return device_to_picture_; }
    /// The size of a reference device unit in logical units, along each axis.
    Point DeviceUnit() const;

    std::uint32_t ResolveColor(ColorRef color) const;
    /// The ink of a brush; nothing for the null brush or an invalid bitmap.
    std::optional<Ink> InkFor(const std::shared_ptr<const Brush>& brush);
    std::optional<Ink> InkFor(const Brush& brush) const;

    // Shapes in logical units. In a path bracket they are added to the path instead of being painted.
    void MoveTo(Point point);
    /// Draws lines or curves from the current position, and moves it to their end.
    void LinesTo(std::span<const Point> points);
    void CurvesTo(std::span<const Point> points);
    void ArcTo(const Rect& rect, double start, double sweep);
    void Draw(const Outline& logical, ShapeParts parts);
    /// Draws a box-like shape: fills one outline and strokes the other, which is a pixel smaller.
    void Draw(const Outline& filled, const Outline& line);
    /// The box that a shape's line follows: without the last row and column where records exclude them.
    Rect LineBox(const Rect& rect) const;
    /// +1 if clockwise angles grow in logical units, -1 if the page is mirrored.
    double Handedness() const;

    void BeginPath();
    void EndPath() { in_path_ = false; }
    void AbortPath();
    void CloseFigure();
    void WidenPath();
    void PaintPath(ShapeParts parts);
    void SelectClipPath(ClipMode mode);
    bool InPath() const { return in_path_; }
    void AddToPath(const Outline& picture) { path_.Append(picture); }

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
    struct CombinedClip {
        Clip clip;
        Clip meta;
        Clip result;
    };
    struct PathClip {
        Outline path;
        bool winding = false;
        Clip result;
    };

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

    mutable std::optional<CombinedClip> combined_;  ///< the last result of CurrentClip()
    std::optional<PathClip> path_clip_;             ///< the last clip made of a path

    std::shared_ptr<const Brush> ink_brush_;  ///< the brush of the cached ink
    std::optional<Ink> ink_;
    ColorRef ink_text_ = 0;
    ColorRef ink_back_ = 0;
    FontCache fonts_;
};

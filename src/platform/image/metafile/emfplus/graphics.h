// The drawing state of EMF+ records, and what shapes are drawn with it.
// Room: platform/image/metafile/emfplus.
#pragma once

#include <optional>
#include <vector>

#include "src/platform/image/metafile/device/device_context.h"
#include "src/platform/image/metafile/emfplus/objects.h"

/// Units of page transforms, pens and fonts.
enum class PlusUnit : std::uint32_t { kWorld, kDisplay, kPixel, kPoint, kInch, kDocument, kMillimetre };

/// How a clip record combines its area with the clip.
enum class PlusClipMode : std::uint32_t { kReplace, kIntersect, kUnion, kXor, kExclude, kComplement };

class PlusGraphics
{
public:
    explicit PlusGraphics(DeviceContext& dc);

    /// The state that a file saves and restores. The clip is in picture pixels.
    struct State {
        Affine world;
        Affine container;  ///< maps the page of the innermost container to device pixels
        PlusUnit page_unit = PlusUnit::kDisplay;
        double page_scale = 1;
        Clip clip;
        bool half_pixel = false;  ///< pixels are between whole coordinates, not centred on them
        bool nearest = false;     ///< enlarged images keep sharp pixels
        Point origin;             ///< of hatches, in device pixels
    };
    State state;

    void SetResolution(double dots_x, double dots_y);
    Affine WorldToDevice() const;
    Affine WorldToPicture() const;
    const Affine& DeviceToPicture() const { return dc_.DeviceToPicture(); }
    /// The size of a unit in device pixels. World and display units follow the page.
    double PixelsPer(PlusUnit unit) const;
    /// The same in units of the page.
    double PageUnitsPer(PlusUnit unit) const;

    /// Saves the state under a number of the file's choice. False if too many are saved.
    bool Save(std::uint32_t index);
    /// Restores the state of that number and forgets it and all that were saved later.
    void Restore(std::uint32_t index);
    /// Starts a container that maps source to dest; without them, it keeps the coordinates.
    bool BeginContainer(std::uint32_t index, const std::optional<Rect>& dest, const Rect& source,
                        PlusUnit unit);

    void CombineClip(const Clip& area, PlusClipMode mode);
    void ResetClip();
    void OffsetClip(Point move);
    Clip ClipOf(const Rect& world);
    Clip ClipOf(const Outline& world, bool winding);
    Clip ClipOf(const PlusRegion& region);

    /// Shapes in world units.
    void Fill(const Outline& world, bool winding, const PlusBrush& brush);
    void FillPicture(const Outline& picture, const PlusBrush& brush);
    void FillClip(const Clip& clip, const PlusBrush& brush);
    void Stroke(const Outline& world, const PlusPen& pen);
    /// Paints the whole clip.
    void Clear(ArgbColor color);

    DeviceContext& Context() { return dc_; }

private:
    std::optional<Ink> InkFor(const PlusBrush& brush);

    DeviceContext& dc_;
    Canvas& canvas_;
    Clip limit_;  ///< of a metafile within another
    Point dots_{96, 96};
    struct Saved {
        std::uint32_t index;
        State state;
    };
    std::vector<Saved> saved_;
};

// Fills, frames and inverts regions.
#include "src/platform/image/metafile/device/device_regions.h"

#include "src/platform/image/metafile/canvas/raster_ops.h"

// Paints the clip, intersected with the context's clip.
static void PaintClip(DeviceContext& dc, const Clip& clip, const Ink& ink, int rop2)
{
    if (clip.box.Empty())
        return;
    Outline box;
    box.AddBox({static_cast<double>(clip.box.left), static_cast<double>(clip.box.top),
                static_cast<double>(clip.box.right), static_cast<double>(clip.box.bottom)});
    dc.Target().Fill(box, true, ink, rop2, Combine(dc.CurrentClip(), clip, ClipMode::kAnd, dc.Work()));
}

static Clip ClipOfRegion(DeviceContext& dc, const Region& region)
{
    return dc.ClipOf(region.rects, dc.LogicalToPicture());
}

void FillRegion(DeviceContext& dc, const Region& region, const std::shared_ptr<const Brush>& brush)
{
    if (const auto ink = dc.InkFor(brush))
        PaintClip(dc, ClipOfRegion(dc, region), *ink, dc.state.rop2);
}

void InvertRegion(DeviceContext& dc, const Region& region)
{
    PaintClip(dc, ClipOfRegion(dc, region), Ink{}, kRop2Not);
}

// Erodes a row: a cell stays set if it and reach neighbours on each side are set. Cells past the ends count
// as clear.
static void Erode(const std::vector<bool>& in, std::vector<bool>& out, std::int32_t reach)
{
    const auto count = static_cast<std::int32_t>(in.size());
    std::int32_t run = 0;  // number of consecutive set cells so far
    for (std::int32_t l = 0; l < count + reach; ++l) {
        run = l < count && in[static_cast<std::size_t>(l)] ? run + 1 : 0;
        if (l >= reach)
            out[static_cast<std::size_t>(l - reach)] = run > 2 * reach;
    }
}

void FrameRegion(DeviceContext& dc, const Region& region, const std::shared_ptr<const Brush>& brush,
                 double width, double height)
{
    const auto ink = dc.InkFor(brush);
    const Clip all = ClipOfRegion(dc, region);
    if (!ink || all.box.Empty())
        return;
    if (dc.Target().Measuring())
        return dc.Target().Touch(Intersection(all.box, dc.CurrentClip().box));
    const Affine& map = dc.LogicalToPicture();
    const std::int32_t box_width = all.box.Width();
    const std::int32_t box_height = all.box.Height();
    const auto reach = [](double logical, double scale, std::int32_t max) {
        return std::clamp(
            static_cast<std::int32_t>(std::floor(ClampToDrawable(std::abs(logical * scale)) + 0.5)), 1, max);
    };
    const std::int32_t reach_x = reach(width, LengthOf(map.ApplyToVector({1, 0})), box_width);
    const std::int32_t reach_y = reach(height, LengthOf(map.ApplyToVector({0, 1})), box_height);
    if (!dc.Work().Spend(all.box.Area() * 16))
        return;

    // The interior is the region eroded by the frame's size, by rows, then by columns.
    auto inside = std::make_shared<Coverage>(all.box);
    std::vector<bool> line(static_cast<std::size_t>(box_width));
    std::vector<bool> eroded(line.size());
    for (std::int32_t y = 0; y < box_height; ++y) {
        for (std::int32_t x = 0; x < box_width; ++x)
            line[static_cast<std::size_t>(x)] = all.Level(all.box.left + x, all.box.top + y) >= 128;
        Erode(line, eroded, reach_x);
        std::uint8_t* row = inside->Row(all.box.top + y);
        for (std::int32_t x = 0; x < box_width; ++x)
            row[x] = eroded[static_cast<std::size_t>(x)] ? 255 : 0;
    }
    line.assign(static_cast<std::size_t>(box_height), false);
    eroded.assign(line.size(), false);
    for (std::int32_t x = 0; x < box_width; ++x) {
        for (std::int32_t y = 0; y < box_height; ++y)
            line[static_cast<std::size_t>(y)] = inside->Row(all.box.top + y)[x] != 0;
        Erode(line, eroded, reach_y);
        for (std::int32_t y = 0; y < box_height; ++y)
            inside->Row(all.box.top + y)[x] = eroded[static_cast<std::size_t>(y)] ? 255 : 0;
    }
    const Clip inside_clip{all.box, std::move(inside)};
    PaintClip(dc, Combine(all, inside_clip, ClipMode::kDifference, dc.Work()), *ink, dc.state.rop2);
}

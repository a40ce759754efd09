// Plays EMF+ records that draw images.
#include <cstring>

#include "src/platform/image/metafile/device/device_bitmaps.h"
#include "src/platform/image/metafile/emfplus/data_readers.h"
#include "src/platform/image/metafile/emfplus/emfplus_player.h"

namespace
{
enum ImageRecord : std::uint16_t {
    kDrawImage = 0x401A,
    kDrawImagePoints = 0x401B,
    kSerializableObject = 0x4038,  // a filter for the next image, such as blur
};
}  // namespace

static constexpr std::uint16_t kShortFlag = 0x4000;
static constexpr std::uint16_t kRelativeFlag = 0x0800;

static constexpr int kSharpStretch = 3;
static constexpr int kSmoothStretch = 4;

static ImageBuffer BufferOf(const Pixels& pixels)
{
    ImageBuffer image;
    image.width = pixels.width;
    image.height = pixels.height;
    image.channels = 4;
    image.bytes.resize(pixels.pixels.size() * 4);
    std::memcpy(image.bytes.data(), pixels.pixels.data(), image.bytes.size());
    return image;
}

// The source is in device pixels of the metafile.
static PlusOutcome DrawMetafile(PlusPlay& play, const PlusImage& image, const Rect& source,
                                const Corners& corners)
{
    const Point x = (1 / source.Width()) * (corners.top_right - corners.top_left);
    const Point y = (1 / source.Height()) * (corners.bottom_left - corners.top_left);
    Affine map{x.x, x.y, y.x, y.y, 0, 0};
    const Point start = map.Apply({source.left, source.top});
    map.x0 = corners.top_left.x - start.x;
    map.y0 = corners.top_left.y - start.y;
    if (!map.Finite() || !play.play_metafile)
        return PlusOutcome::kBroken;
    // What is drawn beyond the source isn't part of the image.
    Outline box;
    box.AddBox(source);
    const Canvas& canvas = play.graphics.Context().Target();
    const Clip area = play.graphics.Context().Target().ClipOf(box.Transformed(map), false, canvas.Area());
    const Clip clip = Combine(play.graphics.state.clip, area, ClipMode::kAnd, play.graphics.Context().Work());
    return PlusOutcomeOf(play.play_metafile(image.metafile, map, clip));
}

static PlusOutcome DrawImage(PlusPlay& play, const PlusRecord& record)
{
    ByteReader reader = record.Data();
    reader.U32Le();  // attributes: how to continue the image beyond its edges
    reader.U32Le();  // unit of the source: pixels
    const Rect source = ReadRectF(reader);
    Corners corners;
    if (record.type == kDrawImage) {
        const Rect dest = ReadRectF(reader, record.Has(kShortFlag));
        corners = {{dest.left, dest.top}, {dest.right, dest.top}, {dest.left, dest.bottom}};
    } else {
        const std::uint32_t count = reader.U32Le();
        const auto points = ReadPlusPoints(reader, count,
                                           record.Has(kRelativeFlag) ? PointFormat::kRelative
                                           : record.Has(kShortFlag)  ? PointFormat::kShort
                                                                     : PointFormat::kFloat);
        if (!points || points->size() < 3)
            return PlusOutcome::kBroken;
        corners = {(*points)[0], (*points)[1], (*points)[2]};
    }
    const auto* image = play.Find<PlusImage>(record.Id());
    if (reader.Failed() || !image)
        return PlusOutcome::kBroken;
    const Affine map = play.graphics.WorldToPicture();
    for (Point* corner : {&corners.top_left, &corners.top_right, &corners.bottom_left})
        *corner = ClampToDrawable(map.Apply(*corner));
    if (!image->pixels)
        return DrawMetafile(play, *image, source, corners);
    DeviceContext& dc = play.graphics.Context();
    if (!dc.Work().Spend(image->pixels->pixels.size()))
        return PlusOutcome::kDone;
    dc.state.clip = play.graphics.state.clip;
    dc.state.stretch_mode = play.graphics.state.nearest ? kSharpStretch : kSmoothStretch;
    const ImageBuffer buffer = BufferOf(*image->pixels);
    BlendBitmap(dc, {buffer, source}, corners, 255, true);
    return PlusOutcome::kDone;
}

PlusOutcome PlayPlusImage(PlusPlay& play, const PlusRecord& record)
{
    switch (record.type) {
        case kDrawImage:
        case kDrawImagePoints:
            return DrawImage(play, record);
        case kSerializableObject:
            return PlusOutcome::kDone;
        default:
            return PlusOutcome::kNotMine;
    }
}

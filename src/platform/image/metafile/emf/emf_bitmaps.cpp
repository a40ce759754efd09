// Plays EMF records that draw bitmaps.
#include <algorithm>
#include <array>

#include "src/platform/image/metafile/canvas/raster_ops.h"
#include "src/platform/image/metafile/device/bitmaps.h"
#include "src/platform/image/metafile/device/device_bitmaps.h"
#include "src/platform/image/metafile/emf/emf_player.h"

namespace
{
enum BitmapRecord : std::uint32_t {
    kBitBlt = 76,
    kStretchBlt = 77,
    kMaskBlt = 78,
    kPlgBlt = 79,
    kSetDibitsToDevice = 80,
    kStretchDibits = 81,
    kAlphaBlend = 114,
    kTransparentBlt = 116,
};
}  // namespace

static constexpr std::uint8_t kAlphaPerPixel = 1;

static Rect RectAt(Point corner, Point size)
{
    return {corner.x, corner.y, corner.x + size.x, corner.y + size.y};
}

namespace
{
/// The source of a blit.
struct BlitSource {
    Point corner;
    Point size;
    DibSource dib;
};
}  // namespace

// Reads the rest of the source: transform, background and bitmap position are the same in most records.
static bool ReadSource(const EmfRecord& record, ByteReader& reader, BlitSource& source)
{
    source.corner = ReadPoint(reader);
    const Affine world = ReadTransform(reader);
    reader.U32Le();  // background colour: bitmaps with a palette have their own
    const std::uint32_t usage = reader.U32Le();
    const EmfDibPlace place = ReadDibPlace(reader);
    const auto dib = DibAt(record, place, usage);
    if (reader.Failed() || !dib)
        return false;
    source.dib = *dib;
    // The source has its own transform: the identity unless the program drew from a scaled context.
    if (world.Finite() && world.xx != 0 && world.yy != 0)
        source.corner = world.Apply(source.corner);
    return true;
}

static Corners CornersOfDest(const DeviceContext& dc, const Rect& dest)
{
    return CornersOf(dest, dc.LogicalToPicture());
}

static Outcome Blit(DeviceContext& dc, const EmfRecord& record)
{
    ByteReader reader = record.Data();
    ReadRect(reader);  // bounds
    const Point dest = ReadPoint(reader);
    const Point dest_size = ReadPoint(reader);
    const std::uint32_t rop = reader.U32Le();
    BlitSource source;
    if (!ReadSource(record, reader, source))
        return Outcome::kBroken;
    source.size = record.type == kStretchBlt ? ReadPoint(reader) : dest_size;
    if (reader.Failed())
        return Outcome::kBroken;
    const auto rop3 = static_cast<std::uint8_t>(rop >> 16);
    const Rect dest_rect = RectAt(dest, dest_size);
    if (source.dib.Empty() || !UsesSource(rop3)) {
        if (!UsesSource(rop3))
            PaintRect(dc, dest_rect, rop3);
        return Outcome::kDone;
    }
    ImageBuffer image;
    if (!DecodeBitmap(source.dib, dc, DibColors::kAsStored, image))
        return Outcome::kBroken;
    DrawBitmap(dc, {image, RectAt(source.corner, source.size)}, CornersOfDest(dc, dest_rect), rop3);
    return Outcome::kDone;
}

// Reads the mask's origin and bitmap. Nothing if it is invalid, an empty image if there is no mask.
static std::optional<BitmapMask> ReadMask(DeviceContext& dc, const EmfRecord& record, ByteReader& reader)
{
    BitmapMask mask;
    mask.x = static_cast<std::int32_t>(ClampToDrawable(reader.I32Le()));
    mask.y = static_cast<std::int32_t>(ClampToDrawable(reader.I32Le()));
    const std::uint32_t usage = reader.U32Le();
    const EmfDibPlace place = ReadDibPlace(reader);
    const auto dib = DibAt(record, place, usage);
    if (reader.Failed() || !dib ||
        (!dib->Empty() && !DecodeBitmap(*dib, dc, DibColors::kAsStored, mask.image)))
        return std::nullopt;
    return mask;
}

static Outcome MaskBlt(DeviceContext& dc, const EmfRecord& record)
{
    ByteReader reader = record.Data();
    ReadRect(reader);  // bounds
    const Point dest = ReadPoint(reader);
    const Point dest_size = ReadPoint(reader);
    const std::uint32_t rop4 = reader.U32Le();
    BlitSource source;
    if (!ReadSource(record, reader, source))
        return Outcome::kBroken;
    const auto mask = ReadMask(dc, record, reader);
    if (!mask)
        return Outcome::kBroken;
    const auto inside = static_cast<std::uint8_t>(rop4 >> 16);
    const auto outside = static_cast<std::uint8_t>(rop4 >> 24);
    const Rect dest_rect = RectAt(dest, dest_size);
    if (source.dib.Empty()) {
        if (!UsesSource(inside))
            PaintRect(dc, dest_rect, inside);
        return Outcome::kDone;
    }
    ImageBuffer image;
    if (!DecodeBitmap(source.dib, dc, DibColors::kAsStored, image))
        return Outcome::kBroken;
    DrawBitmap(dc, {image, RectAt(source.corner, dest_size)}, CornersOfDest(dc, dest_rect), inside,
               mask->image.width > 0 ? &*mask : nullptr, outside);
    return Outcome::kDone;
}

static Outcome PlgBlt(DeviceContext& dc, const EmfRecord& record)
{
    ByteReader reader = record.Data();
    ReadRect(reader);  // bounds
    const Affine& map = dc.LogicalToPicture();
    Corners corners;
    for (Point* point : {&corners.top_left, &corners.top_right, &corners.bottom_left})
        *point = ClampToDrawable(map.Apply(ReadPoint(reader)));
    // The source size follows its corner here, before the other fields.
    BlitSource source;
    source.corner = ReadPoint(reader);
    source.size = ReadPoint(reader);
    reader.Take(24 + 4);  // transform, background
    const std::uint32_t usage = reader.U32Le();
    const EmfDibPlace place = ReadDibPlace(reader);
    const auto dib = DibAt(record, place, usage);
    const auto mask = ReadMask(dc, record, reader);
    if (!dib || !mask)
        return Outcome::kBroken;
    ImageBuffer image;
    if (dib->Empty())
        return Outcome::kDone;
    if (!DecodeBitmap(*dib, dc, DibColors::kAsStored, image))
        return Outcome::kBroken;
    DrawBitmap(dc, {image, RectAt(source.corner, source.size)}, corners, kRopSourceCopy,
               mask->image.width > 0 ? &*mask : nullptr, kRopNothing);
    return Outcome::kDone;
}

// These two records count the rows of a bottom-up bitmap from the bottom.
static Rect RectFromBottom(const DibShape& shape, Point corner, Point size)
{
    if (!shape.top_down)
        corner.y = static_cast<double>(shape.height) - corner.y - size.y;
    return RectAt(corner, size);
}

static Outcome StretchDib(DeviceContext& dc, const EmfRecord& record)
{
    ByteReader reader = record.Data();
    ReadRect(reader);  // bounds
    const Point dest = ReadPoint(reader);
    const Point source = ReadPoint(reader);
    const Point source_size = ReadPoint(reader);
    const EmfDibPlace place = ReadDibPlace(reader);
    const std::uint32_t usage = reader.U32Le();
    const auto rop3 = static_cast<std::uint8_t>(reader.U32Le() >> 16);
    const Point dest_size = ReadPoint(reader);
    const auto dib = DibAt(record, place, usage);
    if (reader.Failed() || !dib)
        return Outcome::kBroken;
    const Rect dest_rect = RectAt(dest, dest_size);
    if (dib->Empty() || !UsesSource(rop3)) {
        if (!UsesSource(rop3))
            PaintRect(dc, dest_rect, rop3);
        return Outcome::kDone;
    }
    const auto shape = DibShapeOf(dib->header);
    ImageBuffer image;
    if (!shape || !DecodeBitmap(*dib, dc, DibColors::kAsStored, image))
        return Outcome::kBroken;
    DrawBitmap(dc, {image, RectFromBottom(*shape, source, source_size)}, CornersOfDest(dc, dest_rect), rop3);
    return Outcome::kDone;
}

static Outcome SetDib(DeviceContext& dc, const EmfRecord& record)
{
    ByteReader reader = record.Data();
    ReadRect(reader);  // bounds
    const Point dest = ReadPoint(reader);
    const Point source = ReadPoint(reader);
    const Point size = ReadPoint(reader);
    const EmfDibPlace place = ReadDibPlace(reader);
    const std::uint32_t usage = reader.U32Le();
    const std::int64_t first_row = reader.U32Le();
    const std::int64_t row_count = reader.U32Le();
    const auto dib = DibAt(record, place, usage);
    if (reader.Failed() || !dib)
        return Outcome::kBroken;
    if (dib->Empty() || row_count == 0)
        return Outcome::kDone;
    const auto shape = DibShapeOf(dib->header);
    if (!shape)
        return Outcome::kBroken;
    // The record may hold only some rows of the bitmap; the header's height counts all of them.
    DibSource rows = *dib;
    const std::vector<std::uint8_t> header =
        WithHeight(dib->header, *shape, std::min(row_count, shape->height));
    rows.header = header;
    ImageBuffer image;
    if (!DecodeBitmap(rows, dc, DibColors::kAsStored, image))
        return Outcome::kBroken;
    Rect source_rect = RectFromBottom(*shape, source, size);
    const double above =
        static_cast<double>(shape->top_down ? first_row : shape->height - first_row - image.height);
    source_rect.top -= above;
    source_rect.bottom -= above;
    // The bitmap is drawn at its own size in device pixels, whatever the map mode.
    const Point origin = dc.LogicalToPicture().Apply(dest);
    const Affine& device = dc.DeviceToPicture();
    const Point right = device.ApplyToVector({size.x, 0});
    const Point down = device.ApplyToVector({0, size.y});
    DrawBitmap(dc, {image, source_rect},
               {ClampToDrawable(origin), ClampToDrawable(origin + right), ClampToDrawable(origin + down)},
               kRopSourceCopy);
    return Outcome::kDone;
}

static Outcome Blend(DeviceContext& dc, const EmfRecord& record)
{
    ByteReader reader = record.Data();
    ReadRect(reader);  // bounds
    const Point dest = ReadPoint(reader);
    const Point dest_size = ReadPoint(reader);
    const std::uint32_t how = reader.U32Le();
    BlitSource source;
    if (!ReadSource(record, reader, source))
        return Outcome::kBroken;
    source.size = ReadPoint(reader);
    if (reader.Failed())
        return Outcome::kBroken;
    if (source.dib.Empty())
        return Outcome::kDone;
    const bool blend = record.type == kAlphaBlend;
    const bool own_alpha = blend && (how >> 24 & kAlphaPerPixel) != 0;
    ImageBuffer image;
    if (!DecodeBitmap(source.dib, dc, own_alpha ? DibColors::kWithAlpha : DibColors::kAsStored, image))
        return Outcome::kBroken;
    // The decoder drops alpha that is 0 everywhere. Writers that don't set it mean an opaque bitmap, unless
    // all of it is empty.
    const bool has_alpha = own_alpha && image.channels == 4;
    if (own_alpha && !has_alpha &&
        std::all_of(image.bytes.begin(), image.bytes.end(), [](std::uint8_t byte) { return byte == 0; }))
        return Outcome::kDone;
    const BitmapPart part{image, RectAt(source.corner, source.size)};
    const Corners corners = CornersOfDest(dc, RectAt(dest, dest_size));
    if (blend)
        BlendBitmap(dc, part, corners, how >> 16 & 255, has_alpha);
    else
        DrawBitmapExceptColor(dc, part, corners, dc.ResolveColor(how));
    return Outcome::kDone;
}

Outcome PlayBitmap(EmfPlay& play, const EmfRecord& record)
{
    switch (record.type) {
        case kBitBlt:
        case kStretchBlt:
            return Blit(play.dc, record);
        case kMaskBlt:
            return MaskBlt(play.dc, record);
        case kPlgBlt:
            return PlgBlt(play.dc, record);
        case kSetDibitsToDevice:
            return SetDib(play.dc, record);
        case kStretchDibits:
            return StretchDib(play.dc, record);
        case kAlphaBlend:
        case kTransparentBlt:
            return Blend(play.dc, record);
        default:
            return Outcome::kNotMine;
    }
}

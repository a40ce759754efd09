// Plays WMF records that draw bitmaps.
#include "src/platform/image/metafile/canvas/raster_ops.h"
#include "src/platform/image/metafile/device/bitmaps.h"
#include "src/platform/image/metafile/device/device_bitmaps.h"
#include "src/platform/image/metafile/wmf/wmf_player.h"

namespace
{
enum BitmapNumber : std::uint8_t {
    kPatBlt = 0x1D,
    kBitBlt = 0x22,
    kStretchBlt = 0x23,
    kSetDibToDevice = 0x33,
    kDibBitBlt = 0x40,
    kDibStretchBlt = 0x41,
    kStretchDib = 0x43,
};
}  // namespace

static Rect RectAt(Point corner, Point size)
{
    return {corner.x, corner.y, corner.x + size.x, corner.y + size.y};
}

static Bitmap16Source ReadBitmap16(ByteReader& reader)
{
    Bitmap16Source bitmap;
    reader.U16Le();  // type
    bitmap.width = reader.I16Le();
    bitmap.height = reader.I16Le();
    bitmap.bytes_per_row = reader.U16Le();
    reader.U8();  // planes
    bitmap.bits_per_pixel = reader.U8();
    bitmap.bits = reader.Take(reader.Left());
    return bitmap;
}

static Outcome PatBlt(DeviceContext& dc, ByteReader& reader)
{
    const auto rop3 = static_cast<std::uint8_t>(reader.U32Le() >> 16);
    const Point size = ReadPointYx(reader);
    const Point dest = ReadPointYx(reader);
    if (reader.Failed())
        return Outcome::kBroken;
    if (!UsesSource(rop3))
        PaintRect(dc, RectAt(dest, size), rop3);
    return Outcome::kDone;
}

// BitBlt and StretchBlt with a DIB, an old bitmap, or the picture itself as source.
static Outcome Blit(DeviceContext& dc, const WmfRecord& record)
{
    const std::uint8_t number = record.Number();
    const bool stretch = number == kStretchBlt || number == kDibStretchBlt;
    const bool is_dib = number == kDibBitBlt || number == kDibStretchBlt;
    ByteReader reader = record.Data();
    const auto rop3 = static_cast<std::uint8_t>(reader.U32Le() >> 16);
    Point source_size = stretch ? ReadPointYx(reader) : Point{};
    const Point source = ReadPointYx(reader);
    if (record.HasNoBitmap())
        reader.U16Le();
    const Point dest_size = ReadPointYx(reader);
    const Point dest = ReadPointYx(reader);
    if (reader.Failed())
        return Outcome::kBroken;
    if (!stretch)
        source_size = dest_size;
    const Rect dest_rect = RectAt(dest, dest_size);
    if (!UsesSource(rop3)) {
        PaintRect(dc, dest_rect, rop3);
        return Outcome::kDone;
    }
    const Corners corners = CornersOf(dest_rect, dc.LogicalToPicture());
    ImageBuffer image;
    if (record.HasNoBitmap()) {
        if (CopyPicture(dc, RectAt(source, source_size), image)) {
            const Rect all{0, 0, static_cast<double>(image.width), static_cast<double>(image.height)};
            DrawBitmap(dc, {image, all}, corners, rop3);
        }
        return Outcome::kDone;
    }
    const bool good =
        is_dib ? DecodeBitmap(PackedDib(reader.Take(reader.Left()), false), dc, DibColors::kAsStored, image)
               : DecodeBitmap(ReadBitmap16(reader), dc, image);
    if (!good)
        return Outcome::kBroken;
    DrawBitmap(dc, {image, RectAt(source, source_size)}, corners, rop3);
    return Outcome::kDone;
}

static Outcome StretchDib(DeviceContext& dc, ByteReader& reader)
{
    const auto rop3 = static_cast<std::uint8_t>(reader.U32Le() >> 16);
    const std::uint16_t usage = reader.U16Le();
    const Point source_size = ReadPointYx(reader);
    Point source = ReadPointYx(reader);
    const Point dest_size = ReadPointYx(reader);
    const Point dest = ReadPointYx(reader);
    if (reader.Failed())
        return Outcome::kBroken;
    const Rect dest_rect = RectAt(dest, dest_size);
    if (!UsesSource(rop3)) {
        PaintRect(dc, dest_rect, rop3);
        return Outcome::kDone;
    }
    const DibSource dib = PackedDib(reader.Take(reader.Left()), usage == 1);
    const auto shape = DibShapeOf(dib.header);
    ImageBuffer image;
    if (!shape || !DecodeBitmap(dib, dc, DibColors::kAsStored, image))
        return Outcome::kBroken;
    // The rows of a bottom-up bitmap are counted from the bottom.
    if (!shape->top_down)
        source.y = static_cast<double>(shape->height) - source.y - source_size.y;
    DrawBitmap(dc, {image, RectAt(source, source_size)}, CornersOf(dest_rect, dc.LogicalToPicture()), rop3);
    return Outcome::kDone;
}

static Outcome SetDib(DeviceContext& dc, ByteReader& reader)
{
    const std::uint16_t usage = reader.U16Le();
    const std::int64_t rows = reader.U16Le();
    const std::int64_t first_row = reader.U16Le();
    Point source = ReadPointYx(reader);
    const Point size = ReadPointYx(reader);
    const Point dest = ReadPointYx(reader);
    if (reader.Failed())
        return Outcome::kBroken;
    DibSource dib = PackedDib(reader.Take(reader.Left()), usage == 1);
    const auto shape = DibShapeOf(dib.header);
    if (!shape)
        return Outcome::kBroken;
    if (rows == 0)
        return Outcome::kDone;
    const std::int64_t available = std::min(rows, shape->height);
    const std::vector<std::uint8_t> header = WithHeight(dib.header, *shape, available);
    dib.header = header;
    ImageBuffer image;
    if (!DecodeBitmap(dib, dc, DibColors::kAsStored, image))
        return Outcome::kBroken;
    if (!shape->top_down)
        source.y = static_cast<double>(shape->height) - source.y - size.y;
    source.y -= static_cast<double>(shape->top_down ? first_row : shape->height - first_row - available);
    // The size is in device pixels, but WMF has no device: treat them as logical units.
    DrawBitmap(dc, {image, RectAt(source, size)}, CornersOf(RectAt(dest, size), dc.LogicalToPicture()),
               kRopSourceCopy);
    return Outcome::kDone;
}

Outcome PlayWmfBitmap(WmfPlay& play, const WmfRecord& record)
{
    ByteReader reader = record.Data();
    switch (record.Number()) {
        case kPatBlt:
            return PatBlt(play.dc, reader);
        case kBitBlt:
        case kStretchBlt:
        case kDibBitBlt:
        case kDibStretchBlt:
            return Blit(play.dc, record);
        case kStretchDib:
            return StretchDib(play.dc, reader);
        case kSetDibToDevice:
            return SetDib(play.dc, reader);
        default:
            return Outcome::kNotMine;
    }
}

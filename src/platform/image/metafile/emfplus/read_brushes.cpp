// Reads brushes.
#include "src/platform/image/metafile/emfplus/data_readers.h"
#include "src/platform/image/metafile/emfplus/objects.h"

namespace
{
enum BrushType : std::uint32_t {
    kSolid = 0,
    kHatch = 1,
    kTexture = 2,
    kPathGradient = 3,
    kLinearGradient = 4
};

enum BrushFlag : std::uint32_t {
    kHasPath = 0x01,
    kHasTransform = 0x02,
    kHasStops = 0x04,
    kHasBlends = 0x08,
    kHasFocus = 0x40,
};
}  // namespace

static WrapMode ReadWrapMode(ByteReader& reader)
{
    const std::uint32_t mode = reader.U32Le();
    return mode <= static_cast<std::uint32_t>(WrapMode::kClamp) ? static_cast<WrapMode>(mode)
                                                                : WrapMode::kTile;
}

static bool ReadRun(ByteReader& reader, std::uint32_t flags, GradientRun& run)
{
    if ((flags & (kHasStops | kHasBlends)) == 0)
        return true;
    const std::uint64_t count = reader.U32Le();
    const auto positions = ReadFloats(reader, count);
    if (!positions)
        return false;
    if ((flags & kHasStops) != 0) {
        if (reader.Left() / 4 < count)
            return false;
        for (const double position : *positions)
            run.stops.push_back({position, reader.U32Le()});
    } else {
        const auto factors = ReadFloats(reader, count);
        if (!factors)
            return false;
        for (std::size_t n = 0; n < count; ++n)
            run.blends.push_back({(*positions)[n], (*factors)[n]});
    }
    return true;
}

static std::optional<PlusBrush> ReadLinear(ByteReader& reader)
{
    PlusLinearBrush brush;
    const std::uint32_t flags = reader.U32Le();
    brush.wrap = ReadWrapMode(reader);
    brush.rect = ReadRectF(reader);
    brush.first = reader.U32Le();
    brush.second = reader.U32Le();
    reader.Take(8);  // reserved
    if ((flags & kHasTransform) != 0)
        brush.transform = ReadMatrix(reader);
    if (!ReadRun(reader, flags, brush.run) || reader.Failed())
        return std::nullopt;
    return brush;
}

// The boundary is a list of points or a path, whose curves count by their end points.
static bool ReadBoundary(ByteReader& reader, bool is_path, PlusPathBrush& brush)
{
    if (!is_path) {
        auto points = ReadPlusPoints(reader, reader.U32Le(), PointFormat::kFloat);
        if (!points)
            return false;
        brush.boundary = std::move(*points);
        return true;
    }
    ByteReader path_reader(reader.Take(reader.U32Le()));
    const auto path = ReadPlusPath(path_reader);
    if (!path)
        return false;
    // Curves become chords on the scale of the picture only later; refine small paths by enlarging them.
    const Rect extents = path->outline.Extents();
    const double size = std::max({extents.Width(), extents.Height(), 1e-6});
    const double zoom = std::max(1.0, 1000 / size);
    path->outline.Transformed({zoom, 0, 0, zoom, 0, 0})
        .ForEachFigure([&](std::span<const Point> points, bool) {
            for (const Point& point : points)
                brush.boundary.push_back((1 / zoom) * point);
        });
    return true;
}

static std::optional<PlusBrush> ReadPathGradient(ByteReader& reader)
{
    PlusPathBrush brush;
    const std::uint32_t flags = reader.U32Le();
    ReadWrapMode(reader);
    brush.center_color = reader.U32Le();
    brush.center = ReadPointF(reader);
    const std::uint64_t colors = reader.U32Le();
    if (reader.Failed() || reader.Left() / 4 < colors)
        return std::nullopt;
    for (std::uint64_t n = 0; n < colors; ++n)
        brush.boundary_colors.push_back(reader.U32Le());
    if (!ReadBoundary(reader, (flags & kHasPath) != 0, brush))
        return std::nullopt;
    if ((flags & kHasTransform) != 0)
        brush.transform = ReadMatrix(reader);
    if (!ReadRun(reader, flags, brush.run))
        return std::nullopt;
    if ((flags & kHasFocus) != 0) {
        reader.U32Le();  // number of values
        brush.focus = ReadPointF(reader);
    }
    if (reader.Failed())
        return std::nullopt;
    return brush;
}

static std::optional<PlusBrush> ReadTexture(ByteReader& reader, const ImageFileDecoder& decode)
{
    PlusTextureBrush brush;
    const std::uint32_t flags = reader.U32Le();
    brush.wrap = ReadWrapMode(reader);
    if ((flags & kHasTransform) != 0)
        brush.transform = ReadMatrix(reader);
    const auto image = ReadPlusImage(reader, decode);
    if (!image || !image->pixels)
        return std::nullopt;
    brush.pixels = image->pixels;
    return brush;
}

std::optional<PlusBrush> ReadPlusBrush(ByteReader& reader, const ImageFileDecoder& decode)
{
    reader.U32Le();  // version
    const std::uint32_t type = reader.U32Le();
    switch (type) {
        case kSolid: {
            const ArgbColor color = reader.U32Le();
            return reader.Failed() ? std::nullopt : std::optional<PlusBrush>(PlusSolidBrush{color});
        }
        case kHatch: {
            PlusHatchBrush brush;
            brush.style = reader.U32Le();
            brush.fore = reader.U32Le();
            brush.back = reader.U32Le();
            return reader.Failed() ? std::nullopt : std::optional<PlusBrush>(brush);
        }
        case kTexture:
            return ReadTexture(reader, decode);
        case kPathGradient:
            return ReadPathGradient(reader);
        case kLinearGradient:
            return ReadLinear(reader);
        default:
            return std::nullopt;
    }
}

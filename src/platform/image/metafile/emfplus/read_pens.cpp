// Reads pens with their line caps.
#include <array>
#include <utility>

#include "src/platform/image/metafile/emfplus/data_readers.h"
#include "src/platform/image/metafile/emfplus/objects.h"

namespace
{
enum PenFlag : std::uint32_t {
    kHasTransform = 0x0001,
    kHasStartCap = 0x0002,
    kHasEndCap = 0x0004,
    kHasJoin = 0x0008,
    kHasMiterLimit = 0x0010,
    kHasLineStyle = 0x0020,
    kHasDashCap = 0x0040,
    kHasDashOffset = 0x0080,
    kHasDashes = 0x0100,
    kHasAlignment = 0x0200,
    kHasCompound = 0x0400,
    kHasCustomStart = 0x0800,
    kHasCustomEnd = 0x1000,
};
}  // namespace

static constexpr std::uint32_t kAlignInset = 1;
static constexpr std::uint32_t kMaxDashes = 1000;

// The dash patterns of the named line styles.
static std::vector<double> NamedDashes(std::uint32_t style)
{
    static const std::array<std::vector<double>, 5> kNamed = {
        {{}, {3, 1}, {1, 1}, {3, 1, 1, 1}, {3, 1, 1, 1, 1, 1}}};
    return style < kNamed.size() ? kNamed[style] : std::vector<double>{};
}

// An arrow of adjustable width and height.
static PlusCustomCap ReadArrow(ByteReader& reader)
{
    const double width = ReadFloat(reader);
    const double height = ReadFloat(reader);
    const double middle_inset = ReadFloat(reader);
    const bool filled = reader.U32Le() != 0;
    reader.Take(4 * 4);  // caps, join and miter limit of the outline
    PlusCustomCap cap;
    cap.scale = ReadFloat(reader);
    Outline& shape = filled ? cap.fill : cap.line;
    shape.MoveTo({-width / 2, -height});
    shape.LineTo({0, 0});
    shape.LineTo({width / 2, -height});
    if (filled) {
        shape.LineTo({0, -height + middle_inset});
        shape.Close();
        cap.inset = std::max(0.0, height - middle_inset);
    }
    return cap;
}

static std::optional<PlusCustomCap> ReadCustomCap(ByteReader& pen_reader)
{
    ByteReader reader(pen_reader.Take(pen_reader.U32Le()));
    reader.U32Le();  // version
    const std::uint32_t type = reader.U32Le();
    PlusCustomCap cap;
    if (type == 1)
        cap = ReadArrow(reader);
    else if (type == 0) {
        const std::uint32_t flags = reader.U32Le();
        reader.U32Le();  // base cap
        cap.inset = ReadFloat(reader);
        reader.Take(4 * 4);  // caps, join and miter limit of the outline
        cap.scale = ReadFloat(reader);
        reader.Take(16);  // hot spots
        for (const auto& [bit, shape] : {std::pair(1u, &cap.fill), std::pair(2u, &cap.line)}) {
            if ((flags & bit) == 0)
                continue;
            ByteReader path_reader(reader.Take(reader.U32Le()));
            auto path = ReadPlusPath(path_reader);
            if (!path)
                return std::nullopt;
            *shape = std::move(path->outline);
        }
    } else
        return std::nullopt;
    const bool usable = std::isfinite(cap.scale) && std::isfinite(cap.inset);
    if (reader.Failed() || !usable)
        return std::nullopt;
    return cap;
}

static PlusCap ReadCap(ByteReader& reader)
{
    return static_cast<PlusCap>(reader.U32Le());
}

std::optional<PlusPen> ReadPlusPen(ByteReader& reader, const ImageFileDecoder& decode)
{
    reader.U32Le();  // version
    reader.U32Le();  // type: unused
    PlusPen pen;
    const std::uint32_t flags = reader.U32Le();
    const auto has = [flags](PenFlag flag) { return (flags & flag) != 0; };
    pen.unit = reader.U32Le();
    pen.width = ReadFloat(reader);
    if (has(kHasTransform))
        pen.transform = ReadMatrix(reader);
    if (has(kHasStartCap))
        pen.start = ReadCap(reader);
    if (has(kHasEndCap))
        pen.end = ReadCap(reader);
    if (has(kHasJoin))
        pen.join = reader.U32Le();
    if (has(kHasMiterLimit))
        pen.miter_limit = ReadFloat(reader);
    if (has(kHasLineStyle))
        pen.dashes = NamedDashes(reader.U32Le());
    if (has(kHasDashCap))
        pen.dash_cap = ReadCap(reader);
    if (has(kHasDashOffset))
        pen.dash_offset = ReadFloat(reader);
    for (const auto& [flag, list] :
         {std::pair(kHasDashes, &pen.dashes), std::pair(kHasCompound, &pen.compound)}) {
        if (flag == kHasCompound && has(kHasAlignment))
            pen.inset = reader.U32Le() == kAlignInset;
        if (!has(flag))
            continue;
        const std::uint32_t count = reader.U32Le();
        auto values = count <= kMaxDashes ? ReadFloats(reader, count) : std::nullopt;
        if (!values)
            return std::nullopt;
        *list = std::move(*values);
    }
    if (has(kHasCustomStart) && !(pen.custom_start = ReadCustomCap(reader)))
        return std::nullopt;
    if (has(kHasCustomEnd) && !(pen.custom_end = ReadCustomCap(reader)))
        return std::nullopt;
    if (reader.Failed() || !std::isfinite(pen.width))
        return std::nullopt;
    auto brush = ReadPlusBrush(reader, decode);
    if (!brush)
        return std::nullopt;
    pen.brush = std::move(*brush);
    return pen;
}

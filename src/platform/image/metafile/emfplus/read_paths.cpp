// Reads paths and regions.
#include "src/platform/image/metafile/emfplus/data_readers.h"
#include "src/platform/image/metafile/emfplus/objects.h"

static constexpr std::uint32_t kRelativePoints = 0x0800;
static constexpr std::uint32_t kRunLengthTypes = 0x1000;
static constexpr std::uint32_t kWinding = 0x2000;
static constexpr std::uint32_t kShortPoints = 0x4000;

static constexpr std::uint8_t kTypeMask = 0x0F;
static constexpr std::uint8_t kStart = 0;
static constexpr std::uint8_t kBezier = 3;
static constexpr std::uint8_t kCloses = 0x80;

// Deeper trees are made to exhaust the stack.
static constexpr int kMaxRegionDepth = 64;

// Reads the type of each point: a byte each, or runs.
static std::optional<std::vector<std::uint8_t>> ReadTypes(ByteReader& reader, std::uint64_t count,
                                                          bool in_runs)
{
    std::vector<std::uint8_t> types;
    if (!in_runs) {
        const Bytes bytes = reader.Take(count);
        types.assign(bytes.begin(), bytes.end());
    }
    while (in_runs && types.size() < count && !reader.Failed()) {
        const std::size_t length = reader.U8() & 0x3F;
        types.insert(types.end(), std::min<std::size_t>(length, count - types.size()), reader.U8());
    }
    if (reader.Failed() || types.size() != count)
        return std::nullopt;
    return types;
}

std::optional<PlusPath> ReadPlusPath(ByteReader& reader)
{
    reader.U32Le();  // version
    const std::uint64_t count = reader.U32Le();
    const std::uint32_t flags = reader.U32Le();
    const PointFormat format = (flags & kRelativePoints) != 0 ? PointFormat::kRelative
                               : (flags & kShortPoints) != 0  ? PointFormat::kShort
                                                              : PointFormat::kFloat;
    const auto points = ReadPlusPoints(reader, count, format);
    if (!points)
        return std::nullopt;
    const auto types = ReadTypes(reader, count, (flags & kRunLengthTypes) != 0);
    if (!types)
        return std::nullopt;
    PlusPath path;
    path.winding = (flags & kWinding) != 0;
    for (std::size_t n = 0; n < count; ++n) {
        const std::uint8_t type = (*types)[n] & kTypeMask;
        if (type == kStart)
            path.outline.MoveTo((*points)[n]);
        else if (type == kBezier && n + 2 < count) {
            path.outline.CurveTo((*points)[n], (*points)[n + 1], (*points)[n + 2]);
            n += 2;
        } else
            path.outline.LineTo((*points)[n]);
        if (((*types)[n] & kCloses) != 0)
            path.outline.Close();
    }
    return path;
}

static std::optional<PlusRegion> ReadNode(ByteReader& reader, int depth)
{
    using Kind = PlusRegion::Kind;
    PlusRegion node;
    node.kind = static_cast<Kind>(reader.U32Le());
    switch (node.kind) {
        case Kind::kRect:
            node.rect = ReadRectF(reader);
            break;
        case Kind::kPath: {
            ByteReader path_reader(reader.Take(reader.U32Le()));
            auto path = ReadPlusPath(path_reader);
            if (!path)
                return std::nullopt;
            node.path = std::move(path->outline);
            break;
        }
        case Kind::kEmpty:
        case Kind::kInfinite:
            break;
        case Kind::kAnd:
        case Kind::kOr:
        case Kind::kXor:
        case Kind::kExclude:
        case Kind::kComplement: {
            if (depth >= kMaxRegionDepth)
                return std::nullopt;
            auto left = ReadNode(reader, depth + 1);
            auto right = left ? ReadNode(reader, depth + 1) : std::nullopt;
            if (!right)
                return std::nullopt;
            node.left = std::make_unique<PlusRegion>(std::move(*left));
            node.right = std::make_unique<PlusRegion>(std::move(*right));
            break;
        }
        default:
            return std::nullopt;
    }
    if (reader.Failed())
        return std::nullopt;
    return node;
}

std::optional<PlusRegion> ReadPlusRegion(ByteReader& reader)
{
    reader.U32Le();  // version
    reader.U32Le();  // number of nodes
    return ReadNode(reader, 0);
}

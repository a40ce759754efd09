// Checks the markers of a JPEG 2000 codestream (ISO/IEC 15444-1, annexes A and B).
#include "src/platform/image/codecs/j2k/j2k_codestream.h"

#include <algorithm>
#include <array>

#include "src/platform/image/base/limits.h"

static constexpr std::uint16_t kSiz = 0xFF51, kCod = 0xFF52, kCoc = 0xFF53, kSot = 0xFF90, kSod = 0xFF93,
                               kEoc = 0xFFD9;
static constexpr std::uint64_t kMaxComponents = 64;
static constexpr std::uint64_t kMaxSamples = 4 * kMaxMegapixels * 1'000'000;
static constexpr std::uint64_t kMaxTiles = 65535;
static constexpr std::uint64_t kMaxTileComponents = 262144;
static constexpr std::uint64_t kMaxCodeBlocks = 8'000'000;  // 16x16 samples each in the largest pictures
static constexpr std::uint64_t kTilePartHeader = 12;  // bytes of the SOT marker segment, marker included

static constexpr std::size_t kMaxBareMarkers = 16;  // each costs a copy of its tile-part

// Reserved for markers without parameters. Unknown ones mean nothing to a decoder.
static bool IsBareMarker(std::uint16_t marker)
{
    return marker >= 0xFF30 && marker <= 0xFF3F;
}

static std::uint64_t CeilDiv(std::uint64_t value, std::uint64_t by)
{
    return (value + by - 1) / by;
}

std::uint64_t J2kLayout::TilesAcross() const
{
    return CeilDiv(right - tile_left, tile_width);
}

std::uint64_t J2kLayout::TilesDown() const
{
    return CeilDiv(bottom - tile_top, tile_height);
}

static bool ReadSize(Bytes segment, J2kLayout& size)
{
    ByteReader reader(segment);
    reader.U16Be();  // capabilities
    size.right = reader.U32Be();
    size.bottom = reader.U32Be();
    size.left = reader.U32Be();
    size.top = reader.U32Be();
    size.tile_width = reader.U32Be();
    size.tile_height = reader.U32Be();
    size.tile_left = reader.U32Be();
    size.tile_top = reader.U32Be();
    const std::uint64_t components = reader.U16Be();
    if (reader.Failed() || components == 0 || components > kMaxComponents)
        return false;
    std::uint64_t min_x = 256, min_y = 256, samples = 0;
    for (std::uint64_t i = 0; i < components; ++i) {
        reader.U8();  // precision; OpenJPEG checks it
        const J2kComponent component{reader.U8(), reader.U8()};
        if (reader.Failed() || component.step_x == 0 || component.step_y == 0)
            return false;
        min_x = std::min<std::uint64_t>(min_x, component.step_x);
        min_y = std::min<std::uint64_t>(min_y, component.step_y);
        size.components.push_back(component);
    }
    const bool valid_tiles = size.tile_width > 0 && size.tile_height > 0 && size.tile_left <= size.left &&
                             size.tile_top <= size.top &&
                             std::uint64_t{size.tile_left} + size.tile_width > size.left &&
                             std::uint64_t{size.tile_top} + size.tile_height > size.top;
    if (!valid_tiles || size.left >= size.right || size.top >= size.bottom)
        return false;
    const std::uint64_t width = CeilDiv(size.right, min_x) - CeilDiv(size.left, min_x);
    const std::uint64_t height = CeilDiv(size.bottom, min_y) - CeilDiv(size.top, min_y);
    for (const J2kComponent& component : size.components)
        samples += CeilDiv(size.right - size.left, component.step_x) *
                   CeilDiv(size.bottom - size.top, component.step_y);
    const std::uint64_t tile_count = size.TilesAcross() * size.TilesDown();
    return IsSizeAllowed(width, height) && samples <= kMaxSamples && tile_count <= kMaxTiles &&
           tile_count * components <= kMaxTileComponents;
}

namespace
{
/// How a tile component is divided into precincts and code blocks.
struct CodingStyle {
    bool reversible = true;
    std::uint64_t layers = 1;
    std::uint32_t levels = 0;
    std::uint32_t block_width = 6, block_height = 6;           ///< log2
    std::array<std::uint32_t, 33> precinct_x{}, precinct_y{};  ///< log2, by resolution
};

struct Amount {
    std::uint64_t packets = 0;
    std::uint64_t code_blocks = 0;
};

struct Interval {
    std::uint64_t first, end;

    Interval ScaledDown(std::uint64_t by) const { return {CeilDiv(first, by), CeilDiv(end, by)}; }
    /// How many grid cells of size 2^power it touches.
    std::uint64_t Cells(std::uint32_t power) const
    {
        return end > first ? CeilDiv(end, std::uint64_t{1} << power) - (first >> power) : 0;
    }
};
}  // namespace

// The part of the picture that a tile covers along one axis.
static Interval TileAlong(std::uint64_t tile, std::uint64_t tile_first, std::uint64_t tile_size,
                          std::uint64_t first, std::uint64_t end)
{
    return {std::max(tile_first + tile * tile_size, first),
            std::min(tile_first + (tile + 1) * tile_size, end)};
}

static void Add(Amount& amount, const J2kLayout& size, std::uint64_t tile, std::size_t component_index,
                const CodingStyle& style)
{
    const J2kComponent& component = size.components[component_index];
    const std::uint64_t tiles_across = size.TilesAcross();
    const Interval x = TileAlong(tile % tiles_across, size.tile_left, size.tile_width, size.left, size.right)
                           .ScaledDown(component.step_x);
    const Interval y = TileAlong(tile / tiles_across, size.tile_top, size.tile_height, size.top, size.bottom)
                           .ScaledDown(component.step_y);
    for (std::uint32_t resolution = 0; resolution <= style.levels; ++resolution) {
        const std::uint64_t scale = std::uint64_t{1} << (style.levels - resolution);
        const Interval across = x.ScaledDown(scale), down = y.ScaledDown(scale);
        const std::uint32_t precinct_x = style.precinct_x[resolution],
                            precinct_y = style.precinct_y[resolution];
        const std::uint64_t precincts = across.Cells(precinct_x) * down.Cells(precinct_y);
        amount.packets += precincts * style.layers;
        // Above the lowest resolution, a precinct covers three subbands at half its size. Code blocks are
        // limited to that size.
        const std::uint32_t half = resolution == 0 ? 0 : 1;
        const auto blocks = [&](const Interval& band, std::uint32_t block, std::uint32_t precinct) {
            return band.ScaledDown(half + 1).Cells(std::min(block, precinct - std::min(half, precinct)));
        };
        amount.code_blocks += (half == 0 ? 1 : 3) * blocks(across, style.block_width, precinct_x) *
                              blocks(down, style.block_height, precinct_y);
    }
}

// Reads the common part of COD and COC segments.
static bool ReadStyle(ByteReader& reader, bool has_precincts, CodingStyle& style)
{
    style.levels = reader.U8();
    style.block_width = reader.U8() + 2u;
    style.block_height = reader.U8() + 2u;
    reader.U8();  // code block style
    style.reversible = reader.U8() == 1;
    if (reader.Failed() || style.levels > 32 || style.block_width > 10 || style.block_height > 10)
        return false;
    for (std::size_t i = 0; i <= style.levels; ++i) {
        const std::uint8_t powers = has_precincts ? reader.U8() : 0xFF;
        style.precinct_x[i] = powers & 15;
        style.precinct_y[i] = powers >> 4;
    }
    return !reader.Failed();
}

namespace
{
/// Checks one codestream.
class CodestreamChecker
{
public:
    CodestreamChecker(Bytes codestream, J2kLayout& layout) : bytes_(codestream), layout_(layout) {}
    bool Run();

private:
    bool ReadMainHeader();
    bool CheckTilePart();
    bool TakeStyle(std::uint16_t marker, Bytes segment, std::int64_t tile);
    bool IsEveryTileWhole() const;

    std::uint64_t Position() const { return bytes_.size() - reader_.Left(); }

    struct Tile {
        std::uint8_t parts = 0;
        std::uint8_t parts_claimed = 0;  ///< 0 = not stated
    };
    Bytes bytes_;
    J2kLayout& layout_;
    ByteReader reader_{bytes_};
    std::uint64_t layers_ = 1;
    std::vector<Tile> tiles_;
    std::size_t styles_ = 0;  ///< COD and COC segments in the current header
};
}  // namespace

// tile is -1 for the main header, whose styles apply to all tiles.
bool CodestreamChecker::TakeStyle(std::uint16_t marker, Bytes segment, std::int64_t tile)
{
    ByteReader reader(segment);
    const std::size_t components = layout_.components.size();
    // One for all components and one for each is the most that makes sense. The limit matters because each
    // costs a pass over all tiles.
    if (++styles_ > components + 1)
        return false;
    std::size_t first = 0, end = components;
    CodingStyle style;
    if (marker == kCoc) {
        first = reader.U8();  // two bytes only above 256 components
        end = first + 1;
    }
    const bool has_precincts = (reader.U8() & 1) != 0;
    if (marker == kCod) {
        reader.U8();  // progression order
        layers_ = reader.U16Be();
        reader.U8();  // multiple component transform
    }
    style.layers = layers_;
    if (end > components || !ReadStyle(reader, has_precincts, style))
        return false;
    layout_.lossy = layout_.lossy || !style.reversible;
    Amount amount;
    const auto tiles = static_cast<std::int64_t>(tiles_.size());
    for (std::int64_t n = tile < 0 ? 0 : tile; n < (tile < 0 ? tiles : tile + 1); ++n)
        for (std::size_t component = first; component < end; ++component)
            Add(amount, layout_, static_cast<std::uint64_t>(n), component, style);
    // A packet takes at least a byte.
    return amount.packets <= bytes_.size() && amount.code_blocks <= kMaxCodeBlocks;
}

bool CodestreamChecker::ReadMainHeader()
{
    reader_.U16Be();  // SOC, which sniffing has seen
    bool has_style = false;
    for (;;) {
        if (reader_.Left() >= 2 && bytes_[Position()] == (kSot >> 8) &&
            bytes_[Position() + 1] == (kSot & 255))
            return !tiles_.empty() && has_style;
        const std::uint16_t marker = reader_.U16Be();
        if (IsBareMarker(marker) && !tiles_.empty())
            continue;
        const std::uint16_t length = reader_.U16Be();
        if (reader_.Failed() || marker < 0xFF00 || length < 2 || (tiles_.empty() && marker != kSiz))
            return false;
        const Bytes segment = reader_.Take(length - 2u);
        if (marker == kSiz) {
            if (!tiles_.empty() || reader_.Failed() || !ReadSize(segment, layout_))
                return false;
            const std::uint64_t tiles = layout_.TilesAcross() * layout_.TilesDown();
            if (tiles * (kTilePartHeader + 2) > bytes_.size())
                return false;
            tiles_.resize(tiles);
        } else if (marker == kCod || marker == kCoc) {
            has_style = has_style || marker == kCod;
            if (reader_.Failed() || !TakeStyle(marker, segment, -1))
                return false;
        }
    }
}

bool CodestreamChecker::CheckTilePart()
{
    const std::uint64_t start = Position();
    reader_.U16Be();  // SOT
    const std::uint16_t segment_index = reader_.U16Be();
    const std::uint16_t tile = reader_.U16Be();
    const std::uint32_t length = reader_.U32Be();
    reader_.U8();  // tile-part index
    const std::uint8_t parts = reader_.U8();
    if (reader_.Failed() || segment_index != 10 || tile >= tiles_.size() || tiles_[tile].parts == 255)
        return false;
    ++tiles_[tile].parts;
    tiles_[tile].parts_claimed = std::max(tiles_[tile].parts_claimed, parts);
    std::uint64_t end = start + length;
    if (length == 0) {
        // The last part extends to the end marker, which must be present.
        const std::size_t size = bytes_.size();
        if (bytes_[size - 2] != (kEoc >> 8) || bytes_[size - 1] != (kEoc & 255))
            return false;
        end = size - 2;
    }
    if (end > bytes_.size())
        return false;
    const std::uint64_t layers_of_main = layers_;
    styles_ = 0;
    for (;;) {
        const std::uint16_t marker = reader_.U16Be();
        if (marker == kSod)
            break;
        if (IsBareMarker(marker) && layout_.bare_markers.size() < kMaxBareMarkers) {
            layout_.bare_markers.push_back({Position() - 2, end});
            continue;
        }
        const std::uint16_t marker_length = reader_.U16Be();
        if (reader_.Failed() || marker < 0xFF00 || marker_length < 2)
            return false;
        const Bytes segment = reader_.Take(marker_length - 2u);
        if ((marker == kCod || marker == kCoc) && (reader_.Failed() || !TakeStyle(marker, segment, tile)))
            return false;
    }
    layers_ = layers_of_main;
    if (reader_.Failed() || Position() > end)
        return false;
    reader_.Take(end - Position());
    return true;
}

// Tiles needn't state the number of their parts if the end marker shows that there are no more.
bool CodestreamChecker::IsEveryTileWhole() const
{
    return std::all_of(tiles_.begin(), tiles_.end(), [this](const Tile& tile) {
        const bool stated = tile.parts_claimed > 0;
        return tile.parts > 0 && (stated ? tile.parts >= tile.parts_claimed : layout_.has_end);
    });
}

bool CodestreamChecker::Run()
{
    if (!ReadMainHeader())
        return false;
    while (reader_.Left() >= 2 && bytes_[Position()] == (kSot >> 8) && bytes_[Position() + 1] == (kSot & 255))
        if (!CheckTilePart())
            return false;
    layout_.parts_end = Position();
    layout_.has_end = reader_.U16Be() == kEoc;
    return IsEveryTileWhole();
}

bool MayDecode(Bytes codestream, J2kLayout& layout)
{
    return CodestreamChecker(codestream, layout).Run();
}

// Reads the chunks before and after a PNG's pixels.
#include "src/platform/image/codecs/png/png_info.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "src/platform/image/codecs/png/png_colour.h"
#include "src/platform/image/codecs/png/png_metadata.h"
#include "src/platform/image/colour/colour_profile.h"

static constexpr double kMetresPerInch = 0.0254;

std::uint32_t PngHeader::SampleCount() const
{
    switch (colour) {
        case PngColour::kRgb:
            return 3;
        case PngColour::kGreyAlpha:
            return 2;
        case PngColour::kRgba:
            return 4;
        default:
            return 1;
    }
}

static bool DepthFits(std::uint32_t colour, std::uint32_t depth)
{
    const bool whole = depth == 8;
    const bool packed = depth == 1 || depth == 2 || depth == 4;
    switch (colour) {
        case 0:
            return packed || whole || depth == 16;
        case 3:
            return packed || whole;
        case 2:
        case 4:
        case 6:
            return whole || depth == 16;
        default:
            return false;
    }
}

static bool ParseHeader(Bytes data, PngHeader& header)
{
    ByteReader reader(data);
    header.width = reader.U32Be();
    header.height = reader.U32Be();
    header.depth = reader.U8();
    const std::uint32_t colour = reader.U8();
    const std::uint32_t compression = reader.U8();
    const std::uint32_t filter = reader.U8();
    const std::uint32_t interlace = reader.U8();
    if (reader.Failed() || reader.Left() != 0 || header.width == 0 || header.height == 0 ||
        !DepthFits(colour, header.depth) || compression != 0 || filter != 0 || interlace > 1)
        return false;
    header.colour = static_cast<PngColour>(colour);
    header.interlaced = interlace == 1;
    return true;
}

// The file stores pixels per metre: 300 dpi becomes 11811. Snaps to a whole number of dpi within the rounding
// error.
static double DotsPerInch(std::uint32_t per_metre)
{
    const double exact = per_metre * kMetresPerInch;
    const double whole = std::round(exact);
    return std::abs(exact - whole) <= kMetresPerInch / 2 ? whole : exact;
}

static void ParsePhysical(Bytes data, PngInfo& info)
{
    ByteReader reader(data);
    const std::uint32_t x = reader.U32Be();
    const std::uint32_t y = reader.U32Be();
    const bool per_metre = reader.U8() == 1;
    if (reader.Failed() || !per_metre || x == 0 || y == 0)
        return;
    info.dots_per_inch_x = DotsPerInch(x);
    info.dots_per_inch_y = DotsPerInch(y);
}

static void ParseTransparency(Bytes data, PngInfo& info)
{
    bool fits = false;
    switch (info.header.colour) {
        case PngColour::kGrey:
            fits = data.size() == 2;
            break;
        case PngColour::kRgb:
            fits = data.size() == 6;
            break;
        case PngColour::kPalette:
            fits = !data.empty() && data.size() <= info.palette.size() / 3 &&
                   std::any_of(data.begin(), data.end(), [](std::uint8_t alpha) { return alpha != 255; });
            break;
        default:
            break;
    }
    if (fits)
        info.transparency.assign(data.begin(), data.end());
}

// Reads an ancillary chunk. Its contents are never a reason to refuse the file.
static void ReadAncillary(PngChunkReader& reader, const PngChunk& chunk, PngInfo& info)
{
    const auto data_of = [&](std::uint32_t max) {
        auto found = reader.DataOf(chunk, max);
        return found ? std::move(*found) : std::vector<std::uint8_t>{};
    };
    switch (chunk.type) {
        case PngType("tRNS"):
            ParseTransparency(data_of(256), info);
            break;
        case PngType("pHYs"):
            ParsePhysical(data_of(9), info);
            break;
        case PngType("gAMA"): {
            const auto data = data_of(4);
            info.gamma = ByteReader(data).U32Be() / 100'000.0;
            break;
        }
        case PngType("cHRM"):
            info.chromaticities = ReadPngChromaticities(data_of(32));
            break;
        case PngType("cICP"):
            info.coded_space = ReadPngCodedSpace(data_of(4));
            break;
        case PngType("sRGB"):
            info.is_srgb = info.is_srgb || data_of(1).size() == 1;
            break;
        case PngType("iCCP"): {
            auto profile = PngProfile(data_of(kMaxPngMetadata));
            if (ProfileFits(profile, info.header.IsGrey() ? 1 : 3))
                info.icc_profile = std::move(profile);
            break;
        }
        case PngType("eXIf"):
            ReadPngExif(data_of(kMaxPngMetadata), info.metadata);
            break;
        case PngType("tEXt"):
        case PngType("zTXt"):
        case PngType("iTXt"):
            ReadPngText(chunk.type, data_of(kMaxPngMetadata), info.metadata);
            break;
        default:
            break;
    }
}

static bool ReadPalette(PngChunkReader& reader, const PngChunk& chunk, PngInfo& info)
{
    auto data = reader.DataOf(chunk, 768);
    const bool needed = info.header.colour == PngColour::kPalette;
    if (!data || data->empty() || data->size() % 3 != 0 || !info.palette.empty())
        return !needed;  // with true colour, PLTE is only a suggestion for quantising
    info.palette = std::move(*data);
    return true;
}

bool ReadPngInfo(PngChunkReader& reader, PngInfo& info)
{
    const Bytes signature = reader.SomeAt(0, kPngSignature.size());
    if (!std::equal(signature.begin(), signature.end(), kPngSignature.begin(), kPngSignature.end()))
        return false;
    std::optional<PngChunk> chunk = reader.ChunkAt(kPngSignature.size());
    if (!chunk || chunk->type != PngType("IHDR"))
        return false;
    const auto header = reader.DataOf(*chunk, 13);
    if (!header || !ParseHeader(*header, info.header))
        return false;
    while ((chunk = reader.ChunkAt(PngChunkReader::PlaceAfter(*chunk)))) {
        if (chunk->type == PngType("IDAT")) {
            info.first_data = *chunk;
            if (info.coded_space)
                info.icc_profile.clear();
            return info.header.colour != PngColour::kPalette || !info.palette.empty();
        }
        if (chunk->type == PngType("PLTE")) {
            if (!ReadPalette(reader, *chunk, info))
                return false;
        } else if (IsCriticalPngChunk(chunk->type)) {
            return false;
        } else {
            ReadAncillary(reader, *chunk, info);
        }
    }
    return false;
}

bool ReadPngTail(PngChunkReader& reader, std::uint64_t position, PngInfo& info)
{
    std::optional<PngChunk> chunk = reader.ChunkAt(position);
    for (; chunk; chunk = reader.ChunkAt(PngChunkReader::PlaceAfter(*chunk))) {
        switch (chunk->type) {
            case PngType("IEND"):
                return true;
            case PngType("eXIf"):
            case PngType("tEXt"):
            case PngType("zTXt"):
            case PngType("iTXt"):
                ReadAncillary(reader, *chunk, info);
                break;
            default:
                break;
        }
    }
    return false;
}

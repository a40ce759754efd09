// Reads header, colour map and footer of a Targa file.
#include "src/platform/image/codecs/tga/tga_header.h"

#include <algorithm>

static constexpr std::uint32_t kPackedKind = 8;  // added to the plain image type

static bool ReadKind(std::uint32_t code, TgaKind& kind)
{
    switch (code & ~kPackedKind) {
        case 1:
            kind = TgaKind::kMapped;
            return true;
        case 2:
            kind = TgaKind::kTrueColour;
            return true;
        case 3:
            kind = TgaKind::kGrey;
            return true;
        default:
            return false;
    }
}

static bool IsColourDepth(std::uint32_t bits)
{
    return bits == 15 || bits == 16 || bits == 24 || bits == 32;
}

static bool DepthFits(const TgaHeader& header)
{
    if (header.kind == TgaKind::kTrueColour)
        return IsColourDepth(header.bits);
    return header.bits == 8 || header.bits == 16;
}

bool ReadTgaHeader(Bytes head, TgaHeader& header)
{
    TgaHeader result;
    ByteReader reader(head);
    const std::uint32_t id_length = reader.U8();
    const std::uint32_t map_kind = reader.U8();
    const std::uint32_t kind = reader.U8();
    result.map_first = reader.U16Le();
    result.map_length = reader.U16Le();
    result.map_bits = reader.U8();
    reader.U32Le();  // screen origin
    result.width = reader.U16Le();
    result.height = reader.U16Le();
    result.bits = reader.U8();
    const std::uint32_t descriptor = reader.U8();
    if (reader.Failed() || map_kind > 1 || kind > 11 || !ReadKind(kind, result.kind))
        return false;
    result.packed = (kind & kPackedKind) != 0;
    result.alpha_bits = descriptor & 15;
    result.from_right = (descriptor & 16) != 0;
    result.from_top = (descriptor & 32) != 0;
    const bool interleaved = (descriptor & 0xC0) != 0;
    if (!DepthFits(result) || interleaved || result.width == 0 || result.height == 0)
        return false;
    if (map_kind == 0) {
        result.map_first = result.map_length = result.map_bits = 0;
    } else if (!IsColourDepth(result.map_bits)) {
        return false;
    }
    if (result.kind == TgaKind::kMapped && result.map_length == 0)
        return false;
    result.map_offset = kTgaHeaderSize + id_length;
    result.bits_offset = result.map_offset + std::uint64_t{result.map_length} * ((result.map_bits + 7) / 8);
    header = result;
    return true;
}

// The extension area's alpha type, 0 to 4; -1 if there is no extension area.
static int AttributesType(InputFile& file)
{
    std::array<std::uint8_t, kTgaFooterSize> footer{};
    if (file.Size() < kTgaHeaderSize + kTgaFooterSize)
        return -1;
    if (file.ReadAt(file.Size() - kTgaFooterSize, footer) != footer.size() ||
        !std::equal(kTgaSignature.begin(), kTgaSignature.end(), footer.begin() + 8))
        return -1;
    const std::uint64_t extension_offset = ByteReader(footer).U32Le();
    std::array<std::uint8_t, kTgaExtensionSize> extension{};
    if (extension_offset < kTgaHeaderSize || file.ReadAt(extension_offset, extension) != extension.size() ||
        ByteReader(extension).U16Le() < kTgaExtensionSize)
        return -1;
    return extension.back();
}

TgaAlpha ReadTgaAlpha(InputFile& file, const TgaHeader& header)
{
    // Common programs write 32-bit pixels with alpha but leave the descriptor's count 0.
    const bool has_alpha = header.alpha_bits > 0 || header.bits == 32 || header.map_bits == 32;
    switch (AttributesType(file)) {
        case 0:  // no alpha
        case 1:  // undefined, ignore
            return has_alpha ? TgaAlpha::kDenied : TgaAlpha::kNone;
        case 3:
            return TgaAlpha::kStraight;
        case 4:
            return TgaAlpha::kPremultiplied;
        default:  // undefined, retain; or not said
            return has_alpha ? TgaAlpha::kStraight : TgaAlpha::kNone;
    }
}

std::array<std::uint8_t, 4> TgaColour(const std::uint8_t* stored, std::uint32_t bits)
{
    if (bits >= 24)
        return {stored[0], stored[1], stored[2], bits == 32 ? stored[3] : std::uint8_t{255}};
    const std::uint32_t colour = stored[0] | static_cast<std::uint32_t>(stored[1]) << 8;
    const auto level = [colour](std::uint32_t shift) {
        return static_cast<std::uint8_t>(((colour >> shift & 31) * 255 + 15) / 31);
    };
    const bool opaque = bits == 15 || (colour & 0x8000) != 0;
    return {level(0), level(5), level(10), opaque ? std::uint8_t{255} : std::uint8_t{0}};
}

bool ReadTgaMap(InputFile& file, const TgaHeader& header, std::vector<std::array<std::uint8_t, 4>>& map)
{
    const std::size_t entry_size = (header.map_bits + 7) / 8;
    std::vector<std::uint8_t> stored(header.map_length * entry_size);
    if (file.ReadAt(header.map_offset, stored) != stored.size())
        return false;
    map.assign(header.map_first, {0, 0, 0, 255});
    for (std::size_t i = 0; i < header.map_length; ++i)
        map.push_back(TgaColour(stored.data() + i * entry_size, header.map_bits));
    return true;
}

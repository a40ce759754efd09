// Writes Targa files.
#include "src/platform/image/codecs/tga/tga.h"

#include <algorithm>
#include <vector>

#include "src/platform/files/output_file.h"
#include "src/platform/image/codecs/tga/tga_extension.h"
#include "src/platform/image/codecs/tga/tga_runs.h"

static constexpr std::uint8_t kTrueColour = 2;
static constexpr std::uint8_t kGrey = 3;
static constexpr std::uint8_t kPacked = 8;  // added to the image type
static constexpr std::uint8_t kFromTop = 32;

static Bytes RowOf(const ImageBuffer& image, std::size_t y)
{
    const std::size_t row_size =
        static_cast<std::size_t>(image.width) * static_cast<std::size_t>(image.channels);
    return Bytes(image.bytes).subspan(y * row_size, row_size);
}

// Packs up to 64 rows spread over the picture.
static bool IsWorthPacking(const ImageBuffer& image, std::vector<std::uint8_t>& packed)
{
    const auto height = static_cast<std::size_t>(image.height);
    const std::size_t step = std::max<std::size_t>(height / 64, 1);
    std::uint64_t plain = 0;
    std::uint64_t packed_size = 0;
    for (std::size_t y = step / 2; y < height; y += step) {
        const Bytes row = RowOf(image, y);
        plain += row.size();
        packed_size += PackTgaRow(row, static_cast<std::size_t>(image.channels), packed.data());
    }
    return packed_size * 5 <= plain * 4;
}

static void WriteHeader(const ImageBuffer& image, bool packed, OutputFile& out)
{
    const std::uint8_t kind = image.channels == 1 ? kGrey : kTrueColour;
    out.WriteU8(0);
    out.WriteU8(0);
    out.WriteU8(packed ? kind | kPacked : kind);
    out.Write(std::array<std::uint8_t, 9>{});  // no colour map, screen origin 0
    out.WriteU16Le(static_cast<std::uint16_t>(image.width));
    out.WriteU16Le(static_cast<std::uint16_t>(image.height));
    out.WriteU8(static_cast<std::uint8_t>(image.channels * 8));
    out.WriteU8(image.channels == 4 ? kFromTop | 8 : kFromTop);
}

bool EncodeTga(const ImageBuffer& image, const SaveSettings& settings, OutputFile& out)
{
    const auto channels = static_cast<std::size_t>(image.channels);
    std::vector<std::uint8_t> packed(MaxPackedTgaSize(static_cast<std::size_t>(image.width), channels));
    const bool packs = IsWorthPacking(image, packed);
    WriteHeader(image, packs, out);
    if (!packs)
        out.Write(image.bytes);
    for (std::size_t y = 0; packs && y < static_cast<std::size_t>(image.height) && !out.Failed(); ++y)
        out.Write(Bytes(packed).first(PackTgaRow(RowOf(image, y), channels, packed.data())));

    // The footer's offsets have 32 bits: past 4 GB, leave the extension area out.
    const std::uint64_t end = out.Position();
    const bool has_extension = end <= UINT32_MAX;
    if (has_extension)
        out.Write(TgaExtension(settings.texts, channels == 4));
    out.WriteU32Le(has_extension ? static_cast<std::uint32_t>(end) : 0);
    out.WriteU32Le(0);  // no developer area
    out.Write({reinterpret_cast<const std::uint8_t*>(kTgaSignature.data()), kTgaSignature.size()});
    return !out.Failed();
}

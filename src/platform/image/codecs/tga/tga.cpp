// Reads Targa files.
#include "src/platform/image/codecs/tga/tga.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "src/platform/image/base/limits.h"
#include "src/platform/image/codecs/single_page.h"
#include "src/platform/image/codecs/tga/tga_header.h"
#include "src/platform/image/codecs/tga/tga_runs.h"
#include "src/platform/image/pixels/pixel_rows.h"
#include "src/platform/image/pixels/stored_rows.h"

static bool Sniff(Bytes head, std::string_view extension)
{
    static constexpr std::array<std::string_view, 5> kExtensions = {"tga", "targa", "vda", "icb", "vst"};
    TgaHeader header;
    return std::find(kExtensions.begin(), kExtensions.end(), extension) != kExtensions.end() &&
           ReadTgaHeader(head, header);
}

namespace
{
/// Converts stored rows to rows of the picture.
class TgaPixels
{
public:
    TgaPixels(const TgaHeader& header, TgaAlpha alpha, std::vector<std::array<std::uint8_t, 4>> map)
        : header_(header), alpha_(alpha), map_(std::move(map))
    {
        const bool is_grey =
            header.kind == TgaKind::kGrey || (header.kind == TgaKind::kMapped && HasGreyMap());
        channels_ = HasAlpha() ? 4 : is_grey ? 1 : 3;
    }

    std::int32_t Channels() const { return channels_; }

    void Convert(const std::uint8_t* in, std::uint8_t* out) const
    {
        const std::uint64_t width = header_.width;
        const bool plain =
            header_.kind != TgaKind::kMapped && header_.bits == static_cast<std::uint32_t>(channels_) * 8;
        if (plain)
            std::memcpy(out, in, width * header_.PixelSize());
        else if (header_.kind == TgaKind::kTrueColour && header_.bits == 32)
            PackRowFromFourBytes(in, out, width);
        else
            ConvertEach(in, out);
        if (header_.from_right)
            Mirror(out);
    }

private:
    bool HasGreyMap() const
    {
        return std::all_of(map_.begin(), map_.end(),
                           [](const auto& entry) { return entry[0] == entry[1] && entry[1] == entry[2]; });
    }

    bool HasAlpha() const
    {
        if (alpha_ == TgaAlpha::kNone)
            return false;
        if (header_.kind == TgaKind::kGrey)
            return header_.bits == 16;
        const std::uint32_t bits = header_.kind == TgaKind::kMapped ? header_.map_bits : header_.bits;
        return bits == 16 || bits == 32;
    }

    std::array<std::uint8_t, 4> ColourOf(const std::uint8_t* stored) const
    {
        const std::uint32_t bits = header_.bits;
        if (header_.kind == TgaKind::kTrueColour)
            return TgaColour(stored, bits);
        if (header_.kind == TgaKind::kGrey)
            return {stored[0], stored[0], stored[0], bits == 16 ? stored[1] : std::uint8_t{255}};
        const std::size_t index = stored[0] | (bits == 16 ? static_cast<std::size_t>(stored[1]) << 8 : 0);
        return index < map_.size() ? map_[index] : std::array<std::uint8_t, 4>{0, 0, 0, 255};
    }

    void ConvertEach(const std::uint8_t* in, std::uint8_t* out) const
    {
        const std::uint32_t size = header_.PixelSize();
        for (std::uint64_t x = 0; x < header_.width; ++x, in += size, out += channels_) {
            const std::array<std::uint8_t, 4> colour = ColourOf(in);
            std::memcpy(out, colour.data(), static_cast<std::size_t>(channels_));
        }
    }

    void Mirror(std::uint8_t* row) const
    {
        const auto size = static_cast<std::size_t>(channels_);
        std::uint8_t* last = row + (header_.width - 1) * size;
        for (; row < last; row += size, last -= size)
            std::swap_ranges(row, row + size, last);
    }

    const TgaHeader& header_;
    TgaAlpha alpha_;
    std::vector<std::array<std::uint8_t, 4>> map_;
    std::int32_t channels_ = 3;
};
}  // namespace

static std::uint8_t* RowOf(const TgaHeader& header, ImageBuffer& image, std::uint64_t stored)
{
    const std::uint64_t y = header.from_top ? stored : header.height - 1 - stored;
    return image.bytes.data() + y * header.width * static_cast<std::uint64_t>(image.channels);
}

static bool DecodePlain(InputFile& file, const TgaHeader& header, const TgaPixels& pixels, ImageBuffer& image)
{
    const std::uint64_t row_size = header.width * header.PixelSize();
    const StoredRows stored{header.bits_offset, row_size, row_size, header.height};
    return HoldsRows(file, stored) && Allocate(image, header.width, header.height, pixels.Channels()) &&
           ReadRows(file, stored, [&](std::uint64_t y, const std::uint8_t* row) {
               pixels.Convert(row, RowOf(header, image, y));
           });
}

static bool DecodePacked(InputFile& file, const TgaHeader& header, const TgaPixels& pixels,
                         ImageBuffer& image)
{
    const Bytes bytes = file.All();
    if (bytes.size() < header.bits_offset)
        return false;
    const Bytes data = bytes.subspan(header.bits_offset);
    const std::uint32_t pixel_size = header.PixelSize();
    if (header.width * header.height > (data.size() / (1 + pixel_size) + 1) * kTgaPacket ||
        !Allocate(image, header.width, header.height, pixels.Channels()))
        return false;
    TgaRuns runs(data, pixel_size);
    std::vector<std::uint8_t> row(header.width * pixel_size);
    for (std::uint64_t y = 0; y < header.height; ++y) {
        if (!runs.NextRow(row))
            return false;
        pixels.Convert(row.data(), RowOf(header, image, y));
    }
    return true;
}

// Undoes premultiplied alpha.
static void DivideByAlpha(ImageBuffer& image)
{
    for (std::size_t i = 0; i + 3 < image.bytes.size(); i += 4) {
        const std::uint32_t alpha = image.bytes[i + 3];
        for (std::size_t c = 0; c < 3 && alpha > 0; ++c)
            image.bytes[i + c] = static_cast<std::uint8_t>(
                std::min<std::uint32_t>((image.bytes[i + c] * 255u + alpha / 2) / alpha, 255));
    }
}

static bool Decode(InputFile& file, const TgaHeader& header, ImageBuffer& image)
{
    std::vector<std::array<std::uint8_t, 4>> map;
    if (!IsSizeAllowed(header.width, header.height) ||
        (header.kind == TgaKind::kMapped && !ReadTgaMap(file, header, map)))
        return false;
    const TgaAlpha alpha = ReadTgaAlpha(file, header);
    const TgaPixels pixels(header, alpha, std::move(map));
    ImageBuffer result;
    if (!(header.packed ? DecodePacked(file, header, pixels, result)
                        : DecodePlain(file, header, pixels, result)))
        return false;
    if (alpha == TgaAlpha::kDenied)
        DropUniformAlpha(result);
    else
        DropUnsetAlpha(result);
    if (result.channels == 4 && alpha == TgaAlpha::kPremultiplied)
        DivideByAlpha(result);
    image = std::move(result);
    return true;
}

static std::unique_ptr<ImageDecoder> Open(InputFile& file)
{
    TgaHeader header;
    if (!ReadTgaHeader(file.Head(), header))
        return nullptr;
    return SinglePage([&file, header](ImageBuffer& image) { return Decode(file, header, image); });
}

const Codec kTgaCodec{FileType::kTga, true, false, Sniff, Open, EncodeTga};

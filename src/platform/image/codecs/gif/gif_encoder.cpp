// Writes GIF files.
#include <algorithm>

#include "src/platform/files/output_file.h"
#include "src/platform/image/codecs/gif/gif.h"
#include "src/platform/image/lzw/lzw_encoder.h"
#include "src/platform/image/metadata/info_lines.h"
#include "src/platform/image/quantiser/quantiser.h"

static constexpr std::size_t kLongestBlock = 255;

// The bytes that start each part of the file.
static constexpr std::uint8_t kExtension = 0x21;
static constexpr std::uint8_t kComment = 0xFE;
static constexpr std::uint8_t kGraphicControl = 0xF9;
static constexpr std::uint8_t kImage = 0x2C;
static constexpr std::uint8_t kTrailer = 0x3B;

// Bits of an index into a table of `colours` entries.
static unsigned IndexBits(std::size_t colours)
{
    unsigned bits = 1;
    while (std::size_t{1} << bits < colours)
        ++bits;
    return bits;
}

static void WriteComment(const std::string& comment, OutputFile& out)
{
    if (comment.empty())
        return;
    out.WriteU8(kExtension);
    out.WriteU8(kComment);
    for (std::size_t i = 0; i < comment.size(); i += kLongestBlock) {
        const std::string block = comment.substr(i, kLongestBlock);
        out.WriteU8(static_cast<std::uint8_t>(block.size()));
        out.Write({reinterpret_cast<const std::uint8_t*>(block.data()), block.size()});
    }
    out.WriteU8(0);
}

// Writes a graphic control extension that only declares the transparent colour.
static void WriteTransparency(std::int32_t transparent, OutputFile& out)
{
    if (transparent < 0)
        return;
    const std::uint8_t control[] = {
        kExtension, kGraphicControl, 4, 1, 0, 0, static_cast<std::uint8_t>(transparent), 0};
    out.Write(control);
}

bool EncodeGif(const ImageBuffer& image, const SaveSettings& settings, OutputFile& out)
{
    const IndexedImage indexed = Quantise(image);
    const std::string comment = InfoLines(settings.texts);
    const unsigned bits = IndexBits(indexed.palette.size());
    const auto width = static_cast<std::uint16_t>(image.width);
    const auto height = static_cast<std::uint16_t>(image.height);

    const bool is_89a = !comment.empty() || indexed.transparent >= 0;
    const std::uint8_t signature[] = {'G', 'I', 'F', '8', static_cast<std::uint8_t>(is_89a ? '9' : '7'), 'a'};
    out.Write(signature);
    out.WriteU16Le(width);
    out.WriteU16Le(height);
    // A global colour table with 8 bits per channel, the background colour, square pixels.
    out.WriteU8(static_cast<std::uint8_t>(0x80 | 7 << 4 | (bits - 1)));
    out.WriteU8(static_cast<std::uint8_t>(std::max(indexed.transparent, 0)));
    out.WriteU8(0);
    for (std::size_t i = 0; i < std::size_t{1} << bits; ++i) {
        const PaletteColour colour = i < indexed.palette.size() ? indexed.palette[i] : PaletteColour{};
        const std::uint8_t rgb[] = {colour[2], colour[1], colour[0]};
        out.Write(rgb);
    }
    WriteComment(comment, out);
    WriteTransparency(indexed.transparent, out);
    out.WriteU8(kImage);
    out.WriteU16Le(0);
    out.WriteU16Le(0);
    out.WriteU16Le(width);
    out.WriteU16Le(height);
    out.WriteU8(0);
    return WriteLzw(indexed.indexes, bits, out) && out.WriteU8(kTrailer) && !out.Failed();
}

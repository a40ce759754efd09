// Chooses lossless colour types for a picture and converts its rows to them.
#include "src/platform/image/codecs/png/png_layout.h"

#include <algorithm>
#include <cstring>

#include "src/platform/image/codecs/png/filters/png_shuffle.h"

static constexpr std::uint32_t kOpaque = 0xFF000000;

std::size_t PngColourTable::SlotOf(std::uint32_t colour) const
{
    std::size_t slot = colour * 0x9E3779B1U >> 22;
    while (numbers_[slot] && colours_[slot] != colour)
        slot = (slot + 1) % kSlots;
    return slot;
}

std::size_t PngColourTable::IndexOf(std::uint32_t colour)
{
    const std::size_t slot = SlotOf(colour);
    if (numbers_[slot] == 0) {
        if (colour_count_ == kMaxColours)
            return kMaxColours;
        colours_[slot] = colour;
        numbers_[slot] = static_cast<std::uint16_t>(++colour_count_);
    }
    return numbers_[slot] - 1U;
}

std::vector<std::uint32_t> PngColourTable::Colours() const
{
    std::vector<std::uint32_t> result(colour_count_);
    for (std::size_t i = 0; i < kSlots; ++i)
        if (numbers_[i])
            result[numbers_[i] - 1U] = colours_[i];
    return result;
}

void PngColourTable::Renumber(const std::vector<std::uint32_t>& order)
{
    for (std::size_t i = 0; i < order.size(); ++i)
        numbers_[SlotOf(order[i])] = static_cast<std::uint16_t>(i + 1);
}

// A pixel as a number: blue in the lowest byte, then green, red and alpha.
template <std::size_t kChannels>
static inline std::uint32_t ColourAt(const std::uint8_t* p)
{
    if constexpr (kChannels == 1)
        return kOpaque | p[0] * 0x010101U;
    const std::uint32_t bgr = p[0] | std::uint32_t{p[1]} << 8 | std::uint32_t{p[2]} << 16;
    return bgr | (kChannels == 4 ? std::uint32_t{p[3]} << 24 : kOpaque);
}

// Fills the table; false as soon as there are too many colours.
template <std::size_t kChannels>
static bool CountColours(const ImageBuffer& image, PngColourTable& table)
{
    const std::uint8_t* const p = image.bytes.data();
    std::uint32_t last = ~ColourAt<kChannels>(p);
    for (std::size_t i = 0; i < image.bytes.size(); i += kChannels) {
        const std::uint32_t colour = ColourAt<kChannels>(p + i);
        if (colour != last && table.IndexOf(colour) == PngColourTable::kMaxColours)
            return false;
        last = colour;
    }
    return true;
}

// The same for a grey picture; false as soon as the levels don't fit in four bits.
static bool CollectFewGreys(const ImageBuffer& image, PngColourTable& table)
{
    constexpr std::size_t kPiece = 4096;
    const auto channels = static_cast<std::size_t>(image.channels);
    std::array<bool, 256> seen{};
    for (std::size_t done = 0; done < image.bytes.size(); done += kPiece * channels) {
        const std::size_t end = std::min(done + kPiece * channels, image.bytes.size());
        for (std::size_t i = done; i < end; i += channels)
            seen[image.bytes[i]] = true;
        if (std::count(seen.begin(), seen.end(), true) > 16)
            return false;
    }
    for (std::uint32_t i = 0; i < 256; ++i)
        if (seen[i])
            table.IndexOf(kOpaque | i * 0x010101U);
    return true;
}

static bool CollectFewColours(const ImageBuffer& image, PngColourTable& table)
{
    return image.channels == 1   ? CountColours<1>(image, table)
           : image.channels == 3 ? CountColours<3>(image, table)
                                 : CountColours<4>(image, table);
}

static bool IsAllGrey(const ImageBuffer& image)
{
    const auto channels = static_cast<std::size_t>(image.channels);
    const std::uint8_t* const p = image.bytes.data();
    for (std::size_t i = 0; i < image.bytes.size(); i += channels)
        if (p[i] != p[i + 1] || p[i] != p[i + 2])
            return false;
    return true;
}

static bool IsOpaque(const ImageBuffer& image)
{
    const std::uint8_t* const p = image.bytes.data();
    for (std::size_t i = 3; i < image.bytes.size(); i += 4)
        if (p[i] != 255)
            return false;
    return true;
}

// The smallest depth that represents the greys exactly: all are multiples of 255 / (2^depth - 1).
static std::uint32_t GreyDepth(const std::vector<std::uint32_t>& colours)
{
    const auto holds = [&](std::uint32_t step) {
        return std::all_of(colours.begin(), colours.end(),
                           [step](std::uint32_t colour) { return (colour & 0xFF) % step == 0; });
    };
    return holds(255) ? 1 : holds(85) ? 2 : holds(17) ? 4 : 8;
}

static PngLayout PaletteLayout(const PngColourTable& table)
{
    PngLayout layout;
    layout.colour = PngColour::kPalette;
    layout.table = table;
    std::vector<std::uint32_t> colours = table.Colours();
    layout.depth = colours.size() <= 2 ? 1 : colours.size() <= 4 ? 2 : colours.size() <= 16 ? 4 : 8;
    // Translucent colours first, which keeps tRNS short; then by luma, so that similar colours have similar
    // indices.
    std::sort(colours.begin(), colours.end(), [](std::uint32_t a, std::uint32_t b) {
        const bool opaque_a = a >= kOpaque;
        const bool opaque_b = b >= kOpaque;
        const auto bright = [](std::uint32_t n) {
            return (n & 0xFF) + 6 * (n >> 8 & 0xFF) + 3 * (n >> 16 & 0xFF);
        };
        return opaque_a != opaque_b ? opaque_b : bright(a) != bright(b) ? bright(a) < bright(b) : a < b;
    });
    layout.table.Renumber(colours);
    for (const std::uint32_t colour : colours) {
        for (const int shift : {16, 8, 0})
            layout.palette.push_back(static_cast<std::uint8_t>(colour >> shift));
        if (colour < kOpaque)
            layout.transparency.push_back(static_cast<std::uint8_t>(colour >> 24));
    }
    return layout;
}

std::vector<PngLayout> PngLayouts(const ImageBuffer& image)
{
    const bool has_profile = !image.icc_profile.empty();
    PngLayout plain;
    plain.colour = PngColour::kGrey;
    if (image.channels == 1 && HasOnlyExtremes(image.bytes.data(), image.bytes.size())) {
        plain.depth = 1;
        return {plain};
    }
    const bool has_alpha = image.channels == 4 && !IsOpaque(image);
    const bool is_grey = image.channels == 1 || (!has_profile && IsAllGrey(image));
    plain.colour = is_grey     ? has_alpha ? PngColour::kGreyAlpha : PngColour::kGrey
                   : has_alpha ? PngColour::kRgba
                               : PngColour::kRgb;
    PngColourTable table;
    const bool greys = plain.colour == PngColour::kGrey;
    if (greys ? !CollectFewGreys(image, table) : !CollectFewColours(image, table))
        return {plain};
    if (greys)
        plain.depth = GreyDepth(table.Colours());
    PngLayout palette = PaletteLayout(table);
    // A palette is RGB, so it can't be combined with a grey profile.
    const bool forbidden = image.channels == 1 && has_profile;
    if (forbidden || (greys && palette.depth >= plain.depth))
        return {plain};
    // Assumes that either layout deflates to half; in a small picture the palette itself decides.
    const std::uint64_t plain_bits = plain.Header(image).SampleCount() * plain.depth;
    const std::uint64_t saved = static_cast<std::uint64_t>(image.width) *
                                static_cast<std::uint64_t>(image.height) * (plain_bits - palette.depth) / 16;
    if (palette.palette.size() + palette.transparency.size() + 24 > saved)
        return {plain};
    return {palette, plain};
}

PngHeader PngLayout::Header(const ImageBuffer& image) const
{
    PngHeader result;
    result.width = static_cast<std::uint32_t>(image.width);
    result.height = static_cast<std::uint32_t>(image.height);
    result.depth = depth;
    result.colour = colour;
    return result;
}

std::uint32_t PngLayout::PixelSize() const
{
    PngHeader samples;
    samples.colour = colour;
    return samples.SampleCount();
}

namespace
{
// Packs values of `depth` bits into bytes, the first in the highest bits.
class ValuePacker
{
public:
    ValuePacker(std::uint8_t* out, std::uint32_t depth) : out_(out), depth_(depth) {}
    void Put(std::uint32_t value)
    {
        bits_ = bits_ << depth_ | value;
        count_ += depth_;
        if (count_ == 8) {
            *out_++ = static_cast<std::uint8_t>(bits_);
            count_ = 0;
        }
    }
    void Finish()
    {
        if (count_)
            *out_ = static_cast<std::uint8_t>(bits_ << (8 - count_));
    }

private:
    std::uint8_t* out_;
    std::uint32_t depth_;
    std::uint32_t bits_ = 0;
    std::uint32_t count_ = 0;
};
}  // namespace

template <std::size_t kChannels>
static void PutIndices(PngLayout& layout, const std::uint8_t* row, std::size_t pixels, std::uint8_t* out)
{
    ValuePacker packer(out, layout.depth);
    std::uint32_t last = 0;
    std::size_t index = PngColourTable::kMaxColours;
    for (std::size_t x = 0; x < pixels; ++x) {
        const std::uint32_t colour = ColourAt<kChannels>(row + x * kChannels);
        if (colour != last || x == 0)
            index = layout.table.IndexOf(colour);
        last = colour;
        packer.Put(static_cast<std::uint32_t>(index));
    }
    packer.Finish();
}

static void PutGreys(std::uint32_t depth, const std::uint8_t* row, std::size_t channels, std::size_t pixels,
                     std::uint8_t* out)
{
    if (channels == 1 && depth == 8) {
        std::memcpy(out, row, pixels);
    } else if (channels == 1 && depth == 1) {
        PackBits(row, out, pixels);
    } else {
        ValuePacker packer(out, depth);
        for (std::size_t x = 0; x < pixels; ++x)
            packer.Put(row[x * channels] >> (8 - depth));
        packer.Finish();
    }
}

void MakePngRow(PngLayout& layout, const ImageBuffer& image, std::size_t y, std::uint8_t* out)
{
    const auto pixels = static_cast<std::size_t>(image.width);
    const auto channels = static_cast<std::size_t>(image.channels);
    const std::uint8_t* const row = image.bytes.data() + y * pixels * channels;
    switch (layout.colour) {
        case PngColour::kGrey:
            PutGreys(layout.depth, row, channels, pixels, out);
            break;
        case PngColour::kPalette:
            if (channels == 1)
                PutIndices<1>(layout, row, pixels, out);
            else if (channels == 3)
                PutIndices<3>(layout, row, pixels, out);
            else
                PutIndices<4>(layout, row, pixels, out);
            break;
        case PngColour::kGreyAlpha:
            for (std::size_t x = 0; x < pixels; ++x) {
                out[2 * x] = row[4 * x];
                out[2 * x + 1] = row[4 * x + 3];
            }
            break;
        case PngColour::kRgb:
            if (channels == 3) {
                SwapRedAndBlue3(row, out, pixels);
                break;
            }
            for (std::size_t x = 0; x < pixels; ++x)
                for (std::size_t i = 0; i < 3; ++i)
                    out[3 * x + i] = row[4 * x + 2 - i];
            break;
        case PngColour::kRgba:
            SwapRedAndBlue4(row, out, pixels);
            break;
    }
}

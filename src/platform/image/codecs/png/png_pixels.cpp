// Converts PNG samples to pixels.
#include "src/platform/image/codecs/png/png_pixels.h"

#include <algorithm>
#include <cstring>

static bool IsAllGrey(const std::vector<std::uint8_t>& rgb)
{
    for (std::size_t i = 0; i + 2 < rgb.size(); i += 3)
        if (rgb[i] != rgb[i + 1] || rgb[i] != rgb[i + 2])
            return false;
    return true;
}

PngPalette PaletteOf(const PngInfo& info)
{
    PngPalette palette;
    if (info.header.colour == PngColour::kGrey) {
        const std::uint32_t white = (1U << info.header.depth) - 1;
        for (std::uint32_t i = 0; i <= white; ++i)
            palette.entries[i] = static_cast<std::uint8_t>(i * 255 / white);
        return palette;
    }
    const std::vector<std::uint8_t>& rgb = info.palette;
    const bool has_alpha = !info.transparency.empty();
    const bool is_grey = IsAllGrey(rgb) && !has_alpha && info.icc_profile.empty();
    palette.channels = has_alpha ? 4 : is_grey ? 1 : 3;
    const auto channels = static_cast<std::size_t>(palette.channels);
    for (std::size_t i = 0; i < 256; ++i) {
        std::uint8_t* entry = palette.entries.data() + i * channels;
        for (std::size_t sample = 0; sample < std::min<std::size_t>(channels, 3) && 3 * i < rgb.size();
             ++sample)
            entry[sample] = rgb[3 * i + 2 - sample];
        if (has_alpha)
            entry[3] = i < info.transparency.size() ? info.transparency[i] : 255;
    }
    return palette;
}

template <std::size_t kChannels>
static void LookUp(const PngPalette& palette, std::uint32_t depth, const std::uint8_t* __restrict in,
                   std::uint8_t* __restrict out, std::size_t pixels)
{
    const std::uint8_t* entries = palette.entries.data();
    if (depth == 8) {
        for (std::size_t x = 0; x < pixels; ++x)
            std::memcpy(out + x * kChannels, entries + in[x] * kChannels, kChannels);
        return;
    }
    const std::uint32_t mask = (1U << depth) - 1;
    const std::uint32_t in_byte = 8 / depth;
    for (std::size_t x = 0; x < pixels; x += in_byte) {
        std::uint32_t byte = *in++;
        const std::size_t here = std::min<std::size_t>(in_byte, pixels - x);
        for (std::size_t i = 0; i < here; ++i) {
            byte <<= depth;
            std::memcpy(out + (x + i) * kChannels, entries + (byte >> 8 & mask) * kChannels, kChannels);
        }
    }
}

// Expands eight 1-bit pixels of one channel at once: the byte is copied to eight lanes, and each keeps its
// own bit.
static void LookUpBits(const PngPalette& palette, const std::uint8_t* __restrict in,
                       std::uint8_t* __restrict out, std::size_t pixels)
{
    constexpr std::uint64_t kEach = 0x0101010101010101;
    // The leftmost pixel is the highest bit of the byte and goes to the lowest lane.
    constexpr std::uint64_t kBits = 0x0102040810204080;
    const std::uint64_t zero = palette.entries[0] * kEach;
    const std::uint64_t differ = (palette.entries[0] ^ palette.entries[1]) * kEach;
    std::size_t x = 0;
    for (; x + 8 <= pixels; x += 8) {
        const std::uint64_t kept = *in++ * kEach & kBits;
        // Adding 0x7F sets the highest bit of every nonzero lane, and no lane overflows.
        const std::uint64_t set = ((kept + 0x7F * kEach) | kept) & 0x80 * kEach;
        const std::uint64_t lanes = (set >> 7) * 255;
        const std::uint64_t eight = zero ^ (differ & lanes);
        if constexpr (__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__) {
            std::memcpy(out + x, &eight, 8);
        } else {
            for (std::size_t i = 0; i < 8; ++i)
                out[x + i] = static_cast<std::uint8_t>(eight >> 8 * i);
        }
    }
    if (x < pixels)
        LookUp<1>(palette, 1, in, out + x, pixels - x);
}

void LookUpRow(const PngPalette& palette, std::uint32_t depth, const std::uint8_t* in, std::uint8_t* out,
               std::size_t pixels)
{
    if (palette.channels == 1 && depth == 1)
        LookUpBits(palette, in, out, pixels);
    else if (palette.channels == 1)
        LookUp<1>(palette, depth, in, out, pixels);
    else if (palette.channels == 3)
        LookUp<3>(palette, depth, in, out, pixels);
    else
        LookUp<4>(palette, depth, in, out, pixels);
}

void ApplyTable(const std::array<std::uint8_t, 256>& table, std::int32_t channels, std::uint8_t* pixels,
                std::size_t pixel_count)
{
    const auto channel_count = static_cast<std::size_t>(channels);
    const std::size_t colours = std::min<std::size_t>(channel_count, 3);
    for (std::size_t i = 0; i < pixel_count * channel_count; i += channel_count)
        for (std::size_t sample = 0; sample < colours; ++sample)
            pixels[i + sample] = table[pixels[i + sample]];
}

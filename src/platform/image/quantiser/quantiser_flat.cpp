// Finds the colours of flat areas, so that they don't get dithered.
#include "src/platform/image/quantiser/quantiser_flat.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <unordered_map>

static constexpr std::size_t kBlock = 8;  // pixels per side
static constexpr std::uint64_t kMinShare = 512;
static constexpr std::uint32_t kNoColour = 0x1000000;

static std::uint32_t ColourAt(const std::uint8_t* pixel)
{
    return pixel[0] | static_cast<std::uint32_t>(pixel[1]) << 8 | static_cast<std::uint32_t>(pixel[2]) << 16;
}

static bool IsPlain(const std::uint8_t* block, std::size_t channels, std::size_t row_bytes)
{
    if (channels == 4 && block[3] < 128)
        return false;
    // In the first row each byte equals the one a pixel later; all other rows equal the first.
    if (std::memcmp(block, block + channels, (kBlock - 1) * channels) != 0)
        return false;
    for (std::size_t row = 1; row < kBlock; ++row)
        if (std::memcmp(block, block + row * row_bytes, kBlock * channels) != 0)
            return false;
    return true;
}

std::vector<FlatColour> FindFlatColours(const ImageBuffer& image)
{
    const auto width = static_cast<std::size_t>(image.width), height = static_cast<std::size_t>(image.height);
    const auto channels = static_cast<std::size_t>(image.channels);
    const std::size_t row_bytes = width * channels;
    std::unordered_map<std::uint32_t, std::uint64_t> count_of;
    for (std::size_t y = 0; y + kBlock <= height; y += kBlock)
        for (std::size_t x = 0; x + kBlock <= width; x += kBlock) {
            const std::uint8_t* block = image.bytes.data() + y * row_bytes + x * channels;
            if (IsPlain(block, channels, row_bytes))
                count_of[ColourAt(block)] += kBlock * kBlock;
        }
    std::vector<std::pair<std::uint64_t, std::uint32_t>> counts;
    for (const auto& [colour, pixels] : count_of)
        if (pixels >= width * height / kMinShare)
            counts.emplace_back(pixels, colour);
    std::sort(counts.rbegin(), counts.rend());
    counts.resize(std::min(counts.size(), kMaxFlatColours));
    std::vector<FlatColour> flats;
    for (const auto& [pixels, colour] : counts)
        flats.push_back({{static_cast<std::uint8_t>(colour), static_cast<std::uint8_t>(colour >> 8),
                          static_cast<std::uint8_t>(colour >> 16)},
                         pixels});
    return flats;
}

void TakeFlatColours(const ImageBuffer& image, const std::vector<FlatColour>& flats, std::size_t first,
                     PixelBytes& indexes)
{
    // A hash table so sparse that nearly every lookup takes one probe.
    struct Place {
        std::uint32_t colour = kNoColour;
        std::uint32_t index = 0;
    };
    std::array<Place, 1024> places;
    const auto first_place = [](std::uint32_t colour) { return colour * 0x9E3779B1u >> 22; };
    for (std::size_t i = 0; i < flats.size(); ++i) {
        const std::uint32_t colour = ColourAt(flats[i].colour.data());
        std::size_t place = first_place(colour);
        while (places[place].colour != kNoColour)
            place = (place + 1) % places.size();
        places[place] = {colour, static_cast<std::uint32_t>(first + i)};
    }
    const auto channels = static_cast<std::size_t>(image.channels);
    const std::uint8_t* pixel = image.bytes.data();
    for (std::size_t i = 0; i < indexes.size(); ++i, pixel += channels) {
        const std::uint32_t colour = ColourAt(pixel);
        std::size_t place = first_place(colour);
        while (places[place].colour != colour && places[place].colour != kNoColour)
            place = (place + 1) % places.size();
        if (places[place].colour == colour && (channels == 3 || pixel[3] >= 128))
            indexes[i] = static_cast<std::uint8_t>(places[place].index);
    }
}

// Collects the colours of a picture unless there are too many for a palette.
#include "src/platform/image/quantiser/quantiser_exact.h"

#include <array>

static constexpr std::size_t kMaxColours = 256;

namespace
{
// A hash table of at most 256 colours in 1024 slots.
class ColourIndex
{
public:
    /// The colour's index, new if necessary; -1 if there are 256 other colours.
    std::int32_t Of(std::uint32_t colour)
    {
        std::size_t place_index = colour * 0x9E3779B1u >> 22;
        while (places_[place_index].index >= 0 && places_[place_index].colour != colour)
            place_index = (place_index + 1) % places_.size();
        Place& place = places_[place_index];
        if (place.index < 0) {
            if (colours_ == kMaxColours)
                return -1;
            place = {colour, static_cast<std::int32_t>(colours_++)};
        }
        return place.index;
    }
    std::size_t Count() const { return colours_; }

private:
    struct Place {
        std::uint32_t colour = 0;
        std::int32_t index = -1;
    };
    std::array<Place, 1024> places_;
    std::size_t colours_ = 0;
};
}  // namespace

static IndexedImage QuantiseGreys(const ImageBuffer& image)
{
    std::array<bool, 256> used{};
    for (const std::uint8_t grey : image.bytes)
        used[grey] = true;
    IndexedImage result;
    std::array<std::uint8_t, 256> index_of{};
    for (std::size_t i = 0; i < 256; ++i)
        if (used[i]) {
            const auto grey = static_cast<std::uint8_t>(i);
            index_of[i] = static_cast<std::uint8_t>(result.palette.size());
            result.palette.push_back({grey, grey, grey});
        }
    result.indexes.resize(image.bytes.size());
    for (std::size_t i = 0; i < image.bytes.size(); ++i)
        result.indexes[i] = index_of[image.bytes[i]];
    return result;
}

std::optional<IndexedImage> QuantiseExactly(const ImageBuffer& image)
{
    if (image.channels == 1)
        return QuantiseGreys(image);
    constexpr std::uint32_t kTransparent = 0x1000000;  // not a valid colour
    const auto channels = static_cast<std::size_t>(image.channels);
    const std::size_t pixels = image.bytes.size() / channels;
    ColourIndex colours;
    IndexedImage result;
    result.indexes.reserve(pixels);  // pages are only touched as far as the colours suffice
    std::uint32_t last = ~std::uint32_t{0};
    std::uint8_t last_index = 0;
    const std::uint8_t* pixel = image.bytes.data();
    for (std::size_t i = 0; i < pixels; ++i, pixel += channels) {
        std::uint32_t colour =
            pixel[0] | static_cast<std::uint32_t>(pixel[1]) << 8 | static_cast<std::uint32_t>(pixel[2]) << 16;
        if (channels == 4 && pixel[3] < 128)
            colour = kTransparent;
        if (colour != last) {
            last = colour;
            const std::int32_t index = colours.Of(colour);
            if (index < 0)
                return std::nullopt;
            last_index = static_cast<std::uint8_t>(index);
            if (colours.Count() > result.palette.size()) {
                result.palette.push_back({static_cast<std::uint8_t>(colour),
                                          static_cast<std::uint8_t>(colour >> 8),
                                          static_cast<std::uint8_t>(colour >> 16)});
                if (colour == kTransparent)
                    result.transparent = index;
            }
        }
        result.indexes.push_back(last_index);
    }
    return result;
}

// In which of PNG's colour types a picture is kept, and its rows in that type.
// Room: platform/image/codecs/png.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "src/platform/image/codecs/png/png_info.h"
#include "src/platform/image_buffer.h"

/// Which number stands for a colour of four bytes; open addressing, at most half full.
class PngColourTable
{
public:
    static constexpr std::size_t kMost = 256;

    /// The number of the colour, a new one for a new colour; kMost when there are kMost others already.
    std::size_t IndexOf(std::uint32_t colour);
    std::size_t ColourCount() const { return colour_count_; }
    /// The colours by their numbers.
    std::vector<std::uint32_t> Colours() const;
    /// Gives each colour the number that it has in order, which holds all of them.
    void Renumber(const std::vector<std::uint32_t>& order);

private:
    static constexpr std::size_t kSlots = 1024;
    std::size_t SlotOf(std::uint32_t colour) const;

    std::array<std::uint32_t, kSlots> colours_{};
    std::array<std::uint16_t, kSlots> numbers_{};  ///< plus one; 0 = free
    std::size_t colour_count_ = 0;
};

struct PngLayout {
    PngColour colour = PngColour::kRgb;
    std::uint32_t depth = 8;
    std::vector<std::uint8_t> palette;       ///< R, G, B in turn
    std::vector<std::uint8_t> transparency;  ///< of the first colours of the palette
    PngColourTable table;                    ///< of the pixels as they are in the buffer

    PngHeader Header(const ImageBuffer& image) const;
    /// How far back the same sample of the pixel to the left is, in bytes; at least 1.
    std::uint32_t PixelSize() const;
};

/// The layouts that lose nothing, one or two of them, the one to prefer in doubt first: grey where all pixels
/// are grey (in the fewest bits that hold the levels), without alpha where all are opaque, a palette where
/// there are at most 256 colours. A picture with a profile keeps the kind of colour that the profile is for.
std::vector<PngLayout> PngLayouts(const ImageBuffer& image);

/// Row y in that layout to out, which has room for its bytes.
void MakePngRow(PngLayout& layout, const ImageBuffer& image, std::size_t y, std::uint8_t* out);

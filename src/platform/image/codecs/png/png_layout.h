// Chooses PNG colour types for a picture and converts its rows to them.
// Room: platform/image/codecs/png.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "src/platform/image/codecs/png/png_info.h"
#include "src/platform/image_buffer.h"

/// Maps a 32-bit colour to its palette index. Open addressing, at most half full.
class PngColourTable
{
public:
    static constexpr std::size_t kMaxColours = 256;

    /// The colour's index; a new colour is added. kMaxColours if the table is full.
    std::size_t IndexOf(std::uint32_t colour);
    std::size_t ColourCount() const { return colour_count_; }
    /// All colours in index order.
    std::vector<std::uint32_t> Colours() const;
    /// Reassigns the indices: each colour gets its position in order, which must contain all of them.
    void Renumber(const std::vector<std::uint32_t>& order);

private:
    static constexpr std::size_t kSlots = 1024;
    std::size_t SlotOf(std::uint32_t colour) const;

    std::array<std::uint32_t, kSlots> colours_{};
    std::array<std::uint16_t, kSlots> numbers_{};  ///< index + 1; 0 = free slot
    std::size_t colour_count_ = 0;
};

struct PngLayout {
    PngColour colour = PngColour::kRgb;
    std::uint32_t depth = 8;
    std::vector<std::uint8_t> palette;       ///< RGB
    std::vector<std::uint8_t> transparency;  ///< alpha of the first palette entries
    PngColourTable table;                    ///< of the buffer's pixels

    PngHeader Header(const ImageBuffer& image) const;
    /// Distance in bytes to the same sample of the pixel to the left; at least 1.
    std::uint32_t PixelSize() const;
};

/// The lossless layouts worth trying, one or two, preferred one first: grey if all pixels are grey (with the
/// smallest depth that holds the levels), no alpha if all are opaque, a palette for up to 256 colours. A
/// picture with a profile keeps the colour model of that profile.
std::vector<PngLayout> PngLayouts(const ImageBuffer& image);

/// Writes row y in this layout to out.
void MakePngRow(PngLayout& layout, const ImageBuffer& image, std::size_t y, std::uint8_t* out);

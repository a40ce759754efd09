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
    std::size_t nIndexOf(std::uint32_t nColour);
    std::size_t nColours() const { return m_nColours; }
    /// The colours by their numbers.
    std::vector<std::uint32_t> aColours() const;
    /// Gives each colour the number that it has in aOrder, which holds all of them.
    void Renumber(const std::vector<std::uint32_t>& aOrder);

private:
    static constexpr std::size_t kSlots = 1024;
    std::size_t nSlotOf(std::uint32_t nColour) const;

    std::array<std::uint32_t, kSlots> m_aColours{};
    std::array<std::uint16_t, kSlots> m_aNumbers{};  ///< plus one; 0 = free
    std::size_t m_nColours = 0;
};

struct PngLayout {
    PngColour objColour = PngColour::Rgb;
    std::uint32_t nDepth = 8;
    std::vector<std::uint8_t> aPalette;       ///< R, G, B in turn
    std::vector<std::uint8_t> aTransparency;  ///< of the first colours of the palette
    PngColourTable objTable;                  ///< of the pixels as they are in the buffer

    PngHeader objHeader(const ImageBuffer& aImage) const;
    /// How far back the same sample of the pixel to the left is, in bytes; at least 1.
    std::uint32_t nPixelBytes() const;
};

/// The layouts that lose nothing, one or two of them, the one to prefer in doubt first: grey where all pixels
/// are grey (in the fewest bits that hold the levels), without alpha where all are opaque, a palette where
/// there are at most 256 colours. A picture with a profile keeps the kind of colour that the profile is for.
std::vector<PngLayout> aPngLayouts(const ImageBuffer& aImage);

/// Row y in that layout to pOut, which has room for its bytes.
void MakePngRow(PngLayout& objLayout, const ImageBuffer& aImage, std::size_t y, std::uint8_t* pOut);

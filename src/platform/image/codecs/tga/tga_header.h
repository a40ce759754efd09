// What stands around the pixels of a Targa file: header, colour map, footer.
// Room: platform/image/codecs/tga.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "src/platform/image/base/input_file.h"

enum class TgaKind { kMapped, kTrueColour, kGrey };

/// What the alpha of the pixels is worth.
enum class TgaAlpha { kNone, kStraight, kPremultiplied };

struct TgaHeader {
    TgaKind kind = TgaKind::kTrueColour;
    bool packed = false;
    std::uint64_t width = 0;
    std::uint64_t height = 0;
    std::uint32_t bits = 0;        ///< 8, 15, 16, 24 or 32 a pixel
    std::uint32_t alpha_bits = 0;  ///< as the descriptor counts them
    bool from_right = false;
    bool from_top = false;
    std::uint32_t map_first = 0;    ///< the index of the colour map's first entry
    std::uint32_t map_length = 0;   ///< entries
    std::uint32_t map_bits = 0;     ///< 15, 16, 24 or 32 an entry
    std::uint64_t map_offset = 0;   ///< in the file
    std::uint64_t bits_offset = 0;  ///< in the file

    std::uint32_t PixelSize() const { return (bits + 7) / 8; }
};

constexpr std::size_t kTgaHeaderSize = 18;
constexpr std::size_t kTgaFooterSize = 26;
constexpr std::size_t kTgaExtensionSize = 495;

/// Text and zero at the end of a footer.
constexpr std::string_view kTgaSignature{"TRUEVISION-XFILE.\0", 18};

/// False for a header that no Targa file has: another kind, another depth, no size, interleaved rows.
bool ReadTgaHeader(Bytes head, TgaHeader& header);

/// What the extension area says of alpha; without one it counts where the descriptor counts alpha bits, and
/// in 32 bits.
TgaAlpha ReadTgaAlpha(InputFile& file, const TgaHeader& header);

/// B, G, R, A of one stored pixel or map entry of 15, 16, 24 or 32 bits. Alpha is 255 for those that have
/// none.
std::array<std::uint8_t, 4> TgaColour(const std::uint8_t* stored, std::uint32_t bits);

/// The colour map by index, from 0 on; entries before the first are black. False when the file doesn't hold
/// it.
bool ReadTgaMap(InputFile& file, const TgaHeader& header, std::vector<std::array<std::uint8_t, 4>>& map);

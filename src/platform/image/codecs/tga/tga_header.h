// Header, colour map and footer of a Targa file.
// Room: platform/image/codecs/tga.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "src/platform/image/base/input_file.h"

enum class TgaKind { kMapped, kTrueColour, kGrey };

/// How to use the pixels' alpha. Many programs declare alpha useless and store it all the same; kDenied is
/// for those: straight alpha, unless it is 0 or 255 everywhere.
enum class TgaAlpha { kNone, kDenied, kStraight, kPremultiplied };

struct TgaHeader {
    TgaKind kind = TgaKind::kTrueColour;
    bool packed = false;
    std::uint64_t width = 0;
    std::uint64_t height = 0;
    std::uint32_t bits = 0;        ///< per pixel: 8, 15, 16, 24 or 32
    std::uint32_t alpha_bits = 0;  ///< from the descriptor
    bool from_right = false;
    bool from_top = false;
    std::uint32_t map_first = 0;    ///< index of the colour map's first entry
    std::uint32_t map_length = 0;   ///< entries
    std::uint32_t map_bits = 0;     ///< per entry: 15, 16, 24 or 32
    std::uint64_t map_offset = 0;   ///< in the file
    std::uint64_t bits_offset = 0;  ///< in the file

    std::uint32_t PixelSize() const { return (bits + 7) / 8; }
};

constexpr std::size_t kTgaHeaderSize = 18;
constexpr std::size_t kTgaFooterSize = 26;
constexpr std::size_t kTgaExtensionSize = 495;

/// The footer's signature, NUL included.
constexpr std::string_view kTgaSignature{"TRUEVISION-XFILE.\0", 18};

/// False for a header that can't be a Targa's: unknown kind or depth, no size, interleaved rows.
bool ReadTgaHeader(Bytes head, TgaHeader& header);

/// How to use alpha according to the extension area. Unless that declares alpha useful, pixels have some only
/// if they have 32 bits or the descriptor counts alpha bits; otherwise kNone.
TgaAlpha ReadTgaAlpha(InputFile& file, const TgaHeader& header);

/// BGRA of a stored pixel or map entry of 15, 16, 24 or 32 bits; alpha is 255 where none is stored.
std::array<std::uint8_t, 4> TgaColour(const std::uint8_t* stored, std::uint32_t bits);

/// Reads the colour map, indexed from 0; entries before the first are black. False if the file is too short.
bool ReadTgaMap(InputFile& file, const TgaHeader& header, std::vector<std::array<std::uint8_t, 4>>& map);

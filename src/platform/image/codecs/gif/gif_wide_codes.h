// Decodes the LZW data of GIF frames whose codes start with more than nine bits.
// Room: platform/image/codecs/gif.
#pragma once

#include <array>
#include <cstdint>
#include <span>

#include "src/platform/image/base/byte_reader.h"

/// giflib takes at most 8 bits per pixel. A few writers declare 9 to 11, though a palette has 256 colours.
constexpr unsigned kWidestGifCodes = 11;

class GifWideCodes
{
public:
    /// pixel_bits is 9 to kWidestGifCodes.
    explicit GifWideCodes(unsigned pixel_bits);

    /// Decodes the next row.size() indices; those over 255 become 255. Takes whole blocks of data from the
    /// front of left. False for an invalid code or at the end of the data.
    bool ReadRow(Bytes& left, std::span<std::uint8_t> row);

private:
    static constexpr unsigned kMaxBits = 12;
    static constexpr std::size_t kCodes = std::size_t{1} << kMaxBits;

    bool ReadCode(Bytes& left, unsigned& code);
    bool NextString(Bytes& left);

    unsigned pixel_bits_;
    unsigned code_bits_;
    std::size_t next_code_;           ///< the first unused one
    std::size_t last_code_ = kCodes;  ///< of the previous string; kCodes after a clear code
    Bytes block_;                     ///< what is left of the current block
    std::uint32_t bits_ = 0;          ///< read from it, lowest first
    unsigned bit_count_ = 0;
    std::array<std::uint16_t, kCodes> prefix_{};
    std::array<std::uint16_t, kCodes> last_index_{};  ///< of each code's string
    std::array<std::uint16_t, kCodes> string_{};      ///< the current string, backwards
    std::size_t string_left_ = 0;                     ///< indices that haven't been delivered
};

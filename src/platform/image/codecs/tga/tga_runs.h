// Targa run-length coding.
// Room: platform/image/codecs/tga.
#pragma once

#include <cstdint>
#include <span>

#include "src/platform/image/base/byte_reader.h"

/// Maximum pixels per packet.
constexpr std::size_t kTgaPacket = 128;

/// Decodes packets of 1 to 128 pixels: one pixel repeated, or all of them stored. Packets may cross rows.
class TgaRuns
{
public:
    /// data must outlive this object; pixel_size is 1 to 4 bytes.
    TgaRuns(Bytes data, std::size_t pixel_size) : left_(data), pixel_size_(pixel_size) {}

    /// Fills row, a whole number of pixels. False if the data ends too early.
    bool NextRow(std::span<std::uint8_t> row);

private:
    Bytes left_;
    std::size_t pixel_size_;
    std::size_t pixels_left_ = 0;  ///< in the packet that continues in the next row
    bool repeats_ = false;
};

/// Upper bound of a packed row in bytes.
std::size_t MaxPackedTgaSize(std::size_t pixels, std::size_t pixel_size);

/// Packs a row and returns the packed size. out needs room for MaxPackedTgaSize() bytes.
std::size_t PackTgaRow(Bytes row, std::size_t pixel_size, std::uint8_t* out);

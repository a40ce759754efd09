// The run-length coding of Targa files.
// Room: platform/image/codecs/tga.
#pragma once

#include <cstdint>
#include <span>

#include "src/platform/image/base/byte_reader.h"

/// The most pixels that a packet holds.
constexpr std::size_t kTgaPacket = 128;

/// Packets of 1 to 128 pixels: one that is repeated, or each by itself. Packets may go on from row to row.
class TgaRuns
{
public:
    /// data must outlive the object; pixel_size is 1 to 4 bytes.
    TgaRuns(Bytes data, std::size_t pixel_size) : left_(data), pixel_size_(pixel_size) {}

    /// Fills all of row, whole pixels; False when the data ended before.
    bool NextRow(std::span<std::uint8_t> row);

private:
    Bytes left_;
    std::size_t pixel_size_;
    std::size_t pixels_left_ = 0;  ///< of the packet that the last row ended in
    bool repeats_ = false;
};

/// How many bytes a row takes at most when it is packed.
std::size_t MaxPackedTgaSize(std::size_t pixels, std::size_t pixel_size);

/// Packs the whole pixels of one row and returns how many bytes it took; out has room for MaxPackedTgaSize.
std::size_t PackTgaRow(Bytes row, std::size_t pixel_size, std::uint8_t* out);

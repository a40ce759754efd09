// Device-independent bitmaps (header, palette, pixels), as in BMP files, icons, cursors and metafile records.
// Room: platform/image/dib.
#pragma once

#include <array>
#include <cstdint>

#include "src/platform/image/base/byte_reader.h"
#include "src/platform/image_buffer.h"

/// How the pixels are stored. kRaw includes bitmaps with colour masks: all raw bitmaps of 16 or 32 bits have
/// them.
enum class DibStorage { kRaw, kRle4, kRle8, kRle24, kJpeg, kPng };

/// Everything before the pixels: a header of 12 bytes (OS/2 1), 16 to 64 (OS/2 2) or 40, 52, 56, 108 or 124
/// (Windows), then optional masks and palette.
struct DibHeader {
    std::uint64_t width = 0;   ///< pixels
    std::uint64_t height = 0;  ///< from the header; in icons it includes the mask's rows
    bool top_down = false;
    std::uint32_t bits = 0;  ///< per pixel: 1, 2, 4, 8, 16, 24 or 32; 0 for kJpeg and kPng
    DibStorage storage = DibStorage::kRaw;
    /// Red, green, blue and alpha masks of 16 and 32-bit pixels; the alpha mask is 0 if there is no alpha.
    std::array<std::uint32_t, 4> masks{};
    std::array<std::array<std::uint8_t, 3>, 256> palette{};  ///< BGR; missing entries are black
    bool grey_palette = false;      ///< 8 bits or fewer, and every stored entry is grey
    std::uint64_t bits_offset = 0;  ///< from the header's start to the pixels of a packed bitmap
    double dots_per_inch_x = 0;     ///< 0 = unknown
    double dots_per_inch_y = 0;
    std::uint64_t profile_offset = 0;  ///< of an embedded profile, from the header's start
    std::uint64_t profile_size = 0;    ///< 0 = none
};

/// Reads header, masks and palette. dib starts at the header's size field and may end after the palette or
/// later; a truncated palette is read as far as it goes. False for an invalid or unsupported header. Sizes
/// aren't checked against the limits yet.
bool ReadDibHeader(Bytes dib, DibHeader& header);

/// Channels that the bitmap decodes to: 1 (grey), 3 or 4.
std::int32_t DibChannels(const DibHeader& header);

/// Bytes from one stored row to the next; kRaw only.
std::uint64_t DibStride(const DibHeader& header);

/// Decodes the pixels; bits may contain more than these. Sets the resolution but not the profile. Alpha that
/// is 0 everywhere counts as unset and is dropped. False, with image unchanged, if the size isn't allowed or
/// bits is too short.
bool DecodeDibBits(const DibHeader& header, Bytes bits, ImageBuffer& image);

/// Decodes a bitmap whose header (with masks and palette) and pixels are separate, as in metafile records.
bool DecodeDib(Bytes header_and_palette, Bytes bits, ImageBuffer& image);

/// Decodes a packed bitmap: the pixels follow the palette.
bool DecodePackedDib(Bytes dib, ImageBuffer& image);

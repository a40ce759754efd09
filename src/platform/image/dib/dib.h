// Device-independent bitmaps: what BMP files, icons, cursors and metafile records hold. Header, palette,
// pixels.
// Room: platform/image/dib.
#pragma once

#include <array>
#include <cstdint>

#include "src/platform/image/base/byte_reader.h"
#include "src/platform/image_buffer.h"

/// How the bits are stored. A bitmap with colour masks is kRaw: every raw one of 16 or 32 bits has masks.
enum class DibStorage { kRaw, kRle4, kRle8, kRle24, kJpeg, kPng };

/// What stands before the bits: a header of 12 bytes (OS/2 1), 16 to 64 (OS/2 2), 40, 52, 56, 108 or 124
/// (Windows), then masks and palette where it has them.
struct DibHeader {
    std::uint64_t width = 0;   ///< pixels
    std::uint64_t height = 0;  ///< rows as the header counts them: that of an icon counts the mask's rows too
    bool top_down = false;
    std::uint32_t bits = 0;  ///< 1, 2, 4, 8, 16, 24 or 32 a pixel; 0 for kJpeg and kPng
    DibStorage storage = DibStorage::kRaw;
    /// Red, green, blue, alpha of a pixel of 16 or 32 bits. Alpha is 0 where the pixels have none.
    std::array<std::uint32_t, 4> masks{};
    std::array<std::array<std::uint8_t, 3>, 256>
        palette{};                  ///< B, G, R; black beyond the entries that are there
    bool grey_palette = false;      ///< bits is 8 or less and every entry there is a grey
    std::uint64_t bits_offset = 0;  ///< from the header's first byte to the bits of a bitmap in one piece
    double dots_per_inch_x = 0;     ///< 0 when the header doesn't say
    double dots_per_inch_y = 0;
    std::uint64_t profile_offset = 0;  ///< an embedded colour profile, counted from the header's first byte
    std::uint64_t profile_size = 0;    ///< 0 when there is none
};

/// Reads header, masks and palette. dib begins at the header's size field; it may end after the palette or
/// go on. A palette that dib cuts short is taken as far as it goes. False for a header that is none or asks
/// for what no program writes; sizes are not yet held against any limit.
bool ReadDibHeader(Bytes dib, DibHeader& header);

/// 1 (grey), 3 or 4: what the picture of this header is decoded to.
std::int32_t DibChannels(const DibHeader& header);

/// Bytes from one stored row to the next; only for kRaw.
std::uint64_t DibStride(const DibHeader& header);

/// Decodes the bits of a header that was read. bits may go on after them. False, with image untouched, when
/// the size isn't allowed or the bits don't suffice. Alpha that is 0 everywhere was never set: such a picture
/// comes without alpha. Resolution is filled in; the profile is the caller's business.
bool DecodeDibBits(const DibHeader& header, Bytes bits, ImageBuffer& image);

/// A bitmap whose header (with masks and palette) and bits lie apart, as in the records of a metafile.
bool DecodeDib(Bytes header_and_palette, Bytes bits, ImageBuffer& image);

/// A bitmap in one piece, the bits right after the palette.
bool DecodePackedDib(Bytes dib, ImageBuffer& image);

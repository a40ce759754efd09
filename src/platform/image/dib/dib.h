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
    std::uint64_t nWidth = 0;  ///< pixels
    std::uint64_t nHeight =
        0;  ///< rows as the header counts them: that of an icon counts the mask's rows too
    bool bTopDown = false;
    std::uint32_t nBits = 0;  ///< 1, 2, 4, 8, 16, 24 or 32 a pixel; 0 for kJpeg and kPng
    DibStorage eStorage = DibStorage::kRaw;
    /// Red, green, blue, alpha of a pixel of 16 or 32 bits. Alpha is 0 where the pixels have none.
    std::array<std::uint32_t, 4> aMasks{};
    std::array<std::array<std::uint8_t, 3>, 256>
        aPalette{};                 ///< B, G, R; black beyond the entries that are there
    bool bGreyPalette = false;      ///< nBits is 8 or less and every entry there is a grey
    std::uint64_t nBitsOffset = 0;  ///< from the header's first byte to the bits of a bitmap in one piece
    double dDotsPerInchX = 0;       ///< 0 when the header doesn't say
    double dDotsPerInchY = 0;
    std::uint64_t nProfileOffset = 0;  ///< an embedded colour profile, counted from the header's first byte
    std::uint64_t nProfileSize = 0;    ///< 0 when there is none
};

/// Reads header, masks and palette. aDib begins at the header's size field; it may end after the palette or
/// go on. A palette that aDib cuts short is taken as far as it goes. False for a header that is none or asks
/// for what no program writes; sizes are not yet held against any limit.
bool bReadDibHeader(Bytes aDib, DibHeader& objHeader);

/// 1 (grey), 3 or 4: what the picture of this header is decoded to.
std::int32_t lDibChannels(const DibHeader& objHeader);

/// Bytes from one stored row to the next; only for kRaw.
std::uint64_t nDibStride(const DibHeader& objHeader);

/// Decodes the bits of a header that was read. aBits may go on after them. False, with aImage untouched, when
/// the size isn't allowed or the bits don't suffice. Alpha that is 0 everywhere was never set: such a picture
/// comes without alpha. Resolution is filled in; the profile is the caller's business.
bool bDecodeDibBits(const DibHeader& objHeader, Bytes aBits, ImageBuffer& aImage);

/// A bitmap whose header (with masks and palette) and bits lie apart, as in the records of a metafile.
bool bDecodeDib(Bytes aHeaderAndPalette, Bytes aBits, ImageBuffer& aImage);

/// A bitmap in one piece, the bits right after the palette.
bool bDecodePackedDib(Bytes aDib, ImageBuffer& aImage);

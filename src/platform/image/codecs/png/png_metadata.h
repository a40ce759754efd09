// Profile, EXIF, XMP, IPTC and text chunks of PNG.
// Room: platform/image/codecs/png.
#pragma once

#include <cstdint>
#include <vector>

#include "src/platform/image/base/byte_reader.h"
#include "src/platform/image_buffer.h"
#include "src/platform/image_library.h"

class OutputFile;

/// Limit in bytes for a metadata block, both compressed and uncompressed.
constexpr std::uint32_t kMaxPngMetadata = 16 * 1024 * 1024;

/// The profile in an iCCP chunk's data; empty if it is broken.
std::vector<std::uint8_t> PngProfile(Bytes chunk);

/// Stores an eXIf chunk's data if it is a TIFF structure.
void ReadPngExif(Bytes chunk, ImageMetadata& metadata);

/// Stores what a tEXt, zTXt or iTXt chunk carries: an XMP packet, or EXIF, XMP or IPTC hex-encoded as a raw
/// profile by older programs. Doesn't replace a block that is already set.
void ReadPngText(std::uint32_t type, Bytes chunk, ImageMetadata& metadata);

/// Writes the chunks that precede the pixels: iCCP, pHYs, eXIf, XMP, IPTC and texts. The profile is left out
/// if it doesn't fit the colour type (is_grey). False if writing failed.
[[nodiscard]] bool WritePngMetadata(OutputFile& out, const ImageBuffer& image, bool is_grey,
                                    const ImageInfoTexts& texts);

// The profile, EXIF, XMP and IPTC blocks and the texts inside PNG chunks.
// Room: platform/image/codecs/png.
#pragma once

#include <cstdint>
#include <vector>

#include "src/platform/image/base/byte_reader.h"
#include "src/platform/image_buffer.h"
#include "src/platform/image_library.h"

class OutputFile;

/// The largest block that is read, packed or unpacked, in bytes.
constexpr std::uint32_t kPngMetadataMost = 16 * 1024 * 1024;

/// The profile in the data of an iCCP chunk; empty when it is broken.
std::vector<std::uint8_t> PngProfile(Bytes chunk);

/// Takes over the data of an eXIf chunk if it is a TIFF structure.
void ReadPngExif(Bytes chunk, ImageMetadata& metadata);

/// Takes over what the data of a tEXt, zTXt or iTXt chunk holds for us: an XMP packet, or EXIF, XMP or IPTC
/// as older programs write them, in hexadecimal. A block that is there already stays.
void ReadPngText(std::uint32_t type, Bytes chunk, ImageMetadata& metadata);

/// Writes the chunks that stand before the pixels: iCCP, pHYs, eXIf, XMP, IPTC and the texts. The profile
/// only where it fits a picture that is written as grey or not. False when the file has failed.
[[nodiscard]] bool WritePngMetadata(OutputFile& out, const ImageBuffer& image, bool is_grey,
                                    const ImageInfoTexts& texts);

// JPEG: baseline, progressive and arithmetic; 8-bit grey, YCbCr, RGB, CMYK and YCCK.
// Room: platform/image/codecs/jpeg.
#pragma once

#include "src/platform/image/codecs/codec.h"

/// Damaged and truncated files are decoded as far as possible, as browsers do: blocks without data are grey,
/// and missing progressive scans cost detail. A file without any picture data is refused, and so is one with
/// more scans than any encoder makes.
///
/// Writes baseline files with the standard tables: 4:2:0 below quality 90, 4:4:4 from 90, grey as grey; with
/// density, EXIF, XMP, IPTC and profile. A block too long for its segments is left out.
extern const Codec kJpegCodec;

/// Implemented in jpeg_decoder.cpp and jpeg_encoder.cpp.
std::unique_ptr<ImageDecoder> OpenJpeg(InputFile& file);
bool EncodeJpeg(const ImageBuffer& image, const SaveSettings& settings, OutputFile& out);

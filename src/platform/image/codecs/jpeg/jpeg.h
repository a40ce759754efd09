// JPEG: baseline, progressive and arithmetic; 8-bit grey, YCbCr, RGB, CMYK and YCCK.
// Room: platform/image/codecs/jpeg.
#pragma once

#include "src/platform/image/codecs/codec.h"

/// Reading refuses truncated files, including those that only lack the end marker: half a picture mustn't
/// pass for a whole one, since the caller may delete the source. Damage that the decoder resynchronises after
/// (a bad code, a lost restart marker, extra bytes) is decoded as far as possible, as other programs do. A
/// progressive file with more scans than any encoder makes is refused.
///
/// Writes baseline files with the standard tables: 4:2:0 below quality 90, 4:4:4 from 90, grey as grey; with
/// density, EXIF, XMP, IPTC and profile. A block too long for its segments is left out.
extern const Codec kJpegCodec;

/// Implemented in jpeg_decoder.cpp and jpeg_encoder.cpp.
std::unique_ptr<ImageDecoder> OpenJpeg(InputFile& file);
bool EncodeJpeg(const ImageBuffer& image, const SaveSettings& settings, OutputFile& out);

// JPEG: baseline, progressive and arithmetic; grey, YCbCr, RGB, CMYK and YCCK of 8 bits.
// Room: platform/image/codecs/jpeg.
#pragma once

#include "src/platform/image/codecs/codec.h"

/// Reading refuses a file whose data end before its picture does, the end marker included: half a picture is
/// not taken for a whole one, since the caller may delete the source. Damage after which the decoder finds
/// its way again (a bad code, a lost restart marker, extra bytes) is decoded as far as it goes, as other
/// programs do. A progressive file of more scans than any encoder makes is refused.
///
/// Writing makes baseline files with the standard tables: 4:2:0 below quality 90, 4:4:4 from 90, grey as
/// grey, with density, EXIF, XMP, IPTC and profile. A block that is too long for its segments is left out.
extern const Codec kJpegCodec;

/// The two halves, one source each.
std::unique_ptr<ImageDecoder> OpenJpeg(InputFile& file);
bool EncodeJpeg(const ImageBuffer& image, const SaveSettings& settings, OutputFile& out);

// JPEG 2000: codestreams and JP2 files; written as a codestream.
// Room: platform/image/codecs/j2k.
#pragma once

#include "src/platform/image/codecs/codec.h"

/// Reading refuses a file that isn't whole to the last byte of its last tile, and one that claims more than
/// its size can hold (see j2k_codestream.h). Components become pixels as j2k_pixels.h says.
///
/// Writing: quality 100 is lossless (the 5-3 wavelet with the reversible colour transform). Below 100 the 9-7
/// wavelet loses about as much as JPEG of that quality does: see TargetPsnr. Pictures of more than a
/// megapixel are cut into tiles, of 1024 pixels a side when lossless, 4096 otherwise. The texts become a
/// comment.
extern const Codec kJ2kCodec;

/// The peak signal-to-noise ratio in dB that a picture is compressed to at a quality of 1 to 99. It rises
/// with the quality, and is higher for a smooth picture than for one full of detail: it is what remains when
/// the coefficients of a small wavelet transform of the picture's lightness are rounded to a step of 24
/// levels at quality 50, 12 at 75, and otherwise as JPEG's tables are scaled.
double TargetPsnr(const ImageBuffer& image, std::int32_t quality);

/// The two halves.
std::unique_ptr<ImageDecoder> OpenJ2k(InputFile& file);
bool EncodeJ2k(const ImageBuffer& image, const SaveSettings& settings, OutputFile& out);

// JPEG 2000: reads codestreams and JP2 files, writes codestreams.
// Room: platform/image/codecs/j2k.
#pragma once

#include "src/platform/image/codecs/codec.h"

/// Reading refuses files with incomplete tiles and those that claim more than their size can hold
/// (j2k_codestream.h).
/// j2k_pixels.h describes how components become pixels.
///
/// Writing at quality 100 is lossless (5-3 wavelet, reversible colour transform). Below 100 the 9-7 wavelet
/// is set to lose about as much as JPEG of that quality: see TargetPsnr(). Pictures over a megapixel are
/// tiled, with 1024 pixels per side if lossless and 4096 otherwise. The texts become a comment.
extern const Codec kJ2kCodec;

/// The PSNR in dB to compress to at a quality of 1 to 99. It rises with the quality and is higher for smooth
/// pictures than for detailed ones: it is the error left when the coefficients of a small wavelet transform
/// of the luma are quantised with a step of 24 levels at quality 50, 12 at 75, and otherwise scaled like
/// JPEG's tables.
double TargetPsnr(const ImageBuffer& image, std::int32_t quality);

/// Implemented in j2k_decoder.cpp and j2k_encoder.cpp.
std::unique_ptr<ImageDecoder> OpenJ2k(InputFile& file);
bool EncodeJ2k(const ImageBuffer& image, const SaveSettings& settings, OutputFile& out);

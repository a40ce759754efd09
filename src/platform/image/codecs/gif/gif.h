// GIF: reads 87a and 89a, interlaced or not, animations frame by frame; writes with an optimised palette.
// Room: platform/image/codecs/gif.
#pragma once

#include "src/platform/image/codecs/codec.h"

/// For reading, see gif_decoder.h.
///
/// Writes a single frame, not interlaced: exact with up to 256 colours, otherwise quantised (quantiser.h).
/// The texts become a comment. A file with neither a comment nor a transparent colour is marked 87a.
extern const Codec kGifCodec;

/// Implemented in gif_decoder.cpp and gif_encoder.cpp.
std::unique_ptr<ImageDecoder> OpenGif(InputFile& file);
bool EncodeGif(const ImageBuffer& image, const SaveSettings& settings, OutputFile& out);

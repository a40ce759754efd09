// GIF: 87a and 89a, interlaced or not, animations page by page; written with a palette fitted to the
// picture.
// Room: platform/image/codecs/gif.
#pragma once

#include "src/platform/image/codecs/codec.h"

/// Reading: see gif_decoder.h.
///
/// Writing makes one picture, not interlaced: exact where it has 256 colours or fewer, else as quantiser.h
/// says. The texts become a comment. A file that holds neither a comment nor a transparent colour is marked
/// 87a.
extern const Codec kGifCodec;

/// The two halves.
std::unique_ptr<ImageDecoder> OpenGif(InputFile& file);
bool EncodeGif(const ImageBuffer& image, const SaveSettings& settings, OutputFile& out);

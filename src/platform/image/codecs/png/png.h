// The PNG format.
// Room: platform/image/codecs/png.
//
// Reads all colour types, depths and interlacing. 16-bit samples are rounded to 8, a grey palette becomes one
// channel, grey with alpha becomes BGRA. Pixels in a space given by numbers (gAMA and cHRM, or cICP) are
// converted to sRGB, as browsers do. Of an animated PNG only the still picture is read. Writes the
// smallest lossless colour type: see png_layout.h.
#pragma once

#include <memory>

#include "src/platform/image/codecs/codec.h"

extern const Codec kPngCodec;

/// Implemented in png_reader.cpp and png_writer.cpp. Writing picks the layout and filtering that make a
/// sample of the picture smallest. Photographs and scans are compressed strip by strip, drawings and graphics
/// of up to 64 MB as a whole.
std::unique_ptr<ImageDecoder> OpenPng(InputFile& file);
[[nodiscard]] bool EncodePng(const ImageBuffer& image, const SaveSettings& settings, OutputFile& out);

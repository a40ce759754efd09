// Checks shared by the tests of the small raster formats.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "tests/platform/image/support/image_tools.h"

/// The pixels as B, G, R, A, whatever the picture's channels; opaque if it has no alpha.
std::vector<std::uint8_t> BgraOf(const ImageBuffer& image);

/// The first page of a file as other programs decode it, as B, G, R, A; empty if they refuse it.
std::vector<std::uint8_t> BgraByImageMagick(const std::string& path);
std::vector<std::uint8_t> BgraByGraphicsMagick(const std::string& path);
std::vector<std::uint8_t> BgraByPillow(const std::string& path);

/// Random pixels, the same for the same seed.
ImageBuffer Noise(std::int32_t width, std::int32_t height, std::int32_t channels, std::uint32_t seed = 1);

/// Corrupts one byte of the file at a time, in several ways, and expects that up to eight pages are either
/// refused or decode to whole pictures. Of a large file, changes the first 400 bytes and some of the others;
/// of these, only every step-th.
void ExpectSurvivesCorruption(const Codec& codec, const std::vector<std::uint8_t>& file,
                              std::size_t step = 1);

/// Expects that the file is refused if any number of bytes is missing at its end, except for the last
/// spare_at_end ones.
void ExpectRefusedIfTruncated(const Codec& codec, const std::vector<std::uint8_t>& file,
                              std::size_t spare_at_end = 0);

// Checks shared by tests of the small raster formats.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "tests/platform/image/support/image_tools.h"

/// Reads an 8-bit PAM file with 1, 3 or 4 channels, like those of the samples; nothing if it is invalid.
std::optional<ImageBuffer> ReadPam(const std::string& path);

/// The pixels as B, G, R, A, whatever the channels; opaque if there is no alpha.
std::vector<std::uint8_t> BgraOf(const ImageBuffer& image);

/// The first picture of a file as decoded by other programs, in B, G, R, A; empty if they refuse it.
std::vector<std::uint8_t> BgraByImageMagick(const std::string& path);
std::vector<std::uint8_t> BgraByGraphicsMagick(const std::string& path);
std::vector<std::uint8_t> BgraByPillow(const std::string& path);

/// A reproducible picture of random pixels.
ImageBuffer Noise(std::int32_t width, std::int32_t height, std::int32_t channels, std::uint32_t seed = 1);

/// Changes each byte of the file in several ways (of a large file the first 400 and some others), and expects
/// a refusal or complete pictures. Decodes up to eight pages.
void ExpectAnyByteMayLie(const Codec& codec, const std::vector<std::uint8_t>& file);

/// Truncates the file at every length and expects refusals. Lengths that only lack some of the last
/// spare_at_end bytes, which decoding doesn't need, are left out.
void ExpectCutFilesRefused(const Codec& codec, const std::vector<std::uint8_t>& file,
                           std::size_t spare_at_end = 0);

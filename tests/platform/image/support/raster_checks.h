// Checks that the tests of all small raster formats make alike.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "tests/platform/image/support/image_tools.h"

/// The pixels as blue, green, red and alpha, whatever the channels are; opaque where there is no alpha.
std::vector<std::uint8_t> BgraOf(const ImageBuffer& image);

/// The first picture of a file as other programs see it, blue, green, red and alpha; empty when they refuse
/// it.
std::vector<std::uint8_t> BgraByImageMagick(const std::string& path);
std::vector<std::uint8_t> BgraByGraphicsMagick(const std::string& path);
std::vector<std::uint8_t> BgraByPillow(const std::string& path);

/// A picture whose pixels have no order, of a generator that gives the same each time.
ImageBuffer Noise(std::int32_t width, std::int32_t height, std::int32_t channels, std::uint32_t seed = 1);

/// Decodes file with each of its bytes (of a large one the first 400 and some of the others) changed in
/// several ways, and expects that it is either refused or gives a whole picture. Every page up to the eighth
/// is asked for. With a larger step only every step-th of these bytes is changed.
void ExpectAnyByteMayLie(const Codec& codec, const std::vector<std::uint8_t>& file, std::size_t step = 1);

/// Expects that file is refused when any number of bytes is missing at its end, up to as many as it can't do
/// without.
void ExpectCutFilesRefused(const Codec& codec, const std::vector<std::uint8_t>& file,
                           std::size_t spare_at_end = 0);

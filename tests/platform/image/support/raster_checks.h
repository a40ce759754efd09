// Checks that the tests of all small raster formats make alike.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "tests/platform/image/support/image_tools.h"

/// A PAM file of 8 bits with 1, 3 or 4 channels, as the samples have it; nothing if it is none.
std::optional<ImageBuffer> aReadPam(const std::string& sPath);

/// The pixels as blue, green, red and alpha, whatever the channels are; opaque where there is no alpha.
std::vector<std::uint8_t> aBgraOf(const ImageBuffer& aImage);

/// The first picture of a file as other programs see it, blue, green, red and alpha; empty when they refuse
/// it.
std::vector<std::uint8_t> aBgraByImageMagick(const std::string& sPath);
std::vector<std::uint8_t> aBgraByGraphicsMagick(const std::string& sPath);
std::vector<std::uint8_t> aBgraByPillow(const std::string& sPath);

/// A picture whose pixels have no order, of a generator that gives the same each time.
ImageBuffer aNoise(std::int32_t lWidth, std::int32_t lHeight, std::int32_t lChannels,
                   std::uint32_t nSeed = 1);

/// Decodes aFile with each of its bytes (of a large one the first 400 and some of the others) changed in
/// several ways, and expects that it is either refused or gives a whole picture. Every page up to the eighth
/// is asked for.
void ExpectAnyByteMayLie(const Codec& objCodec, const std::vector<std::uint8_t>& aFile);

/// Expects that aFile is refused when any number of bytes is missing at its end, up to as many as it can't do
/// without.
void ExpectCutFilesRefused(const Codec& objCodec, const std::vector<std::uint8_t>& aFile,
                           std::size_t nSpareAtEnd = 0);

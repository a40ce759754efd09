// The colour spaces that a PNG states in numbers: gAMA, cHRM and cICP chunks.
// Room: platform/image/codecs/png.
#pragma once

#include <optional>

#include "src/platform/image/base/byte_reader.h"
#include "src/platform/image/colour/rgb_space.h"

struct PngInfo;

/// The space of a cICP chunk (ITU-T H.273 codes). Nothing for codes that browsers ignore: YCbCr, limited
/// range and rare primaries and curves.
std::optional<RgbSpace> ReadPngCodedSpace(Bytes chunk);

/// The primaries and white point of a cHRM chunk, with sRGB's curve. Nothing if they are unusable.
std::optional<RgbSpace> ReadPngChromaticities(Bytes chunk);

/// The space from which the samples must be converted to sRGB. Nothing if they are sRGB, or have a profile. A
/// cICP chunk overrides the other chunks, a profile and an sRGB chunk override gAMA and cHRM. Without gAMA,
/// cHRM is ignored. A gamma within 5 % of 1 / 2.2 is meant for ordinary screens and changes no grey.
std::optional<RgbSpace> SpaceToConvert(const PngInfo& info);

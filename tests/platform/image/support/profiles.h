// Colour profiles whose effect tests can't miss.
#pragma once

#include <cstdint>
#include <vector>

/// sRGB.
std::vector<std::uint8_t> SrgbProfile();
/// sRGB with the red and green primaries swapped: red pixels appear green.
std::vector<std::uint8_t> SwappedProfile();
/// Grey with the given gamma.
std::vector<std::uint8_t> GreyProfile(double gamma);
/// Ideal inks with cyan and yellow swapped.
std::vector<std::uint8_t> CmykProfile();

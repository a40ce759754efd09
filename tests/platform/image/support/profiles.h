// Colour profiles for tests, made so that a conversion that is left out can't be overlooked.
#pragma once

#include <cstdint>
#include <vector>

/// sRGB.
std::vector<std::uint8_t> SrgbProfile();
/// sRGB with the red and the green primary exchanged: red pixels are green to see.
std::vector<std::uint8_t> SwappedProfile();
/// Grey of a gamma.
std::vector<std::uint8_t> GreyProfile(double gamma);
/// Ideal inks with cyan and yellow exchanged.
std::vector<std::uint8_t> CmykProfile();

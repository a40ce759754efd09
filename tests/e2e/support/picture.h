// Small pictures that a test writes, and what other programs decode, pixel by pixel.
#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <string>
#include <vector>

using Rgb = std::array<int, 3>;

struct Picture {
    int lWidth = 0;
    int lHeight = 0;
    std::vector<Rgb> aPixels;  ///< rows from the top

    Rgb& At(int x, int y) { return aPixels[static_cast<std::size_t>(y * lWidth + x)]; }
    const Rgb& At(int x, int y) const { return aPixels[static_cast<std::size_t>(y * lWidth + x)]; }
    bool operator==(const Picture&) const = default;
};

/// A picture whose pixel at (x, y) is what fnPixel says.
Picture objPicture(int lWidth, int lHeight, const std::function<Rgb(int x, int y)>& fnPixel);

/// A Windows bitmap of 24 bits.
std::string sBmpOf(const Picture& objPicture);

/// A file as another program decodes it; an empty picture when it can't.
Picture objDecodedByOthers(const std::string& sFile);

/// Prints sizes and the first pixels of a picture in a failed comparison.
void PrintTo(const Picture& objPicture, std::ostream* pStream);

// Small images that tests create and compare pixel by pixel.
// Room: tests/e2e/support.
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
    std::vector<Rgb> aPixels;  ///< top-down

    /// A pixel. Outside the image it is no colour, so that a comparison with an image that couldn't be
    /// decoded fails instead of reading past its end.
    Rgb At(int x, int y) const
    {
        const bool bInside = x >= 0 && x < lWidth && y >= 0 && y < lHeight;
        return bInside ? aPixels[static_cast<std::size_t>(y * lWidth + x)] : Rgb{-1, -1, -1};
    }
    bool operator==(const Picture&) const = default;
};

/// Creates an image from a function of x and y.
Picture objPicture(int lWidth, int lHeight, const std::function<Rgb(int x, int y)>& fnPixel);

/// Encodes an image as a 24-bit Windows bitmap.
std::string sBmpOf(const Picture& objPicture);

/// Decodes a file with another program; an empty image if it can't.
Picture objReferenceDecode(const std::string& sFile);

/// Prints the size and the first pixels of an image when a comparison fails.
void PrintTo(const Picture& objPicture, std::ostream* pStream);

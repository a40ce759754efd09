// Moves pixels in place for mirrors and half turns, and in square blocks for quarter turns.
#include "src/platform/image/orientation.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <utility>

template <std::size_t nChannels>
using Pixel = std::array<std::uint8_t, nChannels>;

template <std::size_t nChannels>
static Pixel<nChannels>* pPixels(PixelBytes& aBytes)
{
    static_assert(sizeof(Pixel<nChannels>) == nChannels);
    return reinterpret_cast<Pixel<nChannels>*>(aBytes.data());
}

// Rows exchanged top to bottom.
static void FlipRows(ImageBuffer& aImage)
{
    const auto nStride = static_cast<std::size_t>(aImage.lWidth) * static_cast<std::size_t>(aImage.lChannels);
    const auto nRows = static_cast<std::size_t>(aImage.lHeight);
    for (std::size_t y = 0; y < nRows / 2; ++y) {
        std::uint8_t* pUpper = aImage.aBytes.data() + y * nStride;
        std::swap_ranges(pUpper, pUpper + nStride, aImage.aBytes.data() + (nRows - 1 - y) * nStride);
    }
}

template <std::size_t nChannels>
static void MirrorRows(ImageBuffer& aImage)
{
    Pixel<nChannels>* pRow = pPixels<nChannels>(aImage.aBytes);
    for (std::int32_t y = 0; y < aImage.lHeight; ++y, pRow += aImage.lWidth)
        std::reverse(pRow, pRow + aImage.lWidth);
}

// A half turn is all pixels in reverse order.
template <std::size_t nChannels>
static void HalfTurn(ImageBuffer& aImage)
{
    Pixel<nChannels>* pFirst = pPixels<nChannels>(aImage.aBytes);
    std::reverse(pFirst,
                 pFirst + static_cast<std::size_t>(aImage.lWidth) * static_cast<std::size_t>(aImage.lHeight));
}

// Target pixel (x, y) is source pixel (y, x), the source being read from the right if bFromRight and from
// below if bFromBelow. Blocks keep the source rows and the target rows of a block in the first cache.
template <std::size_t nChannels>
static void Transpose(ImageBuffer& aImage, bool bFromRight, bool bFromBelow)
{
    constexpr std::size_t kBlock = 32;
    PixelBytes aTurned;
    aTurned.resize(aImage.aBytes.size());
    const auto nSourceWidth = static_cast<std::size_t>(aImage.lWidth);
    const auto nSourceHeight = static_cast<std::size_t>(aImage.lHeight);
    const Pixel<nChannels>* pSource = pPixels<nChannels>(aImage.aBytes);
    Pixel<nChannels>* pTarget = pPixels<nChannels>(aTurned);
    for (std::size_t y0 = 0; y0 < nSourceWidth; y0 += kBlock) {
        const std::size_t y1 = std::min(y0 + kBlock, nSourceWidth);
        for (std::size_t x0 = 0; x0 < nSourceHeight; x0 += kBlock) {
            const std::size_t x1 = std::min(x0 + kBlock, nSourceHeight);
            for (std::size_t y = y0; y < y1; ++y) {
                const std::size_t nColumn = bFromRight ? nSourceWidth - 1 - y : y;
                for (std::size_t x = x0; x < x1; ++x) {
                    const std::size_t nRow = bFromBelow ? nSourceHeight - 1 - x : x;
                    pTarget[y * nSourceHeight + x] = pSource[nRow * nSourceWidth + nColumn];
                }
            }
        }
    }
    aImage.aBytes = std::move(aTurned);
    std::swap(aImage.lWidth, aImage.lHeight);
    std::swap(aImage.dDotsPerInchX, aImage.dDotsPerInchY);
}

template <std::size_t nChannels>
static void Apply(ImageBuffer& aImage, std::int32_t lOrientation)
{
    switch (lOrientation) {
        case 2:
            MirrorRows<nChannels>(aImage);
            break;
        case 3:
            HalfTurn<nChannels>(aImage);
            break;
        case 4:
            FlipRows(aImage);
            break;
        case 5:
            Transpose<nChannels>(aImage, false, false);
            break;
        case 6:
            Transpose<nChannels>(aImage, false, true);
            break;
        case 7:
            Transpose<nChannels>(aImage, true, true);
            break;
        case 8:
            Transpose<nChannels>(aImage, true, false);
            break;
        default:
            break;
    }
}

void ApplyOrientation(ImageBuffer& aImage, std::int32_t lOrientation)
{
    if (aImage.lChannels == 1)
        Apply<1>(aImage, lOrientation);
    else if (aImage.lChannels == 3)
        Apply<3>(aImage, lOrientation);
    else if (aImage.lChannels == 4)
        Apply<4>(aImage, lOrientation);
}

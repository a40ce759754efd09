// Moves pixels in place for mirrors and half turns, and in square blocks for quarter turns.
#include "src/platform/image/pixels/orientation.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <utility>
#include <vector>

#include "src/platform/image/base/picture_memory.h"

// Copies nCount pixels to consecutive places from places that lie nStep bytes apart, in either direction.
template <std::size_t nChannels>
static void Gather(std::uint8_t* pTarget, const std::uint8_t* pSource, std::ptrdiff_t nStep,
                   std::size_t nCount)
{
    for (std::size_t i = 0; i < nCount; ++i, pTarget += nChannels, pSource += nStep)
        std::memcpy(pTarget, pSource, nChannels);
}

// Pixels of three bytes are moved as four, which is one move instead of two: the byte too many is overwritten
// by the next pixel. The last one is moved exactly. The caller knows that the byte after every source pixel
// but the last may be read.
template <>
void Gather<3>(std::uint8_t* pTarget, const std::uint8_t* pSource, std::ptrdiff_t nStep, std::size_t nCount)
{
    for (std::size_t i = 0; i + 1 < nCount; ++i, pTarget += 3, pSource += nStep)
        std::memcpy(pTarget, pSource, 4);
    if (nCount > 0)
        std::memcpy(pTarget, pSource, 3);
}

// Rows exchanged top to bottom.
static void FlipRows(ImageBuffer& aImage)
{
    const auto nStride = static_cast<std::size_t>(aImage.width) * static_cast<std::size_t>(aImage.channels);
    const auto nRows = static_cast<std::size_t>(aImage.height);
    for (std::size_t y = 0; y < nRows / 2; ++y) {
        std::uint8_t* pUpper = aImage.bytes.data() + y * nStride;
        std::swap_ranges(pUpper, pUpper + nStride, aImage.bytes.data() + (nRows - 1 - y) * nStride);
    }
}

// Each row reversed: it is put aside and gathered from its end.
template <std::size_t nChannels>
static void MirrorRows(ImageBuffer& aImage)
{
    const auto nWidth = static_cast<std::size_t>(aImage.width);
    std::vector<std::uint8_t> aRow(nWidth * nChannels + 1);
    std::uint8_t* pRow = aImage.bytes.data();
    for (std::int32_t y = 0; y < aImage.height; ++y, pRow += nWidth * nChannels) {
        std::memcpy(aRow.data(), pRow, nWidth * nChannels);
        Gather<nChannels>(pRow, aRow.data() + (nWidth - 1) * nChannels,
                          -static_cast<std::ptrdiff_t>(nChannels), nWidth);
    }
}

// Target pixel (x, y) is source pixel (y, x), the source being read from the right if bFromRight and from
// below if bFromBelow. Blocks keep the source rows and the target rows of a block in the first cache.
template <std::size_t nChannels>
static void Transpose(ImageBuffer& aImage, bool bFromRight, bool bFromBelow)
{
    constexpr std::size_t kBlock = 64;
    PixelBytes aTurned;
    ResizeFresh(aTurned, aImage.bytes.size());
    const auto nSourceWidth = static_cast<std::size_t>(aImage.width);
    const auto nSourceHeight = static_cast<std::size_t>(aImage.height);
    const std::size_t nSourceStride = nSourceWidth * nChannels;
    const std::ptrdiff_t nStep = static_cast<std::ptrdiff_t>(nSourceStride) * (bFromBelow ? -1 : 1);
    for (std::size_t y0 = 0; y0 < nSourceWidth; y0 += kBlock) {
        const std::size_t y1 = std::min(y0 + kBlock, nSourceWidth);
        for (std::size_t x0 = 0; x0 < nSourceHeight; x0 += kBlock) {
            const std::size_t x1 = std::min(x0 + kBlock, nSourceHeight);
            const std::size_t nRow = bFromBelow ? nSourceHeight - 1 - x0 : x0;
            for (std::size_t y = y0; y < y1; ++y) {
                const std::size_t nColumn = bFromRight ? nSourceWidth - 1 - y : y;
                const std::uint8_t* pSource =
                    aImage.bytes.data() + nRow * nSourceStride + nColumn * nChannels;
                std::uint8_t* pTarget = aTurned.data() + (y * nSourceHeight + x0) * nChannels;
                // The lowest row's last pixel is the end of the picture: nothing behind it may be read.
                const std::size_t nExact = bFromBelow && x0 == 0 ? 1 : 0;
                std::memcpy(pTarget, pSource, nExact * nChannels);
                Gather<nChannels>(pTarget + nExact * nChannels,
                                  pSource + static_cast<std::ptrdiff_t>(nExact) * nStep, nStep,
                                  x1 - x0 - nExact);
            }
        }
    }
    aImage.bytes = std::move(aTurned);
    std::swap(aImage.width, aImage.height);
    std::swap(aImage.dots_per_inch_x, aImage.dots_per_inch_y);
}

template <std::size_t nChannels>
static void Apply(ImageBuffer& aImage, std::int32_t lOrientation)
{
    switch (lOrientation) {
        case 2:
            MirrorRows<nChannels>(aImage);
            break;
        case 3:
            FlipRows(aImage);
            MirrorRows<nChannels>(aImage);
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
    if (aImage.channels == 1)
        Apply<1>(aImage, lOrientation);
    else if (aImage.channels == 3)
        Apply<3>(aImage, lOrientation);
    else if (aImage.channels == 4)
        Apply<4>(aImage, lOrientation);
}

// Undoes PNG's row filters on any machine, and picks the fastest kernels that this one has.
#include "src/platform/image/codecs/png/filters/png_unfilter.h"

#include <algorithm>
#include <array>

#include "src/platform/image/codecs/png/filters/png_kernels.h"

// The sample of the three that is nearest to left + above - above left; see the vector kernel for why this is
// it.
static inline int nPaeth(int nLeft, int nAbove, int nAboveLeft)
{
    const int nT = 3 * nAboveLeft - nLeft - nAbove;
    const int nLess = std::min(nLeft, nAbove);
    const int nMore = std::max(nLeft, nAbove);
    const int nLessOrCorner = nMore > nT ? nAboveLeft : nLess;
    return nT > nLess ? nLessOrCorner : nMore;
}

template <PngFilter objFilter>
static inline int nGuess(int nLeft, int nAbove, int nAboveLeft)
{
    switch (objFilter) {
        case PngFilter::Sub:
            return nLeft;
        case PngFilter::Up:
            return nAbove;
        case PngFilter::Average:
            return (nLeft + nAbove) / 2;
        case PngFilter::Paeth:
            return nPaeth(nLeft, nAbove, nAboveLeft);
        default:
            return 0;
    }
}

// One row of pixels of nPixelBytes. With bSwap the first and the third sample change places.
template <std::size_t nPixelBytes, bool bSwap, PngFilter objFilter>
static void UnfilterRow(const std::uint8_t* __restrict pIn, const std::uint8_t* __restrict pAbove,
                        std::uint8_t* __restrict pOut, std::size_t nBytes)
{
    std::array<int, nPixelBytes> aLeft{};
    std::array<int, nPixelBytes> aAboveLeft{};
    for (std::size_t nPixel = 0; nPixel < nBytes; nPixel += nPixelBytes) {
        for (std::size_t nSample = 0; nSample < nPixelBytes; ++nSample) {
            const std::size_t nFrom = bSwap && nSample < 3 ? 2 - nSample : nSample;
            const int nAbove = pAbove[nPixel + nSample];
            const int nValue =
                pIn[nPixel + nFrom] + nGuess<objFilter>(aLeft[nSample], nAbove, aAboveLeft[nSample]);
            pOut[nPixel + nSample] = static_cast<std::uint8_t>(nValue);
            aLeft[nSample] = nValue & 0xFF;
            aAboveLeft[nSample] = nAbove;
        }
    }
}

template <std::size_t nPixelBytes, bool bSwap>
static bool UnfilterRows(const PngRows& objRows)
{
    const std::uint8_t* pAbove = objRows.pAbove;
    for (std::size_t y = 0; y < objRows.nRows; ++y) {
        const std::uint8_t* pIn = objRows.pIn + y * objRows.nInStride;
        std::uint8_t* pOut = objRows.pOut + y * objRows.nBytes;
        switch (static_cast<PngFilter>(pIn[0])) {
            case PngFilter::None:
                UnfilterRow<nPixelBytes, bSwap, PngFilter::None>(pIn + 1, pAbove, pOut, objRows.nBytes);
                break;
            case PngFilter::Sub:
                UnfilterRow<nPixelBytes, bSwap, PngFilter::Sub>(pIn + 1, pAbove, pOut, objRows.nBytes);
                break;
            case PngFilter::Up:
                UnfilterRow<nPixelBytes, bSwap, PngFilter::Up>(pIn + 1, pAbove, pOut, objRows.nBytes);
                break;
            case PngFilter::Average:
                UnfilterRow<nPixelBytes, bSwap, PngFilter::Average>(pIn + 1, pAbove, pOut, objRows.nBytes);
                break;
            case PngFilter::Paeth:
                UnfilterRow<nPixelBytes, bSwap, PngFilter::Paeth>(pIn + 1, pAbove, pOut, objRows.nBytes);
                break;
            default:
                return false;
        }
        pAbove = pOut;
    }
    return true;
}

const PngUnfilters& objPngUnfilters(bool bPortable)
{
    static constexpr PngUnfilters objEverywhere = {UnfilterRows<1, false>, UnfilterRows<3, true>,
                                                   UnfilterRows<4, true>};
#ifdef VARNEL_PNG_AVX2
    if (!bPortable && bPngHasAvx2())
        return objPngUnfiltersAvx2;
#endif
    static_cast<void>(bPortable);
    return objEverywhere;
}

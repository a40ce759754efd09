// Undoes PNG's row filters with the vector instructions of x86-64.
#include "src/platform/image/codecs/png/filters/png_kernels.h"
#include "src/platform/image/codecs/png/filters/png_unfilter.h"

#ifdef VARNEL_PNG_AVX2

#include <immintrin.h>

#include <cstring>

// Pixels of 3 bytes are read as 4; the kernels therefore leave pictures of a few columns to the portable
// ones.
static constexpr std::size_t kLeastPixels = 8;

VARNEL_TARGET_AVX2 static inline __m128i vLoad4(const std::uint8_t* p)
{
    int nBytes = 0;
    std::memcpy(&nBytes, p, 4);
    return _mm_cvtsi32_si128(nBytes);
}

VARNEL_TARGET_AVX2 static inline __m128i vLoad16(const std::uint8_t* p)
{
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
}

VARNEL_TARGET_AVX2 static inline void Store16(std::uint8_t* p, __m128i v)
{
    _mm_storeu_si128(reinterpret_cast<__m128i*>(p), v);
}

// The first nBytes (3 or 4) of v.
template <std::size_t nBytes>
VARNEL_TARGET_AVX2 static inline void StorePixel(std::uint8_t* p, __m128i v)
{
    const int nPixel = _mm_cvtsi128_si32(v);
    std::memcpy(p, &nPixel, nBytes);
}

// Brings a row's samples into our order and adds the row above, if there is one to add.
template <std::size_t nPixelBytes, bool bAbove>
VARNEL_TARGET_AVX2 static void CopyOrUp(const std::uint8_t* pIn, const std::uint8_t* pAbove,
                                        std::uint8_t* pOut, std::size_t nBytes)
{
    constexpr std::size_t nStep = nPixelBytes == 3 ? 15 : 16;
    const __m128i vOrder =
        nPixelBytes == 3   ? _mm_setr_epi8(2, 1, 0, 5, 4, 3, 8, 7, 6, 11, 10, 9, 14, 13, 12, 15)
        : nPixelBytes == 4 ? _mm_setr_epi8(2, 1, 0, 3, 6, 5, 4, 7, 10, 9, 8, 11, 14, 13, 12, 15)
                           : _mm_setr_epi8(0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15);
    std::size_t i = 0;
    for (; i + 16 <= nBytes; i += nStep) {
        __m128i v = _mm_shuffle_epi8(vLoad16(pIn + i), vOrder);
        if (bAbove)
            v = _mm_add_epi8(v, vLoad16(pAbove + i));
        Store16(pOut + i, v);
    }
    for (; i < nBytes; ++i) {
        const std::size_t nSample = i % nPixelBytes;
        const std::size_t nFrom = nPixelBytes >= 3 && nSample < 3 ? i + 2 - 2 * nSample : i;
        pOut[i] = static_cast<std::uint8_t>(pIn[nFrom] + (bAbove ? pAbove[i] : 0));
    }
}

// One pixel's samples in lanes of 16 bits.
struct Neighbours {
    __m128i vLeft;
    __m128i vAbove;
    __m128i vAboveLeft;
};

// The sample of the three that is nearest to left + above - above left. The middle one of the three is found
// by comparisons that need the left pixel late, since everything waits for it: with t = 3 * above left - left
// - above, the greater of left and above is nearest when t is not above the lesser, the lesser when t is not
// below the greater.
VARNEL_TARGET_AVX2 static inline __m128i vPaeth(const Neighbours& obj)
{
    const __m128i vWithoutLeft = _mm_sub_epi16(
        _mm_add_epi16(_mm_add_epi16(obj.vAboveLeft, obj.vAboveLeft), obj.vAboveLeft), obj.vAbove);
    const __m128i vT = _mm_sub_epi16(vWithoutLeft, obj.vLeft);
    const __m128i vLess = _mm_min_epi16(obj.vLeft, obj.vAbove);
    const __m128i vMore = _mm_max_epi16(obj.vLeft, obj.vAbove);
    const __m128i vLessOrCorner = _mm_blendv_epi8(vLess, obj.vAboveLeft, _mm_cmpgt_epi16(vMore, vT));
    return _mm_blendv_epi8(vMore, vLessOrCorner, _mm_cmpgt_epi16(vT, vLess));
}

template <PngFilter objFilter>
VARNEL_TARGET_AVX2 static inline __m128i vGuess(const Neighbours& obj)
{
    if constexpr (objFilter == PngFilter::Sub)
        return obj.vLeft;
    if constexpr (objFilter == PngFilter::Average)
        return _mm_srli_epi16(_mm_add_epi16(obj.vLeft, obj.vAbove), 1);
    return vPaeth(obj);
}

template <std::size_t nPixelBytes>
VARNEL_TARGET_AVX2 static inline __m128i vOrderWide()
{
    return nPixelBytes == 1 ? _mm_setr_epi8(0, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1)
                            : _mm_setr_epi8(2, -1, 1, -1, 0, -1, 3, -1, -1, -1, -1, -1, -1, -1, -1, -1);
}

// A filter whose guess needs the pixel to the left, so that a row is one chain of dependent steps.
template <std::size_t nPixelBytes, PngFilter objFilter>
VARNEL_TARGET_AVX2 static void Chain(const std::uint8_t* pIn, const std::uint8_t* pAbove, std::uint8_t* pOut,
                                     std::size_t nBytes)
{
    const __m128i vOrder = vOrderWide<nPixelBytes>();
    Neighbours obj = {_mm_setzero_si128(), _mm_setzero_si128(), _mm_setzero_si128()};
    std::size_t i = 0;
    const auto Step = [&]() VARNEL_TARGET_AVX2 {
        obj.vAboveLeft = obj.vAbove;
        if (objFilter != PngFilter::Sub)
            obj.vAbove = _mm_cvtepu8_epi16(vLoad4(pAbove + i));
        // The upper halves of the lanes are zero, so bytes may be added where the sum is to wrap.
        obj.vLeft = _mm_add_epi8(_mm_shuffle_epi8(vLoad4(pIn + i), vOrder), vGuess<objFilter>(obj));
        return _mm_packus_epi16(obj.vLeft, obj.vLeft);
    };
    for (; i + nPixelBytes < nBytes; i += nPixelBytes)
        StorePixel<4>(pOut + i, Step());
    StorePixel<nPixelBytes>(pOut + i, Step());
}

template <std::size_t nPixelBytes>
VARNEL_TARGET_AVX2 static bool UnfilterRows(const PngRows& objRows)
{
    const std::uint8_t* pAbove = objRows.pAbove;
    const std::size_t nBytes = objRows.nBytes;
    for (std::size_t y = 0; y < objRows.nRows; ++y) {
        const std::uint8_t* pIn = objRows.pIn + y * objRows.nInStride + 1;
        std::uint8_t* pOut = objRows.pOut + y * nBytes;
        switch (static_cast<PngFilter>(pIn[-1])) {
            case PngFilter::None:
                CopyOrUp<nPixelBytes, false>(pIn, pAbove, pOut, nBytes);
                break;
            case PngFilter::Up:
                CopyOrUp<nPixelBytes, true>(pIn, pAbove, pOut, nBytes);
                break;
            case PngFilter::Sub:
                Chain<nPixelBytes, PngFilter::Sub>(pIn, pAbove, pOut, nBytes);
                break;
            case PngFilter::Average:
                Chain<nPixelBytes, PngFilter::Average>(pIn, pAbove, pOut, nBytes);
                break;
            case PngFilter::Paeth:
                Chain<nPixelBytes, PngFilter::Paeth>(pIn, pAbove, pOut, nBytes);
                break;
            default:
                return false;
        }
        pAbove = pOut;
    }
    return true;
}

template <std::size_t nPixelBytes>
static bool UnfilterWide(const PngRows& objRows)
{
    if (objRows.nBytes < kLeastPixels * nPixelBytes) {
        const PngUnfilters& objPortable = objPngUnfilters(true);
        return (nPixelBytes == 3 ? objPortable.Rgb : objPortable.Rgba)(objRows);
    }
    return UnfilterRows<nPixelBytes>(objRows);
}

// Chains of single bytes gain nothing from vectors, but the rows without one do.
static bool UnfilterBytes(const PngRows& objRows)
{
    return objPngUnfilters(true).OneByte(objRows);
}

const PngUnfilters objPngUnfiltersAvx2 = {UnfilterBytes, UnfilterWide<3>, UnfilterWide<4>};

#endif

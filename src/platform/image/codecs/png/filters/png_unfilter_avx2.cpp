// PNG unfiltering with AVX2.
#include "src/platform/image/codecs/png/filters/png_kernels.h"
#include "src/platform/image/codecs/png/filters/png_unfilter.h"

#ifdef VARNEL_PNG_AVX2

#include <immintrin.h>

#include <cstring>

// Three-byte pixels are read as four bytes, so very narrow pictures are left to the portable kernels.
static constexpr std::size_t kMinPixels = 8;

VARNEL_TARGET_AVX2 static inline __m128i Load4(const std::uint8_t* p)
{
    int bytes = 0;
    std::memcpy(&bytes, p, 4);
    return _mm_cvtsi32_si128(bytes);
}

VARNEL_TARGET_AVX2 static inline __m128i Load16(const std::uint8_t* p)
{
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
}

VARNEL_TARGET_AVX2 static inline void Store16(std::uint8_t* p, __m128i v)
{
    _mm_storeu_si128(reinterpret_cast<__m128i*>(p), v);
}

// Stores the low kBytes (3 or 4) of v.
template <std::size_t kBytes>
VARNEL_TARGET_AVX2 static inline void StorePixel(std::uint8_t* p, __m128i v)
{
    const int pixel = _mm_cvtsi128_si32(v);
    std::memcpy(p, &pixel, kBytes);
}

// Converts a row's channel order and, for filter type Up, adds the row above.
template <std::size_t kPixelBytes, bool kAbove>
VARNEL_TARGET_AVX2 static void CopyOrUp(const std::uint8_t* in, const std::uint8_t* above, std::uint8_t* out,
                                        std::size_t bytes)
{
    constexpr std::size_t kStep = kPixelBytes == 3 ? 15 : 16;
    const __m128i order =
        kPixelBytes == 3   ? _mm_setr_epi8(2, 1, 0, 5, 4, 3, 8, 7, 6, 11, 10, 9, 14, 13, 12, 15)
        : kPixelBytes == 4 ? _mm_setr_epi8(2, 1, 0, 3, 6, 5, 4, 7, 10, 9, 8, 11, 14, 13, 12, 15)
                           : _mm_setr_epi8(0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15);
    std::size_t i = 0;
    for (; i + 16 <= bytes; i += kStep) {
        __m128i v = _mm_shuffle_epi8(Load16(in + i), order);
        if (kAbove)
            v = _mm_add_epi8(v, Load16(above + i));
        Store16(out + i, v);
    }
    for (; i < bytes; ++i) {
        const std::size_t sample = i % kPixelBytes;
        const std::size_t from = kPixelBytes >= 3 && sample < 3 ? i + 2 - 2 * sample : i;
        out[i] = static_cast<std::uint8_t>(in[from] + (kAbove ? above[i] : 0));
    }
}

namespace
{
// A pixel's samples in 16-bit lanes.
struct Neighbours {
    __m128i left;
    __m128i above;
    __m128i above_left;
};
}  // namespace

// The Paeth predictor: whichever neighbour is nearest to left + above - above_left. Every pixel depends on
// the one to its left, so the comparisons use `left` as late as possible. With t = 3 * above_left - left -
// above, the greater of left and above is nearest if t <= the lesser, the lesser if t >= the greater, and
// above_left otherwise.
VARNEL_TARGET_AVX2 static inline __m128i Paeth(const Neighbours& neighbours)
{
    const __m128i without_left = _mm_sub_epi16(
        _mm_add_epi16(_mm_add_epi16(neighbours.above_left, neighbours.above_left), neighbours.above_left),
        neighbours.above);
    const __m128i t = _mm_sub_epi16(without_left, neighbours.left);
    const __m128i less = _mm_min_epi16(neighbours.left, neighbours.above);
    const __m128i more = _mm_max_epi16(neighbours.left, neighbours.above);
    const __m128i less_or_corner = _mm_blendv_epi8(less, neighbours.above_left, _mm_cmpgt_epi16(more, t));
    return _mm_blendv_epi8(more, less_or_corner, _mm_cmpgt_epi16(t, less));
}

template <PngFilter kFilter>
VARNEL_TARGET_AVX2 static inline __m128i Predict(const Neighbours& neighbours)
{
    if constexpr (kFilter == PngFilter::kSub)
        return neighbours.left;
    if constexpr (kFilter == PngFilter::kAverage)
        return _mm_srli_epi16(_mm_add_epi16(neighbours.left, neighbours.above), 1);
    return Paeth(neighbours);
}

template <std::size_t kPixelBytes>
VARNEL_TARGET_AVX2 static inline __m128i OrderWide()
{
    return kPixelBytes == 1 ? _mm_setr_epi8(0, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1)
                            : _mm_setr_epi8(2, -1, 1, -1, 0, -1, 3, -1, -1, -1, -1, -1, -1, -1, -1, -1);
}

// Filters that predict from the pixel to the left: the row is one dependency chain.
template <std::size_t kPixelBytes, PngFilter kFilter>
VARNEL_TARGET_AVX2 static void Chain(const std::uint8_t* in, const std::uint8_t* above, std::uint8_t* out,
                                     std::size_t bytes)
{
    const __m128i order = OrderWide<kPixelBytes>();
    Neighbours neighbours = {_mm_setzero_si128(), _mm_setzero_si128(), _mm_setzero_si128()};
    std::size_t i = 0;
    const auto step = [&]() VARNEL_TARGET_AVX2 {
        neighbours.above_left = neighbours.above;
        if (kFilter != PngFilter::kSub)
            neighbours.above = _mm_cvtepu8_epi16(Load4(above + i));
        // The upper halves of the lanes are zero, so adding bytes wraps as it should.
        neighbours.left = _mm_add_epi8(_mm_shuffle_epi8(Load4(in + i), order), Predict<kFilter>(neighbours));
        return _mm_packus_epi16(neighbours.left, neighbours.left);
    };
    for (; i + kPixelBytes < bytes; i += kPixelBytes)
        StorePixel<4>(out + i, step());
    StorePixel<kPixelBytes>(out + i, step());
}

template <std::size_t kPixelBytes>
VARNEL_TARGET_AVX2 static bool UnfilterRows(const PngRows& rows)
{
    const std::uint8_t* above = rows.above;
    const std::size_t bytes = rows.bytes;
    for (std::size_t y = 0; y < rows.rows; ++y) {
        const std::uint8_t* in = rows.in + y * rows.in_stride + 1;
        std::uint8_t* out = rows.out + y * bytes;
        switch (static_cast<PngFilter>(in[-1])) {
            case PngFilter::kNone:
                CopyOrUp<kPixelBytes, false>(in, above, out, bytes);
                break;
            case PngFilter::kUp:
                CopyOrUp<kPixelBytes, true>(in, above, out, bytes);
                break;
            case PngFilter::kSub:
                Chain<kPixelBytes, PngFilter::kSub>(in, above, out, bytes);
                break;
            case PngFilter::kAverage:
                Chain<kPixelBytes, PngFilter::kAverage>(in, above, out, bytes);
                break;
            case PngFilter::kPaeth:
                Chain<kPixelBytes, PngFilter::kPaeth>(in, above, out, bytes);
                break;
            default:
                return false;
        }
        above = out;
    }
    return true;
}

template <std::size_t kPixelBytes>
static bool UnfilterWide(const PngRows& rows)
{
    if (rows.bytes < kMinPixels * kPixelBytes) {
        const PngUnfilters& portable = PngUnfiltersFor(true);
        return (kPixelBytes == 3 ? portable.rgb : portable.rgba)(rows);
    }
    return UnfilterRows<kPixelBytes>(rows);
}

// Single-byte dependency chains don't gain from vectors.
static bool UnfilterBytes(const PngRows& rows)
{
    return PngUnfiltersFor(true).one_byte(rows);
}

const PngUnfilters kPngUnfiltersAvx2 = {UnfilterBytes, UnfilterWide<3>, UnfilterWide<4>};

#endif

// Portable PNG unfiltering, and the choice of the fastest kernels.
#include "src/platform/image/codecs/png/filters/png_unfilter.h"

#include <algorithm>
#include <array>

#include "src/platform/image/codecs/png/filters/png_kernels.h"

// The Paeth predictor: whichever neighbour is nearest to left + above - above_left. png_unfilter_avx2.cpp
// explains the method.
static inline int Paeth(int left, int above, int above_left)
{
    const int t = 3 * above_left - left - above;
    const int less = std::min(left, above);
    const int more = std::max(left, above);
    const int less_or_corner = more > t ? above_left : less;
    return t > less ? less_or_corner : more;
}

template <PngFilter kFilter>
static inline int Predict(int left, int above, int above_left)
{
    switch (kFilter) {
        case PngFilter::kSub:
            return left;
        case PngFilter::kUp:
            return above;
        case PngFilter::kAverage:
            return (left + above) / 2;
        case PngFilter::kPaeth:
            return Paeth(left, above, above_left);
        default:
            return 0;
    }
}

// Unfilters a row with kPixelBytes per pixel; kSwap also swaps the first and third sample.
template <std::size_t kPixelBytes, bool kSwap, PngFilter kFilter>
static void UnfilterRow(const std::uint8_t* __restrict in, const std::uint8_t* __restrict above_row,
                        std::uint8_t* __restrict out, std::size_t bytes)
{
    std::array<int, kPixelBytes> left{};
    std::array<int, kPixelBytes> above_left{};
    for (std::size_t pixel = 0; pixel < bytes; pixel += kPixelBytes) {
        for (std::size_t sample = 0; sample < kPixelBytes; ++sample) {
            const std::size_t from = kSwap && sample < 3 ? 2 - sample : sample;
            const int above = above_row[pixel + sample];
            const int value = in[pixel + from] + Predict<kFilter>(left[sample], above, above_left[sample]);
            out[pixel + sample] = static_cast<std::uint8_t>(value);
            left[sample] = value & 0xFF;
            above_left[sample] = above;
        }
    }
}

template <std::size_t kPixelBytes, bool kSwap>
static bool UnfilterRows(const PngRows& rows)
{
    const std::uint8_t* above = rows.above;
    for (std::size_t y = 0; y < rows.rows; ++y) {
        const std::uint8_t* in = rows.in + y * rows.in_stride;
        std::uint8_t* out = rows.out + y * rows.bytes;
        switch (static_cast<PngFilter>(in[0])) {
            case PngFilter::kNone:
                UnfilterRow<kPixelBytes, kSwap, PngFilter::kNone>(in + 1, above, out, rows.bytes);
                break;
            case PngFilter::kSub:
                UnfilterRow<kPixelBytes, kSwap, PngFilter::kSub>(in + 1, above, out, rows.bytes);
                break;
            case PngFilter::kUp:
                UnfilterRow<kPixelBytes, kSwap, PngFilter::kUp>(in + 1, above, out, rows.bytes);
                break;
            case PngFilter::kAverage:
                UnfilterRow<kPixelBytes, kSwap, PngFilter::kAverage>(in + 1, above, out, rows.bytes);
                break;
            case PngFilter::kPaeth:
                UnfilterRow<kPixelBytes, kSwap, PngFilter::kPaeth>(in + 1, above, out, rows.bytes);
                break;
            default:
                return false;
        }
        above = out;
    }
    return true;
}

const PngUnfilters& PngUnfiltersFor(bool portable)
{
    static constexpr PngUnfilters kEverywhere = {UnfilterRows<1, false>, UnfilterRows<3, true>,
                                                 UnfilterRows<4, true>};
#ifdef VARNEL_PNG_AVX2
    if (!portable && HasAvx2ForPng())
        return kPngUnfiltersAvx2;
#endif
    static_cast<void>(portable);
    return kEverywhere;
}

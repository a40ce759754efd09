// Finds runs in filtered PNG rows.
#include "src/platform/image/deflate/run_length.h"

#include <algorithm>
#include <cstring>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

static constexpr std::size_t kShortRun = 4;
static constexpr std::size_t kLongRun = 8;
static constexpr std::size_t kGroup = 32;  // positions compared at once

// Bit i (0 to 31) is set if p[i] equals the byte `distance` before it.
static inline std::uint32_t SameMask(const std::uint8_t* p, std::size_t distance)
{
    std::uint32_t mask = 0;
#ifdef __SSE2__
    for (std::size_t i = 0; i < kGroup; i += 16) {
        const __m128i here = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + i));
        const __m128i before = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + i - distance));
        mask |= static_cast<std::uint32_t>(_mm_movemask_epi8(_mm_cmpeq_epi8(here, before))) << i;
    }
#else
    for (std::size_t i = 0; i < kGroup; ++i)
        mask |= static_cast<std::uint32_t>(p[i] == *(p + i - distance)) << i;
#endif
    return mask;
}

// Keeps the bits that start at least kShortRun, or kLongRun, consecutive set bits.
static inline std::uint32_t RunStarts(std::uint32_t mask, bool long_runs)
{
    mask &= mask >> 1;
    mask &= mask >> 2;
    return long_runs ? mask & mask >> 4 : mask;
}

static std::size_t RunLength(const std::uint8_t* p, std::size_t distance, std::size_t max)
{
    std::size_t length = 0;
    while (length + kGroup <= max) {
        const std::uint32_t differ = ~SameMask(p + length, distance);
        if (differ)
            return length + static_cast<std::size_t>(std::countr_zero(differ));
        length += kGroup;
    }
    while (length < max && p[length] == *(p + length - distance))
        ++length;
    return length;
}

namespace
{
struct Run {
    std::size_t length = 0;
    std::uint32_t distance = 1;
    int gain = 0;  ///< bits saved
};
}  // namespace

static Run RunAt(const std::uint8_t* p, std::uint32_t distance, std::size_t max, const PngCosts& costs)
{
    Run run;
    run.distance = distance;
    run.length = RunLength(p, distance, std::min<std::size_t>(max, kPngLongestMatch));
    if (run.length < kShortRun)
        return run;
    std::size_t literals = 0;  // bits per pixel, as all pixels of the run are equal
    for (std::uint32_t i = 0; i < distance; ++i)
        literals += costs.literal[p[i]];
    literals = literals * run.length / distance;
    run.gain =
        static_cast<int>(literals) - costs.length[run.length] - costs.distance[PngDistanceSymbol(distance)];
    return run;
}

void FindPngRuns(const std::uint8_t* bytes, std::size_t byte_count, std::size_t before,
                 std::uint32_t pixel_bytes, const PngCosts& costs, PngTokens& tokens)
{
    tokens.clear();
    // If runs shorter than kLongRun can't beat even the cheapest literals, don't look for them.
    const bool long_runs = kLongRun * costs.min_literal <= costs.min_match;
    const std::size_t step = kGroup - (long_runs ? kLongRun : kShortRun) + 1;
    std::size_t literal = 0;  // first byte not covered by a token
    std::size_t i = before < pixel_bytes ? std::min<std::size_t>(pixel_bytes - before, byte_count) : 0;
    while (i + kGroup <= byte_count) {
        const std::uint8_t* p = bytes + i;
        std::uint32_t starts = RunStarts(SameMask(p, 1), long_runs);
        if (pixel_bytes > 1)
            starts |= RunStarts(SameMask(p, pixel_bytes), long_runs);
        if (starts == 0) {
            i += step;
            continue;
        }
        i += static_cast<std::size_t>(std::countr_zero(starts));
        p = bytes + i;
        Run run = RunAt(p, 1, byte_count - i, costs);
        if (pixel_bytes > 1 && run.length < kPngLongestMatch) {
            const Run pixels = RunAt(p, pixel_bytes, byte_count - i, costs);
            if (pixels.gain > run.gain)
                run = pixels;
        }
        if (run.gain <= 0) {
            i += std::max<std::size_t>(run.length, 1);
            continue;
        }
        tokens.push_back({static_cast<std::uint32_t>(i - literal), static_cast<std::uint16_t>(run.length),
                          static_cast<std::uint16_t>(run.distance)});
        i += run.length;
        literal = i;
    }
    tokens.push_back({static_cast<std::uint32_t>(byte_count - literal), 0, 0});
}

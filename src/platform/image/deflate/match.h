// Helpers of the match finder: unaligned loads, match lengths.
// Room: platform/image/deflate.
#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstring>

inline std::uint32_t Load4(const std::uint8_t* p)
{
    std::uint32_t n = 0;
    std::memcpy(&n, p, 4);
    return n;
}

inline std::uint64_t Load8(const std::uint8_t* p)
{
    std::uint64_t n = 0;
    std::memcpy(&n, p, 8);
    return n;
}

/// The number of equal bytes at a and b, at most max. May read up to 7 more.
inline std::uint32_t MatchLength(const std::uint8_t* a, const std::uint8_t* b, std::uint32_t max)
{
    for (std::uint32_t length = 0; length < max; length += 8) {
        const std::uint64_t differ = Load8(a + length) ^ Load8(b + length);
        if (differ) {
            const int zeros = std::endian::native == std::endian::little ? std::countr_zero(differ)
                                                                         : std::countl_zero(differ);
            return std::min(length + static_cast<std::uint32_t>(zeros) / 8, max);
        }
    }
    return max;
}

/// The shortest match length, 4 to 8, that pays for data like this: literals are cheap if few byte values
/// occur.
inline std::uint32_t ShortestUsefulMatch(const std::uint8_t* bytes, std::size_t byte_count)
{
    std::array<std::uint32_t, 256> counts{};
    const std::size_t sample = std::min<std::size_t>(byte_count, 8192);
    for (std::size_t i = 0; i < sample; ++i)
        ++counts[bytes[i]];
    const auto frequent = std::count_if(counts.begin(), counts.end(),
                                        [sample](std::uint32_t count) { return count > sample / 1024; });
    return frequent < 8 ? 8 : frequent < 12 ? 7 : frequent < 20 ? 6 : frequent < 48 ? 5 : 4;
}

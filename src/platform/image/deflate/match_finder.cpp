// Finds matches by a hash table of recent positions.
#include "src/platform/image/deflate/match_finder.h"

#include <algorithm>
#include <type_traits>

#include "src/platform/image/deflate/match.h"

// Of a match this long, only the end is entered: its source is in the table already.
static constexpr std::uint32_t kLong = 24;
static constexpr std::size_t kEntered = 12;
static constexpr std::size_t kHashReads = 8;

PngMatchFinder::PngMatchFinder() : places_(std::make_unique<std::uint16_t[]>(kPlaces)) {}

void PngMatchFinder::Forget()
{
    std::fill_n(places_.get(), kPlaces, std::uint16_t{0});
    known_ = 0;
}

void PngMatchFinder::ShiftPositions(std::size_t bytes)
{
    moved_ += static_cast<std::uint32_t>(bytes);
    known_ -= std::min(known_, bytes);
}

// Keeps kWays positions per hash of kHashed bytes.
template <std::size_t kWays, std::uint32_t kHashed>
void PngMatchFinder::FindWith(const std::uint8_t* buffer, std::size_t begin, std::size_t end,
                              std::uint32_t shortest, PngTokens& tokens)
{
    // All positions of a hash, the newest in the lowest bits.
    using Places = std::conditional_t<kWays == 2, std::uint32_t, std::uint64_t>;
    constexpr std::uint32_t kHashBits = kWays == 2 ? 14 : 13;
    static_assert(kWays << kHashBits == kPlaces);
    std::uint16_t* const chains = places_.get();
    const std::uint32_t moved = moved_;
    const auto enter = [=](std::size_t at) {
        const std::uint64_t bytes = Load8(buffer + at) << (64 - 8 * kHashed);
        const std::uint64_t hash = bytes * 0x9E3779B97F4A7C15U >> (64 - kHashBits);
        Places old = 0;
        std::memcpy(&old, chains + hash * kWays, sizeof(old));
        const Places entered = old << 16 | static_cast<std::uint16_t>(at + moved);
        std::memcpy(chains + hash * kWays, &entered, sizeof(entered));
        return old;
    };

    for (std::size_t at = known_; at < begin && at + kHashReads <= end; ++at)
        enter(at);
    std::size_t literal = begin;  // first byte not covered by a token
    std::size_t i = begin;
    while (i + kHashReads <= end) {
        const std::uint8_t* const p = buffer + i;
        const std::uint32_t first = Load4(p);
        const Places places = enter(i);
        // Test all candidates with one branch, since it is unpredictable: the product of the differences is 0
        // if any of them matches. Distances outside the window are rejected afterwards.
        std::array<std::uint32_t, kWays> distances;
        std::array<std::uint64_t, kWays> differ;
        for (std::size_t w = 0; w < kWays; ++w) {
            const auto place = static_cast<std::uint16_t>(places >> 16 * w);
            distances[w] = static_cast<std::uint16_t>(i + moved - place);
            differ[w] = Load4(p - distances[w]) ^ first;
        }
        bool none = differ[0] * differ[1] != 0;
        if constexpr (kWays == 4)
            none = none & (differ[2] * differ[3] != 0);
        if (none) {
            ++i;
            continue;
        }
        const std::size_t furthest = std::min<std::size_t>(i, kPngWindow);
        const auto max = static_cast<std::uint32_t>(std::min<std::size_t>(end - i, kPngLongestMatch));
        std::uint32_t length = shortest - 1;
        std::uint32_t distance = 0;
        for (const std::uint32_t other : distances) {
            if (other == 0 || other > furthest)
                continue;
            const std::uint32_t other_length = MatchLength(p - other, p, max);
            if (other_length > length) {
                length = other_length;
                distance = other;
            }
        }
        if (distance == 0) {
            ++i;
            continue;
        }
        tokens.push_back({static_cast<std::uint32_t>(i - literal), static_cast<std::uint16_t>(length),
                          static_cast<std::uint16_t>(distance)});
        std::size_t at = length > kLong ? i + length - kEntered : i + 1;
        i += length;
        literal = i;
        for (; at < i && at + kHashReads <= end; ++at)
            enter(at);
    }
    tokens.push_back({static_cast<std::uint32_t>(end - literal), 0, 0});
    known_ = i;  // the bytes after i couldn't be hashed yet
}

void PngMatchFinder::Find(const std::uint8_t* buffer, std::size_t begin, std::size_t end, bool is_noise,
                          PngTokens& tokens, std::size_t reach)
{
    tokens.clear();
    const std::uint32_t shortest = ShortestUsefulMatch(buffer + begin, end - begin);
    const std::uint32_t hashed = std::min(shortest, 6U);
    const std::uint32_t kind = hashed + (is_noise ? 10 : 0);
    if (kind != kind_)
        Forget();
    kind_ = kind;
    known_ = std::max(known_, begin - std::min(begin, reach));
    switch (kind) {
        case 4:
            FindWith<4, 4>(buffer, begin, end, shortest, tokens);
            break;
        case 5:
            FindWith<4, 5>(buffer, begin, end, shortest, tokens);
            break;
        case 6:
            FindWith<4, 6>(buffer, begin, end, shortest, tokens);
            break;
        case 14:
            FindWith<2, 4>(buffer, begin, end, shortest, tokens);
            break;
        case 15:
            FindWith<2, 5>(buffer, begin, end, shortest, tokens);
            break;
        default:
            FindWith<2, 6>(buffer, begin, end, shortest, tokens);
            break;
    }
}

// Finds matches thoroughly.
#include "src/platform/image/deflate/chain_finder.h"

#include <algorithm>

#include "src/platform/image/deflate/match.h"

static constexpr std::uint32_t kHashed = 4;  // bytes; shorter matches aren't found
static constexpr std::uint32_t kHashBits = 15;
static constexpr std::uint32_t kCandidates = 32;  // positions tried for each match
static constexpr std::uint32_t kNice = 128;       // a match this long is taken without looking further

static inline std::uint32_t HashOf(std::uint32_t bytes)
{
    return bytes * 0x9E3779B1U >> (32 - kHashBits);
}

void PngChainFinder::ShiftPositions(std::size_t bytes)
{
    moved_ += static_cast<std::uint32_t>(bytes);
    known_ -= std::min(known_, bytes);
}

// Enters all positions from begin on whose hashed bytes are before end.
void PngChainFinder::Enter(const std::uint8_t* buffer, std::size_t begin, std::size_t end)
{
    std::uint16_t* const newest = newest_.get();
    std::uint16_t* const older = older_.get();
    const std::uint32_t moved = moved_;
    for (std::size_t i = begin; i + kHashed <= end; ++i) {
        const std::uint32_t hash = HashOf(Load4(buffer + i));
        const auto place = static_cast<std::uint16_t>(i + moved);
        older[place % kPngWindow] = newest[hash];
        newest[hash] = place;
    }
}

// The longest match at position `at`, which is entered.
PngChainFinder::Match PngChainFinder::Longest(const std::uint8_t* buffer, std::size_t at, std::size_t end,
                                              std::uint32_t shortest, std::uint32_t candidates)
{
    const std::uint8_t* const p = buffer + at;
    const std::uint32_t first = Load4(p);
    const auto place = static_cast<std::uint16_t>(at + moved_);
    std::uint16_t candidate_place = newest_[HashOf(first)];
    Enter(buffer, at, at + kHashed);

    const std::size_t furthest = std::min<std::size_t>(at, kPngWindow);
    const auto max = static_cast<std::uint32_t>(std::min<std::size_t>(end - at, kPngLongestMatch));
    if (max < shortest)
        return {};
    Match best;
    best.length = shortest - 1;
    std::uint32_t distance = static_cast<std::uint16_t>(place - candidate_place);
    for (; candidates > 0 && distance > 0 && distance <= furthest; --candidates) {
        const std::uint8_t* const candidate = p - distance;
        // First compare the last four bytes that a longer match needs: they are the most likely to differ.
        if (Load4(candidate + best.length - 3) == Load4(p + best.length - 3) && Load4(candidate) == first) {
            const std::uint32_t length = MatchLength(candidate, p, max);
            if (length > best.length) {
                best = {length, distance};
                if (length >= kNice || length == max)
                    break;
            }
        }
        candidate_place = older_[candidate_place % kPngWindow];
        // Distances grow along a chain; where they don't, the entry has been overwritten.
        const std::uint32_t next = static_cast<std::uint16_t>(place - candidate_place);
        if (next <= distance)
            break;
        distance = next;
    }
    return best.distance ? best : Match{};
}

void PngChainFinder::Find(const std::uint8_t* buffer, std::size_t begin, std::size_t end, PngTokens& tokens)
{
    if (!newest_) {
        newest_ = std::make_unique<std::uint16_t[]>(std::size_t{1} << kHashBits);
        older_ = std::make_unique<std::uint16_t[]>(kPngWindow);
    }
    const std::size_t reach = begin - std::min<std::size_t>(begin, kPngWindow);
    Enter(buffer, std::max(known_, reach), std::min(begin + kHashed - 1, end));
    tokens.clear();
    const std::uint32_t shortest = ShortestUsefulMatch(buffer + begin, end - begin);
    std::size_t literal = begin;  // first byte not covered by a token
    std::size_t i = begin;
    while (i + kHashed <= end) {
        Match match = Longest(buffer, i, end, shortest, kCandidates);
        if (match.length == 0) {
            ++i;
            continue;
        }
        std::size_t entered = i + 1;
        while (match.length < kNice && i + 1 + kHashed <= end) {
            const Match later = Longest(buffer, i + 1, end, match.length, kCandidates / 2);
            entered = i + 2;
            // In quarters of a byte: doubling the distance costs one, the extra literal two.
            const int better = 4 * (static_cast<int>(later.length) - static_cast<int>(match.length)) +
                               static_cast<int>(std::bit_width(match.distance)) -
                               static_cast<int>(std::bit_width(later.distance));
            if (later.length < match.length || better <= 2)
                break;
            match = later;
            ++i;
        }
        tokens.push_back({static_cast<std::uint32_t>(i - literal), static_cast<std::uint16_t>(match.length),
                          static_cast<std::uint16_t>(match.distance)});
        i += match.length;
        literal = i;
        Enter(buffer, entered, std::min(i + kHashed - 1, end));
    }
    tokens.push_back({static_cast<std::uint32_t>(end - literal), 0, 0});
    // The last three bytes couldn't be hashed yet.
    known_ = end - std::min<std::size_t>(end, kHashed - 1);
}

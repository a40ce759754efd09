// Finds matches thoroughly: for drawings and screenshots, which are full of repetition.
// Room: platform/image/deflate.
#pragma once

#include <cstddef>
#include <memory>

#include "src/platform/image/deflate/tokens.h"

/// Follows hash chains of four-byte strings, with lazy matching: a match is deferred by a byte if that makes
/// it longer. All calls refer to one buffer, whose contents are shifted towards its start now and then;
/// everything in front of the bytes passed belongs to the stream. Allocates on first use.
class PngChainFinder
{
public:
    /// Tokenises the bytes from begin to end, which come after those of the previous call. 16 bytes past end
    /// may be read. Throws std::bad_alloc.
    void Find(const std::uint8_t* buffer, std::size_t begin, std::size_t end, PngTokens& tokens);

    /// Call this after shifting the buffer's contents by `bytes` towards its start.
    void ShiftPositions(std::size_t bytes);

private:
    struct Match {
        std::uint32_t length = 0;  ///< 0 = no match
        std::uint32_t distance = 0;
    };
    Match Longest(const std::uint8_t* buffer, std::size_t at, std::size_t end, std::uint32_t shortest,
                  std::uint32_t candidates);
    void Enter(const std::uint8_t* buffer, std::size_t begin, std::size_t end);

    // The latest position of each hash, and the previous position with the same hash, modulo 2^16. Entries
    // may be outdated, so compare the bytes before using one.
    std::unique_ptr<std::uint16_t[]> newest_;
    std::unique_ptr<std::uint16_t[]> older_;
    std::uint32_t moved_ = 0;
    std::size_t known_ = 0;  ///< end of the part of the buffer in the tables
};

// Finds copies thoroughly: in drawings and screenshots, which repeat themselves from end to end.
// Room: platform/image/deflate.
#pragma once

#include <cstddef>
#include <memory>

#include "src/platform/image/deflate/tokens.h"

/// Follows, for each position, the chain of earlier places with the same four bytes, and puts off a copy by a
/// byte where that makes a longer one. The bytes are those of one buffer whose contents move towards its
/// beginning from time to time; all bytes in front of those that are asked for belong to the stream. Takes no
/// memory before it is used.
class PngThoroughCopies
{
public:
    /// Makes tokens of the bytes from begin to end, which lie behind those of the call before. 16 bytes
    /// behind end may be read. Throws std::bad_alloc.
    void Find(const std::uint8_t* buffer, std::size_t begin, std::size_t end, PngTokens& tokens);

    /// To be told when the buffer's contents have moved by so many bytes.
    void Moved(std::size_t bytes);

private:
    struct Copy {
        std::uint32_t length = 0;  ///< 0 = none
        std::uint32_t distance = 0;
    };
    Copy Longest(const std::uint8_t* buffer, std::size_t at, std::size_t end, std::uint32_t shortest,
                 std::uint32_t candidates);
    void Enter(const std::uint8_t* buffer, std::size_t begin, std::size_t end);

    // The newest place of each hash, and for each place the one before it with the same hash, both modulo
    // 2^16. What stands there may be long gone, so that whoever reads compares the bytes.
    std::unique_ptr<std::uint16_t[]> newest_;
    std::unique_ptr<std::uint16_t[]> older_;
    std::uint32_t moved_ = 0;
    std::size_t known_ = 0;  ///< up to where the tables know the buffer
};

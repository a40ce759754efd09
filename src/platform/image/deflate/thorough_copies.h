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
    /// Makes tokens of the bytes from nBegin to nEnd, which lie behind those of the call before. 16 bytes
    /// behind nEnd may be read. Throws std::bad_alloc.
    void Find(const std::uint8_t* pBuffer, std::size_t nBegin, std::size_t nEnd, PngTokens& aTokens);

    /// To be told when the buffer's contents have moved by so many bytes.
    void Moved(std::size_t nBytes);

private:
    struct Copy {
        std::uint32_t nLength = 0;  ///< 0 = none
        std::uint32_t nDistance = 0;
    };
    Copy Longest(const std::uint8_t* pBuffer, std::size_t nAt, std::size_t nEnd, std::uint32_t nShortest,
                 std::uint32_t nCandidates);
    void Enter(const std::uint8_t* pBuffer, std::size_t nBegin, std::size_t nEnd);

    // The newest place of each hash, and for each place the one before it with the same hash, both modulo
    // 2^16. What stands there may be long gone, so that whoever reads compares the bytes.
    std::unique_ptr<std::uint16_t[]> m_aNewest;
    std::unique_ptr<std::uint16_t[]> m_aOlder;
    std::uint32_t m_nMoved = 0;
    std::size_t m_nKnown = 0;  ///< up to where the tables know the buffer
};

// Finds repetitions up to a window's length away: the copies that drawings, screenshots and scans have.
// Room: platform_image. May use: platform.
#pragma once

#include <memory>

#include "src/platform/image/codecs/png_tokens.h"

/// How hard to look.
struct PngSearch {
    std::uint32_t nCandidates;  ///< places looked at for each position
    std::uint32_t nNice;        ///< a copy this long is taken without looking further
    bool bLazy;                 ///< whether a better copy one byte later is preferred
};

/// The bytes are those of one buffer whose contents move towards its beginning from time to time.
class PngMatcher
{
public:
    static constexpr std::uint32_t kHashBits = 15;

    PngMatcher();

    /// Tells where the bytes from nBegin to nEnd are without looking for copies in them. What begins with the
    /// last three of them is not known, since what follows them isn't there yet.
    void Remember(const std::uint8_t* pBuffer, std::size_t nBegin, std::size_t nEnd);

    /// Makes tokens of the bytes from nBegin to nEnd of the buffer, all of whose bytes in front of nBegin
    /// belong to the stream. 16 bytes behind nEnd may be read.
    void Find(const std::uint8_t* pBuffer, std::size_t nBegin, std::size_t nEnd, const PngSearch& objSearch,
              PngTokens& aTokens);

    void Forget();

    /// To be told when the buffer's contents have moved by so many bytes.
    void Moved(std::size_t nBytes) { m_nMoved += static_cast<std::uint32_t>(nBytes); }

private:
    struct Copy {
        std::uint32_t nLength = 0;
        std::uint32_t nDistance = 0;
    };
    Copy Longest(const std::uint8_t* pBuffer, std::size_t nAt, std::size_t nEnd, std::uint32_t nShortest,
                 std::uint32_t nCandidates, std::uint32_t nNice);

    // The newest place of each hash, and for each place the one before it with the same hash, both modulo
    // 2^16. What they hold may be long gone: whoever reads compares the bytes.
    std::unique_ptr<std::uint16_t[]> m_aNewest;
    std::unique_ptr<std::uint16_t[]> m_aOlder;
    std::uint32_t m_nMoved = 0;
};

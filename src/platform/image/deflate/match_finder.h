// Finds matches for photographs with repetition and for scanned pages.
// Room: platform/image/deflate.
#pragma once

#include <cstddef>
#include <memory>

#include "src/platform/image/deflate/tokens.h"

/// Keeps the last few positions of each hash and takes the longest match among them. All calls refer to one
/// buffer, whose contents are shifted towards its start now and then; everything in front of the bytes passed
/// belongs to the stream.
class PngMatchFinder
{
public:
    /// Readable bytes required in front of the buffer and after the bytes passed; their values don't matter.
    static constexpr std::size_t kFrontSlack = 65536;
    static constexpr std::size_t kBackSlack = 16;

    PngMatchFinder();

    /// Tokenises the bytes from begin to end. Noise has few candidates, so with is_noise only two positions
    /// per hash are kept instead of four. Bytes further than reach before begin are only matched if an
    /// earlier call has seen them.
    void Find(const std::uint8_t* buffer, std::size_t begin, std::size_t end, bool is_noise,
              PngTokens& tokens, std::size_t reach = kPngWindow);

    /// Forgets all positions, so that the next call may start before the end of the last one.
    void Forget();
    /// Call this after shifting the buffer's contents by `bytes` towards its start.
    void ShiftPositions(std::size_t bytes);

private:
    template <std::size_t kWays, std::uint32_t kHashed>
    void FindWith(const std::uint8_t* buffer, std::size_t begin, std::size_t end, std::uint32_t shortest,
                  PngTokens& tokens);

    // Positions modulo 2^16. Entries may be outdated, so compare the bytes before using one.
    static constexpr std::size_t kPlaces = 32768;
    std::unique_ptr<std::uint16_t[]> places_;
    std::uint32_t moved_ = 0;
    std::size_t known_ = 0;   ///< end of the part of the buffer in the table
    std::uint32_t kind_ = 0;  ///< table layout: bytes hashed and positions per hash
};

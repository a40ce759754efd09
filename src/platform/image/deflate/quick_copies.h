// Finds copies quickly: in photographs that repeat themselves, and in scanned pages.
// Room: platform/image/deflate.
#pragma once

#include <cstddef>
#include <memory>

#include "src/platform/image/deflate/tokens.h"

/// Keeps the few last places of each hash and takes the longest copy that one of them gives. The bytes are
/// those of one buffer whose contents move towards its beginning from time to time; all bytes in front of
/// those that are asked for belong to the stream.
class PngQuickCopies
{
public:
    /// How many bytes in front of the buffer, and behind those asked for, may be read; their values don't
    /// matter.
    static constexpr std::size_t kFrontSlack = 65536;
    static constexpr std::size_t kBackSlack = 16;

    PngQuickCopies();

    /// Makes tokens of the bytes from begin to end. In noise there are few places to choose from, and only
    /// two are kept for each hash, else four. What lies further than reach before begin is not looked at,
    /// but for what earlier calls have seen.
    void Find(const std::uint8_t* buffer, std::size_t begin, std::size_t end, bool is_noise,
              PngTokens& tokens, std::size_t reach = kPngWindow);

    /// Makes the places from the last call unknown, so that bytes may be asked for that lie before them.
    void Forget();
    /// To be told when the buffer's contents have moved by so many bytes.
    void Moved(std::size_t bytes);

private:
    template <std::size_t kWays, std::uint32_t kHashed>
    void FindWith(const std::uint8_t* buffer, std::size_t begin, std::size_t end, std::uint32_t shortest,
                  PngTokens& tokens);

    // Places modulo 2^16; what stands there may be long gone, so that whoever reads compares the bytes.
    static constexpr std::size_t kPlaces = 32768;
    std::unique_ptr<std::uint16_t[]> places_;
    std::uint32_t moved_ = 0;
    std::size_t known_ = 0;   ///< up to where the table knows the buffer
    std::uint32_t kind_ = 0;  ///< of the table: what is hashed, and how many places a hash has
};

// One decoded picture: its pixels, and what must not be lost between load and save.
// Room: platform.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <new>
#include <string>
#include <utility>
#include <vector>

/// Leaves new bytes as they come, so that a picture's memory is touched once, by its decoder, and not zeroed
/// first.
template <typename T>
class UninitializedAllocator : public std::allocator<T>
{
public:
    template <typename U>
    struct rebind {
        using other = UninitializedAllocator<U>;
    };
    /// A large block begins where a large page of the machine can, which saves most of the kernel's work for
    /// it, and 64 bytes on: a file's header is mostly shorter, and a copy whose target lies a few bytes ahead
    /// of its source, as the machine counts within a page, takes twice as long. The alignment is made here:
    /// the C library's own leaves holes into which no later block of that size fits, and a run over many
    /// pictures would take more memory with each.
    T* allocate(std::size_t nCount)
    {
        if (nCount * sizeof(T) < kLarge)
            return std::allocator<T>::allocate(nCount);
        if (nCount > static_cast<std::size_t>(-1) / 2 / sizeof(T))
            throw std::bad_alloc();
        auto* pBlock = static_cast<std::byte*>(::operator new(nCount * sizeof(T) + kAlignment + kLead));
        const auto nPast = reinterpret_cast<std::uintptr_t>(pBlock) % kAlignment;
        std::byte* pFirst = pBlock + (kAlignment - nPast) + kLead;
        std::memcpy(pFirst - sizeof pBlock, &pBlock, sizeof pBlock);
        return reinterpret_cast<T*>(pFirst);
    }
    void deallocate(T* pFirst, std::size_t nCount) noexcept
    {
        if (nCount * sizeof(T) < kLarge) {
            std::allocator<T>::deallocate(pFirst, nCount);
            return;
        }
        std::byte* pBlock = nullptr;
        std::memcpy(&pBlock, reinterpret_cast<const std::byte*>(pFirst) - sizeof pBlock, sizeof pBlock);
        ::operator delete(pBlock);
    }
    template <typename U>
    void construct(U* pObject) noexcept
    {
        ::new (static_cast<void*>(pObject)) U;
    }
    template <typename U, typename... Args>
    void construct(U* pObject, Args&&... aArguments)
    {
        ::new (static_cast<void*>(pObject)) U(std::forward<Args>(aArguments)...);
    }

private:
#ifdef VARNEL_SANITIZED
    // The sanitizers guard the ends of a block only where it has no slack.
    static constexpr std::size_t kLarge = static_cast<std::size_t>(-1);
#else
    static constexpr std::size_t kLarge = 1 << 20;
#endif
    static constexpr std::size_t kLead = 64;
    static constexpr std::size_t kAlignment = 2 << 20;
};

/// resize() gives bytes of no particular value; resize(n, v) and assign(n, v) fill as usual.
using PixelBytes = std::vector<std::uint8_t, UninitializedAllocator<std::uint8_t>>;

/// What a file says of its picture beside the pixels. Blocks are raw and hold no file format's own header.
struct ImageMetadata {
    std::vector<std::uint8_t> aExif;  ///< a TIFF structure from its byte order mark on, without "Exif\0\0"
    std::vector<std::uint8_t> aXmp;   ///< the XMP packet, UTF-8
    std::vector<std::uint8_t> aIptc;  ///< IPTC-IIM datasets, the first byte being 0x1C
};

/// One decoded picture, owned by whoever loaded it and lent by reference; moved, not copied. 8 bits a
/// channel; 1, 3 or 4 channels interleaved (grey; B, G, R; B, G, R, A with alpha not premultiplied); rows top
/// to bottom without padding.
struct ImageBuffer {
    std::int32_t lWidth = 0;     ///< pixels; 0 while nothing is loaded
    std::int32_t lHeight = 0;    ///< pixels
    std::int32_t lChannels = 0;  ///< 1, 3 or 4
    PixelBytes aBytes;           ///< always lWidth * lHeight * lChannels

    /// The profile that the pixel values are in; empty for sRGB (or, with one channel, a grey of sRGB's
    /// curve). Its colour space agrees with lChannels: a grey profile for 1, an RGB profile for 3 and 4.
    std::vector<std::uint8_t> aIccProfile;
    double dDotsPerInchX = 0;  ///< 0 when the file doesn't say
    double dDotsPerInchY = 0;
    ImageMetadata objMetadata;
};

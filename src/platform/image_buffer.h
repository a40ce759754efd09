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
    T* allocate(std::size_t count)
    {
        if (count * sizeof(T) < kLarge)
            return std::allocator<T>::allocate(count);
        if (count > static_cast<std::size_t>(-1) / 2 / sizeof(T))
            throw std::bad_alloc();
        auto* block = static_cast<std::byte*>(::operator new(count * sizeof(T) + kAlignment + kLead));
        const auto past = reinterpret_cast<std::uintptr_t>(block) % kAlignment;
        std::byte* first = block + (kAlignment - past) + kLead;
        std::memcpy(first - sizeof block, &block, sizeof block);
        return reinterpret_cast<T*>(first);
    }
    void deallocate(T* first, std::size_t count) noexcept
    {
        if (count * sizeof(T) < kLarge) {
            std::allocator<T>::deallocate(first, count);
            return;
        }
        std::byte* block = nullptr;
        std::memcpy(&block, reinterpret_cast<const std::byte*>(first) - sizeof block, sizeof block);
        ::operator delete(block);
    }
    template <typename U>
    void construct(U* object) noexcept
    {
        ::new (static_cast<void*>(object)) U;
    }
    template <typename U, typename... Args>
    void construct(U* object, Args&&... arguments)
    {
        ::new (static_cast<void*>(object)) U(std::forward<Args>(arguments)...);
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
    std::vector<std::uint8_t> exif;  ///< a TIFF structure from its byte order mark on, without "Exif\0\0"
    std::vector<std::uint8_t> xmp;   ///< the XMP packet, UTF-8
    std::vector<std::uint8_t> iptc;  ///< IPTC-IIM datasets, the first byte being 0x1C
};

/// How a picture was reduced while it was decoded: each pixel covers factor by factor pixels of the
/// full picture. If the full size isn't a multiple of factor, the pixels of one edge reach beyond the
/// full picture.
struct Reduction {
    std::int32_t factor = 1;       ///< 1, 2, 4 or 8
    std::int32_t full_width = 0;   ///< pixels, if factor isn't 1
    std::int32_t full_height = 0;  ///< pixels, if factor isn't 1
    bool beyond_left = false;      ///< which edges reach beyond: left instead of right,
    bool beyond_top = false;       ///< top instead of bottom
};

/// One decoded picture, owned by whoever loaded it and lent by reference; moved, not copied. 8 bits a
/// channel; 1, 3 or 4 channels interleaved (grey; B, G, R; B, G, R, A with alpha not premultiplied); rows top
/// to bottom without padding.
struct ImageBuffer {
    std::int32_t width = 0;     ///< pixels; 0 while nothing is loaded
    std::int32_t height = 0;    ///< pixels
    std::int32_t channels = 0;  ///< 1, 3 or 4
    PixelBytes bytes;           ///< always width * height * channels

    /// The profile that the pixel values are in; empty for sRGB (or, with one channel, a grey of sRGB's
    /// curve). Its colour space agrees with channels: a grey profile for 1, an RGB profile for 3 and 4.
    std::vector<std::uint8_t> icc_profile;
    double dots_per_inch_x = 0;  ///< 0 when the file doesn't say
    double dots_per_inch_y = 0;
    ImageMetadata metadata;
    Reduction reduction;  ///< only in pictures loaded for resizing (ImageFile::SetSmallestSize)
    bool lossy = false;   ///< from a lossily compressed file, so areas of one colour may be slightly uneven
};

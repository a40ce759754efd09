// Targa run-length coding.
#include "src/platform/image/codecs/tga/tga_runs.h"

#include <algorithm>
#include <cstring>

static constexpr std::uint8_t kRepeatMark = 0x80;

bool TgaRuns::NextRow(std::span<std::uint8_t> row)
{
    std::uint8_t* out = row.data();
    std::size_t room = row.size() / pixel_size_;
    while (room > 0) {
        if (pixels_left_ == 0) {
            if (left_.empty())
                return false;
            repeats_ = (left_[0] & kRepeatMark) != 0;
            pixels_left_ = (left_[0] & 0x7Fu) + 1;
            left_ = left_.subspan(1);
        }
        const std::size_t pixels = std::min(room, pixels_left_);
        const std::size_t stored = repeats_ ? pixel_size_ : pixels * pixel_size_;
        if (left_.size() < stored)
            return false;
        if (!repeats_) {
            std::memcpy(out, left_.data(), stored);
        } else if (pixel_size_ == 1) {
            std::memset(out, left_[0], pixels);
        } else {
            for (std::size_t i = 0; i < pixels; ++i)
                std::memcpy(out + i * pixel_size_, left_.data(), pixel_size_);
        }
        out += pixels * pixel_size_;
        room -= pixels;
        pixels_left_ -= pixels;
        // Keep the repeated pixel in the input if the packet continues in the next row.
        if (!repeats_ || pixels_left_ == 0)
            left_ = left_.subspan(stored);
    }
    return true;
}

std::size_t MaxPackedTgaSize(std::size_t pixels, std::size_t pixel_size)
{
    // A run packet saves at least the two headers it may cost, so the worst case is full raw packets only.
    return pixels * pixel_size + pixels / kTgaPacket + 1;
}

// Compares with a constant size, which compiles to one or two loads.
template <std::size_t kSize>
static bool IsSame(const std::uint8_t* pixel)
{
    return std::memcmp(pixel, pixel + kSize, kSize) == 0;
}

template <std::size_t kSize>
static std::size_t Pack(const std::uint8_t* in, std::size_t pixels, std::uint8_t* out)
{
    // Two equal one-byte pixels don't pay inside a raw packet, since they cost another header afterwards.
    constexpr std::size_t kWorth = kSize == 1 ? 3 : 2;
    const std::uint8_t* const start = out;
    const auto run_at = [&](std::size_t x) {
        const std::size_t limit = std::min(pixels - x, kTgaPacket);
        std::size_t run = 1;
        while (run < limit && IsSame<kSize>(in + (x + run - 1) * kSize))
            ++run;
        return run;
    };
    for (std::size_t x = 0; x < pixels;) {
        std::size_t run = run_at(x);
        if (run >= kWorth) {
            *out++ = static_cast<std::uint8_t>(kRepeatMark | (run - 1));
            std::memcpy(out, in + x * kSize, kSize);
            out += kSize;
            x += run;
            continue;
        }
        std::size_t plain = run;
        while (x + plain < pixels && plain < kTgaPacket && (run = run_at(x + plain)) < kWorth)
            plain = std::min(plain + run, kTgaPacket);
        *out++ = static_cast<std::uint8_t>(plain - 1);
        std::memcpy(out, in + x * kSize, plain * kSize);
        out += plain * kSize;
        x += plain;
    }
    return static_cast<std::size_t>(out - start);
}

std::size_t PackTgaRow(Bytes row, std::size_t pixel_size, std::uint8_t* out)
{
    const std::size_t pixels = row.size() / pixel_size;
    switch (pixel_size) {
        case 1:
            return Pack<1>(row.data(), pixels, out);
        case 2:
            return Pack<2>(row.data(), pixels, out);
        case 3:
            return Pack<3>(row.data(), pixels, out);
        default:
            return Pack<4>(row.data(), pixels, out);
    }
}
